#pragma once

#include "ZNTMacro.h"
#include "ZNTMacroSource.h"
#include "ZNTPlatform.h"
#include "ZNTScreenElements.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class ZNTDatabaseHelper;
class ZNTMacroGroupDropDownController;

/// The macros of the selected group, one row each in a table. Serves the command line too, which finds macros
/// by name in all groups.
class ZNTMudMacroTableViewController final : public ZNTMacroSource
{
public:
    /// All of it outlives this.
    ZNTMudMacroTableViewController(const ZNTPlatform& platform, ZNTDatabaseHelper& database,
                                   ZNTMacroGroupDropDownController& dropDownController,
                                   ZNTTableView& macroTable);

    [[nodiscard]] long countOfMacros() const { return static_cast<long>(macros.size()); }
    /// None for a row that is not there.
    [[nodiscard]] std::optional<ZNTMacro> getMacroAtIndex(long index) const;
    /// -1 when none is selected.
    [[nodiscard]] long getCurrentSelectedMacroIndex() const { return macroTable.selectedRow(); }

    /// What is to be said of the row beside its name; mostly nothing.
    [[nodiscard]] std::u16string tableViewToolTipForRow(long row) const;

    void addMacroToList(ZNTMacro macro);
    /// A row that is not there changes nothing.
    void updateMacroInList(ZNTMacro macro, long indexOfObject);
    void setNewList(std::vector<ZNTMacro> newMacros);
    void clearMacroList();
    /// Reads the current group's macros again; those of its list that are unsaved stay behind them. Without a
    /// current group the list stays as it is.
    void loadMacrosForMacroGroup();
    /// Deletes the selected macro, without a question; without one it does nothing.
    void removeItem();

    [[nodiscard]] std::optional<ZNTMacro> getMacroByName(std::u16string_view name);
    [[nodiscard]] std::vector<std::u16string> getAllMacroNames() override;
    [[nodiscard]] std::optional<std::u16string> textOfMacroNamed(std::u16string_view name) override;
    [[nodiscard]] std::optional<std::u16string> textOfMacroAtIndex(long index) const override;

private:
    /// Called for each notification about a macro, with its name.
    void loadAllMacros(std::string_view notification);

    ZNTPlatform platform;
    ZNTDatabaseHelper& database;
    ZNTMacroGroupDropDownController& dropDownController;
    ZNTTableView& macroTable;
    std::vector<ZNTMacro> macros;
    std::unique_ptr<ZNTNotificationCenter::Observation> macroAdded, macroRemoved, groupChanged;
};
