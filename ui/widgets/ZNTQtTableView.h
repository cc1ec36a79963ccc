#pragma once

#include "ZNTRowModel.h"
#include "ZNTScreenElements.h"

#include <QPointer>

class QItemSelectionModel;
class QTableView;

/// The logic's table over Qt's. Rows are selected whole, Tab leaves the table, F2 or typing edits a cell.
class ZNTQtTableView final : public ZNTTableView
{
public:
    /// Puts `model` into `table`; the caller owns both.
    ZNTQtTableView(QTableView* table, ZNTRowModel* model);

    /// Sets a view up in the way of all our tables, with `model`. Also for a second view of the same rows.
    static void furnish(QTableView& table, ZNTRowModel& model);
    /// The part of it for a table with another model: the keyboard comes to a row that is selected, and that
    /// a screen reader says.
    static void followFocus(QTableView& table);
    /// If a second view shares it, a row that is selected in one is selected in both.
    [[nodiscard]] QItemSelectionModel* selectionModel() const;

    void reloadData() override;
    [[nodiscard]] long selectedRow() const override;
    void abortEditing() override;
    void scrollToEndOfTable() override;

private:
    QPointer<QTableView> table;
    QPointer<ZNTRowModel> model;
};
