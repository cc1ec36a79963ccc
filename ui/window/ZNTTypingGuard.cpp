#include "ZNTTypingGuard.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>

ZNTTypingGuard::ZNTTypingGuard(QDialog& dialog, QLineEdit& field, std::function<void()> typingRested)
    : QObject(&dialog),
      dialog(dialog),
      field(&field)
{
    sinceKey.start();
    rest.setSingleShot(true);
    rest.setInterval(pause);
    QObject::connect(&rest, &QTimer::timeout, this, std::move(typingRested));
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
    rest.start();
    typeIntoField(key);
    return true;
}

void ZNTTypingGuard::typeIntoField(const QKeyEvent& key)
{
    if (!field)
        return;
    if (field->isEnabled()) {
        QKeyEvent copy(key.type(), key.key(), key.modifiers(), key.text(), key.isAutoRepeat());
        QCoreApplication::sendEvent(field, &copy);
        return;
    }
    // At a session's end the field is disabled and gets no keys. What was typed stays for the next session.
    if (key.type() != QEvent::KeyPress)
        return;
    if (key.key() == Qt::Key_Backspace)
        field->backspace();
    else if (key.text().front().isPrint())
        field->insert(key.text());
}
