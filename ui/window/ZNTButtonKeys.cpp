#include "ZNTButtonKeys.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPushButton>

ZNTButtonKeys::ZNTButtonKeys(QObject* parent) : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool ZNTButtonKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!isReturn || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    auto* button = qobject_cast<QPushButton*>(watched);
    if (!button || !button->isEnabled())
        return false;
    if (!key.isAutoRepeat()) // a key that is held down presses once, also if the focus moves meanwhile
        button->click();
    return true;
}
