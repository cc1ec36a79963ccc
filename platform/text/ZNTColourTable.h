#pragma once

#include "ZNTAttributedText.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// The colours that a game chooses by number.
namespace znt
{

inline constexpr std::size_t namedColours =
    16; ///< the first ones of the table: eight colours, then bright ones

/// By the number of SGR 38;5;n. The named colours are our own choice, as every terminal makes one. The others
/// are those of xterm (its 256colres.h): a cube of six steps a channel from number 16 on, red the slowest,
/// and 24 greys from number 232 on.
inline constexpr std::array<ZNTColour, 256> colourTable = [] {
    using namespace colours;
    std::array<ZNTColour, 256> table{
        black,       red,       green,       yellow,       blue,       magenta,       cyan,       white,
        brightBlack, brightRed, brightGreen, brightYellow, brightBlue, brightMagenta, brightCyan, white};
    constexpr std::array<std::uint8_t, 6> steps{0, 95, 135, 175, 215, 255};
    std::size_t next = namedColours;
    for (const auto redStep : steps)
        for (const auto greenStep : steps)
            for (const auto blueStep : steps)
                table[next++] = {redStep, greenStep, blueStep};
    for (std::uint8_t grey = 8; next < table.size(); grey += 10)
        table[next++] = {grey, grey, grey};
    return table;
}();

/// The number of the table's colour that differs least from `colour`, of the numbers from `first` to before
/// `end`. The first of equals.
std::size_t nearestColour(ZNTColour colour, std::size_t first, std::size_t end);

} // namespace znt
