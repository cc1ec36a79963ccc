#pragma once

#include "ZNTRecords.h"

#include <cstddef>
#include <optional>
#include <string>

class ZNTDatabaseHelper;

namespace znt::exchange
{

struct Counts {
    std::size_t triggers = 0, macros = 0;
    std::size_t groups = 0; ///< those that the macros are in, and those without macros
    std::size_t games = 0;

    [[nodiscard]] bool isNothing() const { return triggers + macros + groups + games == 0; }
};

struct Imported {
    Counts added, alreadyThere;
    std::vector<ZNTTrigger> triggers; ///< those that were added
    std::u16string newDefault;        ///< the name of the game that has become the default one
};

/// Adds `records` to the store in one transaction, by the store's own inserts. None, and nothing has changed,
/// if the store could not be read or written.
///
/// Nothing that is stored is taken away or changed. A record that is already there is not added again: a
/// trigger with the same texts, sound and speech, whether it is active or not; a macro with the same name and
/// text in the group of that name; a game with the same name, address and port. Macros go into the group
/// that has the name of theirs. The player's own default game stays the default; if there is none, the
/// file's becomes it.
std::optional<Imported> addToStore(ZNTDatabaseHelper& database, const ZNTRecords& records);

} // namespace znt::exchange
