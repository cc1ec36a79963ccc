#include "ZNTGraphicRendition.h"

#include "ZNTColourTable.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

namespace
{

constexpr std::uint16_t bitOf(ZNTTextStyle style) { return static_cast<std::uint16_t>(style); }

// The styles of an attribute set are the low eight bits of the flags.
constexpr std::uint16_t styleBits = 0xFF, bold = 0x100, underline = 0x200;
constexpr std::uint16_t namedBlack = 0x400; ///< the foreground is the black of SGR 30

/// What an SGR code does to the flags.
struct FlagChange {
    std::uint16_t cleared = 0, set = 0;
};

constexpr std::array<FlagChange, 30> flagChanges = [] {
    using enum ZNTTextStyle;
    std::array<FlagChange, 30> changes{};
    changes[1].set = bold;
    changes[2].set = bitOf(Faint);
    changes[3].set = bitOf(Italic);
    changes[4].set = underline;
    changes[5].set = changes[6].set = bitOf(Blink);
    changes[7].set = bitOf(Reverse);
    changes[8].set = bitOf(Conceal);
    changes[9].set = bitOf(Strike);
    changes[21].set = underline; // a double one, which is shown as one line
    changes[22].cleared = bold | bitOf(Faint);
    changes[23].cleared = bitOf(Italic);
    changes[24].cleared = underline;
    changes[25].cleared = bitOf(Blink);
    changes[27].cleared = bitOf(Reverse);
    changes[28].cleared = bitOf(Conceal);
    changes[29].cleared = bitOf(Strike);
    return changes;
}();

/// The codes that take a colour along, and those that take it back.
enum Code {
    Foreground = 38,
    DefaultForeground = 39,
    Background = 48,
    DefaultBackground = 49,
    UnderlineColour = 58
};
constexpr bool takesColour(int code)
{
    return code == Foreground || code == Background || code == UnderlineColour;
}

/// The kinds of colour behind such a code.
enum ColourKind { Channels = 2, Number = 5 };

constexpr std::size_t argumentsOf(int kind) { return kind == Channels ? 3 : kind == Number ? 1 : 0; }

std::optional<ZNTColour> colourOf(int kind, std::span<const int> arguments)
{
    const bool isComplete = arguments.size() >= argumentsOf(kind);
    const auto fits = [](int value) { return value <= 255; };
    if (!isComplete || !std::all_of(arguments.begin(), arguments.end(), fits))
        return std::nullopt;
    if (kind == Number)
        return znt::colourTable.at(static_cast<std::size_t>(arguments[0]));
    if (kind != Channels)
        return std::nullopt;
    const auto channel = [&](std::size_t index) { return static_cast<std::uint8_t>(arguments[index]); };
    return ZNTColour{channel(0), channel(1), channel(2)};
}

/// Reads the numbers of a sequence one after the other.
class ParameterReader
{
public:
    explicit ParameterReader(std::u16string_view text) : text(text) {}

    /// An empty parameter is 0. Numbers that mean nothing are capped.
    int number()
    {
        int value = 0;
        for (; at < text.size() && (isDigit(text[at]) || text[at] < 0x20); ++at)
            if (isDigit(text[at]))
                value = std::min(value * 10 + (text[at] - u'0'), largest);
        return value;
    }
    bool skip(char16_t wanted)
    {
        const bool isThere = at < text.size() && text[at] == wanted;
        at += isThere ? 1 : 0;
        return isThere;
    }

private:
    static constexpr int largest = 9999;
    static constexpr bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

    std::u16string_view text;
    std::size_t at = 0;
};

/// A parameter's parts, after colons. More than are used are read and left out.
struct Parts {
    std::array<int, 5> values{};
    std::size_t count = 0;

