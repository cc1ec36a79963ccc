#pragma once

#include <cstdint>
#include <string>

/// A named text that is sent to the game when the player runs it by name.
struct ZNTMacro {
    std::int64_t oid = 0; ///< row key; 0 until stored
    std::int64_t groupOid = 0;
    std::u16string name; ///< not unique, neither within a group nor across groups
    std::u16string dataToExecute;
    bool isUnsaved = false; ///< its insert failed; the key belongs to another row
};
