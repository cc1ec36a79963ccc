#pragma once

#include "ZNTChannelHistory.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTSheetDialog.h"
#include "ui_ZNTChannelHistoryView.h"

#include <functional>
#include <vector>

/// The last lines of a channel, or of all, as a sheet. A line can be taken into the command line.
class ZNTChannelHistorySheet
{
public:
    /// A child of `window`; `history` outlives the sheet. `lineTaken` gets the text of a line that the player
    /// has picked; the sheet is closed then.
    ZNTChannelHistorySheet(QWidget& window, ZNTChannelHistory& history,
                           std::function<void(const QString& line)> lineTaken);

    /// Opens the sheet on the lines that are kept now, with the newest one selected.
    void show();

private:
    void listChannels();
    void showLines();
    void takeLine();
    [[nodiscard]] std::u16string shownChannel() const;
    [[nodiscard]] std::u16string cell(std::string_view column, long row) const;

    ZNTChannelHistory& history;
    std::function<void(const QString& line)> lineTaken;
    ZNTSheetDialog* dialog;
    Ui::ZNTChannelHistoryView layout;
    ZNTRowModel rows;
    ZNTQtTableView tableView;
    ZNTQtSheet theSheet;
    std::vector<ZNTChannelLine> lines; ///< shown now
};
