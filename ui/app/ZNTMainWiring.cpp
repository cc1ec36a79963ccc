#include "ZNTMainWiring.h"

#include "ZNTActionWiring.h"
#include "ZNTAnnouncement.h"
#include "ZNTAppearance.h"
#include "ZNTAskBar.h"
#include "ZNTChannelHistorySheet.h"
#include "ZNTCommandLine.h"
#include "ZNTCompass.h"
#include "ZNTConnectionWiring.h"
#include "ZNTControlHelp.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDesktopScreenReader.h"
#include "ZNTFindBar.h"
#include "ZNTFontChoice.h"
#include "ZNTHelpWindow.h"
#include "ZNTHintedTable.h"
#include "ZNTKeypadKeys.h"
#include "ZNTOutputView.h"
#include "ZNTPlainKeys.h"
#include "ZNTQtText.h"
#include "ZNTQuitAnywhere.h"
#include "ZNTRecorder.h"
#include "ZNTSoundFactory.h"
#include "ZNTSpeechReview.h"
#include "ZNTSpeechSynth.h"
#include "ZNTWebAddressDialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <array>
#include <utility>

using namespace znt;
using Enabled = ZNTClientAction::Enabled;

namespace
{

QString text(const char* latin) { return QString::fromLatin1(latin); }

constexpr std::array allChanges{
    ZNTSessionChange::State,       ZNTSessionChange::Title,     ZNTSessionChange::Encoding,
    ZNTSessionChange::Compression, ZNTSessionChange::Sounds,    ZNTSessionChange::Speech,
    ZNTSessionChange::Walking,     ZNTSessionChange::Recording, ZNTSessionChange::Typing};

} // namespace

ZNTMainWiring::ZNTMainWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller,
                             ZNTConnectionWiring& connection, ZNTAppearance& appearance)
    : window(window),
      menu(menu),
      controller(controller),
      connection(connection),
      session(controller.serverConnectController()),
      appearance(appearance),
      status(*window.statusText, controller),
      news(session),
      silenceKeys(session),
      announcer(controller.services().screenReader, session.zntSpeechSynth(),
                [&controller] { return controller.settings().settings().speakAnnouncements; })
{
    wireGame();
    wireDirections();
    wireRecorder();
    wireCommandLine();
    wireEditing();
    wirePlaces();
    wireMacros();
    wireSpeech();
    wireChannels();
    wireReview();
    wireView();
    wireColours();
    wireHelp();
    explainControls(window);
    controller.whenSessionChanges = [this](ZNTSessionChange what) { sessionChanged(what); };
    controller.whenSettingsChange = [this] { showSettings(); };
    controller.whenNoticed = [this](const ZNTSessionNotice& notice) { showNotice(notice); };
    connection.whenStateChanges = [this] { sessionChanged(ZNTSessionChange::State); };
}

ZNTMainWiring::~ZNTMainWiring()
{
    controller.whenSessionChanges = nullptr;
    controller.whenSettingsChange = nullptr;
    controller.whenNoticed = nullptr;
    connection.whenStateChanges = nullptr;
}

// From the player to the session

void ZNTMainWiring::wireGame()
{
    joinButton(window.resendLastCommand, menu["resendLastCommand"]);
    whenTriggered(menu["resendLastCommand"], [this] {
        session.resendLastCommand();
        if (!session.isConnected())
            news.sayDone(u"");
    });
    whenToggled(menu["standardTelnet"], [this](bool on) {
        if (controller.settings().settings().standardTelnet != on) // the switch follows the settings
            controller.chooseSetting(znt::standardTelnet, on ? "on" : "off");
    });
    whenTriggered(menu["showPreferencesView"], [this] { controller.showPreferencesView(); });
    whenTriggered(menu["newApp"], [this] { controller.newApp(); });
    whenTriggered(menu["quit"], [this] { window.close(); });
    quitAnywhere = std::make_unique<ZNTQuitAnywhere>(window, menu["quit"]->shortcut());
}

