#pragma once

#include "ZNTCommandRecorderView.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTSheetDialog.h"
#include "ZNTWindowServices.h"
#include "ui_ZNTCommandRecorderView2.h"

/// The recorded commands as a sheet.
class ZNTCommandRecorderSheet
{
public:
    /// A child of `window`; all else outlives the sheet.
    ZNTCommandRecorderSheet(QWidget& window, const ZNTWindowServices& services, ZNTKeptRecordings& kept);

    /// Opens the sheet on `commands`, the recorder's own list, which outlives the sheet.
    void show(ZNTCommandRecorderDataSource& commands);
    /// The same for a player who wants to keep the list: asks for its name first, if there is anything in it.
    void showForKeeping(ZNTCommandRecorderDataSource& commands);

private:
    void keep();

    ZNTKeptRecordings& kept;
    ZNTSheetDialog* dialog;
    Ui::ZNTCommandRecorderView2 layout;
    ZNTRowModel rows;
    ZNTQtTableView theTableView;
    ZNTQtSheet theSheet;
    ZNTQtTextField aliasName, secondsBetweenSendingCommands;
    ZNTCommandRecorderView controller;
};
