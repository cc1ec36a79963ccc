#pragma once

#include <cstddef>
#include <cstdint>

/// How many colours a client shows, in rising order.
enum class ZNTDemoColours : std::uint8_t { None, Eight, TwoHundredFiftySix, True };

/// What the village may count on while it writes for one player. The defaults hold for a client that says
/// nothing of itself.
struct ZNTDemoScreen {
    std::size_t columns = 76;
    ZNTDemoColours colours = ZNTDemoColours::Eight;
    bool hasEveryCharacter = false; ///< its text travels in UTF-8
    bool canHideTyping = false;     ///< a password can be asked for
};
