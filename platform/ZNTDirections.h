#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// The ways to go. The order is that of ZNTDirections.
enum class ZNTDirection { NorthWest, North, NorthEast, West, East, SouthWest, South, SouthEast, Up, Down };

/// Everything that the client sends, shows and binds for one way to go. A key is written as "Alt+PgUp";
/// "Num+" stands before a key of the numeric keypad.
struct ZNTDirectionRow {
    ZNTDirection direction;
    std::u16string_view word;       ///< what the game gets
    std::string_view name;          ///< in full: "Northwest"
    std::string_view shortName;     ///< on the button
    std::string_view buttonName;    ///< the button's object name
    std::string_view menuTitle;     ///< "&" stands before the letter that picks it
    std::string_view keypadKey;     ///< on the numeric keypad
    std::string_view keypadKeyName; ///< in words, because speech leaves lone signs out
    std::string_view otherKey;      ///< for keyboards without a numeric keypad
    int row, column;                ///< on the compass. Row 3 is below the rose; its column is not read
};

/// In the order in which they are laid out and in which Tab visits them.
inline constexpr auto ZNTDirections = std::to_array<ZNTDirectionRow>({
    {ZNTDirection::NorthWest, u"northwest", "Northwest", "NW", "northWestButton", "No&rthwest", "Num+7", "7",
     "Alt+Home", 0, 0},
    {ZNTDirection::North, u"north", "North", "N", "northButton", "&North", "Num+8", "8", "Alt+Up", 0, 1},
    {ZNTDirection::NorthEast, u"northeast", "Northeast", "NE", "northEastButton", "Nor&theast", "Num+9", "9",
     "Alt+PgUp", 0, 2},
    {ZNTDirection::West, u"west", "West", "W", "westButton", "&West", "Num+4", "4", "Alt+Left", 1, 0},
    {ZNTDirection::East, u"east", "East", "E", "eastButton", "&East", "Num+6", "6", "Alt+Right", 1, 2},
    // The capital W is kept: players' triggers and their games' aliases rest on it.
    {ZNTDirection::SouthWest, u"southWest", "Southwest", "SW", "southWestButton", "S&outhwest", "Num+1", "1",
     "Alt+End", 2, 0},
    {ZNTDirection::South, u"south", "South", "S", "southButton", "&South", "Num+2", "2", "Alt+Down", 2, 1},
    {ZNTDirection::SouthEast, u"southeast", "Southeast", "SE", "southEastButton", "So&utheast", "Num+3", "3",
     "Alt+PgDown", 2, 2},
    {ZNTDirection::Up, u"up", "Up", "Up", "upButton", "U&p", "Num+-", "minus", "Alt+Shift+Up", 3, 0},
    {ZNTDirection::Down, u"down", "Down", "Down", "downButton", "&Down", "Num++", "plus", "Alt+Shift+Down", 3,
     1},
});

namespace znt
{

constexpr const ZNTDirectionRow& rowOf(ZNTDirection direction)
{
    return ZNTDirections[static_cast<std::size_t>(direction)];
}

} // namespace znt
