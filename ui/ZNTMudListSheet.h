#pragma once

#include "ZNTMudAppController.h"
#include "ZNTMudListArrayController.h"
#include "ZNTMudListController.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ui_ZNTMudListView.h"

class QDialog;

/// The address book as a sheet: add, edit in place, hide, restore, and pick the game for the connection
/// fields.
class ZNTMudListSheet
{
public:
    /// A child of `window`; `screen` has the connection fields. All of it outlives the sheet.
    ZNTMudListSheet(QWidget& window, const ZNTWindowServices& services, ZNTMainScreen& screen);

    void showWindow();

private:
    void wire();

    QDialog* dialog;
    Ui::ZNTMudListView layout;
    ZNTRowModel rows;
    ZNTQtTableView tableView;
    ZNTQtSheet theSheet;
    ZNTMudListArrayController arrayController;
    ZNTMudListController controller;
};
