#pragma once

#include "ZNTMudListArrayController.h"
#include "ZNTMudListController.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTSheetDialog.h"
#include "ZNTWindowServices.h"
#include "ui_ZNTMudListView.h"

/// The address book as a sheet: add, edit in place, hide, restore, and pick the game for the connection
/// fields.
class ZNTMudListSheet
{
public:
    /// The main window's fields, which the picked game fills.
    struct GameFields {
        ZNTTextField& ipAddress;
        ZNTTextField& port;
        ZNTTextField& mudName;
    };

    /// A child of `window`; all else outlives the sheet. `whenPicked` is called when a game has filled the
    /// fields.
    ZNTMudListSheet(QWidget& window, const ZNTWindowServices& services, GameFields fields,
                    std::function<void()> whenPicked);

    void showWindow();
    /// Shows the games as they are stored now.
    void reload() { arrayController.reload(); }
    /// Says that this game goes on if another is picked. Empty while none is played.
    void setGameBeingPlayed(const QString& name);

private:
    void wire();

    std::function<void()> whenPicked;
    ZNTSheetDialog* dialog;
    Ui::ZNTMudListView layout;
    ZNTRowModel rows;
    ZNTQtTableView tableView;
    ZNTQtSheet theSheet;
    ZNTMudListArrayController arrayController;
    ZNTMudListController controller;
};
