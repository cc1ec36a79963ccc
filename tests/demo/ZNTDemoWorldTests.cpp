#include "ZNTDemoWorld.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>

using namespace znt::demo;

namespace
{

using Place = std::array<int, 3>; // east, north, up

constexpr Place steps[directionCount] = {{0, 1, 0},  {0, -1, 0}, {1, 0, 0},   {-1, 0, 0}, {1, 1, 0},
                                         {-1, 1, 0}, {1, -1, 0}, {-1, -1, 0}, {0, 0, 1},  {0, 0, -1}};

Place moved(Place from, ZNTDemoDirection direction)
{
    const auto& step = steps[static_cast<std::size_t>(direction)];
    return {from[0] + step[0], from[1] + step[1], from[2] + step[2]};
}

void layOut(ZNTDemoRoom room, Place at, std::map<ZNTDemoRoom, Place>& places,
            std::set<ZNTDemoDirection>& used)
{
    if (const auto known = places.find(room); known != places.end()) {
        EXPECT_EQ(known->second, at) << "room " << static_cast<int>(room) << " lies in two places";
        return;
    }
    places[room] = at;
    for (const auto direction : allDirections)
        if (const auto next = roomInDirection(room, direction)) {
            used.insert(direction);
            layOut(*next, moved(at, direction), places, used);
        }
}

} // namespace

TEST(DemoWorld, LiesOnAGridThatAPlayerCanMapAndWalkBack)
{
    std::map<ZNTDemoRoom, Place> places;
    std::set<ZNTDemoDirection> used;
    layOut(firstRoom, {0, 0, 0}, places, used);
    EXPECT_EQ(places.size(), roomCount) << "a room cannot be reached";
    EXPECT_EQ(used.size(), directionCount) << "a direction is never needed";
    std::set<Place> distinct;
    for (const auto& [room, place] : places)
        distinct.insert(place);
    EXPECT_EQ(distinct.size(), roomCount) << "two rooms lie in one place";
}

TEST(DemoWorld, BobNeverWalksThroughAWall)
{
    const auto walk = walkOfBob();
    for (std::size_t i = 0; i < walk.size(); ++i)
        EXPECT_TRUE(directionBetween(walk[i], walk[(i + 1) % walk.size()])) << "step " << i;
}
