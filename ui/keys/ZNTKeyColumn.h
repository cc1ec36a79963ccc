#pragma once

#include <QStyledItemDelegate>

/// Draws a row's keys at its right end, beside its text, which is cut off before them. The model gives them
/// under ZNTRowModel::keysRole; they are no part of the cell's value.
class ZNTKeyColumn final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
