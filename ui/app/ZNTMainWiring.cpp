#include "ZNTMainWiring.h"

#include "ZNTAppearance.h"
#include "ZNTCommandLine.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDemoGame.h"
#include "ZNTFindBar.h"
#include "ZNTHelpWindow.h"
#include "ZNTHintedTable.h"
#include "ZNTKeypadKeys.h"
#include "ZNTOutputView.h"
#include "ZNTPlainKeys.h"
#include "ZNTQtText.h"
#include "ZNTQuitAnywhere.h"
#include "ZNTWindowFit.h"

#include <QApplication>
#include <QDialog>
#include <QFontDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollArea>
#include <QTableView>
#include <array>

namespace
{

constexpr double smallestControls = 8;
constexpr double largestControls = 48;
constexpr double controlsStep = 2;

QString text(const char* latin) { return QString::fromLatin1(latin); }

/// Triggering one is triggering the other.
void joinButton(QPushButton* button, QAction* action)
{
    QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
}

/// For a panel that is not of our making: Qt leaves its lists, and the fields that go with them, without
/// names.
void nameFieldsByTheirLabels(QWidget& panel)
{
    for (const QLabel* label : panel.findChildren<QLabel*>())
        if (label->buddy())
            label->buddy()->setAccessibleName(label->text().remove(QLatin1Char('&')));
    for (QLineEdit* field : panel.findChildren<QLineEdit*>())
        if (field->focusProxy())
            field->setAccessibleName(field->focusProxy()->accessibleName());
    for (auto* list : panel.findChildren<QListView*>(Qt::FindDirectChildrenOnly))
        if (list->accessibleName().isEmpty())
            list->setAccessibleName(text("Size")); // the label goes with the field
}

void whenTriggered(QAction* action, std::function<void()> task)
{
    QObject::connect(action, &QAction::triggered, action, [task = std::move(task)] { task(); });
}

void whenToggled(QAction* action, std::function<void(bool)> task)
{
    QObject::connect(action, &QAction::toggled, action, [task = std::move(task)](bool on) { task(on); });
}

} // namespace

ZNTMainWiring::ZNTMainWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller,
                             ZNTAppearance& appearance)
    : window(window),
      menu(menu),
      controller(controller),
      session(controller.serverConnectController()),
      appearance(appearance)
{
    wireConnection();
    wirePlaying();
    wireCommandLine();
    wireEditing();
    wireMacros();
    wireSpeech();
    wireView();
    wireColours();
    wireHelp();
    controller.whenSessionChanges = [this] { refresh(); };
    controller.whenGamePicked = [this] { rememberNamedGame(); };
}

ZNTMainWiring::~ZNTMainWiring()
{
    controller.whenSessionChanges = nullptr;
    controller.whenGamePicked = nullptr;
}

void ZNTMainWiring::wireConnection()
{
    joinButton(window.connectionButton, menu.connectToServer);
    whenTriggered(menu.connectToServer, [this] { connectOrDisconnect(); });
    for (QLineEdit* field : {window.mudName, window.ipAddress, window.port})
        QObject::connect(field, &QLineEdit::returnPressed, menu.connectToServer, [this] {
            if (session.state() == ZNTSessionState::Idle)
                menu.connectToServer->trigger();
        });
    whenTriggered(menu.stopConnecting, [this] { giveUpConnecting(); });
    for (QWidget* widget : std::initializer_list<QWidget*>{window.mudName, window.ipAddress, window.port,
                                                           window.connectionButton})
        new ZNTPlainKeys(*widget, {Qt::Key_Escape}, [this] { return giveUpConnecting(); });
    // What a newcomer hears first.
    window.ipAddress->setAccessibleDescription(menu.showZNTMudListController->shortcut().toString() +
                                               text(" lists games, ") + menu.playDemo->shortcut().toString() +
                                               text(" plays the demo game"));
    whenTriggered(menu.showZNTMudListController, [this] { controller.showZNTMudListController(); });
    whenTriggered(menu.showPreferencesView, [this] { controller.showPreferencesView(); });
    whenTriggered(menu.newApp, [this] { controller.newApp(); });
    whenTriggered(menu.quit, [this] { window.close(); });
    quitAnywhere = std::make_unique<ZNTQuitAnywhere>(window, menu.quit->shortcut());
}