    explicit Parts(ParameterReader& reader)
    {
        for (; reader.skip(u':'); ++count) {
            const int value = reader.number();
            if (count < values.size())
                values[count] = value;
        }
    }
    /// Of a code that takes a colour along: its arguments. With all its parts, a colour of channels has the
    /// number of a colour space before them.
    [[nodiscard]] std::span<const int> arguments() const
    {
        const std::size_t first = values[0] == Channels && count > 4 ? 2 : 1;
        const auto there = std::min(count, values.size());
        const std::size_t wanted = argumentsOf(values[0]);
        return std::span(values).subspan(first, there > first ? std::min(there - first, wanted) : 0);
    }
};

/// The colour that such a code takes along: in its parts, or in the parameters behind it, which are read.
/// Nothing if it is incomplete or out of bounds.
std::optional<ZNTColour> readColour(ParameterReader& reader, const Parts& parts)
{
    if (parts.count != 0)
        return colourOf(parts.values[0], parts.arguments());
    if (!reader.skip(u';'))
        return std::nullopt;
    const int kind = reader.number();
    std::array<int, 3> arguments{};
    std::size_t count = 0;
    while (count < argumentsOf(kind) && reader.skip(u';'))
        arguments.at(count++) = reader.number();
    return colourOf(kind, std::span(arguments).first(count));
}

} // namespace

void ZNTGraphicRendition::select(std::u16string_view parameters)
{
    ParameterReader reader(parameters);
    do {
        const int code = reader.number();
        const Parts parts(reader);
        if (takesColour(code)) {
            if (const auto colour = readColour(reader, parts))
                selectColour(code, *colour);
        } else if (parts.count == 0) {
            selectCode(code);
        } else if (code == 4 && parts.values[0] <= 5) {
            // The line's form: none, single, double, curly, dotted, dashed. All of them are shown as one
            // line.
            selectCode(parts.values[0] == 0 ? 24 : 4);
        }
    } while (reader.skip(u';'));
}

void ZNTGraphicRendition::selectCode(int code)
{
    if (code == 0) {
        *this = {};
    } else if (code > 0 && code < static_cast<int>(flagChanges.size())) {
        const auto& change = flagChanges[static_cast<std::size_t>(code)];
        flags = static_cast<std::uint16_t>((flags & ~change.cleared) | change.set);
    } else if (code == DefaultForeground) {
        selectColour(Foreground, znt::colours::white);
    } else if (code == DefaultBackground) {
        selectColour(Background, znt::colours::black);
    } else if ((code >= 30 && code <= 47) || (code >= 90 && code <= 107)) {
        // Tens 3 and 9 are foregrounds, 4 and 10 backgrounds; the last digit is the colour.
        const int tens = code / 10, digit = code % 10;
        if (digit > 7)
            return;
        const bool isBright = tens >= 9, isForeground = tens == 3 || tens == 9;
        selectColour(isForeground ? Foreground : Background,
                     znt::colourTable.at(static_cast<std::size_t>(digit) + (isBright ? 8 : 0)));
        if (code == 30)
            flags |= namedBlack;
    }
}

void ZNTGraphicRendition::selectColour(int code, ZNTColour colour)
{
    if (code == Background)
        background = colour;
    if (code != Foreground)
        return;
    foreground = colour;
    flags = static_cast<std::uint16_t>(flags & ~namedBlack);
}

std::uint64_t ZNTGraphicRendition::key() const
{
    const auto packed = [](ZNTColour colour) {
        return static_cast<std::uint64_t>(colour.red << 16 | colour.green << 8 | colour.blue);
    };
    return packed(foreground) << 40 | packed(background) << 16 | flags;
}

ZNTAttributeSet ZNTGraphicRendition::attributes(const ZNTFont& standing) const
{
    constexpr std::u16string_view boldEnding = u"-Bold";
    ZNTAttributeSet set;
    const bool isHidden = (flags & namedBlack) != 0 && background == znt::colours::black;
    set.foreground = isHidden ? znt::colours::brightBlack : foreground;
    set.background = background;
    auto& font = set.font.emplace<ZNTFont>(standing);
    if ((flags & bold) != 0 && !font.name.ends_with(boldEnding))
        font.name += boldEnding;
    if ((flags & underline) != 0)
        set.underline = 1;
    set.styles = static_cast<std::uint8_t>(flags & styleBits);
    return set;
}
