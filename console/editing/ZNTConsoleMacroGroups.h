#pragma once

#include "ZNTMacroGroups.h"

#include <string>
#include <string_view>

class ZNTAlert;
class ZNTConsoleReplies;

/// The command "/group", and the group in use, to which new macros go. Which group is in use is not stored.
class ZNTConsoleMacroGroups
{
public:
    /// All outlive this. An alert says whether a group was made, with the texts that the window has.
    ZNTConsoleMacroGroups(ZNTConsoleReplies& replies, ZNTMacroGroups& groups, ZNTAlert& alert);

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
    ZNTMacroGroups& groups;
    ZNTAlert& alert;
    std::u16string nameInUse;
};
