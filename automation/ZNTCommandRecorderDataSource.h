#pragma once

#include "ZNTScreenElements.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A list of commands, and the rows of the table that shows it. The list can be shared: whoever holds
/// `_dataObjects` sees every change.
class ZNTCommandRecorderDataSource
{
public:
    using Commands = std::vector<std::u16string>;

    /// The table that shows the list, or null. It outlives this or is replaced.
    void set_tableView(ZNTTableView* tableView) { _tableView = tableView; }
    [[nodiscard]] const std::shared_ptr<Commands>& _dataObjects() const { return _dataObjects_; }
    void set_dataObjects(std::shared_ptr<Commands> commands);

    void addCommand(std::u16string_view command);
    /// Removes every entry that equals `command`.
    void removeCommand(std::u16string_view command);
    void clearCommandsList();
    [[nodiscard]] Commands getACopyOfTheCommands() const { return *_dataObjects_; }

    // The sheet's buttons
    void addEmptyRow();
    /// Removes the selected row; without one it does nothing.
    void removeItem();

    // The table's questions
    [[nodiscard]] long numberOfRowsInTableView() const { return static_cast<long>(_dataObjects_->size()); }
    /// Empty for a row that is not there.
    [[nodiscard]] std::u16string tableViewObjectValue(long row) const;
    void tableViewSetObjectValue(std::u16string_view value, long row);

private:
    [[nodiscard]] bool hasRow(long row) const { return row >= 0 && row < numberOfRowsInTableView(); }
    void redisplay();

    std::shared_ptr<Commands> _dataObjects_ = std::make_shared<Commands>();
    ZNTTableView* _tableView = nullptr;
};
