#pragma once

#include <QList>
#include <QString>

class ZNTMainMenu;

/// One row of the keyboard map.
struct ZNTKeyRow {
    QString what;
    QString keys;   ///< as they are shown: "Ctrl+," or "keypad 8 or Alt+Up"
    QString spoken; ///< the same with names for signs that voices leave out: "Ctrl+comma"
    QString place;  ///< the menu, or the part of the window
};

namespace znt
{

/// Everything in the menus that has a key, in their order, and then the keys that are in no menu.
QList<ZNTKeyRow> keyRows(const ZNTMainMenu& menu);

/// Whether the row fits what the player looks for: the very key ("ctrl+k", "F1"), or else words that all
/// occur in the row.
bool isWanted(const ZNTKeyRow& row, const QString& words);

} // namespace znt
