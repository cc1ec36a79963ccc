#pragma once

#include "ZNTRowModel.h"
#include "ZNTScreenElements.h"

#include <QPointer>

class QItemSelectionModel;
class QTableView;

/// A table of ours over Qt's. Rows are selected whole, Tab leaves the table, F2 or typing edits a cell.
class ZNTQtTableView final : public ZNTTableView
{
public:
    /// Puts `model` into `table`; the caller owns both.
    ZNTQtTableView(QTableView* table, ZNTRowModel* model);

    /// Sets a view up as our tables are, showing `model`; also for a second view of the same rows.
    static void furnish(QTableView& table, ZNTRowModel& model);
    /// Shared with a second view, what is selected in one is selected in both.
    [[nodiscard]] QItemSelectionModel* selectionModel() const;

    void reloadData() override;
    [[nodiscard]] long selectedRow() const override;
    void abortEditing() override;
    void scrollToEndOfTable() override;

private:
    QPointer<QTableView> table;
    QPointer<ZNTRowModel> model;
};
