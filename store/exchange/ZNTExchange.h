#pragma once

#include "ZNTTrigger.h"

#include <string>
#include <vector>

class ZNTDatabaseHelper;

/// Puts a player's triggers, macros and games into a file, and adds those of such a file to the store. Both
/// answer with sentences for the player, which say how many records it were, or why nothing has changed.
class ZNTExchange
{
public:
    struct Answer {
        bool hasSucceeded;
        std::u16string words;
        std::vector<ZNTTrigger> newTriggers = {}; ///< that an import has stored
    };
    enum class Overwrite { ExportsOnly, AnyFile };

    /// `database` outlives this.
    explicit ZNTExchange(ZNTDatabaseHelper& database) : database(database) {}

    /// Writes the file in one step; the player alone may read it. A path is UTF-8. If something stands there,
    /// `overwrite` says what may be replaced; only regular files ever are.
    Answer exportTo(const std::string& path, Overwrite overwrite);

    /// Checks the whole file before it stores anything. A wrong file changes nothing. New triggers take
    /// effect when the session reloads its triggers.
    Answer importFrom(const std::string& path);

private:
    ZNTDatabaseHelper& database;
};
