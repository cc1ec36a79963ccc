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

    /// The table that shows the list, or null. It outlives this or is replaced.
    void set_tableView(ZNTTableView* tableView) { _tableView = tableView; }

    [[nodiscard]] long numberOfRowsInTableView() const { return static_cast<long>(_dataObjects.size()); }
    /// Null for a row that is not there.
    [[nodiscard]] const ZNTMudList* objectAtIndex(long row) const;
    /// An empty text for a row or a column that is not there.
    [[nodiscard]] Value tableViewObjectValueForTableColumn(std::string_view column, long row) const;
    /// What is to be said of the row beside its cells; mostly nothing.
    [[nodiscard]] std::u16string tableViewToolTipForRow(long row) const;
    /// Stores the change at once. A port is read from text too. Making one entry the default takes the mark
    /// from every other.
    void tableViewSetObjectValue(const Value& value, std::string_view column, long row);

    // The sheet's buttons; those that need a selected row do nothing without one.
    void addEmptyRow();
    void deleteSelectedRow();
    void restoreSystemMudList();
    /// Appends a record to the shown list.
    void add(ZNTMudList entry);

    /// Marks every entry with this host and port as not available. Nothing calls it yet.
    void setInactiveByIpAndPort(std::u16string_view address, std::int64_t portConnectingTo);

private:
    void takeDefaultFromAllBut(const ZNTMudList& entry);
    void redisplay();

    ZNTDatabaseHelper& database;
    std::vector<ZNTMudList> _dataObjects;
    ZNTTableView* _tableView = nullptr;
};
