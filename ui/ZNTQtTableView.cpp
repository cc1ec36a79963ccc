#include "ZNTQtTableView.h"

#include <QHeaderView>
#include <QTableView>

ZNTQtTableView::ZNTQtTableView(QTableView* table, ZNTRowModel* model) : table(table), model(model)
{
    furnish(*table, *model);
}

void ZNTQtTableView::furnish(QTableView& table, ZNTRowModel& model)
{
    table.setModel(&model);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setTabKeyNavigation(false);
    table.setCornerButtonEnabled(false);
    table.setShowGrid(false);
    table.setAlternatingRowColors(true);
    table.setWordWrap(false);
    table.verticalHeader()->hide();
    // Row heights follow the font.
    table.verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table.horizontalHeader()->setHighlightSections(false);
}

QItemSelectionModel* ZNTQtTableView::selectionModel() const
{
    return table ? table->selectionModel() : nullptr;
}

void ZNTQtTableView::reloadData()
{
    if (model)
        model->reload();
}

long ZNTQtTableView::selectedRow() const
{
    if (!table || !table->selectionModel())
        return -1;
    const QModelIndexList rows = table->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void ZNTQtTableView::abortEditing()
{
    if (!table)
        return;
    // Drops an editor that is open there without taking what was typed.
    table->closePersistentEditor(table->currentIndex());
}

void ZNTQtTableView::scrollToEndOfTable()
{
    if (!table || !model || model->rowCount() == 0)
        return;
    table->scrollToBottom();
    table->setCurrentIndex(model->index(model->rowCount() - 1, 0));
}
