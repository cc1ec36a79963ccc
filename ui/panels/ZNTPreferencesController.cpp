#include "ZNTPreferencesController.h"

#include "ZNTAnnouncement.h"
#include "ZNTControlHelp.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTHintedTable.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTQtComboBox.h"
#include "ZNTQtText.h"
#include "ZNTServerConnectController.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTSoundFactory.h"
#include "ZNTTriggerColumns.h"
#include "ZNTWindowFit.h"
#include "ZNTWindowServices.h"

#include <QButtonGroup>
#include <QDialog>
#include <QHeaderView>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTimer>
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

std::optional<ZNTStringEncoding> encodingOf(const QRadioButton& button)
{
    return znt::encodingTitled(znt::textOfQt(button.text()));
}

/// Its box stands below the radio buttons and takes their place while it is ticked.
constexpr auto boxedEncoding = ZNTStringEncoding::Utf8;

QString wordsFor(ZNTStringEncoding encoding)
{
    const auto& row = znt::rowOf(encoding);
    return row.title.empty()
               ? QString::fromUtf8(row.name.data(), static_cast<qsizetype>(row.name.size())).toUpper()
               : znt::qtText(row.title);
}

/// A mark that is neither set nor cleared counts as cleared.
bool isMarked(const QCheckBox& box) { return box.checkState() == Qt::Checked; }

template <typename Task>
void whenMarked(QCheckBox& box, Task task)
{
    QObject::connect(&box, &QCheckBox::stateChanged, &box, [&box, task] { task(isMarked(box)); });
}

/// Calls `task` each time the window comes to the front.
template <typename Task>
void whenActivated(QDialog& window, Task task)
{
    class Watch final : public QObject
    {
    public:
        Watch(QDialog& window, Task task) : QObject(&window), task(std::move(task))
        {
            window.installEventFilter(this);
        }
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::WindowActivate)
                task();
            return false;
        }

    private:
        Task task;
    };
    new Watch(window, std::move(task));
}

enum Tab { TriggerTab, MacroTab, EncodingTab, SpeechTab, ProtocolTab };

} // namespace

ZNTPreferencesController::ZNTPreferencesController(QWidget& window, ZNTPreferencesHost& mudAppController)
    : dialog(new QDialog(&window)),
      mudAppController(mudAppController),
      serverConnectController(mudAppController.serverConnectController()),
      tabView((layout.setupUi(dialog), layout.tabView)),
      triggerRows(triggerColumns()),
      triggerTableView(layout.triggerTableView, &triggerRows),
      triggerTextView(layout.triggerTextView),
      triggers(mudAppController.services().database, triggerTableView, triggerTextView)
{
    znt::letButtonsWrap(*dialog);
    showSettings();
    wireTriggers();
    wireMacros();
    wireEncoding();
    wireSpeech();
    wireProtocols();
    wireSettings();
    znt::explainControls(*dialog);
    whenActivated(*dialog, [this] { refresh(); });
    refresh();
    QObject::connect(layout.closeButton, &QPushButton::clicked, dialog, &QDialog::close);
    QObject::connect(dialog, &QDialog::finished, &window, &QWidget::activateWindow);
    selectTriggerTab();
    // Later, when the focus has found its place.
    QObject::connect(layout.tabView, &QTabWidget::currentChanged, dialog,
                     [this] { QTimer::singleShot(0, dialog, [this] { announceTab(); }); });
}

