#include "ZNTQtTableView.h"

#include "ZNTAnnouncement.h"
#include "ZNTFocusFirst.h"
#include "ZNTHintedTable.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QHeaderView>
#include <QIntValidator>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>

namespace
{

/// What screen readers read of the cell that the keyboard is on. Null if none runs or if the focus is
/// elsewhere.
QAccessibleInterface* focusedCell(QTableView& table)
{
    const QModelIndex current = table.currentIndex();
    auto* accessible = QAccessible::isActive() && table.hasFocus() && current.isValid()
                           ? QAccessible::queryAccessibleInterface(&table)
                           : nullptr;
    auto* cells = accessible ? accessible->tableInterface() : nullptr;
    return cells ? cells->cellAt(current.row(), current.column()) : nullptr;
}

/// Announces a mark that the space bar sets, because Qt does not. Orca needs the words: of a cell that
/// changes its state it says nothing.
void tellOfMark(QTableView& table, const QModelIndex& changed)
{
    if (changed != table.currentIndex() || !changed.data(Qt::CheckStateRole).isValid())
        return;
    if (auto* cell = focusedCell(table)) {
        QAccessible::State checked;
        checked.checked = true;
        QAccessibleStateChangeEvent event(cell, checked);
        QAccessible::updateAccessibility(&event);
    }
    if (table.hasFocus())
        znt::announce(ZNTAnnouncement::Mark, {changed.data(Qt::AccessibleTextRole).toString()});
}

/// Selects the row that the keyboard comes to. A screen reader says that row, so the buttons must act on it.
class RowUnderFocus final : public QObject
{
public:
    explicit RowUnderFocus(QTableView* table) : QObject(table), table(table) {}

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason) {
            selectRow();
            // Qt announces the table afterwards, and the reader then says nothing of the row.
            QMetaObject::invokeMethod(this, &RowUnderFocus::tellOfCell, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void selectRow()
    {
        if (table->selectionModel()->hasSelection() || table->model()->rowCount() == 0)
            return;
        const QModelIndex current = table->currentIndex();
        table->selectRow(current.isValid() ? current.row() : 0);
    }

    void tellOfCell()
    {
        if (auto* cell = focusedCell(*table)) {
            QAccessibleEvent focus(cell, QAccessible::Focus);
            QAccessible::updateAccessibility(&focus);
        }
    }

    QTableView* table;
};

/// Our cells. A mark stands in the middle of its cell. The field in which a cell is edited has its column's
/// name. For a number it takes digits only.
class Cells final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override
    {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        const ZNTColumn& column = static_cast<const ZNTRowModel*>(index.model())->column(index);
        if (editor)
            editor->setAccessibleName(column.heading);
        if (auto* field = qobject_cast<QLineEdit*>(editor); field && column.kind == ZNTColumn::Kind::Number)
            field->setValidator(new QIntValidator(0, column.largestNumber, field));
        return editor;
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (!hasMark(index)) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QStyle& style = *cell.widget->style();
        QStyleOptionViewItem mark = cell;
        mark.rect = placeOfMark(cell);
        mark.state.setFlag(cell.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off);
        mark.state.setFlag(QStyle::State_HasFocus, false);
        cell.features.setFlag(QStyleOptionViewItem::HasCheckIndicator, false);
        style.drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
        style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &mark, painter, cell.widget);
    }

    /// A click must hit the mark where it is painted.
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override
    {
        QStyleOptionViewItem moved = option;
        if (hasMark(index)) {
            QStyleOptionViewItem cell = option;
            initStyleOption(&cell, index);
            moved.rect.translate(placeOfMark(cell).topLeft() - styledPlaceOfMark(cell).topLeft());
        }
        return QStyledItemDelegate::editorEvent(event, model, moved, index);
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        if (const auto* table = qobject_cast<const ZNTHintedTable*>(option.widget);
            table && table->hasRoomyRows()) {
            size.setHeight(std::max(size.height(), table->rowHeight()));
            size.rwidth() += 2 * option.fontMetrics.averageCharWidth();
        }
        return size;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        const ZNTQuietCaret untilItHasTheFocus;
        QStyledItemDelegate::setEditorData(editor, index);
    }

private:
    static bool hasMark(const QModelIndex& index) { return index.data(Qt::CheckStateRole).isValid(); }

    /// Qt's own, at the beginning of the cell.
    static QRect styledPlaceOfMark(const QStyleOptionViewItem& cell)
    {
        return cell.widget->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &cell,
                                                    cell.widget);
    }

    /// In the middle, below the heading.
    static QRect placeOfMark(const QStyleOptionViewItem& cell)
    {
        QRect mark = styledPlaceOfMark(cell);
        mark.moveCenter(cell.rect.center());
        return mark;
    }
};

} // namespace

ZNTQtTableView::ZNTQtTableView(QTableView* table, ZNTRowModel* model) : table(table), model(model)
{
    furnish(*table, *model);
}

void ZNTQtTableView::followFocus(QTableView& table) { table.installEventFilter(new RowUnderFocus(&table)); }

void ZNTQtTableView::furnish(QTableView& table, ZNTRowModel& model)
{
    table.setModel(&model);
    table.setItemDelegate(new Cells(&table));
    followFocus(table);
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &table,
                     [&table](const QModelIndex& first, const QModelIndex& last) {
                         if (first == last)
                             tellOfMark(table, first);
                     });
    // Typing searches for a row that begins so. It must not overwrite the selected one.
    table.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
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
    table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
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
    // Closes an open editor without taking the text that was typed.
    table->closePersistentEditor(table->currentIndex());
}

void ZNTQtTableView::scrollToEndOfTable()
{
    if (!table || !model || model->rowCount() == 0)
        return;
    table->scrollToBottom();
    // The row was just added, and the player fills it in now. The focus moves first, because Qt announces the
    // new cell as if the focus were there already.
    table->setFocus(Qt::OtherFocusReason);
    table->setCurrentIndex(model->index(model->rowCount() - 1, 0));
}
