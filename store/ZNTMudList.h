#pragma once

#include <cstdint>
#include <string>

/// One game of the address book.
struct ZNTMudList {
    std::int64_t oid = 0; ///< row key; 0 until stored
    std::u16string name;
    std::u16string url;       ///< the game's web page
    std::u16string telnetURL; ///< host name or address
    std::int64_t port = 0;
    bool defaultConnection = false; ///< fills the connection fields at start
    bool active = true;             ///< cleared when the game is marked as not available
    bool userCreated = true;        ///< false only as shipped and never saved since
    bool displayToUser = true;      ///< false when the player has hidden it
    bool isUnsaved = false;         ///< its insert failed; the key belongs to another row
};
