#include "ZNTMudListSheet.h"

#include "ZNTControlHelp.h"

#include <QHeaderView>

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

} // namespace

ZNTMudListSheet::ZNTMudListSheet(QWidget& window, const ZNTWindowServices& services, GameFields fields,
                                 std::function<void()> whenPicked)
    : whenPicked(std::move(whenPicked)),
      dialog(new ZNTSheetDialog(&window)),
      rows(gameColumns()),
      tableView((layout.setupUi(dialog), layout.tableView), &rows),
      theSheet(dialog),
      arrayController(services.database),
      controller(arrayController, {.tableView = tableView,
                                   .theSheet = theSheet,
                                   .ipAddress = fields.ipAddress,
                                   .portNumber = fields.port,
                                   .mudName = fields.mudName})
{
    wire();
    znt::explainControls(*dialog);
}

void ZNTMudListSheet::wire()
{
    ZNTMudListArrayController& games = arrayController;
    rows.setSource({[&games] { return games.numberOfRowsInTableView(); },
                    [&games](std::string_view column, long row) {
                        return games.tableViewObjectValueForTableColumn(column, row);
                    },
                    [&games](const ZNTCellValue& value, std::string_view column, long row) {
                        games.tableViewSetObjectValue(value, column, row);
                    },
                    [&games](long row) { return games.tableViewToolTipForRow(row); }});
    layout.tableView->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    const auto click = [this](QPushButton* button, auto task) {
        QObject::connect(button, &QPushButton::clicked, dialog, task);
    };
    click(layout.addButton, [this] { arrayController.addEmptyRow(); });
    click(layout.deleteButton, [this] { arrayController.deleteSelectedRow(); });
    click(layout.restoreButton, [this] { arrayController.restoreSystemMudList(); });
    click(layout.connectButton, [this] {
        controller.connectToMud();
        if (!dialog->isVisible())
            this->whenPicked();
    });
    click(layout.cancelButton, [this] { controller.cancelEditing(); });
    dialog->whenCancelled = [this] { controller.cancelEditing(); };
}

void ZNTMudListSheet::setGameBeingPlayed(const QString& name)
{
    const QString words =
        name.isEmpty()
            ? QString()
            : QStringLiteral("You are playing %1. Picking a game here only fills the connection fields; "
                             "the present game goes on.")
                  .arg(name);
    layout.playingHint->setText(words);
    layout.playingHint->setVisible(!words.isEmpty());
    layout.tableView->setStandingDescription(words);
}

void ZNTMudListSheet::showWindow()
{
    controller.showWindow();
    layout.tableView->setFocus();
    if (!layout.tableView->currentIndex().isValid())
        layout.tableView->setCurrentIndex(rows.index(0, 0));
}
