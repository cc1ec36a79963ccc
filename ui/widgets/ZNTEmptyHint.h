#pragma once

#include <QtCore/qnamespace.h>

class QPainter;
class QRect;
class QString;

namespace znt
{

/// Paints `words`, which say why a view is empty, with the painter's pen and font, in lines as wide as `room`
/// allows; smaller where they would be cut off below. Letters are never smaller than half.
void paintEmptyHint(QPainter& painter, const QRect& room, const QString& words, Qt::Alignment alignment);

} // namespace znt