void ZNTMainWiring::connectOrDisconnect()
{
    const bool wasIdle = session.state() == ZNTSessionState::Idle;
    if (!session.isConnected()) {
        const QString game = gameInFields();
        controller.setPlayedGame(game);
        if (game == window.mudName->text())
            rememberNamedGame();
    }
    session.connectToServer();
    refresh();
    if (wasIdle && session.state() == ZNTSessionState::Idle)
        goToWhatIsMissing();
}

bool ZNTMainWiring::giveUpConnecting()
{
    if (session.state() != ZNTSessionState::Connecting)
        return false;
    session.stopConnecting();
    refresh();
    sayToListeners(u"Not connected");
    return true;
}

QString ZNTMainWiring::gameInFields() const
{
    const QString name = window.mudName->text(), host = window.ipAddress->text();
    const bool isSameAddress = host.trimmed().compare(namedGame.host, Qt::CaseInsensitive) == 0 &&
                               window.port->text().trimmed().toInt() == namedGame.port;
    const bool isOfAnotherAddress = name == namedGame.name && !isSameAddress;
    return name.isEmpty() || isOfAnotherAddress ? host : name;
}

void ZNTMainWiring::rememberNamedGame()
{
    namedGame = {window.mudName->text(), window.ipAddress->text().trimmed(),
                 window.port->text().trimmed().toInt()};
}

void ZNTMainWiring::goToWhatIsMissing()
{
    if (window.ipAddress->text().isEmpty()) {
        window.ipAddress->setFocus(Qt::OtherFocusReason);
        sayToListeners(u"No address");
    } else if (window.port->text().toInt() <= 0) {
        window.port->setFocus(Qt::OtherFocusReason);
        sayToListeners(u"No port");
    }
}

void ZNTMainWiring::wirePlaying()
{
    joinButton(window.resendLastCommand, menu.resendLastCommand);
    whenTriggered(menu.resendLastCommand, [this] {
        session.resendLastCommand();
        if (!session.isConnected())
            sayDone(u"");
    });
    for (std::size_t index = 0; index < numberOfDirections; ++index) {
        const auto direction = static_cast<ZNTDirection>(index);
        joinButton(window.compass->button(direction), menu.go[index]);
        whenTriggered(menu.go[index], [this, direction] { go(direction); });
    }
    keypadKeys = std::make_unique<ZNTKeypadKeys>(window, menu.go);
    whenTriggered(menu.stopWalking, [this] { session.stopAllWalks(); });
    whenToggled(menu.keypadWalks, [this](bool walks) {
        for (std::size_t index = 0; index < numberOfDirections; ++index) {
            QList<QKeySequence> keys = menu.go[index]->shortcuts();
            const QKeySequence keypad(
                QKeyCombination(Qt::KeypadModifier, namesOf(static_cast<ZNTDirection>(index)).keypadKey));
            keys.removeAll(keypad);
            if (walks)
                keys.prepend(keypad);
            menu.go[index]->setShortcuts(keys);
        }
    });
    whenTriggered(menu.startOrPauseRecording, [this] {
        session.startOrPauseRecording();
        refresh();
        sayDone(facts().isRecording ? u"Recording" : u"Recording paused");
    });
    whenTriggered(menu.doneRecording, [this] {
        session.doneRecording();
        refresh();
    });
}

