#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>

/// The ways out of a room, in the order in which they are listed.
enum class ZNTDemoDirection {
    North,
    South,
    East,
    West,
    NorthEast,
    NorthWest,
    SouthEast,
    SouthWest,
    Up,
    Down
};

enum class ZNTDemoRoom {
    Square,
    Harbour,
    Market,
    Library,
    Bridge,
    LighthouseFoot,
    LanternRoom,
    Garden,
    GoblinDitch,
    Churchyard,
    Crypt,
    Passage,
    Cellar,
    Gallery
};

/// What can be carried. There is one of each; it begins in its home.
enum class ZNTDemoThing { Apple, Book, Shell, Lamp, Coin };

/// The map of the village. It lies on a grid with a step of one room in every direction, so no way crosses
/// another and each way out has a way back.
namespace znt::demo
{

inline constexpr std::size_t directionCount = 10;
inline constexpr std::size_t roomCount = 14;
inline constexpr std::size_t thingCount = 5;

inline constexpr ZNTDemoRoom firstRoom = ZNTDemoRoom::Square;

template <typename Enumeration, std::size_t count>
constexpr std::array<Enumeration, count> allOf()
{
    std::array<Enumeration, count> all{};
    for (std::size_t i = 0; i < count; ++i)
        all[i] = static_cast<Enumeration>(i);
    return all;
}
inline constexpr auto allDirections = allOf<ZNTDemoDirection, directionCount>();
inline constexpr auto allRooms = allOf<ZNTDemoRoom, roomCount>();
inline constexpr auto allThings = allOf<ZNTDemoThing, thingCount>();

/// The room that lies that way, if there is a way.
std::optional<ZNTDemoRoom> roomInDirection(ZNTDemoRoom from, ZNTDemoDirection direction);

ZNTDemoRoom homeOfThing(ZNTDemoThing thing);

/// Where Bob walks, round and round; each step is one way of the map.
std::span<const ZNTDemoRoom> walkOfBob();
/// The way from a room to its neighbour.
std::optional<ZNTDemoDirection> directionBetween(ZNTDemoRoom from, ZNTDemoRoom to);

} // namespace znt::demo