void ZNTMainWiring::wireDirections()
{
    for (const ZNTDirectionRow& way : ZNTDirections) {
        QAction* action = menu.directions()[static_cast<std::size_t>(way.direction)];
        joinButton(window.compass->button(way.direction), action);
        whenTriggered(action, [this, &way] { session.sendToServer(way.direction); });
    }
    keypadKeys = std::make_unique<ZNTKeypadKeys>(window, menu.directions());
    whenToggled(menu["keypadWalks"], [this](bool walks) { setKeypadWalks(walks); });
    whenTriggered(menu["stopWalking"], [this] { session.stopAllThatRuns(); });
}

void ZNTMainWiring::setKeypadWalks(bool walks)
{
    for (const ZNTDirectionRow& way : ZNTDirections) {
        QAction* action = menu.directions()[static_cast<std::size_t>(way.direction)];
        const auto keypad = QKeySequence::fromString(latinText(way.keypadKey), QKeySequence::PortableText);
        QList<QKeySequence> keys = action->shortcuts();
        keys.removeAll(keypad);
        if (walks)
            keys.prepend(keypad);
        action->setShortcuts(keys);
    }
}

void ZNTMainWiring::wireRecorder()
{
    whenTriggered(menu["startOrPauseRecording"], [this] {
        session.startOrPauseRecording();
        news.sayDone(status.facts().isRecording ? u"Recording" : u"Recording paused");
    });
    whenTriggered(menu["doneRecording"], [this] { session.doneRecording(); });
    whenTriggered(menu["keepRecording"], [this] { controller.keepRecording(); });
    whenTriggered(menu["keptRecordings"], [this] { controller.showKeptRecordings(); });
}

void ZNTMainWiring::wireCommandLine()
{
    const auto press = [this](ZNTCommandLineKey key) { session.controlTextViewDoCommandBySelector(key); };
    ZNTCommandLine* line = window.textToServer;
    ZNTOutputView* output = window.textFromServer;
    line->setHeir(output); // at a session's end players look for its last lines
    line->whenReturnPressed = [press] { press(ZNTCommandLineKey::InsertNewline); };
    line->whenUpPressed = [press] { press(ZNTCommandLineKey::MoveUp); };
    line->whenDownPressed = [press] { press(ZNTCommandLineKey::MoveDown); };
    line->whenPaged = [output](int direction) { direction < 0 ? output->pageUp() : output->pageDown(); };
    QObject::connect(output, &ZNTOutputView::keyForCommandLine, line, [line](QKeyEvent* event) {
        if (!line->isEnabled())
            return;
        line->setFocus(Qt::OtherFocusReason);
        line->deselect();
        line->end(false);
        QKeyEvent again(event->type(), event->key(), event->modifiers(), event->text());
        QApplication::sendEvent(line, &again);
    });
}

void ZNTMainWiring::wireEditing()
{
    ZNTOutputView* output = window.textFromServer;
    whenTriggered(menu["copy"], [output] { output->copy(); });
    whenTriggered(menu["selectAll"], [output] { output->selectAll(); });
    whenTriggered(menu["clearScreen"], [this] { session.clearScreen(); });
    whenTriggered(menu["find"], [this] { window.findBar->open(); });
    whenTriggered(menu["findNext"], [this] { window.findBar->findNext(); });
    whenTriggered(menu["findPrevious"], [this] { window.findBar->findPrevious(); });
}

/// What stands at a place in the output.
void ZNTMainWiring::wirePlaces()
{
    ZNTOutputView* output = window.textFromServer;
    webAddresses = std::make_unique<ZNTWebAddressDialogs>(window, *output);
    whenTriggered(menu["openWebAddress"], [this] { webAddresses->showList(); });
    QObject::connect(output, &ZNTOutputView::webAddressClicked, menu["openWebAddress"],
                     [this](const QString& address) { webAddresses->ask(address); });
    whenTriggered(menu["sayLineTime"], [this, output] {
        const auto words = output->timeOfLineInWords();
        session.zntSpeechSynth().speakAtOnce(words.isEmpty() ? u"No line yet" : textOfQt(words));
        output->showTimeOfLine();
    });
}