void ZNTMainWiring::go(ZNTDirection direction)
{
    switch (direction) {
    case ZNTDirection::NorthWest:
        session.sendNorthWestToServer();
        return;
    case ZNTDirection::North:
        session.sendNorthToServer();
        return;
    case ZNTDirection::NorthEast:
        session.sendNorthEastToServer();
        return;
    case ZNTDirection::West:
        session.sendWestToServer();
        return;
    case ZNTDirection::East:
        session.sendEastToServer();
        return;
    case ZNTDirection::SouthWest:
        session.sendSouthWestToServer();
        return;
    case ZNTDirection::South:
        session.sendSouthToServer();
        return;
    case ZNTDirection::SouthEast:
        session.sendSouthEastToServer();
        return;
    case ZNTDirection::Up:
        session.sendUpToServer();
        return;
    case ZNTDirection::Down:
        session.sendDownToServer();
        return;
    }
}

void ZNTMainWiring::wireCommandLine()
{
    const auto press = [this](ZNTCommandLineKey key) { session.controlTextViewDoCommandBySelector(key); };
    window.textToServer->setHeir(window.textFromServer); // the last lines are what is looked for then
    window.textToServer->whenReturnPressed = [press] { press(ZNTCommandLineKey::InsertNewline); };
    window.textToServer->whenUpPressed = [press] { press(ZNTCommandLineKey::MoveUp); };
    window.textToServer->whenDownPressed = [press] { press(ZNTCommandLineKey::MoveDown); };
    window.textToServer->whenPaged = [this](int direction) {
        if (direction < 0)
            window.textFromServer->pageUp();
        else
            window.textFromServer->pageDown();
    };
    QObject::connect(window.textFromServer, &ZNTOutputView::keyForCommandLine, window.textToServer,
                     [this](QKeyEvent* event) {
                         if (!window.textToServer->isEnabled())
                             return;
                         window.textToServer->setFocus(Qt::OtherFocusReason);
                         window.textToServer->deselect();
                         window.textToServer->end(false);
                         QKeyEvent again(event->type(), event->key(), event->modifiers(), event->text());
                         QApplication::sendEvent(window.textToServer, &again);
                     });
}

void ZNTMainWiring::wireEditing()
{
    ZNTOutputView* output = window.textFromServer;
    whenTriggered(menu.copy, [output] { output->copy(); });
    whenTriggered(menu.selectAll, [output] { output->selectAll(); });
    whenTriggered(menu.clearScreen, [this] { session.clearScreen(); });
    whenTriggered(menu.find, [this] { window.findBar->open(); });
    whenTriggered(menu.findNext, [this] { window.findBar->findNext(); });
    whenTriggered(menu.findPrevious, [this] { window.findBar->findPrevious(); });
}

void ZNTMainWiring::wireMacros()
{
    auto& groups = controller.macroGroupDropDownController();
    auto& macros = controller.mudMacroTableViewController();
    joinButton(window.createNewMacroGroup, menu.createNewMacroGroup);
    joinButton(window.deleteMacroGroup, menu.deleteMacroGroup);
    joinButton(window.runMacro, menu.invokeMacro);
    joinButton(window.addMacro, menu.addMacro);
    joinButton(window.editMacro, menu.editMacro);
    joinButton(window.removeMacro, menu.removeMacro);
    whenTriggered(menu.createNewMacroGroup, [&groups] { groups.createNewMacroGroup(); });
    whenTriggered(menu.deleteMacroGroup, [&groups] { groups.deleteMacroGroup(); });
    whenTriggered(menu.invokeMacro, [this] { session.invokeMacro(); });
    whenTriggered(menu.addMacro, [this] { controller.showZNTAddMacroViewController(); });
    whenTriggered(menu.editMacro, [this] { controller.showZNTEditMacroViewController(); });
    whenTriggered(menu.removeMacro, [&macros] { macros.removeItem(); });
    whenTriggered(menu.listMacros,
                  [this] { session.sendMessageToServer(u"~list-macro", /*ignoreSpecials=*/false); });
    // A double click or Return; some styles would take a single click for it.
    QObject::connect(window.macroTable, &QTableView::doubleClicked, menu.invokeMacro,
                     [this] { session.invokeMacro(); });
    new ZNTPlainKeys(*window.macroTable, {Qt::Key_Return, Qt::Key_Enter}, [this] {
        session.invokeMacro();
        return true;
    });
}

