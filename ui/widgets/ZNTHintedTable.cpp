#include "ZNTHintedTable.h"

#include "ZNTEmptyHint.h"

#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <numeric>
#include <utility>

namespace
{
constexpr int fewestRows = 4;
constexpr int columnsIfEmpty = 40; ///< of text, while there is little in the table
constexpr int airBehindColumn = 2; ///< in characters, if the columns share the width

/// What columns of these widths get of `room`.
QList<int> sharedWidths(QList<int> widths, const QList<int>& least, const QList<int>& narrowFirst, int room)
{
    if (std::accumulate(least.cbegin(), least.cend(), 0) > room)
        return widths; // it scrolls sideways anyway, so at least the words can be read
    const auto missing = [&] { return std::accumulate(widths.cbegin(), widths.cend(), -room); };
    for (const int column : narrowFirst)
        widths[column] = std::max(least[column], widths[column] - std::max(0, missing()));
    // The widest columns become as wide as the next one, until all fit.
    while (missing() > 0) {
        int widest = -1;
        for (int column = 0; column < widths.size(); ++column)
            if (widths[column] > least[column] && (widest < 0 || widths[column] > widths[widest]))
                widest = column;
        if (widest < 0)
            break;
        --widths[widest];
    }
    widths.back() += std::max(0, -missing());
    return widths;
}
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
        connect(newModel, &QAbstractItemModel::rowsInserted, this, &ZNTHintedTable::rowsChanged);
        connect(newModel, &QAbstractItemModel::rowsRemoved, this, &ZNTHintedTable::rowsChanged);
        connect(newModel, &QAbstractItemModel::modelReset, this, &ZNTHintedTable::rowsChanged);
        connect(newModel, &QAbstractItemModel::dataChanged, this, &ZNTHintedTable::shareLater);
    }
    rowsChanged();
    keepHeadingsReadable();
}

void ZNTHintedTable::rowsChanged()
{
    describe();
    if (areHeadingsHidden)
        horizontalHeader()->setHidden(isEmpty());
    shareLater();
}

void ZNTHintedTable::shareWidth(QList<int> columns)
{
    narrowFirst = std::move(columns);
    isWidthShared = true;
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setStretchLastSection(false);
    shareLater();
}

/// Many changes may come in one turn.
void ZNTHintedTable::shareLater()
{
    if (!isWidthShared || std::exchange(isSharingLater, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            isSharingLater = false;
            fitColumns();
        },
        Qt::QueuedConnection);
}

void ZNTHintedTable::fitColumns()
{
    if (!isWidthShared || !model() || model()->columnCount() == 0)
        return;
    QHeaderView& header = *horizontalHeader();
    header.setMinimumSectionSize(0);
    widestYet.resize(model()->columnCount());
    QList<int> least;
    for (int column = 0; column < widestYet.size(); ++column) {
        least << header.sectionSizeHint(column);
        const int air = fontMetrics().averageCharWidth() * airBehindColumn;
        widestYet[column] = std::max({widestYet[column], least.back(), sizeHintForColumn(column) + air});
    }
    const QList<int> widths = sharedWidths(widestYet, least, narrowFirst, viewport()->width());
    for (int column = 0; column < widths.size(); ++column)
        header.resizeSection(column, widths[column]);
    if (wordWrap())
        resizeRowsToContents(); // at the new widths
}

void ZNTHintedTable::keepHeadingsReadable()
{
    if (isWidthShared)
        return fitColumns();
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
    const int air = isWidthShared ? fontMetrics().averageCharWidth() * airBehindColumn : 0;
    for (int column = 0; model() && column < model()->columnCount(); ++column)
        width += std::max(sizeHintForColumn(column) + air, horizontalHeader()->sectionSizeHint(column));
    return {std::max(width, fontMetrics().averageCharWidth() * columnsIfEmpty), minimumSizeHint().height()};
}

bool ZNTHintedTable::event(QEvent* event)
{
    // The headings get their new font on a later turn.
    if (event->type() == QEvent::Polish || event->type() == QEvent::FontChange) {
        widestYet.clear();
        QMetaObject::invokeMethod(this, &ZNTHintedTable::keepHeadingsReadable, Qt::QueuedConnection);
    }
    return QTableView::event(event);
}

void ZNTHintedTable::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    fitColumns();
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
    constexpr int around = znt::emptyHintMargin;
    znt::paintEmptyHint(painter, viewport()->rect().adjusted(around, around, -around, -around), hint,
                        Qt::AlignHCenter | Qt::AlignTop);
}