void ZNTMainWiring::wireMacros()
{
    auto& groups = controller.macroGroupDropDownController();
    auto& macros = controller.mudMacroTableViewController();
    joinButton(window.createNewMacroGroup, menu["createNewMacroGroup"]);
    joinButton(window.deleteMacroGroup, menu["deleteMacroGroup"]);
    joinButton(window.runMacro, menu["invokeMacro"]);
    joinButton(window.addMacro, menu["addMacro"]);
    joinButton(window.editMacro, menu["editMacro"]);
    joinButton(window.removeMacro, menu["removeMacro"]);
    whenTriggered(menu["createNewMacroGroup"], [&groups] { groups.createNewMacroGroup(); });
    whenTriggered(menu["deleteMacroGroup"], [&groups] { groups.deleteMacroGroup(); });
    whenTriggered(menu["invokeMacro"], [this] { session.invokeMacro(); });
    whenTriggered(menu["addMacro"], [this] { controller.showZNTAddMacroViewController(); });
    whenTriggered(menu["editMacro"], [this] { controller.showZNTEditMacroViewController(); });
    whenTriggered(menu["removeMacro"], [&macros] { macros.removeItem(); });
    whenTriggered(menu["listMacros"],
                  [this] { session.sendMessageToServer(u"~list-macro", /*ignoreSpecials=*/false); });
    // A double click or Return; some styles would take a single click for it.
    QObject::connect(window.macroTable, &QTableView::doubleClicked, menu["invokeMacro"],
                     [this] { session.invokeMacro(); });
    new ZNTPlainKeys(*window.macroTable, {Qt::Key_Return, Qt::Key_Enter}, [this] {
        session.invokeMacro();
        return true;
    });
}

void ZNTMainWiring::wireSpeech()
{
    whenToggled(menu["speechOnOff"], [this](bool on) { setSpeech(on); });
    whenToggled(menu["speechInterruptOnOff"], [this](bool on) {
        if ((session.speechInterruptOnOffBindingState() == 1) == on)
            return;
        session.setSpeechInterruptOnOffBindingState(on ? 1 : 0);
        news.say(on ? u"Interrupting" : u"Not interrupting");
    });
    joinButton(window.startStopSpeech, menu["speechOnOff"]);
    whenTriggered(menu["replayLastText"], [this] { session.replayLastText(); });
    whenTriggered(menu["sayPrompt"], [this] { session.sayPrompt(); });
    whenTriggered(menu["stopSpeaking"], [this] { session.stopSpeaking(); });
    whenTriggered(menu["stopAllSounds"], [this] { session.stopAllSounds(); });
    whenTriggered(menu["sayStatus"],
                  [this] { session.zntSpeechSynth().speakAtOnce(textOfQt(status.words())); });
    whenToggled(menu["setUpForListening"], [this](bool on) { setUpForListening(on); });
    joinButton(window.listeningBox, menu["setUpForListening"]);
}

/// The keys speak as those of the review do.
void ZNTMainWiring::wireChannels()
{
    auto& history = session.channelHistory();
    const auto say = [this, &history](ZNTActionName name, std::u16string (ZNTChannelHistory::*words)()) {
        whenTriggered(menu[name],
                      [this, &history, words] { session.zntSpeechSynth().speakAtOnce((history.*words)()); });
    };
    say("newestOfChannel", &ZNTChannelHistory::newest);
    say("olderOfChannel", &ZNTChannelHistory::older);
    say("newerOfChannel", &ZNTChannelHistory::newer);
    say("nextChannel", &ZNTChannelHistory::nextChannel);
    whenTriggered(menu["showChannelHistory"], [this, &history] {
        if (!channelSheet)
            channelSheet =
                std::make_unique<ZNTChannelHistorySheet>(window, history, [this](const QString& line) {
                    window.textToServer->setText(line);
                    window.textToServer->setFocus(Qt::OtherFocusReason);
                });
        channelSheet->show();
    });
}

/// The box belongs to the words that a player's first start shows until a game's text takes their place.
void ZNTMainWiring::showListeningBox()
{
    const bool isOffered = controller.services().database.isFirstStart() && !hasPlayed &&
                           !isSetUpForListening(controller.settings().settings());
    if (!isOffered && window.listeningBox->hasFocus())
        window.ipAddress->setFocus(Qt::OtherFocusReason); // where it was at the start
    window.listeningBox->setChecked(false);               // it goes once it is marked
    window.listeningBox->setVisible(isOffered);
}

