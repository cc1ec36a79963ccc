#pragma once

#include "ZNTMacro.h"
#include "ZNTPlatform.h"
#include "ZNTScreenElements.h"
#include "ZNTStoredMacros.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class ZNTMacroGroupDropDownController;

/// The macros of the selected group, one row each in a table. The command line uses it, too: it finds macros
/// by name in all groups.
class ZNTMudMacroTableViewController final : public ZNTStoredMacros
{
public:
    /// All arguments outlive this.
    ZNTMudMacroTableViewController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                                   ZNTMacroGroupDropDownController& dropDownController,
                                   ZNTTableView& macroTable);

    [[nodiscard]] long countOfMacros() const { return static_cast<long>(macros.size()); }
    /// None for a row that is not there.
    [[nodiscard]] std::optional<ZNTMacro> getMacroAtIndex(long index) const;
    /// -1 when none is selected.
    [[nodiscard]] long getCurrentSelectedMacroIndex() const { return macroTable.selectedRow(); }

    /// The row's tool tip; empty for most rows.
    [[nodiscard]] std::u16string tableViewToolTipForRow(long row) const;

    void addMacroToList(ZNTMacro macro);
    /// If there is no such row, nothing changes.
    void updateMacroInList(ZNTMacro macro, long indexOfObject);
    void setNewList(std::vector<ZNTMacro> newMacros);
    /// Kept as part of the interface: empties the list, but not the store.
    void clearMacroList();
    /// Reads the macros of the current group again. Unsaved macros of the group stay, at the end of the list.
    /// Without a current group the list stays as it is.
    void loadMacrosForMacroGroup();
    /// Deletes the selected macro without a question. If none is selected, it does nothing.
    void removeItem();

    [[nodiscard]] std::optional<ZNTMacro> getMacroByName(std::u16string_view name);
    [[nodiscard]] std::optional<std::u16string> textOfMacroAtIndex(long index) const override;

private:
    /// Called for each notification about a macro, with its name.
    void loadAllMacros(std::string_view notification);

    ZNTPlatform platform;
    ZNTMacroGroupDropDownController& dropDownController;
    ZNTTableView& macroTable;
    std::vector<ZNTMacro> macros;
    std::unique_ptr<ZNTNotificationCenter::Observation> macroAdded, macroRemoved, groupChanged;
};
