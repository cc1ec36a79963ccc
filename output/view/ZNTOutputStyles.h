#pragma once

#include "ZNTAttributedText.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

/// How a stretch of text is shown. `font` is the number that the store gave to its family and size. The
/// colours are those on the screen: after reversal, half as strong for faint text, and the background twice
/// for concealed text. Text that blinks in a terminal is bold here, because flashing text disturbs.
struct ZNTOutputStyle {
    ZNTColour foreground = znt::colours::white;
    ZNTColour background = znt::colours::black;
    bool isBold = false;
    bool isUnderlined = false;
    std::uint16_t font = 0;
    bool isItalic = false;
    bool isStruck = false;
    bool isConcealed = false; ///< stays so whatever is done to its colours
    bool isSentLine = false;  ///< a line that the client sent; it looks as its colours say
    friend bool operator==(const ZNTOutputStyle&, const ZNTOutputStyle&) = default;
};

/// Numbers for the looks of text, so that a look takes two bytes wherever it is used. Numbers are never taken
/// back. Number 0 is text without attributes in the font that was the default first.
class ZNTOutputStyles
{
public:
    using StyleNumber = std::uint16_t;
    using FontNumber = std::uint16_t;

    static constexpr std::size_t mostFonts =
        1000; ///< a player's; text in any further one looks like the first

    ZNTOutputStyles();

    /// The font of text that names none. 12 points of Menlo until set.
    void setDefaultFont(const ZNTFont& font);
    [[nodiscard]] FontNumber defaultFont() const { return defaultFont_; }
    /// By number; families without "-Bold".
    [[nodiscard]] const std::vector<ZNTFont>& fonts() const { return fonts_; }

    /// Text without attributes.
    [[nodiscard]] StyleNumber plain() const { return plain_; }
    /// Games use a few hundred styles at most. Past 49,152 further ones have one of eight colours. If even
    /// those are more than can be numbered, the rest look like plain text.
    StyleNumber numberFor(const ZNTAttributeSet& attributes, bool isSentLine);
    [[nodiscard]] const ZNTOutputStyle& operator[](StyleNumber number) const { return styles[number]; }

private:
    FontNumber numberOfFont(const ZNTFont& font);

    std::vector<ZNTFont> fonts_{{u"Menlo", 12}};
    FontNumber defaultFont_ = 0;
    StyleNumber plain_ = 0;
    std::vector<ZNTOutputStyle> styles;
    std::map<std::uint64_t, StyleNumber> numbers;
};
