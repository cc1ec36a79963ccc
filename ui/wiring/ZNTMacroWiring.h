#pragma once

#include <QObject>

class ZNTMainMenu;
class ZNTMainWindow;
class ZNTMudAppController;

/// Joins the macros of the main window to their buttons, keys and menu.
class ZNTMacroWiring
{
public:
    /// The caller owns what it passes; all of it outlives this.
    ZNTMacroWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller);

    /// Run and Remove need a selected macro, and Run a connection as well. Edit has an answer of its own.
    void showButtons();

private:
    void wireGroups();
    void wireList();
    void wireNumbers();
    void nameNumbers();
    void followSelection();

    ZNTMainWindow& window;
    ZNTMainMenu& menu;
    ZNTMudAppController& controller;
    QObject listener; ///< ends what follows the list with this
};
