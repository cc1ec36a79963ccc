#pragma once

#include <string>

class ZNTDatabase;

/// Whether a player's database can be used.
struct ZNTStoreHealth {
    enum class State {
        Usable,
        Broken,    ///< a table is missing, or the file is no database
        Locked,    ///< by another program, for longer than the wait's patience
        Unreadable ///< for a reason outside the file, such as its mode
    };
    State state = State::Usable;
    std::string reason; ///< of Unreadable; a sentence of SQLite's

    enum class Look { AtTheTables, AtEveryPage };
    static ZNTStoreHealth of(ZNTDatabase& database, Look look);
};
