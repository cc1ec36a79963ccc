#pragma once

#include <QKeySequence>
#include <QString>

class QWidget;

namespace znt
{

/// Why a macro cannot have that key in the window, as a sentence for the player: what types or edits, and
/// what an action, a menu, a button or a field of the window has already. Empty if the key is free.
QString refusalOfKey(const QWidget& window, QKeyCombination key);

/// What an action, a menu, a button or a field of the window that has the key is called; empty if the key has
/// no owner there. Keys of macros have none.
QString ownerOfKey(const QWidget& window, QKeyCombination key);

/// A letter, a digit, an arrow and the like, alone or with Shift. Such a key belongs to the command line.
bool isKeyForTyping(QKeyCombination key);

} // namespace znt
