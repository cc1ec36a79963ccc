#include "ZNTTriggersTab.h"

#include "ZNTAnnouncement.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTPreferencesHost.h"
#include "ZNTQtText.h"
#include "ZNTServerConnectController.h"
#include "ZNTTriggerColumns.h"
#include "ZNTWindowServices.h"
#include "ui_PreferencesView.h"

#include <QHeaderView>
#include <algorithm>

namespace
{

std::vector<ZNTColumn> triggerColumns()
{
    using Kind = ZNTColumn::Kind;
    auto rows = ZNTTriggerColumns;
    std::ranges::sort(rows, {}, &ZNTTriggerColumn::placeInWindow);
    std::vector<ZNTColumn> columns;
    for (const auto& row : rows) {
        const bool isYesNo = std::holds_alternative<bool ZNTTrigger::*>(row.field);
        columns.push_back(
            {std::string(row.name), znt::qtText(row.heading), isYesNo ? Kind::YesNo : Kind::Text});
    }
    return columns;
}

/// The two columns of the triggers' table that hold long texts.
constexpr int patternColumn = 2, commandColumn = 3;

} // namespace

ZNTTriggersTab::ZNTTriggersTab(Ui::PreferencesView& form, ZNTPreferencesHost& host)
    : form(form),
      host(host),
      triggerRows(triggerColumns()),
      triggerTableView(form.triggerTableView, &triggerRows),
      triggerTextView(form.triggerTextView),
      triggers(host.services().database, triggerTableView, triggerTextView)
{
    triggers.isTriggerResting = [&session = host.serverConnectController()](std::int64_t oid) {
        return session.isTriggerResting(oid);
    };
    wireTable();
    wireButtons();
}

void ZNTTriggersTab::wireTable()
{
    triggerRows.setSource({[this] { return triggers.numberOfRowsInTableView(); },
                           [this](std::string_view column, long row) {
                               return triggers.tableViewObjectValueForTableColumn(column, row);
                           },
                           [this](const ZNTCellValue& value, std::string_view column, long row) {
                               triggers.tableViewSetObjectValue(value, column, row);
                           },
                           [this](long row) { return triggers.tableViewToolTipForRow(row); }});
    auto* header = form.triggerTableView->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (const int column : {patternColumn, commandColumn})
        header->setSectionResizeMode(column, QHeaderView::Stretch);
    QObject::connect(form.triggerTableView->selectionModel(), &QItemSelectionModel::selectionChanged,
                     form.triggerTableView, [this] {
                         triggers.tableViewSelectionDidChange();
                         showWhetherActive();
                     });
    for (auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        QObject::connect(&triggerRows, change, form.triggerTableView, [this] { rowsChanged(); });
    QObject::connect(&triggerRows, &QAbstractItemModel::dataChanged, form.triggerTableView,
                     [this] { rowsChanged(); });
}

void ZNTTriggersTab::wireButtons()
{
    const auto click = [](QPushButton* button, auto task) {
        QObject::connect(button, &QPushButton::clicked, button, task);
    };
    click(form.addTriggerButton, [this] { triggers.addEmptyRow(); });
    click(form.removeTriggerButton, [this] { triggers.removeItem(); });
    click(form.saveTriggerButton, [this] { saveTrigger(); });
    click(form.reloadTriggersButton, [this] { reloadTriggers(); });
    for (auto* line : {form.triggersInUse, form.inactiveHint}) {
        line->setMinimumHeight(form.reloadTriggersButton->sizeHint().height());
        line->standBeside();
    }
}

/// The number of triggers that are in use is not the one of the table any more.
void ZNTTriggersTab::rowsChanged()
{
    form.triggersInUse->clear();
    showWhetherActive();
}

/// A new trigger is inactive, which a player may not expect.
void ZNTTriggersTab::showWhetherActive()
{
    const auto* trigger = triggers.getObjectAtIndex(triggers.getCurrentSelectedTriggerIndex());
    form.inactiveHint->setText(
        trigger && !trigger->active
            ? QStringLiteral("Not active yet: mark Active, then press Reload triggers.")
            : QString());
}

void ZNTTriggersTab::reloadTriggers()
{
    host.serverConnectController().reloadTriggers();
    const QStringList inUse{QString::number(host.services().database.loadTriggers().size())};
    form.triggersInUse->setText(znt::announcementInWords(ZNTAnnouncement::TriggersInUse, inUse));
    znt::announce(ZNTAnnouncement::TriggersInUse, inUse);
}

void ZNTTriggersTab::saveTrigger()
{
    if (triggers.getCurrentSelectedTriggerIndex() < 0)
        return znt::announce(ZNTAnnouncement::NoTriggerSelected);
    triggers.saveToDatabase();
    const bool isSaved = host.services().database.didLastChangeSucceed();
    znt::announce(isSaved ? ZNTAnnouncement::TriggerSaved : ZNTAnnouncement::TriggerNotSaved);
}