void ZNTMainWiring::wireSpeech()
{
    whenToggled(menu.speechOnOff, [this](bool on) {
        if ((session.speechOnOffBindingState() == 1) != on) {
            session.setSpeechOnOffBindingState(on ? 1 : 0);
            session.textToSpeechOnAndOff();
            // Off too: whoever does not look must hear which it is now.
            session.zntSpeechSynth().speakNext(on ? u"Speech on" : u"Speech off");
        }
        refresh();
    });
    whenToggled(menu.speechInterruptOnOff, [this](bool on) {
        if ((session.speechInterruptOnOffBindingState() == 1) == on)
            return;
        session.setSpeechInterruptOnOffBindingState(on ? 1 : 0);
        sayToListeners(on ? u"Interrupting" : u"Not interrupting");
    });
    joinButton(window.startStopSpeech, menu.speechOnOff);
    whenTriggered(menu.replayLastText, [this] { session.replayLastText(); });
    whenTriggered(menu.stopSpeaking, [this] { session.stopSpeaking(); });
    whenTriggered(menu.stopAllSounds, [this] { session.stopAllSounds(); });
    whenTriggered(menu.previousLine, [this] { session.speechReview().previousLine(); });
    whenTriggered(menu.nextLine, [this] { session.speechReview().nextLine(); });
    for (std::size_t index = 0; index < ZNTMainMenu::numberedLines; ++index)
        whenTriggered(menu.lineFromEnd[index],
                      [this, index] { session.speechReview().lineFromEnd(index + 1); });
    whenTriggered(menu.sayStatus, [this] { sayStatus(); });
}

void ZNTMainWiring::wireView()
{
    ZNTOutputView* output = window.textFromServer;
    whenTriggered(menu.larger, [output] { output->zoomIn(); });
    whenTriggered(menu.smaller, [output] { output->zoomOut(); });
    whenTriggered(menu.normalSize, [output] { output->resetZoom(); });
    // A player who needs the game's text large needs the typed text large, too.
    window.textToServer->setFont(output->shownFont());
    QObject::connect(output, &ZNTOutputView::shownFontChanged, window.textToServer, &QLineEdit::setFont);
    whenTriggered(menu.changeFont, [this] { chooseFont(); });
    whenTriggered(menu.controlsLarger, [this] { zoomControls(controlsStep); });
    whenTriggered(menu.controlsSmaller, [this] { zoomControls(-controlsStep); });
    whenToggled(menu.showConnectionRow, [this](bool shown) { window.connectionRow->setVisible(shown); });
    whenToggled(menu.showSidePanel, [this](bool shown) { window.sidePanel->setVisible(shown); });
    whenToggled(menu.fullScreen, [this](bool full) {
        window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, full));
    });
    whenTriggered(menu.focusCommandLine, [this] { window.textToServer->setFocus(Qt::ShortcutFocusReason); });
    whenTriggered(menu.jumpToEnd, [output] { output->jumpToEnd(); });
    whenTriggered(menu.nextPart, [this] { window.focusNextPart(1); });
    whenTriggered(menu.previousPart, [this] { window.focusNextPart(-1); });
}

void ZNTMainWiring::wireColours()
{
    using Colours = ZNTAppearance::Colours;
    const std::array<std::pair<QAction*, Colours>, 4> choices{
        {{menu.systemColours, Colours::System},
         {menu.lightColours, Colours::Light},
         {menu.darkColours, Colours::Dark},
         {menu.highContrastColours, Colours::HighContrast}}};
    for (const auto& [action, colours] : choices)
        whenTriggered(action, [this, colours = colours] { appearance.use(colours); });
    whenToggled(menu.readableColours, [this](bool on) { window.textFromServer->setReadableColours(on); });
}

