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

/// The pair as it is where its contrast is `readableContrast` or more. Else the background is darkened as far
/// as white needs to be read on it, and the text then mixed with white as far as it needs itself. Both keep
/// their hue: pure blue on black, 2.4 to 1, becomes a lighter blue.
ColourPair readable(ColourPair pair);

} // namespace znt
