#include "ZNTMudListSheet.h"

#include "ZNTAnnouncement.h"
#include "ZNTControlHelp.h"
#include "ZNTGameSettingsSheet.h"
#include "ZNTMudListHost.h"
#include "ZNTPlainKeys.h"
#include "ZNTQtText.h"
#include "ui_ZNTMudListView.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <algorithm>

namespace
{

std::vector<ZNTColumn> gameColumns()
{
    using Kind = ZNTColumn::Kind;
    return {{"name", QStringLiteral("Name"), Kind::Text},
            {"telnetURL", QStringLiteral("Address"), Kind::Text},
            {"port", QStringLiteral("Port"), Kind::Number, true, 65535},
            {"defaultConnection", QStringLiteral("Default"), Kind::YesNo},
            {"active", QStringLiteral("Available"), Kind::YesNo},
            {"url", QStringLiteral("Web page"), Kind::Text}};
}

/// It becomes narrow first, since a button opens the page.
constexpr int webPageColumn = 5;

/// Each letter finds something else. What is found in the end is announced.
constexpr int pauseInTyping = 600; // milliseconds

QString hintIfEmpty(const QString& filter)
{
    return filter.trimmed().isEmpty()
               ? QStringLiteral("No games are shown. New game makes one, Restore hidden brings back those "
                                "that you have hidden.")
               : QStringLiteral("No game matches \"%1\". Empty the filter to see all games.").arg(filter);
}

} // namespace

ZNTMudListSheet::ZNTMudListSheet(QWidget& window, ZNTDatabaseHelper& database, GameFields fields,
                                 ZNTMudListHost& host)
    : host(host),
      dialog(new ZNTSheetDialog(&window)),
      layout(std::make_unique<Ui::ZNTMudListView>()),
      rows(gameColumns()),
      tableView((layout->setupUi(dialog), layout->tableView), &rows),
      theSheet(dialog),
      arrayController(database),
      filtered(arrayController, tableView),
      controller(arrayController, {.tableView = filtered,
                                   .theSheet = theSheet,
                                   .ipAddress = fields.ipAddress,
                                   .portNumber = fields.port,
                                   .mudName = fields.mudName}),
      settingsSheet(std::make_unique<ZNTGameSettingsSheet>(*dialog, host))
{
    wireRows();
    wireFilter();
    wireButtons();
    znt::explainControls(*dialog);
}

ZNTMudListSheet::~ZNTMudListSheet() = default;

void ZNTMudListSheet::wireRows()
{
    ZNTMudListArrayController& games = arrayController;
    rows.setSource(
        {[this] { return filtered.numberOfShownRows(); },
         [this, &games](std::string_view column, long row) {
             return games.tableViewObjectValueForTableColumn(column, filtered.listRow(row));
         },
         [this, &games](const ZNTCellValue& value, std::string_view column, long row) {
             games.tableViewSetObjectValue(value, column, filtered.listRow(row));
         },
         [this, &games](long row) { return games.tableViewToolTipForRow(filtered.listRow(row)); }});
    ZNTHintedTable& table = *layout->tableView;
    table.shareWidth({webPageColumn});
    table.setEditTriggers(QAbstractItemView::EditKeyPressed); // a double click uses the game
    QObject::connect(&table, &QTableView::doubleClicked, dialog, [this](const QModelIndex& cell) {
        if (rows.column(cell).kind != ZNTColumn::Kind::YesNo) // two clicks on a mark set and clear it
            pick();
    });
    const auto enableButtons = [this] {
        const bool hasGame = tableView.selectedRow() >= 0;
        for (auto* button : {layout->editButton, layout->deleteButton, layout->gameSettingsButton,
                             layout->webPageButton, layout->newWindowButton, layout->connectButton})
            button->setEnabled(hasGame);
    };
    QObject::connect(table.selectionModel(), &QItemSelectionModel::selectionChanged, dialog, enableButtons);
    enableButtons();
}

void ZNTMudListSheet::wireFilter()
{
    typing.setSingleShot(true);
    typing.setInterval(pauseInTyping);
    QObject::connect(&typing, &QTimer::timeout, dialog, [this] { tellOfFilter(); });
    QObject::connect(layout->filterField, &QLineEdit::textChanged, dialog,
                     [this](const QString& text) { filter(text); });
    QObject::connect(layout->filterField, &QLineEdit::textEdited, &typing, qOverload<>(&QTimer::start));
    for (auto* emptying : layout->filterField->findChildren<QAction*>()) { // Qt's own, without words
        emptying->setText(QStringLiteral("Empty the filter"));
        emptying->setWhatsThis(QStringLiteral("Empties the filter, which shows all games again."));
    }
    new ZNTPlainKeys(*layout->filterField, {Qt::Key_Down}, [this] {
        layout->tableView->setFocus(Qt::TabFocusReason);
        return true;
    });
}

