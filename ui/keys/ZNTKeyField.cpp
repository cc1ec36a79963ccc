#include "ZNTKeyField.h"

#include <QKeyEvent>

namespace
{

bool isModifierAlone(int key)
{
    return key == 0 || key == Qt::Key_unknown || (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) ||
           key == Qt::Key_AltGr || (key >= Qt::Key_Super_L && key <= Qt::Key_Direction_R);
}

bool isPlain(const QKeyEvent& event)
{
    return (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
}

/// With these the player leaves the field, ends the sheet or stores the macro.
bool isForTheSheet(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return isPlain(event);
    default:
        return false;
    }
}

} // namespace

ZNTKeyField::ZNTKeyField(QWidget* parent) : QLineEdit(parent)
{
    setReadOnly(true);
    setPlaceholderText(QStringLiteral("Press a key"));
}

void ZNTKeyField::setKey(const QKeySequence& key)
{
    key_ = key;
    setText(key.toString(QKeySequence::NativeText));
}

bool ZNTKeyField::event(QEvent* event)
{
    // No shortcut of the sheet may act on a key that is meant for the field.
    if (event->type() == QEvent::ShortcutOverride && !isForTheSheet(static_cast<QKeyEvent&>(*event))) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void ZNTKeyField::keyPressEvent(QKeyEvent* event)
{
    if (isForTheSheet(*event) || isModifierAlone(event->key())) {
        event->ignore();
        return;
    }
    event->accept();
    QString refused;
    if (isPlain(*event) && (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)) {
        setKey({});
    } else {
        const QKeyCombination pressed(event->modifiers() & ~Qt::KeypadModifier,
                                      static_cast<Qt::Key>(event->key()));
        refused = refusal ? refusal(pressed) : QString();
        if (refused.isEmpty())
            setKey(QKeySequence(pressed));
    }
    if (whenPressed)
        whenPressed(refused);
}
