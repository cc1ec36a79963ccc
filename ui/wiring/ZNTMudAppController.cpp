#include "ZNTMudAppController.h"

#include "ZNTClientActions.h"
#include "ZNTCommandRecorderSheet.h"
#include "ZNTGameListWiring.h"
#include "ZNTGameSettings.h"
#include "ZNTHintedTable.h"
#include "ZNTKeptRecordingsSheet.h"
#include "ZNTMacroSheets.h"
#include "ZNTPreferencesController.h"
#include "ZNTQtText.h"
#include "ZNTRecorder.h"
#include "ZNTSoundFactory.h"
#include "ZNTText.h"

#include <QCoreApplication>
#include <QProcess>

ZNTMudAppController::ZNTMudAppController(ZNTMainWindow& window, const ZNTWindowServices& services)
    : mainWindow(window),
      windowServices(services),
      mainScreen(window),
      keeper(services.platform.places, services.platform.log, services.settingsOfCommandLine),
      kept(services.platform.places, services.platform.log),
      zntMacroGroupDropDownController(services.platform, services.database, mainScreen.macroComboBoxGroup),
      zntMudMacroTableViewController(services.platform, services.database, zntMacroGroupDropDownController,
                                     mainScreen.macroTable),
      zntServerConnectController(
          services.platform, mainScreen.sessionScreen(),
          {.database = services.database,
           .macros = zntMudMacroTableViewController,
           .sounds = services.sounds,
           .speechEngine = services.speechEngine,
           .screenReader = services.screenReader,
           .streams = services.streams,
           .showZNTCommandRecorderView =
               [this](ZNTCommandRecorderDataSource& commands) { showZNTCommandRecorderView(commands); },
           .sessionChanged = [this](ZNTSessionChange what) { changed(what); },
           .textShown =
               [this](std::u16string_view text) {
                   if (whenTextShown)
                       whenTextShown(text);
               },
           .silencePassed =
               [this] {
                   if (whenSilencePassed)
                       whenSilencePassed();
               },
           .notice =
               [this](const ZNTSessionNotice& notice) {
                   if (whenNoticed)
                       whenNoticed(notice);
               },
           .settings = keeper.settings()}),
      macroShortcuts(makeMacroShortcuts()),
      zntMudListController(std::make_unique<ZNTGameListWiring>(window, mainScreen, *this))
{
    startProgram = [](const QString& program, const QStringList& arguments) {
        return QProcess::startDetached(program, arguments);
    };
    ZNTMacroGroupDropDownController& groups = zntMacroGroupDropDownController;
    mainScreen.macroComboBoxGroup.setSource(
        {[&groups] { return groups.numberOfItemsInComboBox(); },
         [&groups](long index) { return groups.comboBoxObjectValueForItemAtIndex(index); }});
    mainScreen.macroComboBoxGroup.whenTextChanges([this, &groups](const std::u16string& text) {
        groups.setCurrentValueInComboBox(text);
        explainNoMacros();
    });
    // The group whose name was typed exists now.
    comboBoxChanged = services.platform.notifications.observe(
        "COMBO_BOX_CHANGED", [this](std::string_view, const void*) { explainNoMacros(); });
    explainNoMacros();

    ZNTMudMacroTableViewController& macros = zntMudMacroTableViewController;
    mainScreen.macroRows.setSource({[&macros] { return macros.countOfMacros(); },
                                    [&macros](std::string_view, long row) -> ZNTCellValue {
                                        const auto macro = macros.getMacroAtIndex(row);
                                        return macro ? macro->name : std::u16string();
                                    },
                                    {},
                                    [&macros](long row) { return macros.tableViewToolTipForRow(row); },
                                    [this](long row) { return keysOfMacro(row); }});
}

ZNTMudAppController::~ZNTMudAppController() = default;

ZNTPreferencesHost::MacroElements ZNTMudAppController::macroElements()
{
    return {mainScreen.macroComboBoxGroup, mainScreen.macroRows, mainScreen.macroTable,
            mainScreen.macroList()};
}

void ZNTMudAppController::explainNoMacros()
{
    const QString words =
        zntMacroGroupDropDownController.getCurrentMacroGroup()
            ? QStringLiteral("This group has no macros yet. Add makes one.")
            : QStringLiteral("Pick a group above, or type the name of a new one and press Return.");
    mainScreen.macroList().setEmptyHint(words);
}

void ZNTMudAppController::awakeFromNib()
{
    zntServerConnectController.awakeFromNib();
    if (whenNoticed && !macroShortcuts.clash().empty())
        whenNoticed({ZNTSessionNotice::Kind::Fact, macroShortcuts.clash()});
}

void ZNTMudAppController::showZNTMudListController()
{
    zntMudListController->setGameBeingPlayed(gameBeingPlayed());
    zntMudListController->showWindow();
}

