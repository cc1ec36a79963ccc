#pragma once

#include "ZNTMudListArrayController.h"
#include "ZNTScreenElements.h"

/// The sheet with the address book, from which the player picks a game.
class ZNTMudListController
{
public:
    struct Elements {
        ZNTTableView& tableView;
        ZNTPanel& theSheet;
        // The main window's fields, which picking a game fills
        ZNTTextField& ipAddress;
        ZNTTextField& portNumber;
        ZNTTextField& mudName;
    };

    /// Everything outlives this.
    ZNTMudListController(ZNTMudListArrayController& controller, Elements elements);
    ~ZNTMudListController() { controller.set_tableView(nullptr); }
    ZNTMudListController(const ZNTMudListController&) = delete;
    ZNTMudListController& operator=(const ZNTMudListController&) = delete;

    void showWindow() { elements.theSheet.show(); }
    void closeSheet() { elements.theSheet.close(); }
    void cancelEditing() { closeSheet(); }
    /// Fills the main window's fields from the selected game and closes the sheet; it does not connect. If no
    /// game is selected, it does nothing.
    void connectToMud();

private:
    ZNTMudListArrayController& controller;
    Elements elements;
};
