#include "ZNTHintedTable.h"

#include "ZNTEmptyHint.h"

#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace
{
constexpr int fewestRows = 4;
constexpr int columnsIfEmpty = 40; ///< of text, while there is little in the table
constexpr int hintMargin = 10;
} // namespace

ZNTHintedTable::ZNTHintedTable(QWidget* parent) : QTableView(parent) {}

void ZNTHintedTable::setEmptyHint(const QString& words)
{
    if (hint == words)
        return;
    hint = words;
    describe();
    viewport()->update();
    Q_EMIT emptyHintChanged(hint);
}

void ZNTHintedTable::setStandingDescription(const QString& words)
{
    standing = words;
    describe();
}

void ZNTHintedTable::setModel(QAbstractItemModel* newModel)
{
    if (model())
        model()->disconnect(this);
    QTableView::setModel(newModel);
    if (newModel) {
        connect(newModel, &QAbstractItemModel::rowsInserted, this, &ZNTHintedTable::describe);
        connect(newModel, &QAbstractItemModel::rowsRemoved, this, &ZNTHintedTable::describe);
        connect(newModel, &QAbstractItemModel::modelReset, this, &ZNTHintedTable::describe);
    }
    describe();
    keepHeadingsReadable();
}

void ZNTHintedTable::keepHeadingsReadable()
{
    // Columns that stretch would shrink to nothing as well.
    QHeaderView& header = *horizontalHeader();
    header.setMinimumSectionSize(0); // which the hints contain
    int widest = 0;
    for (int column = 0; column < header.count(); ++column)
        widest = std::max(widest, header.sectionSizeHint(column));
    header.setMinimumSectionSize(widest);
    // The header itself does not care for stretching columns that find no room.
    for (int column = 0; column < header.count(); ++column)
        if (header.sectionSize(column) < widest)
            header.resizeSection(column, widest);
}

bool ZNTHintedTable::isEmpty() const { return model() == nullptr || model()->rowCount() == 0; }

void ZNTHintedTable::describe() { setAccessibleDescription(isEmpty() ? hint : standing); }

int ZNTHintedTable::heightOfRows(int number) const
{
    const int header = horizontalHeader()->isHidden() ? 0 : horizontalHeader()->sizeHint().height();
    return header + number * rowHeight() + 2 * frameWidth();
}

int ZNTHintedTable::rowHeight() const { return fontMetrics().height() * (isRoomy ? 7 : 5) / 4; }

QSize ZNTHintedTable::sizeHint() const
{
    int width = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    for (int column = 0; model() && column < model()->columnCount(); ++column)
        width += std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
    return {std::max(width, fontMetrics().averageCharWidth() * columnsIfEmpty), minimumSizeHint().height()};
}

bool ZNTHintedTable::event(QEvent* event)
{
    // The headings get their new font on a later turn.
    if (event->type() == QEvent::Polish || event->type() == QEvent::FontChange)
        QMetaObject::invokeMethod(this, &ZNTHintedTable::keepHeadingsReadable, Qt::QueuedConnection);
    return QTableView::event(event);
}

int ZNTHintedTable::comfortableGrowth() const
{
    return std::max(0, heightOfRows(rowsWanted) - minimumSizeHint().height());
}

QSize ZNTHintedTable::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 12,
            heightOfRows(fewestRows) + horizontalScrollBar()->sizeHint().height()};
}

void ZNTHintedTable::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (!isEmpty() || hint.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    znt::paintEmptyHint(painter,
                        viewport()->rect().adjusted(hintMargin, hintMargin, -hintMargin, -hintMargin), hint,
                        Qt::AlignHCenter | Qt::AlignTop);
}
