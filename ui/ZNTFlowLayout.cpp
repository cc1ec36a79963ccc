#include "ZNTFlowLayout.h"

#include <QWidget>
#include <algorithm>

ZNTFlowLayout::ZNTFlowLayout(QWidget* parent, int gap) : QLayout(parent), gap(gap) {}

ZNTFlowLayout::~ZNTFlowLayout() { qDeleteAll(items); }

void ZNTFlowLayout::addStretching(QWidget* widget)
{
    stretching.append(widget);
    addWidget(widget);
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
    for (const QLayoutItem* item : items)
        size = size.expandedTo(item->minimumSize());
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize ZNTFlowLayout::sizeHint() const
{
    QSize size;
    for (const QLayoutItem* item : items)
        size = QSize(size.width() + item->sizeHint().width() + gap,
                     std::max(size.height(), item->sizeHint().height()));
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

void ZNTFlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    arrange(rect, Mode::Place);
}

bool ZNTFlowLayout::stretches(const QLayoutItem* item) const
{
    return stretching.contains(const_cast<QLayoutItem*>(item)->widget());
}

int ZNTFlowLayout::arrange(const QRect& whole, Mode mode) const
{
    const QRect rect = whole.marginsRemoved(contentsMargins());
    QList<QLayoutItem*> row;
    int y = rect.y();
    int width = 0;
    int height = 0;
    const auto endRow = [&] {
        if (row.isEmpty())
            return;
        if (mode == Mode::Place)
            placeRow(row, rect, y, height);
        y += height + gap;
        row.clear();
        width = height = 0;
    };
    for (QLayoutItem* item : items) {
        if (item->isEmpty())
            continue;
        const QSize wanted = item->sizeHint();
        if (!row.isEmpty() && width + gap + wanted.width() > rect.width())
            endRow();
        width += (row.isEmpty() ? 0 : gap) + wanted.width();
        height = std::max(height, wanted.height());
        row.append(item);
    }
    endRow();
    const QMargins margins = contentsMargins();
    return std::max(0, y - gap - rect.y()) + margins.top() + margins.bottom();
}

void ZNTFlowLayout::placeRow(const QList<QLayoutItem*>& row, const QRect& rect, int y, int height) const
{
    int left = rect.width() - gap * static_cast<int>(row.size() - 1);
    int sharers = 0;
    for (const QLayoutItem* item : row) {
        left -= item->sizeHint().width();
        sharers += stretches(item) ? 1 : 0;
    }
    int x = rect.x();
    for (QLayoutItem* item : row) {
        int width = std::min(item->sizeHint().width(), rect.width());
        if (stretches(item) && left > 0) {
            const int share = left / sharers--;
            width += share;
            left -= share;
        }
        item->setGeometry(QRect(x, y, width, height));
        x += width + gap;
    }
}
