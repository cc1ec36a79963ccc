#pragma once

#include "ZNTAttributedText.h"

#include <cstdint>
#include <string_view>

/// How text is shown, as SGR sequences have chosen it so far (ECMA-48, 8.3.117; ISO 8613-6 and xterm's
/// ctlseqs for colours by number and by channel). It begins with white on black.
///
/// Bold does not change the colour. Black that a game chose as one of the eight colours is shown as bright
/// black where the background is black, because games write text with it (as a rule in bold, for dark grey),
/// which nobody could read. Black chosen by number or by channels is exact: pictures are drawn with it.
class ZNTGraphicRendition
{
public:
    /// Carries out one sequence: what stands between its "[" and its "m". Linear in it. What it cannot
    /// understand changes nothing.
    void select(std::u16string_view parameters);

    /// Equal for equal looks.
    [[nodiscard]] std::uint64_t key() const;
    /// `standing` is the font of text that no sequence changes. Bold text has it with "-Bold" behind its
    /// name.
    [[nodiscard]] ZNTAttributeSet attributes(const ZNTFont& standing) const;

    friend bool operator==(const ZNTGraphicRendition&, const ZNTGraphicRendition&) = default;

private:
    void selectCode(int code);
    void selectColour(int code, ZNTColour colour);

    ZNTColour foreground = znt::colours::white;
    ZNTColour background = znt::colours::black;
    std::uint16_t flags = 0;
};
