#include "ZNTMudMacroTableViewController.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTShownRows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{
constexpr std::string_view macroAddedName = "MACRO_ADDED", macroRemovedName = "MACRO_REMOVED";
} // namespace

ZNTMudMacroTableViewController::ZNTMudMacroTableViewController(
    const ZNTPlatform& platform, ZNTDatabaseHelper& database,
    ZNTMacroGroupDropDownController& dropDownController, ZNTTableView& macroTable)
    : ZNTStoredMacros(database),
      platform(platform),
      dropDownController(dropDownController),
      macroTable(macroTable)
{
    const auto reload = [this](std::string_view name, const void*) { loadAllMacros(name); };
    macroAdded = platform.notifications.observe(std::string(macroAddedName), reload);
    macroRemoved = platform.notifications.observe(std::string(macroRemovedName), reload);
    groupChanged = dropDownController.observeCurrentValueInComboBox([this] {
        macros.clear();
        loadMacrosForMacroGroup();
        this->macroTable.reloadData();
    });
}

std::optional<ZNTMacro> ZNTMudMacroTableViewController::getMacroAtIndex(long index) const
{
    return index >= 0 && index < countOfMacros() ? std::optional(macros[static_cast<std::size_t>(index)])
                                                 : std::nullopt;
}

std::u16string ZNTMudMacroTableViewController::tableViewToolTipForRow(long row) const
{
    const auto macro = getMacroAtIndex(row);
    return std::u16string(macro ? znt::unsavedSentence(*macro) : u"");
}

void ZNTMudMacroTableViewController::addMacroToList(ZNTMacro macro)
{
    macros.push_back(std::move(macro));
    macroTable.reloadData();
}

void ZNTMudMacroTableViewController::updateMacroInList(ZNTMacro macro, long indexOfObject)
{
    if (indexOfObject < 0 || indexOfObject >= countOfMacros())
        return;
    macros[static_cast<std::size_t>(indexOfObject)] = std::move(macro);
    macroTable.reloadData();
}

void ZNTMudMacroTableViewController::setNewList(std::vector<ZNTMacro> newMacros)
{
    macros = std::move(newMacros);
    macroTable.reloadData();
}

void ZNTMudMacroTableViewController::clearMacroList() { setNewList({}); }

void ZNTMudMacroTableViewController::loadMacrosForMacroGroup()
{
    const auto* group = dropDownController.getCurrentMacroGroup();
    if (!group)
        return;
    auto read = database.getAllMacrosFromDatabaseByMacroGroupId(group->oid);
    // Macros whose insert failed cannot be read again; without this the player would never see them.
    std::copy_if(macros.begin(), macros.end(), std::back_inserter(read),
                 [group](const ZNTMacro& macro) { return macro.isUnsaved && macro.groupOid == group->oid; });
    setNewList(std::move(read));
}

void ZNTMudMacroTableViewController::loadAllMacros(std::string_view notification)
{
    if (notification == macroAddedName || notification == macroRemovedName)
        loadMacrosForMacroGroup();
}

void ZNTMudMacroTableViewController::removeItem()
{
    const long row = macroTable.selectedRow();
    macroTable.abortEditing();
    const auto macro = getMacroAtIndex(row);
    if (!macro)
        return;
    znt::deleteShownRow(database, *macro);
    macros.erase(macros.begin() + row);
    platform.notifications.post(macroRemovedName, this);
    macroTable.reloadData();
}

std::optional<ZNTMacro> ZNTMudMacroTableViewController::getMacroByName(std::u16string_view name)
{
    return database.getMacroFromDatabaseByName(name);
}

std::optional<std::u16string> ZNTMudMacroTableViewController::textOfMacroAtIndex(long index) const
{
    const auto macro = getMacroAtIndex(index);
    return macro ? std::optional(macro->dataToExecute) : std::nullopt;
}
