#pragma once

#include "ZNTMudList.h"
#include "ZNTScreenElements.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

class ZNTDatabaseHelper;

/// The address book as the table shows it: one list for the whole program, read from the store when it is
/// made and again on a restore. Columns are named after the fields of ZNTMudList.
class ZNTMudListArrayController
{
public:
    using Value = std::variant<std::u16string, std::int64_t, bool>;

    /// `database` outlives this.
    explicit ZNTMudListArrayController(ZNTDatabaseHelper& database);

    /// The table that shows the list. Null if no table shows it, as in the terminal client. It outlives this
    /// or is replaced.
    void set_tableView(ZNTTableView* tableView) { _tableView = tableView; }

    [[nodiscard]] long numberOfRowsInTableView() const { return static_cast<long>(_dataObjects.size()); }
    /// Null for a row that is not there.
    [[nodiscard]] const ZNTMudList* objectAtIndex(long row) const;
    /// An empty text for a row or a column that is not there.
    [[nodiscard]] Value tableViewObjectValueForTableColumn(std::string_view column, long row) const;
    /// The row's tool tip; empty for most rows.
    [[nodiscard]] std::u16string tableViewToolTipForRow(long row) const;
    /// Stores the change at once. A port may be given as text. If an entry becomes the default, no other
    /// entry is the default any longer. Returns whether the store has written the entry.
    bool tableViewSetObjectValue(const Value& value, std::string_view column, long row);

    // The sheet's buttons. If a button needs a selected row and none is selected, it does nothing.
    void addEmptyRow();
    void deleteSelectedRow();
    /// Shows every game again. Returns whether the store has written that.
    bool restoreSystemMudList();
    /// Hides the game of one row, which takes it from the list. Returns whether the store has written that.
    /// If there is no such row, nothing changes.
    bool deleteRow(long row);
    /// Shows the games as they are stored now. Those whose insert failed stay at the end.
    void reload();
    /// Appends a record to the shown list.
    void add(ZNTMudList entry);

    /// Marks every entry with this host and port as not available. Kept as part of the interface: for games
    /// that do not answer.
    void setInactiveByIpAndPort(std::u16string_view address, std::int64_t portConnectingTo);

private:
    void takeDefaultFromAllBut(const ZNTMudList& entry);
    void redisplay();

    ZNTDatabaseHelper& database;
    std::vector<ZNTMudList> _dataObjects;
    ZNTTableView* _tableView = nullptr;
};
