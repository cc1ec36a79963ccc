#include "ZNTCommandLine.h"

#include <QKeyEvent>
#include <QRegularExpression>

namespace
{

/// A key of the numeric keypad that types a character. With NumLock off these keys move the caret.
bool isTypingKeypadKey(const QKeyEvent& event)
{
    return event.modifiers() == Qt::KeypadModifier && event.key() < Qt::Key_Escape;
}

/// Keys that a line edit would use, but that the window needs: Copy if nothing is selected here, the end of
/// the output, and the macro to edit, which is an End key on X11.
bool isMoreUsefulInTheWindow(const QKeyEvent& event, bool hasSelection)
{
    return isTypingKeypadKey(event) || (event.matches(QKeySequence::Copy) && !hasSelection) ||
           event.matches(QKeySequence::MoveToEndOfDocument) ||
           event.keyCombination() == QKeyCombination(Qt::ControlModifier, Qt::Key_E);
}

void call(const std::function<void()>& handler)
{
    if (handler)
        handler();
}

} // namespace

ZNTCommandLine::ZNTCommandLine(QWidget* parent) : QLineEdit(parent) {}

void ZNTCommandLine::setTypingHidden(bool isHidden)
{
    if (isHidden == (echoMode() == Password))
        return;
    if (!isHidden)
        clear();
    setEchoMode(isHidden ? Password : Normal);
}

bool ZNTCommandLine::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        // If the line does not claim the key, the window's shortcuts get it. If none is enabled, it is typed.
        if (isMoreUsefulInTheWindow(*key, hasSelectedText())) {
            key->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

bool ZNTCommandLine::focusNextPrevChild(bool next)
{
    if (isEnabled() || !whenDisabledWithFocus)
        return QLineEdit::focusNextPrevChild(next);
    whenDisabledWithFocus();
    return true;
}

void ZNTCommandLine::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    switch (plain ? event->key() : 0) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        sendLines();
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

void ZNTCommandLine::sendLines()
{
    static const QRegularExpression lineEnd(QStringLiteral("\r\n?|\n|\u2028|\u2029"));
    const QStringList lines = text().split(lineEnd);
    const qsizetype last = lines.size() - 1;
    for (qsizetype line = 0; line < last; ++line) {
        setText(lines[line]);
        call(whenReturnPressed);
    }
    // A text that ends with a line end has no further line behind it.
    if (last > 0 && lines[last].isEmpty())
        return;
    if (last > 0)
        setText(lines[last]);
    call(whenReturnPressed);
}
