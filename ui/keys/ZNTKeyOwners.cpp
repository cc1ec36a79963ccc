#include "ZNTKeyOwners.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QWidget>
#include <array>

namespace
{

/// What a field does with its keys, and what Qt or the desktop keeps for itself.
constexpr std::array editingKeys{
    QKeySequence::Copy,
    QKeySequence::Cut,
    QKeySequence::Paste,
    QKeySequence::Undo,
    QKeySequence::Redo,
    QKeySequence::SelectAll,
    QKeySequence::Delete,
    QKeySequence::DeleteStartOfWord,
    QKeySequence::DeleteEndOfWord,
    QKeySequence::DeleteEndOfLine,
    QKeySequence::DeleteCompleteLine,
    QKeySequence::MoveToNextWord,
    QKeySequence::MoveToPreviousWord,
    QKeySequence::SelectNextWord,
    QKeySequence::SelectPreviousWord,
    QKeySequence::MoveToStartOfDocument,
    QKeySequence::MoveToEndOfDocument,
    QKeySequence::SelectStartOfDocument,
    QKeySequence::SelectEndOfDocument,
    QKeySequence::WhatsThis,
    QKeySequence::Close,
    QKeySequence::NextChild,
    QKeySequence::PreviousChild,
};
constexpr std::array desktopKeys{
    QKeyCombination(Qt::AltModifier, Qt::Key_Tab),   QKeyCombination(Qt::AltModifier, Qt::Key_F4),
    QKeyCombination(Qt::AltModifier, Qt::Key_Space), QKeyCombination(Qt::ShiftModifier, Qt::Key_F10),
    QKeyCombination(Qt::AltModifier, Qt::Key_Down),  QKeyCombination(Qt::AltModifier, Qt::Key_Up)};

QString inWords(const QKeySequence& key) { return key.toString(QKeySequence::NativeText); }

QString plain(QString title)
{
    title.remove(QLatin1Char('&'));
    while (title.endsWith(QLatin1Char('.')))
        title.chop(1);
    return title;
}

/// A sign that takes Shift stands for its key with and without it: a keyboard sends the sign, and the desktop
/// finds the shortcut either way.
QList<QKeySequence> formsOf(QKeyCombination key)
{
    QList<QKeySequence> forms{QKeySequence(key)};
    const bool isLetter = key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z;
    const bool isSign = key.key() > Qt::Key_Space && key.key() < Qt::Key_Escape && !isLetter;
    if (isSign && key.keyboardModifiers().testFlag(Qt::ShiftModifier))
        forms << QKeySequence(QKeyCombination(key.keyboardModifiers() & ~Qt::ShiftModifier, key.key()));
    return forms;
}

/// The title of the action, menu, button or field that has the key. A dialog's letters act in the dialog
/// alone.
QString ownerInWindow(const QWidget& window, const QKeySequence& key)
{
    for (const QAction* action : window.findChildren<QAction*>())
        if (action->shortcuts().contains(key))
            return plain(action->iconText()); // which stays while the text names a macro
    for (const QMenu* menu : window.findChildren<QMenu*>())
        if (qobject_cast<const QMenuBar*>(menu->parentWidget()) &&
            QKeySequence::mnemonic(menu->title()) == key)
            return QStringLiteral("the menu ") + plain(menu->title());
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        if (button->window() == &window && button->shortcut() == key)
            return button->accessibleName().isEmpty() ? plain(button->text()) : button->accessibleName();
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->window() == &window && label->buddy() && QKeySequence::mnemonic(label->text()) == key)
            return plain(label->text());
    return {};
}

} // namespace

bool znt::isKeyForTyping(QKeyCombination key)
{
    const bool isFunctionKey = key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35;
    const auto beyondShift = key.keyboardModifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    return !isFunctionKey && beyondShift == Qt::NoModifier;
}

QString znt::ownerOfKey(const QWidget& window, QKeyCombination key)
{
    for (const QKeySequence& form : formsOf(key))
        if (QString owner = ownerInWindow(window, form); !owner.isEmpty())
            return owner;
    return {};
}

QString znt::refusalOfKey(const QWidget& window, QKeyCombination key)
{
    const QKeySequence sequence(key);
    if (isKeyForTyping(key))
        return inWords(sequence) +
               QStringLiteral(" is for typing. Take it with Ctrl or Alt, or take a function key.");
    if (const QString owner = ownerOfKey(window, key); !owner.isEmpty())
        return inWords(sequence) + QStringLiteral(" belongs to ") + owner + QLatin1Char('.');
    for (const QKeySequence::StandardKey editing : editingKeys)
        if (QKeySequence::keyBindings(editing).contains(sequence))
            return inWords(sequence) + QStringLiteral(" is for editing and moving.");
    for (const QKeyCombination desktop : desktopKeys)
        if (desktop == key)
            return inWords(sequence) + QStringLiteral(" belongs to the desktop.");
    return {};
}
