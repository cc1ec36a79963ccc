#pragma once

#include "ZNTKeptRecordingsView.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTWindowServices.h"
#include "ui_ZNTKeptRecordingsForm.h"

#include <string_view>

class QDialog;
class ZNTServerConnectController;

/// The kept recordings in a window that stays open beside the game.
class ZNTKeptRecordingsSheet
{
public:
    /// A child of `window`; all else outlives the sheet.
    ZNTKeptRecordingsSheet(QWidget& window, const ZNTWindowServices& services, ZNTKeptRecordings& kept,
                           ZNTServerConnectController& session);

    void showWindow();

private:
    void wireRows();
    void wireButtons();
    void rename();
    void answer(std::u16string_view sentence);

    QDialog* dialog;
    Ui::ZNTKeptRecordingsForm layout;
    ZNTRowModel recordingRows, commandRows;
    ZNTQtTableView recordingsTable, commandsTable;
    ZNTKeptRecordingsView controller;
};