void ZNTMudAppController::showZNTAddMacroViewController()
{
    if (!zntMacroGroupDropDownController.getCurrentMacroGroup()) {
        windowServices.platform.alert.showMessage(
            u"Macro does not exist.", u"Please select a Macro Group before trying to add a new Macro.");
        return;
    }
    if (!zntAddMacroViewController) {
        zntAddMacroViewController = std::make_unique<ZNTAddMacroSheet>(
            mainWindow, windowServices, zntMacroGroupDropDownController, zntMudMacroTableViewController);
        zntAddMacroViewController->whenDone = [this] { takeAddedMacro(); };
        zntAddMacroViewController->key().refusal = [this](QKeyCombination key) {
            return macroShortcuts.refusal(key, /*macro=*/0);
        };
    }
    zntAddMacroViewController->showWindow();
}

/// The new macro is selected. The store numbers macros upwards; one that could not be stored has no number
/// and stands at the end.
void ZNTMudAppController::takeAddedMacro()
{
    const ZNTMudMacroTableViewController& macros = zntMudMacroTableViewController;
    long newest = macros.countOfMacros() - 1;
    if (newest < 0)
        return;
    for (long row = 0; !macros.getMacroAtIndex(newest)->isUnsaved && row < newest; ++row)
        if (macros.getMacroAtIndex(row)->oid > macros.getMacroAtIndex(newest)->oid)
            newest = row;
    ZNTHintedTable& list = mainScreen.macroList();
    list.selectRow(static_cast<int>(newest));
    list.scrollTo(list.currentIndex());
    if (!macros.getMacroAtIndex(newest)->isUnsaved)
        giveKey(macros.getMacroAtIndex(newest)->oid, zntAddMacroViewController->key().key());
    zntAddMacroViewController->key().show({}); // as the other fields are emptied
}

void ZNTMudAppController::giveKey(std::int64_t macro, const QKeySequence& key)
{
    if (macro == 0)
        return; // it is not stored, so nothing would know it again
    if (const auto given = macroShortcuts.give(macro, key); !given)
        windowServices.platform.alert.showMessage(u"The key was not kept.",
                                                  znt::textFromUtf8(given.error().description));
    mainScreen.macroRows.reload();
}

QString ZNTMudAppController::keysOfMacro(long row) const
{
    QStringList keys;
    if (row < znt::numberedMacros)
        keys << QKeySequence(Qt::AltModifier | static_cast<Qt::Key>(Qt::Key_1 + row))
                    .toString(QKeySequence::NativeText);
    const auto macro = zntMudMacroTableViewController.getMacroAtIndex(row);
    if (const auto own = macro ? macroShortcuts.keyOf(macro->oid) : QKeySequence(); !own.isEmpty())
        keys << own.toString(QKeySequence::NativeText);
    return keys.join(QStringLiteral(", "));
}

ZNTMacroShortcuts ZNTMudAppController::makeMacroShortcuts()
{
    auto& macros = zntMudMacroTableViewController;
    return {mainWindow,
            windowServices.platform.places,
            windowServices.platform.log,
            {.name = [&macros](std::int64_t oid) -> std::optional<QString> {
                 const auto macro = macros.macroNumbered(oid);
                 return macro ? std::optional(znt::qtText(macro->name)) : std::nullopt;
             },
             .run =
                 [this, &macros](std::int64_t oid) {
                     const auto macro = macros.macroNumbered(oid);
                     if (macro && zntServerConnectController.isConnected())
                         zntServerConnectController.sendMessageToServer(macro->dataToExecute,
                                                                        /*ignoreSpecials=*/false);
                 }}};
}

void ZNTMudAppController::showZNTEditMacroViewController()
{
    if (!zntMacroGroupDropDownController.getCurrentMacroGroup()) {
        windowServices.platform.alert.showMessage(u"Macro does not exist.",
                                                  u"Please select a Macro before trying to edit it.");
        return;
    }
    if (!zntEditMacroViewController) {
        zntEditMacroViewController = std::make_unique<ZNTEditMacroSheet>(
            mainWindow, windowServices, zntMacroGroupDropDownController, zntMudMacroTableViewController);
        zntEditMacroViewController->whenDone = [this] {
            giveKey(editedMacro, zntEditMacroViewController->key().key());
        };
        zntEditMacroViewController->key().refusal = [this](QKeyCombination key) {
            return macroShortcuts.refusal(key, editedMacro);
        };
    }
    const auto selected = zntMudMacroTableViewController.getMacroAtIndex(
        zntMudMacroTableViewController.getCurrentSelectedMacroIndex());
    editedMacro = selected ? selected->oid : 0;
    zntEditMacroViewController->key().show(macroShortcuts.keyOf(editedMacro));
    zntEditMacroViewController->showWindow();
}

void ZNTMudAppController::showPreferencesView()
{
    if (!preferencesController)
        preferencesController = std::make_unique<ZNTPreferencesController>(mainWindow, *this);
    preferencesController->showWindow();
}

