#include "ZNTWindowPlace.h"

#include <QGuiApplication>
#include <QRegion>
#include <QRegularExpression>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <algorithm>

std::string znt::textOfPlace(const ZNTWindowPlace& place)
{
    const QRect& rect = place.rect;
    const QString text =
        QStringLiteral("%1x%2 at %3,%4").arg(rect.width()).arg(rect.height()).arg(rect.x()).arg(rect.y());
    return text.toStdString() + (place.isMaximised ? " maximised" : "");
}

std::optional<ZNTWindowPlace> znt::placeIn(const std::string& text)
{
    // Five digits are more than any desktop has and less than any sum of two that overflows.
    static const QRegularExpression form(
        QStringLiteral("\\A([1-9]\\d{0,4})x([1-9]\\d{0,4}) at (-?\\d{1,5}),(-?\\d{1,5})( maximised)?\\z"));
    const auto match = form.match(QString::fromStdString(text));
    if (!match.hasMatch())
        return std::nullopt;
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    return ZNTWindowPlace{.rect = {number(3), number(4), number(1), number(2)},
                          .isMaximised = !match.captured(5).isEmpty()};
}

ZNTWindowPlace znt::placeOf(const QWidget& window)
{
    const auto state = window.windowState();
    const bool isOrdinary = !(state & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized));
    const QRect ordinary = window.normalGeometry();
    return {.rect = isOrdinary || !ordinary.isValid() ? window.geometry() : ordinary,
            .isMaximised = state.testFlag(Qt::WindowMaximized)};
}

void znt::usePlace(QWidget& window, const ZNTWindowPlace& place)
{
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) // the primary one is the first
        screens.append(screen->availableGeometry());
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    window.setGeometry(broughtIntoSight(place.rect, screens, title));
    // After the geometry, which becomes the one that the window goes back to.
    window.setWindowState(window.windowState().setFlag(Qt::WindowMaximized, place.isMaximised));
}

QRect znt::broughtIntoSight(const QRect& place, const QList<QRect>& screens, int titleHeight)
{
    QRegion seen;
    for (const QRect& screen : screens)
        seen += screen;
    if (screens.isEmpty() || QRegion(place).subtracted(seen).isEmpty())
        return place;
    const auto shown = [&place](const QRect& screen) {
        const QRect part = screen.intersected(place);
        return static_cast<qint64>(part.width()) * part.height();
    };
    const QRect best = *std::ranges::max_element(screens, {}, shown); // the first of several
    const QRect room = best.adjusted(0, std::min(titleHeight, best.height() / 2), 0, 0);
    const QSize size = place.size().boundedTo(room.size());
    const int right = room.x() + room.width() - size.width();
    const int bottom = room.y() + room.height() - size.height();
    return {{std::clamp(place.x(), room.x(), right), std::clamp(place.y(), room.y(), bottom)}, size};
}