void ZNTMudListSheet::wireButtons()
{
    const auto click = [this](QPushButton* button, auto task) {
        QObject::connect(button, &QPushButton::clicked, dialog, [this, task] {
            endEditing();
            task();
        });
    };
    const auto clickForGame = [this, &click](QPushButton* button, auto task) {
        click(button, [this, task] {
            if (const auto* game = selectedGame())
                task(*game);
        });
    };
    click(layout->addButton, [this] { addGame(); });
    click(layout->editButton, [this] { editCell(); });
    click(layout->deleteButton, [this] { hideGame(); });
    click(layout->restoreButton, [this] {
        layout->filterField->clear();
        arrayController.restoreSystemMudList();
    });
    clickForGame(layout->gameSettingsButton,
                 [this](const ZNTMudList& game) { settingsSheet->showFor(game); });
    clickForGame(layout->webPageButton, [this](const ZNTMudList& game) { host.openWebPage(*dialog, game); });
    clickForGame(layout->newWindowButton, [this](const ZNTMudList& game) { host.playInNewWindow(game); });
    click(layout->connectButton, [this] { pick(); });
    click(layout->closeGamesButton, [this] { controller.cancelEditing(); });
    dialog->whenCancelled = [this] { controller.cancelEditing(); };
}

const ZNTMudList* ZNTMudListSheet::selectedGame() const
{
    return arrayController.objectAtIndex(filtered.selectedRow());
}

void ZNTMudListSheet::selectRow(long row)
{
    if (rows.rowCount() == 0)
        return;
    const long last = rows.rowCount() - 1L;
    layout->tableView->setCurrentIndex(rows.index(static_cast<int>(std::clamp(row, 0L, last)), 0));
}

/// The selected game stays selected if it is still shown. Else it is the first one.
void ZNTMudListSheet::filter(const QString& text)
{
    const long selected = filtered.selectedRow();
    layout->tableView->setEmptyHint(hintIfEmpty(text));
    filtered.setFilter(znt::textOfQt(text));
    selectRow(filtered.shownRow(selected));
}

void ZNTMudListSheet::tellOfFilter() const
{
    const auto* game = selectedGame();
    if (game)
        znt::announce(ZNTAnnouncement::GamesFound,
                      {QString::number(filtered.numberOfShownRows()), znt::qtText(game->name)});
    else
        znt::announce(ZNTAnnouncement::NotFound, {QStringLiteral("No game matches")});
}

void ZNTMudListSheet::pick()
{
    controller.connectToMud();
    if (!dialog->isVisible())
        host.gamePicked();
}

/// A new game has no name yet, so the player types it at once.
void ZNTMudListSheet::addGame()
{
    layout->filterField->clear();
    arrayController.addEmptyRow();
    layout->tableView->edit(layout->tableView->currentIndex());
}

void ZNTMudListSheet::hideGame()
{
    const long row = tableView.selectedRow();
    arrayController.deleteSelectedRow();
    selectRow(row);
}

/// The cell that the keyboard is on; of a mark, which has no text, the name beside it.
void ZNTMudListSheet::editCell()
{
    QModelIndex cell = layout->tableView->currentIndex();
    if (!cell.isValid())
        return;
    if (rows.column(cell).kind == ZNTColumn::Kind::YesNo)
        cell = cell.siblingAtColumn(0);
    layout->tableView->setFocus(Qt::OtherFocusReason);
    layout->tableView->setCurrentIndex(cell);
    layout->tableView->edit(cell);
}

/// A button's key leaves an open editor as it is. What is typed there belongs to the row that is edited, and
/// the button may bring another game there.
void ZNTMudListSheet::endEditing()
{
    const QWidget* focused = QApplication::focusWidget();
    if (focused && focused != layout->tableView && layout->tableView->isAncestorOf(focused))
        layout->tableView->setFocus(Qt::OtherFocusReason);
}

void ZNTMudListSheet::setGameBeingPlayed(const QString& name)
{
    const QString words =
        name.isEmpty()
            ? QString()
            : QStringLiteral("You are playing %1. Picking a game here only fills the connection fields; "
                             "the present game goes on.")
                  .arg(name);
    layout->playingHint->setText(words);
    layout->playingHint->setVisible(!words.isEmpty());
    layout->tableView->setStandingDescription(words);
}

void ZNTMudListSheet::showWindow()
{
    if (!dialog->isVisible())
        layout->filterField->clear();
    controller.showWindow();
    layout->tableView->setFocus();
    if (tableView.selectedRow() < 0)
        selectRow(layout->tableView->currentIndex().row());
}
