#pragma once

#include "ZNTAttributedText.h"

#include <optional>
#include <string>
#include <string_view>

/// Turns SGR sequences (ECMA-48: ESC, "[", numbers, "m") into attributes over the text that is left without
/// them. Stateless: each text starts from the defaults, white on black in the standing font.
///
/// Four fixed ICU expressions define what a sequence is. Hand-written scanners match them here, and a
/// randomised test compares the scanners with ICU. A sequence that fits no expression (cursor movement, 256
/// colours, more than three numbers) stays in the text. Linear in the text.
class ZNTColourParser
{
public:
    /// The font and size of text that no sequence changes. None means Menlo at 12.
    void setFont(std::optional<ZNTFont> font) { aNewFont = std::move(font); }

    [[nodiscard]] ZNTAttributedText attributedText(std::u16string text) const;

    /// The value that an SGR code stands for, and the attribute that it is stored under. Some codes store a
    /// plain number where a colour or a font belongs; views ignore it. Codes without a name change nothing.
    [[nodiscard]] ZNTAttributeValue attributeForCode(int code) const;
    [[nodiscard]] static std::optional<ZNTAttributeName> attributeNameForCode(int code);

    enum class Overwrite { No, Yes };
    /// Writes the default foreground, background and font into `set`: all of them, or those that it lacks.
    void setupDefaults(ZNTAttributeSet& set, Overwrite overwrite) const;

private:
    [[nodiscard]] ZNTFont defaultFont() const;

    std::optional<ZNTFont> aNewFont;
};
