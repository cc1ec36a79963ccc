#include "ZNTSoundTagReading.h"

#include "ZNTText.h"

#include <utility>

namespace
{

using Names = ZNTSoundTagReading::Names;

constexpr std::u16string_view soundExtension = u".wav";

std::u16string_view all(std::u16string_view found) { return found; }

ZNTResult<ZNTSoundPlace> settledPlace(Names names)
{
    ZNTSoundPlace place;
    place.isStop = znt::contains(names.file, u"Off)") || znt::contains(names.file, u"Off ");
    if (!place.isStop && names.file.find(u'/') == names.file.npos)
        return ZNTError{"ZNTMSPProcessor", 1, "The tag names no category before the file."};
    place.file = std::move(names.file);
    if (names.url) {
        names.url->pop_back(); // the parenthesis, if the URL is the last parameter; dropped in any case
        place.url = znt::withSoundExtension(std::move(*names.url));
    }
    return place;
}

std::u16string_view toFirstParenthesis(std::u16string_view found)
{
    return found.substr(0, found.find(u')'));
}

std::u16string urlOf(std::u16string_view name, std::u16string url)
{
    const bool namesFile = url.ends_with(soundExtension) || url.ends_with(u"/" + std::u16string(name));
    if (!namesFile) {
        if (!url.ends_with(u'/'))
            url += u'/';
        url += name;
    }
    if (!url.ends_with(soundExtension))
        url += soundExtension;
    return url;
}

ZNTResult<ZNTSoundPlace> standardPlace(Names names)
{
    ZNTSoundPlace place;
    place.isStop = names.file == u"Off";
    const bool isPattern = names.file.find_first_of(u"*?") != names.file.npos;
    if (names.url && !isPattern)
        place.url = urlOf(names.file, std::move(*names.url));
    if (names.file.find(u'/') == names.file.npos)
        place.file = names.type.value_or(u"") + u"/";
    place.file += names.file;
    return place;
}

} // namespace

const ZNTSoundTagReading znt::settledTagReading{.tagIn = &all, .placeOf = &settledPlace};
const ZNTSoundTagReading znt::standardTagReading{.tagIn = &toFirstParenthesis, .placeOf = &standardPlace};

std::u16string znt::withSoundExtension(std::u16string name)
{
    if (!contains(name, soundExtension))
        name += soundExtension;
    return name;
}
