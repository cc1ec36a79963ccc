#pragma once

#include <string>

class ZNTDatabase;

/// What can be said of a player's database by looking at it.
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
