#pragma once

#include "ZNTAttributedText.h"

#include <optional>
#include <string>
#include <string_view>

/// Turns SGR sequences (ECMA-48: ESC, "[", numbers, "m") into attributes over the text that is left without
/// them. Stateless: each text starts from the defaults, white on black in the standing font.
///
/// What counts as a sequence is settled by fixed ICU expressions, which hand-written scanners match here; a
/// randomised test holds them to ICU's answers. A sequence that fits none of them (cursor movement, 256
/// colours, more than three numbers) stays in the text. Linear in the text.
class ZNTColourParser
{
public:
    /// What the text is shown in where no sequence says otherwise, and its size; none means Menlo at 12.
    void setFont(std::optional<ZNTFont> font) { aNewFont = std::move(font); }

    [[nodiscard]] ZNTAttributedText attributedText(std::u16string text) const;

    /// The value that an SGR code stands for, and the attribute it is stored under. Some codes store a bare
    /// number where a colour or a font belongs; views ignore it. Codes without a name change nothing.
    [[nodiscard]] ZNTAttributeValue attributeForCode(int code) const;
    [[nodiscard]] static std::optional<ZNTAttributeName> attributeNameForCode(int code);

    enum class Overwrite { No, Yes };
    /// Writes the defaults of foreground, background and font into `set` where it lacks them, or everywhere.
    void setupDefaults(ZNTAttributeSet& set, Overwrite overwrite) const;

private:
    [[nodiscard]] ZNTFont defaultFont() const;

    std::optional<ZNTFont> aNewFont;
};
