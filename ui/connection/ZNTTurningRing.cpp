#include "ZNTTurningRing.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace
{

constexpr int millisecondsOfPicture = 80;
constexpr int picturesOfTurn = 15;
constexpr int wholeCircle = 360 * 16; // Qt's arcs count sixteenths of a degree
constexpr int arc = wholeCircle * 3 / 4;

} // namespace

ZNTTurningRing::ZNTTurningRing()
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    timer.setInterval(millisecondsOfPicture);
    QObject::connect(&timer, &QTimer::timeout, this, [this] {
        step = (step + 1) % picturesOfTurn;
        update();
    });
}

QSize ZNTTurningRing::sizeHint() const
{
    const int side = fontMetrics().height();
    return {side, side};
}

void ZNTTurningRing::showEvent(QShowEvent* event)
{
    QProgressBar::showEvent(event);
    // The style says 0 if the desktop wants no animations.
    if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0)
        timer.start();
}

void ZNTTurningRing::hideEvent(QHideEvent* event)
{
    timer.stop();
    QProgressBar::hideEvent(event);
}

void ZNTTurningRing::paintEvent(QPaintEvent*)
{
    const double stroke = std::max(2.0, width() / 8.0);
    const QRectF place = QRectF(rect()).adjusted(stroke, stroke, -stroke, -stroke);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::WindowText), stroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(place, -step * wholeCircle / picturesOfTurn, arc);
}