void ZNTPreferencesController::showWindow()
{
    selectTriggerTab();
    if (!dialog->isVisible())
        znt::fitToScreen(*dialog);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void ZNTPreferencesController::sessionChanged(ZNTSessionChange what)
{
    switch (what) {
    case ZNTSessionChange::Speech:
        showSpeech();
        break;
    case ZNTSessionChange::Encoding:
        showEncoding();
        break;
    case ZNTSessionChange::Compression: // its switch decides on the sounds, too
    case ZNTSessionChange::Sounds:
        showProtocols();
        break;
    default: // nothing of the rest is shown here
        break;
    }
}

void ZNTPreferencesController::refresh()
{
    showSpeech();
    showEncoding();
    showProtocols();
}

void ZNTPreferencesController::showSpeech()
{
    layout.speechOnOffCheckBox->setChecked(serverConnectController.speechOnOffBindingState() == 1);
    layout.speechInterruptCheckBox->setChecked(serverConnectController.speechInterruptOnOffBindingState() ==
                                               1);
}

void ZNTPreferencesController::showEncoding()
{
    const auto buttons = layout.encoding->findChildren<QRadioButton*>();
    const auto inForce = serverConnectController.cfStringEncoding();
    const QString now = QStringLiteral("Text: ") + wordsFor(inForce);
    layout.encodingNow->setText(now);
    // A reader speaks the name before the description, so the description leaves the name out.
    const auto described = [&](std::optional<ZNTStringEncoding> encoding) {
        return encoding == inForce ? QStringLiteral("In force now") : now;
    };
    for (auto* button : buttons)
        button->setAccessibleDescription(described(encodingOf(*button)));
    layout.encodingUtf8->setAccessibleDescription(described(boxedEncoding) +
                                                  QStringLiteral(". Takes the place of the choice above"));
}

void ZNTPreferencesController::showProtocols()
{
    const auto& since = mudAppController.compressedSince();
    const QString compression =
        since ? QStringLiteral("Compressed since ") + since->toString(QStringLiteral("HH:mm"))
              : QStringLiteral("Not compressed");
    layout.compressionNow->setText(compression);
    layout._mccpCheckBox->setAccessibleDescription(compression);
    const QString sound = serverConnectController.playsSoundTags()
                              ? QStringLiteral("The game's sounds are played")
                              : QStringLiteral("The game's sounds are not played");
    layout.soundNow->setText(sound);
    layout._mspCheckBox->setAccessibleDescription(sound);
}

void ZNTPreferencesController::wireTriggers()
{
    triggers.isTriggerResting = [this](std::int64_t oid) {
        return serverConnectController.isTriggerResting(oid);
    };
    triggerRows.setSource({[this] { return triggers.numberOfRowsInTableView(); },
                           [this](std::string_view column, long row) {
                               return triggers.tableViewObjectValueForTableColumn(column, row);
                           },
                           [this](const ZNTCellValue& value, std::string_view column, long row) {
                               triggers.tableViewSetObjectValue(value, column, row);
                           },
                           [this](long row) { return triggers.tableViewToolTipForRow(row); }});
    auto* header = layout.triggerTableView->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    for (const int column : {patternColumn, commandColumn})
        header->setSectionResizeMode(column, QHeaderView::Stretch);
    QObject::connect(layout.triggerTableView->selectionModel(), &QItemSelectionModel::selectionChanged,
                     dialog, [this] { triggers.tableViewSelectionDidChange(); });
    QObject::connect(layout.addTriggerButton, &QPushButton::clicked, dialog,
                     [this] { triggers.addEmptyRow(); });
    QObject::connect(layout.removeTriggerButton, &QPushButton::clicked, dialog,
                     [this] { triggers.removeItem(); });
    QObject::connect(layout.saveTriggerButton, &QPushButton::clicked, dialog, [this] { saveTrigger(); });
    QObject::connect(layout.reloadTriggersButton, &QPushButton::clicked, dialog,
                     [this] { reloadTriggers(); });
}

void ZNTPreferencesController::wireMacros()
{
    const auto elements = mudAppController.macroElements();
    auto& groups = mudAppController.macroGroupDropDownController();
    auto& macros = mudAppController.mudMacroTableViewController();
    elements.groupSelector.addBox(layout.preferencesMacroGroupComboBox);
    ZNTQtTableView::furnish(*layout.preferencesMacroTable, elements.rows);
    layout.preferencesMacroTable->setSelectionModel(elements.table.selectionModel());
    layout.preferencesMacroTable->setEmptyHint(elements.list.emptyHint());
    QObject::connect(&elements.list, &ZNTHintedTable::emptyHintChanged, layout.preferencesMacroTable,
                     &ZNTHintedTable::setEmptyHint);
    layout.preferencesMacroTable->horizontalHeader()->hide();
    layout.preferencesMacroTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    const auto click = [this](QPushButton* button, auto task) {
        QObject::connect(button, &QPushButton::clicked, dialog, task);
    };
    click(layout.createMacroGroupButton, [&groups] { groups.createNewMacroGroup(); });
    click(layout.deleteMacroGroupButton, [&groups] { groups.deleteMacroGroup(); });
    click(layout.addMacroButton, [this] { showZNTAddMacroViewController(); });
    click(layout.editMacroButton, [this] { showZNTEditMacroViewController(); });
    click(layout.removeMacroButton, [&macros] { macros.removeItem(); });
}

void ZNTPreferencesController::wireEncoding()
{
    const auto choose = [this] {
        const QSignalBlocker blocker(layout.encodingUtf8);
        layout.encodingUtf8->setChecked(false);
        encodingChanged();
    };
    for (auto* button : layout.encoding->findChildren<QRadioButton*>()) {
        QObject::connect(button, &QRadioButton::toggled, dialog, [choose](bool on) {
            if (on)
                choose();
        });
        // The button that was chosen before the box was ticked does not toggle.
        QObject::connect(button, &QRadioButton::clicked, dialog, [this, choose] {
            if (isMarked(*layout.encodingUtf8))
                choose();
        });
    }
    whenMarked(*layout.encodingUtf8, [this](bool on) {
        if (on)
            serverConnectController.changeEncoding(boxedEncoding);
        else
            encodingChanged();
    });
}

void ZNTPreferencesController::wireSpeech()
{
    whenMarked(*layout.speechOnOffCheckBox, [this](bool) { textToSpeechOnAndOff(); });
    whenMarked(*layout.speechInterruptCheckBox,
               [this](bool on) { serverConnectController.setSpeechInterruptOnOffBindingState(on ? 1 : 0); });
    whenMarked(*layout.useSystemVoiceCheckBox,
               [this](bool on) { mudAppController.chooseSetting("system-voice", on ? "on" : "off"); });
    whenMarked(*layout.useTimerCheckBox,
               [this](bool on) { mudAppController.chooseSetting("pacing", on ? "on" : "off"); });
    QObject::connect(layout.speechRate, &QSpinBox::valueChanged, dialog,
                     [this](int rate) { mudAppController.chooseSetting("rate", std::to_string(rate)); });
    QObject::connect(layout.replayButton, &QPushButton::clicked, dialog,
                     [this] { serverConnectController.replayLastText(); });
    QObject::connect(layout.stopSpeakingButton, &QPushButton::clicked, dialog,
                     [this] { serverConnectController.stopSpeaking(); });
}

void ZNTPreferencesController::showSettings()
{
    const auto now = serverConnectController.settings();
    for (auto* button : layout.encoding->findChildren<QRadioButton*>()) {
        const QSignalBlocker blocker(button);
        if (encodingOf(*button) == now.encoding)
            button->setChecked(true);
    }
    for (const auto& [box, isOn] : {std::pair<QCheckBox*, bool>(layout._mspCheckBox, now.sounds),
                                    {layout._mccpCheckBox, now.compression},
                                    {layout.encodingUtf8, now.encoding == boxedEncoding},
                                    {layout.useSystemVoiceCheckBox, now.systemVoice},
                                    {layout.useTimerCheckBox, now.pacing}}) {
        const QSignalBlocker blocker(box);
        box->setChecked(isOn);
    }
    const QSignalBlocker blocker(layout.speechRate);
    layout.speechRate->setValue(now.rate);
    showMadeControls();
}

void ZNTPreferencesController::showMadeControls() { madeControls.show(); }

void ZNTPreferencesController::wireSettings()
{
    layout.rememberBox->setChecked(mudAppController.settings().isRemembering());
    whenMarked(*layout.rememberBox, [this](bool on) { mudAppController.settings().setRemembering(on); });
    const auto tabOf = [this](ZNTSettingTab tab) -> ZNTSettingControls::Tab {
        switch (tab) {
        case ZNTSettingTab::Triggers:
            return {layout.triggersTabLayout, layout.reloadTriggersButton};
        case ZNTSettingTab::Macros:
            return {layout.macrosTabLayout, layout.removeMacroButton};
        case ZNTSettingTab::Encoding:
            return {layout.encodingTabLayout, layout.encodingUtf8};
        case ZNTSettingTab::Speech:
            return {layout.speechTabLayout, layout.stopSpeakingButton};
        case ZNTSettingTab::Protocols:
            break;
        }
        return {layout.protocolsTabLayout, layout.muteCheckBox};
    };
    madeControls.make(mudAppController, tabOf);
}

void ZNTPreferencesController::wireProtocols()
{
    whenMarked(*layout._mspCheckBox, [this](bool) { mudSoundProtocolOnOff(); });
    whenMarked(*layout._mccpCheckBox, [this](bool) { mudClientCompressionProtocolOnOff(); });
    ZNTSoundFactory& sounds = mudAppController.services().sounds;
    layout.masterVolume->setValue(qRound(sounds.masterVolume() * 100));
    layout.muteCheckBox->setChecked(sounds.isMuted());
    QObject::connect(layout.masterVolume, &QSlider::valueChanged, dialog, [&sounds](int percent) {
        sounds.setMasterVolume(static_cast<float>(percent) / 100.0F);
    });
    whenMarked(*layout.muteCheckBox, [this](bool on) { mudAppController.setSoundsMuted(on); });
}

void ZNTPreferencesController::mudClientCompressionProtocolOnOff()
{
    // On at once, also without a connection: then the next game's first block is taken as compressed.
    serverConnectController.set_isMccpOnOff(isMarked(*layout._mccpCheckBox));
}

void ZNTPreferencesController::mudSoundProtocolOnOff()
{
    serverConnectController.set_isMspOnOff(isMarked(*layout._mspCheckBox));
}

void ZNTPreferencesController::textToSpeechOnAndOff()
{
    serverConnectController.setSpeechOnOffBindingState(isMarked(*layout.speechOnOffCheckBox) ? 1 : 0);
    serverConnectController.textToSpeechOnAndOff();
}

void ZNTPreferencesController::encodingChanged()
{
    for (const auto* button : layout.encoding->findChildren<QRadioButton*>())
        if (button->isChecked())
            serverConnectController.changeEncoding(znt::textOfQt(button->text()));
}

void ZNTPreferencesController::showNewTriggers(const std::vector<ZNTTrigger>& newTriggers)
{
    triggers.addObjectsToList(newTriggers);
}

void ZNTPreferencesController::reloadTriggers()
{
    serverConnectController.reloadTriggers();
    const auto inUse = mudAppController.services().database.loadTriggers().size();
    znt::announce(ZNTAnnouncement::TriggersInUse, {QString::number(inUse)});
}

void ZNTPreferencesController::saveTrigger()
{
    if (triggers.getCurrentSelectedTriggerIndex() < 0)
        return znt::announce(ZNTAnnouncement::NoTriggerSelected);
    triggers.saveToDatabase();
    const bool isSaved = mudAppController.services().database.didLastChangeSucceed();
    znt::announce(isSaved ? ZNTAnnouncement::TriggerSaved : ZNTAnnouncement::TriggerNotSaved);
}

/// If the focus goes into the page, a reader says where it goes, but not in which tab that is. The row of
/// tabs says it itself.
void ZNTPreferencesController::announceTab()
{
    if (dialog->isVisible())
        znt::announce(layout.tabView->tabBar()->hasFocus() ? ZNTAnnouncement::TabWithFocus
                                                           : ZNTAnnouncement::Tab,
                      {layout.tabView->tabText(layout.tabView->currentIndex())});
}

void ZNTPreferencesController::showZNTAddMacroViewController()
{
    mudAppController.showZNTAddMacroViewController();
}

void ZNTPreferencesController::showZNTEditMacroViewController()
{
    mudAppController.showZNTEditMacroViewController();
}

void ZNTPreferencesController::selectTriggerTab() { tabView.selectTab(TriggerTab); }

void ZNTPreferencesController::selectMacroTab() { tabView.selectTab(MacroTab); }

void ZNTPreferencesController::selectEncodingTab() { tabView.selectTab(EncodingTab); }

void ZNTPreferencesController::selectSpeechTab() { tabView.selectTab(SpeechTab); }

void ZNTPreferencesController::selectProtocolTab() { tabView.selectTab(ProtocolTab); }