void ZNTMainWiring::wireReview()
{
    auto& review = session.speechReview();
    whenTriggered(menu["previousLine"], [&review] { review.previousLine(); });
    whenTriggered(menu["nextLine"], [&review] { review.nextLine(); });
    for (std::size_t index = 0; index < menu.lines().size(); ++index)
        whenTriggered(menu.lines()[index], [&review, index] { review.lineFromEnd(index + 1); });
    using Unit = ZNTLineCursor::Unit;
    using Way = ZNTLineCursor::Way;
    whenTriggered(menu["nextWord"], [&review] { review.speakPart(Unit::Word, Way::Next); });
    whenTriggered(menu["previousWord"], [&review] { review.speakPart(Unit::Word, Way::Previous); });
    whenTriggered(menu["nextLetter"], [&review] { review.speakPart(Unit::Letter, Way::Next); });
    whenTriggered(menu["previousLetter"], [&review] { review.speakPart(Unit::Letter, Way::Previous); });
    whenTriggered(menu["goToLastCommand"], [&review] { review.goToLastCommand(); });
    whenTriggered(menu["findInSaid"], [this] { window.findInSaidBar->open(); });
    whenTriggered(menu["findOlderSaid"], [this, &review] {
        review.searchedText().empty() ? window.findInSaidBar->open() : review.findOlder();
    });
    whenTriggered(menu["findNewerSaid"], [this, &review] {
        review.searchedText().empty() ? window.findInSaidBar->open() : review.findNewer();
    });
    // Return once more goes on to the next older line, as in the search of the output.
    window.findInSaidBar->whenAnswered = [&review](const QString& typed, bool isWithShift) {
        const auto text = textOfQt(typed);
        if (review.searchedText() != text)
            review.find(text);
        else if (isWithShift)
            review.findNewer();
        else
            review.findOlder();
    };
}

void ZNTMainWiring::setSpeech(bool on)
{
    if ((session.speechOnOffBindingState() == 1) == on)
        return; // the switch follows the session
    session.setSpeechOnOffBindingState(on ? 1 : 0);
    session.textToSpeechOnAndOff();
    // "Speech off" is spoken, too: players who do not look must learn which it is now.
    session.zntSpeechSynth().speakNext(on ? u"Speech on" : u"Speech off");
}

void ZNTMainWiring::setUpForListening(bool on)
{
    if (isSetUpForListening(controller.settings().settings()) == on)
        return; // the switch follows the settings
    controller.chooseSetting(znt::listening, on ? "on" : "off");
    showNotice(notices::setUpForListening(on));
}

void ZNTMainWiring::wireView()
{
    ZNTOutputView* output = window.textFromServer;
    whenTriggered(menu["larger"], [output] { output->zoomIn(); });
    whenTriggered(menu["smaller"], [output] { output->zoomOut(); });
    whenTriggered(menu["normalSize"], [output] { output->resetZoom(); });
    // A player who needs the game's text large needs the typed text large, too.
    window.textToServer->setFont(output->shownFont());
    QObject::connect(output, &ZNTOutputView::shownFontChanged, window.textToServer, &QLineEdit::setFont);
    const auto noteSize = [this, output] { session.setViewSize(output->columns(), output->visibleRows()); };
    QObject::connect(output, &ZNTOutputView::gridChanged, output, noteSize);
    noteSize();
    whenTriggered(menu["changeFont"], [this, output] { chooseFont(window, *output, session); });
    whenTriggered(menu["controlsLarger"], [] { zoomControls(1); });
    whenTriggered(menu["controlsSmaller"], [] { zoomControls(-1); });
    whenToggled(menu["showConnectionRow"], [this](bool shown) { window.connectionRow->setVisible(shown); });
    whenToggled(menu["showSidePanel"], [this](bool shown) { window.sidePanel->setVisible(shown); });
    whenToggled(menu["fullScreen"], [this](bool full) {
        window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, full));
    });
    whenTriggered(menu["focusCommandLine"], [this] {
        window.textToServer->setFocus(Qt::ShortcutFocusReason);
        // The line takes no focus then, and the key would seem to do nothing.
        if (!session.isConnected())
            news.sayDone(u"");
    });
    whenTriggered(menu["jumpToEnd"], [output] { output->jumpToEnd(); });
    whenTriggered(menu["nextPart"], [this] { window.focusNextPart(1); });
    whenTriggered(menu["previousPart"], [this] { window.focusNextPart(-1); });
    whenTriggered(menu["openMenuBar"], [this] {
        QMenu* first = menu.menus().constFirst();
        window.menuBar()->setActiveAction(first->menuAction());
        first->setActiveAction(first->actions().constFirst());
    });
}

