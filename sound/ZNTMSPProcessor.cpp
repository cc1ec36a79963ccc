#include "ZNTMSPProcessor.h"

#include "ZNTSoundName.h"
#include "ZNTText.h"

#include <algorithm>
#include <limits>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <utility>

namespace
{

const std::u16string wordPattern = uR"(!!\w+)", filePattern = uR"(\([^\s]+)", volumePattern = uR"(V=[^\s]+)",
                     loopsPattern = uR"(L=[^\s]+)", priorityPattern = uR"(P=[^\s]+)",
                     continuePattern = uR"(C=[^\s]+)", typePattern = uR"(T=[^\s]+)",
                     urlPattern = uR"(U=[^\s]+)";
constexpr std::u16string_view soundWord = u"!!SOUND";

ZNTError tagError(std::string description) { return {"ZNTMSPProcessor", 1, std::move(description)}; }

/// UTF-16 units. Linux has no longer file names and paths, but a game may send megabytes.
constexpr std::size_t longestFileName = 255, longestPath = 4'096;

/// A parameter that is absent or no number counts as 0.
std::int32_t number(const ZNTSound::Parameter& parameter)
{
    return parameter ? znt::integerValue(*parameter) : 0;
}

std::int32_t sumWithinRange(std::int32_t a, std::int32_t b)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(std::int64_t{a} + b, Limits::min(), Limits::max()));
}

} // namespace

/// Sounds hold this object weakly. A notice that comes after the processor's end finds it gone.
class ZNTMSPProcessor::Delegate final : public ZNTSoundDelegate
{
public:
    explicit Delegate(ZNTMSPProcessor& processor) : processor(processor) {}
    void soundDidFinishPlaying(ZNTSoundObject& sound, bool finished) override
    {
        processor.soundDidFinishPlaying(sound, finished);
    }
    void soundWasFetched(bool isSound, bool isLoaded) { processor.fetched(isSound, isLoaded); }

private:
    ZNTMSPProcessor& processor;
};

ZNTMSPProcessor::ZNTMSPProcessor(const ZNTFilePlaces& places, ZNTSoundFactory& sounds)
    : folder(places),
      folderPath(znt::textFromUtf8(folder.path())),
      sounds(sounds),
      delegate(std::make_shared<Delegate>(*this))
{
}

ZNTMSPProcessor::~ZNTMSPProcessor() = default;

ZNTResult<void> ZNTMSPProcessor::processSound(std::u16string_view tag)
{
    auto asked = requestFromTag(tag);
    if (!asked)
        return asked.error();
    auto request = std::move(asked).value();
    auto& channel = request.isSound ? _sounds_ : _music_;
    if (request.isStop) {
        giveUpFetch(request.isSound);
        if (channel)
            channel->stop();
        return {};
    }

    const auto sound = soundForRequest(request);
    if (!channel)
        channel = sound;
    if (sound && request.sound->_vParam())
        sound->setVolume(znt::floatValue(*request.sound->_vParam()) / 100);
    if (sound && !sound->isLoaded())
        fetch(std::move(request), sound);
    else
        begin(request, sound);
    return {};
}

void ZNTMSPProcessor::fetch(Request request, const std::shared_ptr<ZNTSoundObject>& sound)
{
    const bool isSound = request.isSound;
    auto& underWay = isSound ? soundFetch : musicFetch;
    const auto rank = number(request.sound->_pParam());
    if (isOutranked(request) || (underWay && rank <= number(underWay->request.sound->_pParam())))
        return;
    giveUpFetch(isSound);
    underWay = {std::move(request), sound};
    sound->load([weak = std::weak_ptr(delegate), isSound](bool isLoaded) {
        if (const auto listener = weak.lock())
            listener->soundWasFetched(isSound, isLoaded);
    });
}

void ZNTMSPProcessor::fetched(bool isSound, bool isLoaded)
{
    // The request is measured now, as if its tag had just come: a sound that began meanwhile may outrank it.
    const auto arrived = *std::exchange(isSound ? soundFetch : musicFetch, {});
    begin(arrived.request, isLoaded ? arrived.sound : nullptr);
}

void ZNTMSPProcessor::giveUpFetch(bool isSound)
{
    if (const auto given = std::exchange(isSound ? soundFetch : musicFetch, {}))
        given->sound->stop();
}

void ZNTMSPProcessor::begin(const Request& request, const std::shared_ptr<ZNTSoundObject>& sound)
{
    if (!makeWayFor(request))
        return;
    const auto& underWay = request.isSound ? soundFetch : musicFetch;
    if (underWay && number(underWay->request.sound->_pParam()) <= number(request.sound->_pParam()))
        giveUpFetch(request.isSound);
    _zntSound_ = request.sound;
    (request.isSound ? _sounds_ : _music_) = sound;
    startPlaying(request, sound.get());
}

