#include "ZNTOutputStyles.h"

#include "ZNTColourTable.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace
{

constexpr std::size_t mostExactStyles = 0xC000;

static_assert(ZNTOutputStyles::mostFonts <= 1 << 10, "a font's number has ten bits in a key");

/// All of a style in 64 bits: 48 for the colours, 6 for the rest, so that 10 are left for the font.
std::uint64_t keyOf(const ZNTOutputStyle& style)
{
    const auto packed = [](ZNTColour colour) {
        return static_cast<std::uint64_t>(colour.red << 16 | colour.green << 8 | colour.blue);
    };
    std::uint64_t key = style.font;
    key = key << 24 | packed(style.foreground);
    key = key << 24 | packed(style.background);
    for (const bool isOn : {style.isBold, style.isUnderlined, style.isItalic, style.isStruck,
                            style.isConcealed, style.isSentLine})
        key = key << 1 | static_cast<std::uint64_t>(isOn);
    return key;
}

constexpr std::uint8_t halfWay(std::uint8_t from, std::uint8_t to)
{
    return static_cast<std::uint8_t>((from + to) / 2);
}

/// How a set is shown in the font of that number.
ZNTOutputStyle shownStyle(const ZNTAttributeSet& set, std::uint16_t font)
{
    using enum ZNTTextStyle;
    ZNTOutputStyle style{.foreground = set.shownForeground(),
                         .background = set.shownBackground(),
                         .isBold = set.isShownBold() || set.has(Blink),
                         .isUnderlined = set.isShownUnderlined(),
                         .font = font,
                         .isItalic = set.has(Italic),
                         .isStruck = set.has(Strike),
                         .isConcealed = set.has(Conceal)};
    if (set.has(Reverse))
        std::swap(style.foreground, style.background);
    const auto behind = style.background;
    if (set.has(Faint))
        style.foreground = {halfWay(style.foreground.red, behind.red),
                            halfWay(style.foreground.green, behind.green),
                            halfWay(style.foreground.blue, behind.blue)};
    if (style.isConcealed)
        style.foreground = behind;
    return style;
}

/// The same with the nearest of the eight colours. Text stays readable.
ZNTOutputStyle withFewColours(ZNTOutputStyle style)
{
    const auto rounded = [](ZNTColour colour) {
        return znt::colourTable.at(znt::nearestColour(colour, 0, 8));
    };
    const bool isOneColour = style.foreground == style.background;
    style.foreground = rounded(style.foreground);
    style.background = rounded(style.background);
    if (!isOneColour && style.foreground == style.background)
        style.foreground =
            style.background == znt::colours::black ? znt::colours::white : znt::colours::black;
    return style;
}

} // namespace

ZNTOutputStyles::ZNTOutputStyles() { numberFor(ZNTAttributeSet{}, /*isSentLine=*/false); }

void ZNTOutputStyles::setDefaultFont(const ZNTFont& font)
{
    defaultFont_ = numberOfFont(font);
    plain_ = numberFor(ZNTAttributeSet{}, /*isSentLine=*/false);
}

ZNTOutputStyles::FontNumber ZNTOutputStyles::numberOfFont(const ZNTFont& font)
{
    constexpr std::u16string_view boldEnding = u"-Bold";
    ZNTFont plain = font;
    if (plain.name.ends_with(boldEnding))
        plain.name.resize(plain.name.size() - boldEnding.size());
    const auto known = std::find(fonts_.begin(), fonts_.end(), plain);
    if (known == fonts_.end() && fonts_.size() >= mostFonts)
        return 0;
    const auto number = static_cast<FontNumber>(known - fonts_.begin());
    if (known == fonts_.end())
        fonts_.push_back(std::move(plain));
    return number;
}

ZNTOutputStyles::StyleNumber ZNTOutputStyles::numberFor(const ZNTAttributeSet& attributes, bool isSentLine)
{
    const auto* font = std::get_if<ZNTFont>(&attributes.font);
    auto shown = shownStyle(attributes, font ? numberOfFont(*font) : defaultFont_);
    shown.isSentLine = isSentLine;
    if (const auto found = numbers.find(keyOf(shown)); found != numbers.end())
        return found->second;
    if (styles.size() >= mostExactStyles)
        shown = withFewColours(shown);
    const auto key = keyOf(shown);
    if (const auto found = numbers.find(key); found != numbers.end())
        return found->second;
    if (styles.size() + 1 >= std::numeric_limits<StyleNumber>::max())
        return 0;
    const auto number = static_cast<StyleNumber>(styles.size());
    styles.push_back(shown);
    numbers.emplace(key, number);
    return number;
}