void ZNTMainWiring::wireColours()
{
    using Colours = ZNTAppearance::Colours;
    const auto use = [this](ZNTActionName name, Colours colours) {
        whenTriggered(menu[name], [this, colours] { appearance.use(colours); });
    };
    use("systemColours", Colours::System);
    use("lightColours", Colours::Light);
    use("darkColours", Colours::Dark);
    use("highContrastColours", Colours::HighContrast);
    whenToggled(menu["readableColours"], [this](bool on) { window.textFromServer->setReadableColours(on); });
}

void ZNTMainWiring::wireHelp()
{
    help = std::make_unique<ZNTHelpWindow>(
        window, menu, QString::fromStdString(controller.services().platform.places.resource("manual.html")));
    whenTriggered(menu["firstSteps"], [this] { help->showFirstSteps(); });
    whenTriggered(menu["manual"], [this] { help->showManual(); });
    whenTriggered(menu["firstHourByEar"], [this] { help->showFirstHourByEar(); });
    whenTriggered(menu["keyboardMap"], [this] { help->showKeyboardMap(); });
    whenTriggered(menu["about"], [this] { help->showAbout(); });
}

// From the session to the player

void ZNTMainWiring::showAll()
{
    for (const ZNTSessionChange what : allChanges)
        sessionChanged(what);
    showSettings();
}

void ZNTMainWiring::sessionChanged(ZNTSessionChange what)
{
    status.sessionChanged(what);
    switch (what) {
    case ZNTSessionChange::State:
        showState();
        return;
    case ZNTSessionChange::Title:
        connection.fields.remember();
        return;
    case ZNTSessionChange::Encoding:
        showEncoding();
        return;
    case ZNTSessionChange::Recording:
        showRecording();
        return;
    case ZNTSessionChange::Speech:
        showSpeech();
        return;
    case ZNTSessionChange::Walking:
        showWalking();
        return;
    case ZNTSessionChange::Typing:
        showTyping();
        return;
    case ZNTSessionChange::Compression: // the status line alone shows these two
    case ZNTSessionChange::Sounds:
        return;
    }
}

void ZNTMainWiring::showState()
{
    using Connection = ZNTStatusFacts::Connection;
    const ZNTStatusFacts& now = status.facts();
    announceConnection();
    const bool isConnected = now.connection == Connection::Connected;
    menu.enable(Enabled::WhileIdle, now.connection == Connection::None);
    menu.enable(Enabled::WhileConnecting, now.connection == Connection::Connecting);
    menu.enable(Enabled::WhileConnected, isConnected);
    window.runMacro->setEnabled(isConnected);
    menu["connectToServer"]->setText(isConnected ? text("Dis&connect") : text("&Connect"));
    window.setWindowTitle(isConnected ? QString(now.game + text(" - Zantor")) : text("Zantor"));
    window.textFromServer->setEmptyHint(now.connection == Connection::None ? emptyHint() : QString());
    if (isConnected && !wasConnected)
        window.textFromServer->beginSession();
    if (wasConnected && !isConnected)
        news.say(u"Disconnected");
    wasConnected = isConnected;
    hasPlayed = hasPlayed || isConnected;
    showListeningBox();
}

QStringList ZNTMainWiring::keysOfWelcome() const
{
    return {menu["speechOnOff"]->shortcut().toString(), menu["keyboardMap"]->shortcut().toString()};
}

