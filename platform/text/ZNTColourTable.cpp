#include "ZNTColourTable.h"

#include <limits>

std::size_t znt::nearestColour(ZNTColour colour, std::size_t first, std::size_t end)
{
    std::size_t nearest = first;
    int least = std::numeric_limits<int>::max();
    for (std::size_t number = first; number < end; ++number) {
        const auto& candidate = colourTable[number];
        const int red = candidate.red - colour.red, green = candidate.green - colour.green,
                  blue = candidate.blue - colour.blue;
        const int difference = red * red + green * green + blue * blue;
        if (difference < least) {
            least = difference;
            nearest = number;
        }
    }
    return nearest;
}
