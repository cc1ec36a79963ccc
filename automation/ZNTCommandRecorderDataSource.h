#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A list of commands, which a table can show. The list is shared: every owner of `_dataObjects` sees every
/// change.
class ZNTCommandRecorderDataSource
{
public:
    using Commands = std::vector<std::u16string>;

    /// Called after a change of the list, so that the table shows it. Optional.
    std::function<void()> listChanged;

    [[nodiscard]] const std::shared_ptr<Commands>& _dataObjects() const { return _dataObjects_; }
    void set_dataObjects(std::shared_ptr<Commands> commands);

    void addCommand(std::u16string_view command);
    /// Removes every entry that equals `command`. Kept as part of the interface: the opposite of
    /// `addCommand`.
    void removeCommand(std::u16string_view command);
    void clearCommandsList();
    [[nodiscard]] Commands getACopyOfTheCommands() const { return *_dataObjects_; }

    // The sheet's buttons
    void addEmptyRow();
    /// Removes the entry of one row. If there is no such row, it does nothing.
    void removeItem(long row);

    // The table's questions
    [[nodiscard]] long numberOfRowsInTableView() const { return static_cast<long>(_dataObjects_->size()); }
    /// Empty if there is no such row.
    [[nodiscard]] std::u16string tableViewObjectValue(long row) const;
    void tableViewSetObjectValue(std::u16string_view value, long row);

private:
    [[nodiscard]] bool hasRow(long row) const { return row >= 0 && row < numberOfRowsInTableView(); }
    void redisplay();

    std::shared_ptr<Commands> _dataObjects_ = std::make_shared<Commands>();
};
