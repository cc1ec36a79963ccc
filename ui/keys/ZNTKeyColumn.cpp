#include "ZNTKeyColumn.h"

#include "ZNTRowModel.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

namespace
{
constexpr int gapBeforeKeys = 10;
constexpr int gapBehindKeys = 6;
/// A text needs up to a pixel more than its rounded width.
constexpr int roundedOff = 2;
/// If both are too long for a narrow list, the name keeps one part of so many.
constexpr int shareOfName = 2;
} // namespace

void ZNTKeyColumn::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    const QString keys = index.data(ZNTRowModel::keysRole).toString();
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const int leftByName =
        item.rect.width() - item.fontMetrics.horizontalAdvance(item.text) - gapBeforeKeys - 2 * gapBehindKeys;
    const int width = std::min(item.fontMetrics.horizontalAdvance(keys) + roundedOff,
                               std::max(leftByName, item.rect.width() / shareOfName));
    const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    if (!keys.isEmpty()) {
        const int room = item.rect.width() - width - gapBeforeKeys - gapBehindKeys;
        item.text = item.fontMetrics.elidedText(item.text, Qt::ElideRight, std::max(0, room));
    }
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    if (keys.isEmpty())
        return;
    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const auto group = item.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const QRect place = item.rect.adjusted(item.rect.width() - width - gapBehindKeys, 0, -gapBehindKeys, 0);
    painter->save();
    painter->setFont(item.font);
    painter->setPen(
        item.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::PlaceholderText));
    painter->drawText(place, Qt::AlignRight | Qt::AlignVCenter,
                      item.fontMetrics.elidedText(keys, Qt::ElideRight, width));
    painter->restore();
}

QSize ZNTKeyColumn::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    const QString keys = index.data(ZNTRowModel::keysRole).toString();
    const int more =
        keys.isEmpty() ? 0 : option.fontMetrics.horizontalAdvance(keys) + gapBeforeKeys + gapBehindKeys;
    return {size.width() + more, size.height()};
}
