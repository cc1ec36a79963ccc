#include "ZNTAttributedText.h"

#include <algorithm>
#include <utility>

namespace
{

ZNTColour colourOr(const ZNTAttributeValue& value, ZNTColour otherwise)
{
    const auto* colour = std::get_if<ZNTColour>(&value);
    return colour && colour->alpha != 0 ? *colour : otherwise;
}

} // namespace

const ZNTAttributeValue& ZNTAttributeSet::at(ZNTAttributeName name) const
{
    switch (name) {
    case ZNTAttributeName::Foreground:
        return foreground;
    case ZNTAttributeName::Background:
        return background;
    case ZNTAttributeName::Font:
        return font;
    case ZNTAttributeName::Underline:
        break;
    }
    return underline;
}

ZNTAttributeValue& ZNTAttributeSet::at(ZNTAttributeName name)
{
    return const_cast<ZNTAttributeValue&>(std::as_const(*this).at(name));
}

ZNTColour ZNTAttributeSet::shownForeground() const { return colourOr(foreground, znt::colours::white); }

ZNTColour ZNTAttributeSet::shownBackground() const { return colourOr(background, znt::colours::black); }

bool ZNTAttributeSet::isShownBold() const
{
    const auto* shown = std::get_if<ZNTFont>(&font);
    return shown && std::u16string_view(shown->name).ends_with(u"-Bold");
}

bool ZNTAttributeSet::isShownUnderlined() const
{
    const auto* style = std::get_if<int>(&underline);
    return style && *style != 0;
}

const ZNTAttributeSet* ZNTAttributedText::attributesAt(std::size_t offset) const
{
    auto after = std::upper_bound(runs.begin(), runs.end(), offset,
                                  [](std::size_t wanted, const Run& run) { return wanted < run.offset; });
    return after == runs.begin() ? nullptr : &sets[(after - 1)->set];
}
