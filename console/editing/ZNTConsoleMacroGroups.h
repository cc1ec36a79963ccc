#pragma once

#include "ZNTMacroGroups.h"

#include <string>
#include <string_view>

class ZNTAlert;
class ZNTConsoleReplies;
class ZNTDatabaseHelper;
class ZNTPlatformLog;

/// The command "/group", and the group in use, to which new macros go. Which group is in use is not stored.
class ZNTConsoleMacroGroups
{
public:
    /// All outlive this. What making a group comes to is shown as an alert, with the texts that the window
    /// has.
    ZNTConsoleMacroGroups(ZNTConsoleReplies& replies, ZNTDatabaseHelper& database, ZNTPlatformLog& log,
                          ZNTAlert& alert);

    /// `words` are those behind "/group".
    void carryOut(std::u16string_view words);

    [[nodiscard]] const std::vector<ZNTMacroGroup>& all() const { return groups.all(); }
    /// The group in use; without one the first group, which then is in use. Null if there are no groups.
    const ZNTMacroGroup* groupForNewMacro();

private:
    void add(std::u16string_view name);
    void list();
    void use(std::u16string_view word);
    void remove(std::u16string_view word);
    [[nodiscard]] const ZNTMacroGroup* current() const { return groups.named(nameInUse); }
    [[nodiscard]] const ZNTMacroGroup* meant(std::u16string_view word);
    void showAlert(const ZNTMacroGroups::Message& message);

    ZNTConsoleReplies& replies;
    ZNTAlert& alert;
    ZNTMacroGroups groups;
    std::u16string nameInUse;
};
