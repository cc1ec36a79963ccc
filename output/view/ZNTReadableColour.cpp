#include "ZNTReadableColour.h"

#include <algorithm>
#include <cmath>

namespace
{

double linear(std::uint8_t channel)
{
    const double value = channel / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(ZNTColour colour)
{
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

ZNTColour mixed(ZNTColour from, ZNTColour to, double part)
{
    const auto channel = [part](std::uint8_t a, std::uint8_t b) {
        return static_cast<std::uint8_t>(std::lround(a + (b - a) * part));
    };
    return {channel(from.red, to.red), channel(from.green, to.green), channel(from.blue, to.blue), 255};
}

constexpr int steps = 50; // from a colour to white or black

} // namespace

double znt::contrastRatio(ZNTColour a, ZNTColour b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

znt::ColourPair znt::readable(ColourPair pair)
{
    if (contrastRatio(pair.foreground, pair.background) >= readableContrast)
        return pair;
    const auto given = pair;
    for (int step = 1; contrastRatio(colours::white, pair.background) < readableContrast; ++step)
        pair.background = mixed(given.background, colours::black, static_cast<double>(step) / steps);
    for (int step = 1; contrastRatio(pair.foreground, pair.background) < readableContrast; ++step)
        pair.foreground = mixed(given.foreground, colours::white, static_cast<double>(step) / steps);
    return pair;
}
