#include "ZNTFlowLayout.h"

#include <QWidget>
#include <algorithm>

ZNTFlowLayout::ZNTFlowLayout(QWidget* parent, int gap) : QLayout(parent), gap(gap)
{
    setContentsMargins(0, 0, 0, 0);
}

ZNTFlowLayout::~ZNTFlowLayout() { qDeleteAll(items); }

void ZNTFlowLayout::addStretching(QWidget* widget)
{
    stretching.append(widget);
    addWidget(widget);
}

void ZNTFlowLayout::addShrinking(QWidget* widget, std::function<int()> least)
{
    shrinking.insert(widget, std::move(least));
    addStretching(widget);
}

void ZNTFlowLayout::addItem(QLayoutItem* item) { items.append(item); }

int ZNTFlowLayout::count() const { return static_cast<int>(items.size()); }

QLayoutItem* ZNTFlowLayout::itemAt(int index) const { return items.value(index); }

QLayoutItem* ZNTFlowLayout::takeAt(int index)
{
    return index >= 0 && index < items.size() ? items.takeAt(index) : nullptr;
}

int ZNTFlowLayout::heightForWidth(int width) const { return arrange(QRect(0, 0, width, 0), Mode::Measure); }

QSize ZNTFlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : shownItems())
        size = size.expandedTo(item->minimumSize());
    return size.grownBy(contentsMargins());
}

QSize ZNTFlowLayout::sizeHint() const
{
    const QList<QLayoutItem*> shown = shownItems();
    const int number = static_cast<int>(shown.size());
    int width = gap * std::max(0, number - 1);
    for (const QLayoutItem* item : shown)
        width += item->sizeHint().width();
    if (mostEvenColumns > 0) {
        const int columns = std::min(mostEvenColumns, std::max(1, number));
        width = columns * largestHint().width() + (columns - 1) * gap;
    }
    const QMargins margins = contentsMargins();
    width += margins.left() + margins.right();
    return {width, heightForWidth(width)};
}

void ZNTFlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, Mode::Place);
}

QList<QLayoutItem*> ZNTFlowLayout::shownItems() const
{
    QList<QLayoutItem*> shown;
    std::copy_if(items.begin(), items.end(), std::back_inserter(shown),
                 [](const QLayoutItem* item) { return !item->isEmpty(); });
    return shown;
}

QSize ZNTFlowLayout::largestHint() const
{
    QSize largest;
    for (const QLayoutItem* item : shownItems())
        largest = largest.expandedTo(item->sizeHint());
    return largest;
}

bool ZNTFlowLayout::stretches(const QLayoutItem* item) const
{
    return stretching.contains(const_cast<QLayoutItem*>(item)->widget());
}

int ZNTFlowLayout::arrange(const QRect& whole, Mode mode) const
{
    const QMargins margins = contentsMargins();
    const QRect rect = whole.marginsRemoved(margins);
    int y = rect.y();
    for (const Row& row : mostEvenColumns > 0 ? evenRowsFor(rect.width()) : rowsFor(rect.width())) {
        int height = 0;
        int free = rect.width() - gap * static_cast<int>(row.items.size() - 1);
        for (qsizetype index = 0; index < row.items.size(); ++index) {
            QLayoutItem* item = row.items[index];
            const int width = row.widths[index];
            free -= width;
            height = std::max(height, item->hasHeightForWidth() ? item->heightForWidth(width)
                                                                : item->sizeHint().height());
        }
        int x = rect.x() + (isAtRight ? std::max(0, free) : 0);
        for (qsizetype index = 0; index < row.items.size(); ++index) {
            if (mode == Mode::Place)
                row.items[index]->setGeometry(QRect(x, y, row.widths[index], height));
            x += row.widths[index] + gap;
        }
        y += height + gap;
    }
    return std::max(0, y - gap - rect.y()) + margins.top() + margins.bottom();
}

QList<ZNTFlowLayout::Row> ZNTFlowLayout::rowsFor(int width) const
{
    QList<Row> rows;
    int used = 0;
    for (QLayoutItem* item : shownItems()) {
        const int least = leastWidth(item);
        if (rows.isEmpty() || used + gap + least > width) {
            rows.append(Row());
            used = least;
        } else {
            used += gap + least;
        }
        rows.last().items.append(item);
        rows.last().widths.append(std::min(item->sizeHint().width(), width));
    }
    for (Row& row : rows) {
        shrinkRow(row, width);
        stretchRow(row, width);
    }
    return rows;
}

QList<ZNTFlowLayout::Row> ZNTFlowLayout::evenRowsFor(int width) const
{
    const int fitting = (width + gap) / std::max(1, largestHint().width() + gap);
    const int columns = std::clamp(fitting, 1, mostEvenColumns);
    const int each = (width - gap * (columns - 1)) / columns;
    QList<Row> rows;
    for (QLayoutItem* item : shownItems()) {
        if (rows.isEmpty() || rows.last().items.size() == columns)
            rows.append(Row());
        rows.last().items.append(item);
        rows.last().widths.append(each);
    }
    return rows;
}

int ZNTFlowLayout::leastWidth(QLayoutItem* item) const
{
    const int wanted = item->sizeHint().width();
    const auto least = shrinking.constFind(item->widget());
    return least == shrinking.constEnd() ? wanted : std::min(wanted, (*least)());
}

/// What the row has too much comes off the items that may be narrower.
void ZNTFlowLayout::shrinkRow(Row& row, int width) const
{
    int excess = gap * static_cast<int>(row.items.size() - 1) - width;
    for (const int each : row.widths)
        excess += each;
    for (qsizetype index = 0; index < row.items.size() && excess > 0; ++index) {
        const int spare = std::max(0, row.widths[index] - leastWidth(row.items[index]));
        row.widths[index] -= std::min(spare, excess);
        excess -= std::min(spare, excess);
    }
}

void ZNTFlowLayout::stretchRow(Row& row, int width) const
{
    int left = width - gap * static_cast<int>(row.items.size() - 1);
    int sharers = 0;
    for (qsizetype index = 0; index < row.items.size(); ++index) {
        left -= row.widths[index];
        sharers += stretches(row.items[index]) ? 1 : 0;
    }
    for (qsizetype index = 0; index < row.items.size() && left > 0; ++index)
        if (stretches(row.items[index])) {
            const int share = left / sharers--;
            row.widths[index] += share;
            left -= share;
        }
}