QString ZNTMainWiring::emptyHint() const
{
    const QString hint =
        text("What the game says stands here.\nPick a game with Ctrl+G and connect with F5,\n"
             "or press Ctrl+Shift+D for the demo game.");
    if (!controller.services().database.isFirstStart())
        return hint;
    return hint + QLatin1Char('\n') + announcementInWords(ZNTAnnouncement::Welcome, keysOfWelcome());
}

void ZNTMainWiring::welcomeReader()
{
    if (session.speechOnOffBindingState() != 1)
        announce(ZNTAnnouncement::Welcome, keysOfWelcome());
}

void ZNTMainWiring::announceConnection()
{
    using Connection = ZNTStatusFacts::Connection;
    const ZNTStatusFacts& now = status.facts();
    if (std::exchange(announced, now.connection) == now.connection)
        return;
    if (now.connection == Connection::Connecting)
        znt::announce(ZNTAnnouncement::Connecting, {now.game});
    if (now.connection == Connection::Connected)
        znt::announce(ZNTAnnouncement::Connected, {now.game});
}

/// Games in a Chinese encoding lay their text out for signs of two columns.
void ZNTMainWiring::showEncoding()
{
    const bool isChinese = znt::rowOf(session.cfStringEncoding()).isChinese;
    window.textFromServer->setAmbiguousWidth(isChinese ? AmbiguousWidth::Wide : AmbiguousWidth::Narrow);
}

void ZNTMainWiring::showSettings()
{
    const auto& settings = controller.settings().settings();
    menu["standardTelnet"]->setChecked(settings.standardTelnet);
    menu["setUpForListening"]->setChecked(isSetUpForListening(settings));
    showListeningBox();
    window.textFromServer->setWebLinks(settings.webLinks);
    window.textFromServer->setLineTimes(settings.lineTimes);
}

/// A hint is not for players who have made a choice, nor for the demo game, which plays right both ways.
void ZNTMainWiring::showNotice(const ZNTSessionNotice& notice)
{
    if (notice.kind == ZNTSessionNotice::Kind::Hint &&
        (connection.isDemoPlayed() || !controller.settings().mayNeedHint()))
        return;
    status.showNotice(notice);
    news.say(notice.sentence);
}

void ZNTMainWiring::showTyping()
{
    const bool isHidden = session.isTypingHidden();
    if (isHidden == wasTypingHidden)
        return;
    wasTypingHidden = isHidden;
    window.textToServer->setTypingHidden(isHidden);
    ZNTDesktopScreenReader::announceKind(*window.textToServer);
    news.say(isHidden ? u"What you type is hidden" : u"What you type is shown again");
}

void ZNTMainWiring::showRecording()
{
    const ZNTStatusFacts& now = status.facts();
    menu["startOrPauseRecording"]->setText(now.isRecording         ? text("&Pause recording")
                                           : now.isRecordingPaused ? text("Re&sume recording")
                                                                   : text("&Start recording"));
}

/// A recording that runs is announced at its beginning and at its end.
void ZNTMainWiring::showWalking()
{
    const ZNTStatusFacts& now = status.facts();
    menu.enable(Enabled::WhileWalking, now.isWalking || !now.runningRecording.isEmpty());
    if (now.runningRecording == runningRecording)
        return;
    const QString ended = std::exchange(runningRecording, now.runningRecording);
    if (runningRecording.isEmpty())
        announce(ZNTAnnouncement::RecordingEnded, {ended});
    else
        announce(ZNTAnnouncement::RecordingRuns, {runningRecording});
}

void ZNTMainWiring::showSpeech()
{
    const bool isOn = status.facts().isSpeechOn;
    menu["speechInterruptOnOff"]->setChecked(session.speechInterruptOnOffBindingState() == 1);
    menu["speechOnOff"]->setChecked(isOn);
    window.startStopSpeech->setText(isOn ? text("S&top speech") : text("S&tart speech"));
    window.startStopSpeech->setAccessibleName(isOn ? text("Stop speech") : text("Start speech"));
}
