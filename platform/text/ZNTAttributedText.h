#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A device colour, 0 to 255 a channel; alpha 0 is fully transparent.
struct ZNTColour {
    std::uint8_t red = 0, green = 0, blue = 0, alpha = 255;
    friend bool operator==(const ZNTColour&, const ZNTColour&) = default;
};

/// The platform's named colours.
namespace znt::colours
{
inline constexpr ZNTColour red{255, 0, 0}, green{0, 255, 0}, yellow{255, 255, 0}, blue{0, 0, 255},
    magenta{255, 0, 255}, cyan{0, 255, 255}, black{0, 0, 0}, white{255, 255, 255}, clear{0, 0, 0, 0};
/// The bright ones of a terminal. They are lighter than the pure colours, so that they differ from them.
inline constexpr ZNTColour brightBlack{127, 127, 127}, brightRed{255, 128, 128}, brightGreen{128, 255, 128},
    brightYellow{255, 255, 128}, brightBlue{128, 128, 255}, brightMagenta{255, 128, 255},
    brightCyan{128, 255, 255};
} // namespace znt::colours

/// A font by the name that the text asks for and its size in points. A view that lacks the name shows its
/// fixed-width font, bold for a name that ends in "-Bold".
struct ZNTFont {
    std::u16string name;
    double size = 12;
    friend bool operator==(const ZNTFont&, const ZNTFont&) = default;
};

/// Further ways to show text. Each is a bit, so that a set stays small.
enum class ZNTTextStyle : std::uint8_t {
    Italic = 1,
    Strike = 2,
    Reverse = 4,
    Faint = 8,
    Conceal = 16,
    Blink = 32
};

enum class ZNTAttributeName : std::uint8_t { Foreground, Background, Font, Underline };

/// What an attribute can hold. Some SGR codes store a bare number where a colour or a font belongs. A view
/// ignores a value of the wrong kind and uses the default.
using ZNTAttributeValue = std::variant<std::monostate, ZNTColour, ZNTFont, int>;

/// The attributes of a stretch of text. An entry that holds nothing is not set.
struct ZNTAttributeSet {
    ZNTAttributeValue foreground, background, font, underline;
    std::uint8_t styles = 0; ///< the bits of ZNTTextStyle

    [[nodiscard]] const ZNTAttributeValue& at(ZNTAttributeName name) const;
    [[nodiscard]] ZNTAttributeValue& at(ZNTAttributeName name);
    friend bool operator==(const ZNTAttributeSet&, const ZNTAttributeSet&) = default;

    /// As they are shown. A value of the wrong kind counts as the default: white on black, no underline.
    /// A transparent background is black. The colours are those before any reversal.
    [[nodiscard]] ZNTColour shownForeground() const;
    [[nodiscard]] ZNTColour shownBackground() const;
    [[nodiscard]] bool isShownBold() const;
    [[nodiscard]] bool isShownUnderlined() const;
    [[nodiscard]] bool has(ZNTTextStyle style) const
    {
        return (styles & static_cast<std::uint8_t>(style)) != 0;
    }
};

/// Text with attributes: one string, and runs sorted by where they start. A run reaches to the next one or
/// the end. Text before the first run has no attributes.
struct ZNTAttributedText {
    struct Run {
        std::uint32_t offset; ///< UTF-16 units from the start of `text`
        std::uint32_t set;    ///< index into `sets`
        friend bool operator==(const Run&, const Run&) = default;
    };

    std::u16string text;
    std::vector<Run> runs;
    std::vector<ZNTAttributeSet> sets;
    bool isSentLine = false; ///< the client shows a line here that it has sent to the game

    [[nodiscard]] bool empty() const { return text.empty(); }
    /// The attributes at `offset`; null if there are none. Logarithmic in the number of runs. For tests.
    [[nodiscard]] const ZNTAttributeSet* attributesAt(std::size_t offset) const;
};
