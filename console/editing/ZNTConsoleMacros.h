#pragma once

#include "ZNTMacro.h"

#include <string_view>
#include <vector>

class ZNTConsoleMacroGroups;
class ZNTConsoleReplies;
class ZNTDatabaseHelper;

/// The command "/macro".
class ZNTConsoleMacros
{
public:
    /// All outlive this.
    ZNTConsoleMacros(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database, ZNTConsoleMacroGroups& groups)
        : replies(replies),
          database(database),
          groups(groups)
    {
    }

    /// `words` are those behind "/macro".
    void carryOut(std::u16string_view words);

private:
    void add(std::u16string_view words);
    void list();
    void remove(std::u16string_view word);
    /// Those of all groups, group by group.
    [[nodiscard]] std::vector<ZNTMacro> all();

    ZNTConsoleReplies& replies;
    ZNTDatabaseHelper& database;
    ZNTConsoleMacroGroups& groups;
};
