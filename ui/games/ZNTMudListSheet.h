#pragma once

#include "ZNTFilteredGames.h"
#include "ZNTMudListArrayController.h"
#include "ZNTMudListController.h"
#include "ZNTQtElements.h"
#include "ZNTQtTableView.h"
#include "ZNTSheetDialog.h"

#include <QTimer>
#include <memory>

class ZNTDatabaseHelper;
class ZNTGameSettingsSheet;
class ZNTMudListHost;
namespace Ui
{
class ZNTMudListView;
}

/// The address book as a sheet: filter, add, edit in place, hide, restore, and pick the game for the
/// connection fields. A game has a page, settings, and a window of its own from here, too.
class ZNTMudListSheet
{
public:
    /// The main window's fields, which the picked game fills.
    struct GameFields {
        ZNTTextField& ipAddress;
        ZNTTextField& port;
        ZNTTextField& mudName;
    };

    /// A child of `window`; all else outlives the sheet.
    ZNTMudListSheet(QWidget& window, ZNTDatabaseHelper& database, GameFields fields, ZNTMudListHost& host);
    ~ZNTMudListSheet();

    /// Shows all games.
    void showWindow();
    /// Shows the games as they are stored now.
    void reload() { arrayController.reload(); }
    /// Says that this game goes on if another is picked. Empty while none is played.
    void setGameBeingPlayed(const QString& name);

private:
    void wireRows();
    void wireFilter();
    void wireButtons();

    /// Null if no row is selected.
    [[nodiscard]] const ZNTMudList* selectedGame() const;
    void selectRow(long row);
    void filter(const QString& text);
    void tellOfFilter() const;
    void pick();
    void addGame();
    void hideGame();
    void editCell();
    void endEditing();

    ZNTMudListHost& host;
    ZNTSheetDialog* dialog;
    std::unique_ptr<Ui::ZNTMudListView> layout;
    ZNTRowModel rows;
    ZNTQtTableView tableView;
    ZNTQtSheet theSheet;
    ZNTMudListArrayController arrayController;
    ZNTFilteredGames filtered;
    ZNTMudListController controller;
    std::unique_ptr<ZNTGameSettingsSheet> settingsSheet;
    QTimer typing; ///< runs out when the player has stopped typing a filter
};
