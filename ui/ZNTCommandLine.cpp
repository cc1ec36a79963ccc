#include "ZNTCommandLine.h"

#include <QKeyEvent>

namespace
{

/// A key of the numeric keypad that types something: with NumLock off they move the caret as ever.
bool isTypingKeypadKey(const QKeyEvent& event)
{
    return event.modifiers() == Qt::KeypadModifier && event.key() < Qt::Key_Escape;
}

void call(const std::function<void()>& handler)
{
    if (handler)
        handler();
}

} // namespace

ZNTCommandLine::ZNTCommandLine(QWidget* parent) : QLineEdit(parent) {}

bool ZNTCommandLine::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        // Unclaimed here, the key reaches the window's shortcuts; where none is enabled it is typed after
        // all.
        if (isTypingKeypadKey(*key) || (key->matches(QKeySequence::Copy) && !hasSelectedText())) {
            key->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void ZNTCommandLine::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    switch (plain ? event->key() : 0) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        call(whenReturnPressed);
        return;
    case Qt::Key_Up:
        call(whenUpPressed);
        return;
    case Qt::Key_Down:
        call(whenDownPressed);
        return;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (whenPaged)
            whenPaged(event->key() == Qt::Key_PageUp ? -1 : 1);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}
