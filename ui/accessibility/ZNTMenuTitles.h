#pragma once

#include <QObject>

class QMenu;

/// While it lives, a menu that opens is announced with its title, and an item that gets the focus back from
/// its submenu has the focus for readers, too. Orca says only the item, and Qt announces no focus that comes
/// back.
class ZNTMenuTitles final : public QObject
{
public:
    explicit ZNTMenuTitles(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void announceTitle(const QMenu& menu);
    static void announceItemOfFrontMenu();
};