void ZNTMainWiring::wireHelp()
{
    help = std::make_unique<ZNTHelpWindow>(window, menu);
    whenTriggered(menu.firstSteps, [this] { help->showFirstSteps(); });
    whenTriggered(menu.keyboardMap, [this] { help->showKeyboardMap(); });
    whenTriggered(menu.about, [this] { help->showAbout(); });
    whenTriggered(menu.playDemo, [this] { playDemo(); });
}

void ZNTMainWiring::chooseFont()
{
    auto* panel = new QFontDialog(&window);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setObjectName(text("fontPanel"));
    panel->setOption(QFontDialog::MonospacedFonts);
    panel->setOption(QFontDialog::DontUseNativeDialog);
    // The panel lists what the options ask for only with the font that it is given after them, and marks the
    // one that is really seen only by its own name.
    QFont shown = window.textFromServer->textFont();
    const QFontInfo found(shown);
    shown.setFamilies({found.family()});
    shown.setStyleName(found.styleName());
    panel->setCurrentFont(shown);
    znt::shrinkFontToScreen(*panel);
    nameFieldsByTheirLabels(*panel);
    QObject::connect(panel, &QDialog::finished, &window, &QWidget::activateWindow);
    QObject::connect(panel, &QFontDialog::fontSelected, panel, [this](const QFont& font) {
        window.textFromServer->setTextFont(font);
        session.changeFont({znt::textOfQt(font.family()), font.pointSizeF()});
    });
    panel->open();
}

void ZNTMainWiring::zoomControls(double points)
{
    QFont font = QApplication::font();
    font.setPointSizeF(std::clamp(font.pointSizeF() + points, smallestControls, largestControls));
    QApplication::setFont(font);
    for (QWidget* open : QApplication::topLevelWidgets())
        if (open->isVisible() && qobject_cast<QDialog*>(open) && open->findChild<QScrollArea*>())
            znt::fitToScreen(*open);
}

void ZNTMainWiring::connectTo(const QString& host, int port, const QString& name)
{
    if (session.state() != ZNTSessionState::Idle)
        return;
    window.ipAddress->setText(host);
    window.port->setText(QString::number(port));
    const QString known = name.isEmpty() ? nameInAddressBook(host, port) : name;
    window.mudName->setText(known.isEmpty() ? host : known);
    rememberNamedGame();
    connectOrDisconnect();
}

QString ZNTMainWiring::nameInAddressBook(const QString& host, int port) const
{
    for (const ZNTMudList& game : controller.services().database.getAllMudsFromMudList())
        if (game.port == port && znt::qtText(game.telnetURL).compare(host, Qt::CaseInsensitive) == 0)
            return znt::qtText(game.name);
    return {};
}

void ZNTMainWiring::playDemo()
{
    if (session.state() != ZNTSessionState::Idle)
        return;
    const ZNTPlatform& platform = controller.services().platform;
    demoGame = std::make_unique<ZNTDemoGame>(platform.runLoop);
    demoGame->start(session.cfStringEncoding(), [this, &platform](const ZNTResult<std::uint16_t>& started) {
        if (started)
            connectTo(text("127.0.0.1"), started.value(), text("Demo game"));
        else
            platform.alert.showMessage(u"Demo game",
                                       znt::textOfQt(QString::fromStdString(started.error().description)));
    });
}

