#pragma once

#include <QtCore/qnamespace.h>

class QPainter;
class QRect;
class QString;

namespace znt
{

/// Paints `words`, which say why a view is empty, with the painter's pen and font, in lines as wide as
/// `room`. If they would be cut off below, the font shrinks, but to no less than half.
void paintEmptyHint(QPainter& painter, const QRect& room, const QString& words, Qt::Alignment alignment);

} // namespace znt