ZNTResult<ZNTMSPProcessor::Request> ZNTMSPProcessor::requestFromTag(std::u16string_view found)
{
    const auto tag = reading->tagIn(found);
    Request request;
    request.isSound = isSound(tag);
    request.sound = std::make_shared<ZNTSound>();
    auto file = removeCrapData(processCommand(tag, filePattern, 1));
    if (!file)
        return file.error();
    if (auto read = readParameters(tag, *request.sound); !read)
        return read.error();
    auto url = removeCrapData(processCommand(tag, urlPattern, 2));
    if (!url)
        return url.error();
    if (!file.value())
        return tagError("The tag names no file.");

    auto read =
        reading->placeOf({*std::move(file).value(), request.sound->_tParam(), std::move(url).value()});
    if (!read)
        return read.error();
    auto place = std::move(read).value();
    request.isStop = place.isStop;
    if (request.isStop)
        return request;
    request.sound->set_uParam(std::move(place.url));
    request.sound->set_fName(folderPath + znt::withSoundExtension(place.file));
    request.file = std::move(place.file);
    return request;
}

ZNTResult<void> ZNTMSPProcessor::readParameters(std::u16string_view tag, ZNTSound& sound)
{
    using Setter = void (ZNTSound::*)(ZNTSound::Parameter);
    const std::pair<const std::u16string&, Setter> parameters[] = {{volumePattern, &ZNTSound::set_vParam},
                                                                   {loopsPattern, &ZNTSound::set_lParam},
                                                                   {priorityPattern, &ZNTSound::set_pParam},
                                                                   {continuePattern, &ZNTSound::set_cParam},
                                                                   {typePattern, &ZNTSound::set_tParam}};
    for (const auto& [pattern, set] : parameters) {
        auto value = removeCrapData(processCommand(tag, pattern, 2));
        if (!value)
            return value.error();
        (sound.*set)(std::move(value).value());
    }
    return {};
}

std::shared_ptr<ZNTSoundObject> ZNTMSPProcessor::soundForRequest(const Request& request)
{
    const std::u16string_view file = request.file;
    const auto slash = file.rfind(u'/');
    if (slash <= longestPath && file.size() - slash - 1 <= longestFileName) {
        const auto name = file.substr(slash + 1);
        const auto directory = folder.path() + znt::utf8FromText(file.substr(0, slash));
        const bool hasWildcard = file.find_first_of(u"*?") != file.npos;
        const auto entries =
            hasWildcard ? findFilesWithAWildcard(name, directory) : findMatchingFile(name, directory);
        const auto found = std::find_if(entries.begin(), entries.end(), [&](const std::string& entry) {
            return folder.isInside(directory + "/" + entry);
        });
        if (found != entries.end()) {
            auto opened = folder.openFile(directory + "/" + *found);
            if (!opened)
                return {};
            return request.isSound ? sounds.soundFromFile(std::move(*opened))
                                   : sounds.musicFromFile(std::move(*opened));
        }
    }
    if (request.sound->_uParam())
        return sounds.soundFromUrl(znt::utf8FromText(*request.sound->_uParam()));
    return {};
}

bool ZNTMSPProcessor::isOutranked(const Request& request) const
{
    const auto& playing = request.isSound ? _sounds_ : _music_;
    const auto& older = request.isSound ? _zntSound_ : _zntMusic_;
    return playing && playing->isPlaying() &&
           number(request.sound->_pParam()) <= (older ? number(older->_pParam()) : 0);
}

bool ZNTMSPProcessor::makeWayFor(const Request& request)
{
    if (isOutranked(request))
        return false;
    const auto& playing = request.isSound ? _sounds_ : _music_;
    const auto& older = request.isSound ? _zntSound_ : _zntMusic_;
    if (!playing || !playing->isPlaying())
        return true;
    (request.isSound ? _soundStopped : _musicStopped) = true;
    playing->stop();
    if (request.isSound && older)
        _currentSoundCounter = sumWithinRange(_currentSoundCounter, number(older->_lParam()));
    return true;
}