ZNTStatusFacts ZNTMainWiring::facts() const
{
    ZNTStatusFacts now;
    switch (session.state()) {
    case ZNTSessionState::Idle:
        break;
    case ZNTSessionState::Connecting:
        now.connection = ZNTStatusFacts::Connection::Connecting;
        break;
    case ZNTSessionState::Connected:
        now.connection = ZNTStatusFacts::Connection::Connected;
        break;
    }
    if (now.connection != ZNTStatusFacts::Connection::None)
        now.game = controller.playedGame();
    if (now.connection == ZNTStatusFacts::Connection::Connected) {
        now.connectedSince = session.connectedSince();
        now.isCompressed = session._mccp();
    }
    now.isRecording = session.recorder()._recorderState() == 1;
    now.isRecordingPaused = session.recorder()._recorderState() == 2;
    now.isWalking = session.isWalking();
    now.isSpeechOn = session.speechOnOffBindingState() == 1;
    now.isSpeechAvailable = session.isSpeechAvailable();
    now.isMuted = controller.services().sounds.isMuted();
    return now;
}

void ZNTMainWiring::refresh()
{
    const bool isChinese = session.cfStringEncoding() != ZNTStringEncoding::Ascii;
    window.textFromServer->setAmbiguousWidth(isChinese ? znt::AmbiguousWidth::Wide
                                                       : znt::AmbiguousWidth::Narrow);
    menu.speechInterruptOnOff->setChecked(session.speechInterruptOnOffBindingState() == 1);
    const ZNTStatusFacts now = facts();
    if (shownFacts == now)
        return;
    if (!shownFacts)
        rememberNamedGame(); // the address book's default
    const bool isConnected = now.connection == ZNTStatusFacts::Connection::Connected;
    if (!shownFacts || shownFacts->connection != now.connection) {
        enableActions(isConnected);
        if (isConnected)
            window.textFromServer->beginSession();
        if (shownFacts && shownFacts->connection == ZNTStatusFacts::Connection::Connected)
            sayToListeners(u"Disconnected");
        window.textFromServer->setEmptyHint(
            now.connection == ZNTStatusFacts::Connection::None
                ? text("What the game says stands here.\nPick a game with Ctrl+G and connect with F5,\n"
                       "or press Ctrl+Shift+D for the demo game.")
                : QString());
        window.setWindowTitle(isConnected ? QString(now.game + text(" - Zantor")) : text("Zantor"));
    }
    shownFacts = now;
    const QString status = znt::statusInWords(now);
    window.statusText->setText(status);
    window.statusText->setAccessibleName(text("Status: ") + status);
    menu.stopWalking->setEnabled(now.isWalking);
    menu.connectToServer->setText(isConnected ? text("Dis&connect") : text("&Connect"));
    menu.startOrPauseRecording->setText(now.isRecording         ? text("&Pause recording")
                                        : now.isRecordingPaused ? text("Re&sume recording")
                                                                : text("&Start recording"));
    menu.speechOnOff->setChecked(now.isSpeechOn);
    window.startStopSpeech->setText(now.isSpeechOn ? text("S&top speech") : text("S&tart speech"));
    window.startStopSpeech->setAccessibleName(now.isSpeechOn ? text("Stop speech") : text("Start speech"));
}

void ZNTMainWiring::enableActions(bool isConnected)
{
    for (QAction* action : menu.go)
        action->setEnabled(isConnected);
    menu.invokeMacro->setEnabled(isConnected);
    window.runMacro->setEnabled(isConnected);
    menu.stopConnecting->setEnabled(session.state() == ZNTSessionState::Connecting);
    menu.playDemo->setEnabled(session.state() == ZNTSessionState::Idle);
}

void ZNTMainWiring::sayToListeners(std::u16string_view news)
{
    if (session.speechOnOffBindingState() == 1)
        session.zntSpeechSynth().speakNext(news);
}

void ZNTMainWiring::sayDone(std::u16string_view what)
{
    std::u16string news(what);
    if (!session.isConnected())
        news += what.empty() ? u"Not connected" : u". Not connected";
    sayToListeners(news);
}

void ZNTMainWiring::sayStatus()
{
    session.zntSpeechSynth().speakAtOnce(znt::textOfQt(znt::statusInWords(facts())));
}
