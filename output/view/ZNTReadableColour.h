#pragma once

#include "ZNTAttributedText.h"

/// Colours that a player can read.
namespace znt
{

/// The contrast ratio of two colours, 1 to 21 (WCAG 2.1).
double contrastRatio(ZNTColour a, ZNTColour b);

constexpr double readableContrast = 4.5;

struct ColourPair {
    ZNTColour foreground, background;
    friend bool operator==(const ColourPair&, const ColourPair&) = default;
};

/// The same pair if its contrast is `readableContrast` or more. Else the background is darkened until white
/// can be read on it, and then white is mixed into the text until the text can be read. Both keep their hue:
/// pure blue on black, 2.4 to 1, becomes a lighter blue.
ColourPair readable(ColourPair pair);

} // namespace znt
