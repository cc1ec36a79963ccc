#pragma once

#include "ZNTScreenElements.h"
#include "ZNTTrigger.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

class ZNTDatabaseHelper;

/// The trigger editor: a table with a row for each trigger, its columns named after the fields of ZNTTrigger,
/// and a text pane with the selected trigger's pattern and action. Cells, new rows and removals are stored at
/// once, the pane when it is saved. What is stored takes effect when the session reloads its triggers.
///
/// The rows are the triggers that were active when the editor was made. A new one starts inactive, so unless
/// it is switched on it will not be among the rows of the next editor, though it stays stored.
class ZNTTriggersDataSource
{
public:
    using Value = std::variant<std::u16string, std::int64_t, bool>;

    /// All arguments outlive this.
    ZNTTriggersDataSource(ZNTDatabaseHelper& database, ZNTTableView& tableView, ZNTTextArea& triggerTextView);
    /// Asked whether the trigger with that key is too slow and gets little time. Optional.
    std::function<bool(std::int64_t oid)> isTriggerResting;

    // The table's questions
    [[nodiscard]] long numberOfRowsInTableView() const { return countOfDataObjects(); }
    /// An empty text for a row or a column that is not there.
    [[nodiscard]] Value tableViewObjectValueForTableColumn(std::string_view column, long row) const;
    /// The row's tool tip; empty for most rows.
    [[nodiscard]] std::u16string tableViewToolTipForRow(long row) const;
    /// Stores the change at once. If the value is not of the field's kind, or there is no such row or column,
    /// nothing changes. The pane shows the change, unless it holds text that is not saved yet.
    void tableViewSetObjectValue(const Value& value, std::string_view column, long row);
    /// Both fill the pane and allow the selection. Kept as part of the interface: for tables that ask before
    /// they select.
    bool tableViewShouldSelectRow(long row);
    bool tableViewShouldSelectTableColumn(std::string_view column);
    void tableViewSelectionDidChange() { insertTriggerText(); }

    // The pane
    /// Shows the selected trigger as its check, "~", a line feed and its action; nothing without a selection.
    void insertTriggerText();
    /// Reads check and action back from the pane.
    void fillDataObjectFromScreen(ZNTTrigger& trigger) const;

    // The buttons. If a button needs a selected row and none is selected, it does nothing.
    void saveToDatabase();
    void addEmptyRow();
    void removeItem();

    // The rows
    [[nodiscard]] long countOfDataObjects() const { return static_cast<long>(_dataObjects.size()); }
    /// Null for a row that is not there.
    [[nodiscard]] const ZNTTrigger* getObjectAtIndex(long index) const;
    /// -1 when none is selected.
    [[nodiscard]] long getCurrentSelectedTriggerIndex() const { return _tableView.selectedRow(); }
    // These four are kept as part of the interface: the operations of a list that other code fills.
    /// Empties the rows, but not the store.
    void clearMacroList() { setNewList({}); }
    void addObjectToList(ZNTTrigger trigger);
    /// For triggers that were stored elsewhere, such as by an import; inactive ones are shown, too.
    void addObjectsToList(const std::vector<ZNTTrigger>& triggers);
    void setNewList(std::vector<ZNTTrigger> triggers);
    void updateTriggerInList(ZNTTrigger trigger, long indexOfObject);

private:
    [[nodiscard]] ZNTTrigger* rowAt(long index);
    /// Whether the pane holds something other than `insertTriggerText` put there for `trigger`.
    [[nodiscard]] bool isPaneEdited(const ZNTTrigger& trigger) const;

    ZNTDatabaseHelper& database;
    std::vector<ZNTTrigger> _dataObjects;
    ZNTTableView& _tableView;
    ZNTTextArea& triggerTextView;
};
