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
    ZNTCommandRecorderSheet(QWidget& window, const ZNTWindowServices& services);

    /// Opens the sheet on `commands`, the recorder's own list, which outlives the sheet.
    void show(ZNTCommandRecorderDataSource& commands);

private:
    ZNTSheetDialog* dialog;
    Ui::ZNTCommandRecorderView2 layout;
    ZNTRowModel rows;
    ZNTQtTableView theTableView;
    ZNTQtSheet theSheet;
    ZNTQtTextField aliasName, secondsBetweenSendingCommands;
    ZNTCommandRecorderView controller;
};
