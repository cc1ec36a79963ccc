#pragma once

#include "ZNTMacroGroup.h"

#include <cstdint>
#include <string_view>
#include <vector>

class ZNTDatabaseHelper;
class ZNTPlatformLog;

/// The macro groups of the store, in its order. The window's selector and the terminal client's commands both
/// work on this list.
class ZNTMacroGroups
{
public:
    /// A message to the player about what was asked for.
    struct Message {
        std::u16string_view title, text;
    };
    static constexpr Message nameTaken{u"Macro Name taken",
                                       u"You can not name 2 macro groups with the same name."};
    static constexpr Message nameMissing{u"Please input a Macro Group name.",
                                         u"You need to have at least 1 character for a macro name."};
    static constexpr Message created{u"Macro Group Created!.", u"New Macro Grop Added."};

    /// Both outlive this.
    ZNTMacroGroups(ZNTDatabaseHelper& database, ZNTPlatformLog& log);

    [[nodiscard]] const std::vector<ZNTMacroGroup>& all() const { return groups; }
    /// The group with that name; blanks around the name do not count. Null if there is none, and for the
    /// empty text. Valid until the groups change.
    [[nodiscard]] const ZNTMacroGroup* named(std::u16string_view name) const;

    /// Stores a new group and appends it. If the store could not write it, it is appended all the same, the
    /// log gets a line, and the answer is false.
    bool add(std::u16string_view name);
    /// Deletes a group and its macros. Returns whether the store has written that. The list loses the group
    /// in any case.
    bool remove(std::int64_t oid);
    /// Reads the groups from the store again.
    void reload();

private:
    ZNTDatabaseHelper& database;
    ZNTPlatformLog& log;
    std::vector<ZNTMacroGroup> groups;
};
