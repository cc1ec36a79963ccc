#include "ZNTEmptyHint.h"

#include <QPainter>

void znt::paintEmptyHint(QPainter& painter, const QRect& room, const QString& words, Qt::Alignment alignment)
{
    constexpr double smallestShare = 0.5;
    constexpr double stepShare = 0.05;
    const int flags = static_cast<int>(alignment) | Qt::TextWordWrap;
    QFont font = painter.font();
    const double step = font.pointSizeF() * stepShare;
    const double smallest = font.pointSizeF() * smallestShare;
    while (font.pointSizeF() > smallest && !room.contains(painter.boundingRect(room, flags, words))) {
        font.setPointSizeF(font.pointSizeF() - step);
        painter.setFont(font);
    }
    painter.drawText(room, flags, words);
}
