#include "ZNTDemoWorld.h"

#include <algorithm>

namespace
{

using enum ZNTDemoRoom;
using enum ZNTDemoDirection;

/// Each way stands here once; players walk it in both directions.
struct Way {
    ZNTDemoRoom from;
    ZNTDemoDirection direction;
    ZNTDemoRoom to;
};

constexpr Way ways[] = {
    {Square, North, Harbour},
    {Square, East, Market},
    {Square, West, Library},
    {Square, South, Bridge},
    {Square, NorthEast, LighthouseFoot},
    {Square, NorthWest, Garden},
    {Square, SouthEast, GoblinDitch},
    {Square, SouthWest, Churchyard},
    {Harbour, East, LighthouseFoot},
    {Harbour, West, Garden},
    {Market, North, LighthouseFoot},
    {Market, South, GoblinDitch},
    {Library, North, Garden},
    {Library, South, Churchyard},
    {Library, Up, Gallery},
    {Bridge, East, GoblinDitch},
    {Bridge, West, Churchyard},
    {LighthouseFoot, Up, LanternRoom},
    {Churchyard, Down, Crypt},
    {Crypt, East, Passage},
    {Passage, Up, Bridge},
    {Passage, NorthEast, Cellar},
    {Cellar, Up, Market},
};

constexpr ZNTDemoRoom bobsWalk[] = {Square, Harbour, LighthouseFoot, Market};

ZNTDemoDirection opposite(ZNTDemoDirection direction)
{
    switch (direction) {
    case North:
        return South;
    case South:
        return North;
    case East:
        return West;
    case West:
        return East;
    case NorthEast:
        return SouthWest;
    case NorthWest:
        return SouthEast;
    case SouthEast:
        return NorthWest;
    case SouthWest:
        return NorthEast;
    case Up:
        return Down;
    case Down:
        break;
    }
    return Up;
}

} // namespace

namespace znt::demo
{

std::optional<ZNTDemoRoom> roomInDirection(ZNTDemoRoom from, ZNTDemoDirection direction)
{
    for (const auto& way : ways) {
        if (way.from == from && way.direction == direction)
            return way.to;
        if (way.to == from && way.direction == opposite(direction))
            return way.from;
    }
    return std::nullopt;
}

ZNTDemoRoom homeOfThing(ZNTDemoThing thing)
{
    switch (thing) {
    case ZNTDemoThing::Apple:
        return Market;
    case ZNTDemoThing::Book:
        return Library;
    case ZNTDemoThing::Shell:
        return Harbour;
    case ZNTDemoThing::Lamp:
        return Cellar;
    case ZNTDemoThing::Coin:
        break;
    }
    return GoblinDitch;
}

std::span<const ZNTDemoRoom> walkOfBob() { return bobsWalk; }

std::optional<ZNTDemoDirection> directionBetween(ZNTDemoRoom from, ZNTDemoRoom to)
{
    const auto* found = std::find_if(allDirections.begin(), allDirections.end(),
                                     [&](auto direction) { return roomInDirection(from, direction) == to; });
    if (found == allDirections.end())
        return std::nullopt;
    return *found;
}

} // namespace znt::demo
