#include "ZNTCursorRest.h"

#include <QEvent>
#include <QGuiApplication>
#include <QStyleHints>

ZNTCursorRest::ZNTCursorRest(int millisecondsUntilRest)
{
    resting.setSingleShot(true);
    resting.setInterval(millisecondsUntilRest);
    connect(&resting, &QTimer::timeout, this, [this] { rest(); });
    resting.start();
    qApp->installEventFilter(this);
}

void ZNTCursorRest::rest()
{
    usualFlashTime = QGuiApplication::styleHints()->cursorFlashTime();
    QGuiApplication::styleHints()->setCursorFlashTime(0);
}

bool ZNTCursorRest::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::WindowActivate:
        if (usualFlashTime)
            QGuiApplication::styleHints()->setCursorFlashTime(*usualFlashTime);
        usualFlashTime.reset();
        resting.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