void ZNTMudAppController::showImported(const std::vector<ZNTTrigger>& newTriggers)
{
    // The lists of macros read the store again, the groups first.
    auto& notifications = windowServices.platform.notifications;
    notifications.post(ZNTMacroGroupDropDownController::comboBoxChangedName, this);
    notifications.post("MACRO_ADDED", this);
    zntMudListController->reload();
    if (preferencesController)
        preferencesController->showNewTriggers(newTriggers);
}

void ZNTMudAppController::setSoundsMuted(bool muted)
{
    windowServices.sounds.setMuted(muted);
    changed(ZNTSessionChange::Sounds);
}

QString ZNTMudAppController::gameBeingPlayed() const
{
    return zntServerConnectController.isConnected() ? playedGame_ : QString();
}

/// A game may have settings of its own. They end with the connection.
void ZNTMudAppController::useSettingsOfGame()
{
    if (!znt::useSettingsOfGame(keeper, zntServerConnectController, mainScreen.ipAddress.text(),
                                mainScreen.port.text()))
        return;
    if (preferencesController)
        preferencesController->showSettings();
    if (whenSettingsChange)
        whenSettingsChange();
}

void ZNTMudAppController::chooseSetting(std::string_view name, const std::string& text)
{
    take([&] { return keeper.choose(name, text); });
}

void ZNTMudAppController::chooseSettingForAllGames(std::string_view name, const std::string& text)
{
    take([&] { return keeper.chooseForAllGames(name, text); });
}

void ZNTMudAppController::chooseSettingForGame(const std::string& game, std::string_view name,
                                               const std::string& text)
{
    take([&] { return keeper.chooseForGame(game, name, text); });
}

/// The mark stands in the preferences and on the card of the first start.
void ZNTMudAppController::setRemembering(bool on)
{
    keeper.setRemembering(on);
    if (preferencesController)
        preferencesController->showRemembering();
    if (whenSettingsChange)
        whenSettingsChange();
}

void ZNTMudAppController::take(const std::function<ZNTResult<void>()>& choice)
{
    keeper.noteChoices(zntServerConnectController.settings());
    const bool wasStandard = keeper.settings().standardTelnet;
    static_cast<void>(choice()); // the controls offer good values only
    zntServerConnectController.setSettings(keeper.settings());
    if (preferencesController)
        preferencesController->showMadeControls();
    if (whenSettingsChange)
        whenSettingsChange();
    const bool isStandard = keeper.settings().standardTelnet;
    if (isStandard != wasStandard && whenNoticed)
        whenNoticed(
            znt::notices::standardTelnetSwitched(isStandard, zntServerConnectController.isConnected()));
}

void ZNTMudAppController::changed(ZNTSessionChange what)
{
    // The player's switches work on the session itself, so each change may be a choice to remember.
    keeper.noteChoices(zntServerConnectController.settings());
    if (what == ZNTSessionChange::State)
        useSettingsOfGame();
    if (what == ZNTSessionChange::State || what == ZNTSessionChange::Compression)
        noteCompression();
    if (what == ZNTSessionChange::State && zntMudListController) // the session may end after it
        zntMudListController->setGameBeingPlayed(gameBeingPlayed());
    if (preferencesController)
        preferencesController->sessionChanged(what);
    if (whenSessionChanges)
        whenSessionChanges(what);
}

/// The session does not keep the time.
void ZNTMudAppController::noteCompression()
{
    if (!zntServerConnectController._mccp())
        compressedSince_.reset();
    else if (!compressedSince_)
        compressedSince_ = QDateTime::currentDateTime();
}

void ZNTMudAppController::newApp() { startInstance({}); }

void ZNTMudAppController::startInstance(const QStringList& arguments)
{
    const QString program = QCoreApplication::applicationFilePath();
    if (startProgram(program, arguments))
        return;
    windowServices.platform.alert.showMessage(
        u"No new window.", znt::textOfQt(QStringLiteral("%1 could not be started.").arg(program)));
}

void ZNTMudAppController::showZNTCommandRecorderView(ZNTCommandRecorderDataSource& commands)
{
    recorderSheet().show(commands);
}

ZNTCommandRecorderSheet& ZNTMudAppController::recorderSheet()
{
    if (!_zntCommandRecorderView)
        _zntCommandRecorderView = std::make_unique<ZNTCommandRecorderSheet>(mainWindow, windowServices, kept);
    return *_zntCommandRecorderView;
}

void ZNTMudAppController::keepRecording()
{
    recorderSheet().showForKeeping(zntServerConnectController.recorder()._textRecorderBean());
}

void ZNTMudAppController::showKeptRecordings()
{
    if (!keptRecordingsSheet)
        keptRecordingsSheet = std::make_unique<ZNTKeptRecordingsSheet>(mainWindow, windowServices, kept,
                                                                       zntServerConnectController);
    keptRecordingsSheet->showWindow();
}
