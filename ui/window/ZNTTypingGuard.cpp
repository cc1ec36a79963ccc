#include "ZNTTypingGuard.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>

ZNTTypingGuard::ZNTTypingGuard(QDialog& dialog, QWidget& field)
    : QObject(&dialog),
      dialog(dialog),
      field(&field)
{
    sinceKey.start();
    QCoreApplication::instance()->installEventFilter(
        this); // it gets events before filters that were installed earlier
}

bool ZNTTypingGuard::isTyping(const QKeyEvent& key) const
{
    constexpr auto commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return sinceKey.elapsed() < pause && !key.text().isEmpty() && key.key() != Qt::Key_Escape &&
           key.key() != Qt::Key_Tab && (key.modifiers() & commands) == Qt::NoModifier;
}

bool ZNTTypingGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!watched->isWidgetType() || static_cast<QWidget*>(watched)->window() != &dialog || !isTyping(key))
        return false;
    sinceKey.restart();
    // A field that was disabled meanwhile, as at a session's end, takes no text. The dialog gets none either.
    if (field && field->isEnabled()) {
        QKeyEvent copy(key.type(), key.key(), key.modifiers(), key.text(), key.isAutoRepeat());
        QCoreApplication::sendEvent(field, &copy);
    }
    return true;
}