void ZNTMSPProcessor::startPlaying(const Request& request, ZNTSoundObject* sound)
{
    const auto& loops = request.sound->_lParam();
    const auto& continues = request.sound->_cParam();
    const auto rounds = number(loops);
    if (continues && number(continues) == 0)
        _currentSoundCounter = 0;
    if (loops && rounds > 0 && !continues)
        (request.isSound ? _currentSoundCounter : _currentMusicCounter) = 0;
    if (sound == nullptr)
        return;

    if (loops && rounds > 0) {
        playRepeatedly(*sound, u"sound" + znt::decimalText(random()) + u"l");
        return;
    }
    const bool isForEver = loops && rounds == -1;
    if (!loops || isForEver || !request.isSound)
        sound->setCurrentTime(0);
    if (isForEver)
        sound->setLoops(true);
    if (isForEver && !request.isSound) {
        sound->setName(u"infinateLoop");
        sound->setDelegate(delegate);
    }
    sound->play();
}

void ZNTMSPProcessor::playRepeatedly(ZNTSoundObject& sound, std::u16string name)
{
    sound.setName(std::move(name));
    sound.setCurrentTime(0);
    sound.setDelegate(delegate);
    sound.play();
}

void ZNTMSPProcessor::soundDidFinishPlaying(ZNTSoundObject& sound, bool /*finished*/)
{
    // Counted music is named like counted sounds, and so counts on the sound channel.
    const bool countsAsSound = znt::contains(sound.name(), u"sound");
    auto& wasStopped = countsAsSound ? _soundStopped : _musicStopped;
    auto& counter = countsAsSound ? _currentSoundCounter : _currentMusicCounter;
    const auto& request = countsAsSound ? _zntSound_ : _zntMusic_;
    if (wasStopped) {
        wasStopped = false;
        return;
    }
    if (counter >= (request ? number(request->_lParam()) : 0))
        return;
    ++counter;
    sound.setDelegate(delegate);
    sound.setCurrentTime(0);
    sound.play();
}

void ZNTMSPProcessor::playTriggerSound(std::u16string_view fileName)
{
    auto file = folder.openFile(folder.tildeExpanded(folder.path() + znt::utf8FromText(fileName)));
    if (!file)
        return;
    if (const auto sound = sounds.soundFromFile(std::move(*file)))
        sound->play();
}

void ZNTMSPProcessor::stopAllSounds()
{
    // The sounds know the old delegate only, so the notices of these stops are lost and nothing repeats. The
    // flags of stops by priority must be cleared here, because no notice will clear them.
    delegate = std::make_shared<Delegate>(*this);
    _soundStopped = _musicStopped = false;
    soundFetch = musicFetch = {};
    sounds.stopAll();
}

bool ZNTMSPProcessor::isSound(std::u16string_view tag)
{
    const auto word = patterns.firstMatch(wordPattern, tag);
    if (!word)
        return true;
    UErrorCode status = U_ZERO_ERROR;
    return u_strCaseCompare(word->data(), static_cast<std::int32_t>(word->size()), soundWord.data(),
                            static_cast<std::int32_t>(soundWord.size()), U_FOLD_CASE_DEFAULT, &status) == 0;
}

std::optional<std::u16string> ZNTMSPProcessor::processCommand(std::u16string_view tag,
                                                              const std::u16string& commandString,
                                                              std::size_t remove)
{
    const auto match = patterns.lastMatch(commandString, tag);
    if (!match)
        return {};
    return std::u16string(match->substr(std::min(remove, match->size())));
}

ZNTResult<std::optional<std::u16string>> ZNTMSPProcessor::removeCrapData(std::optional<std::u16string> text)
{
    if (!text)
        return text;
    if (text->starts_with(u'"') || text->starts_with(u'\''))
        text = text->size() > 2 ? text->substr(1, text->size() - 2) : u"";
    if (text->empty())
        return tagError("A parameter has no value.");
    return text;
}

std::vector<std::string> ZNTMSPProcessor::findMatchingFile(std::u16string_view name,
                                                           const std::string& path) const
{
    const auto wanted = znt::foldedSoundName(name);
    return folder.entries(path, [&](std::string_view entry) {
        return znt::foldedSoundName(znt::textFromUtf8(entry)) == wanted;
    });
}

std::vector<std::string> ZNTMSPProcessor::findFilesWithAWildcard(std::u16string_view pattern,
                                                                 const std::string& path) const
{
    const auto wanted = znt::foldedSoundName(pattern);
    return folder.entries(path, [&](std::string_view entry) {
        return znt::soundNameFits(znt::foldedSoundName(znt::textFromUtf8(entry)), wanted);
    });
}

std::shared_ptr<ZNTSoundObject>
ZNTMSPProcessor::getSoundFromSoundFileArray(const std::vector<std::u16string>& names)
{
    if (names.empty())
        return {};
    auto file = folder.openFile(folder.path() +
                                znt::utf8FromText(znt::withSoundExtension(names[random() % names.size()])));
    return file ? sounds.soundFromFile(std::move(*file)) : nullptr;
}
