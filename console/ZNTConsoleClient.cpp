#include "ZNTConsoleClient.h"

#include "ZNTConsoleCommands.h"
#include "ZNTText.h"

#include <utility>

namespace
{
constexpr double silenceSeconds = 0.5; // as long as the session waits before it takes a pause for one
}

ZNTConsoleClient::ZNTConsoleClient(Surroundings givenSurroundings, const ZNTConsoleOptions& options)
    : surroundings(std::move(givenSurroundings)),
      options(options),
      alerts(
          surroundings.platform.alert, [this] { return isFarewellHeldBack(); },
          [this] { platform.runLoop.post([this] { showAlertsAfterFarewell(); }); }),
      platform{surroundings.platform.runLoop,
               surroundings.platform.clock,
               surroundings.platform.log,
               surroundings.platform.notifications,
               alerts,
               surroundings.platform.places},
      outputView(options.isInColour(surroundings.outputIsTerminal) ? ZNTConsoleColour::Always
                                                                   : ZNTConsoleColour::Never,
                 surroundings.output),
      keeper(platform.places, platform.log, options.settings),
      store(platform.places, platform.log),
      groups(platform, store, macroGroupBox),
      macroList(platform, store, groups, macroTable),
      controller(platform, screen(), services()),
      _zntCommandRecorderView({recorderTable, recordingName, recordingSeconds, recorderSheet}, platform.log),
      commands(std::make_unique<ZNTConsoleCommands>(*this))
{
    surroundings.output.aboutToWrite = [this] { controller.writeQueuedLines(); };
    surroundings.output.holdGame = [this](bool isToWait) { controller.setScreenFull(isToWait); };
    controller.awakeFromNib();
}

ZNTConsoleClient::~ZNTConsoleClient()
{
    surroundings.output.aboutToWrite = nullptr;
    surroundings.output.holdGame = nullptr;
}

ZNTSessionScreen ZNTConsoleClient::screen()
{
    ZNTSessionScreen elements;
    elements.textToServer = &commandLine;
    elements.textFromServer = &outputView;
    elements.ipAddress = &host;
    elements.port = &port;
    elements.mudName = &mudName;
    elements.connectionButton = &connectionButton;
    elements.myProgressIndicator = &spinner;
    elements.macroTable = &macroTable;
    elements._voiceOver = &voiceOver;
    ZNTButton** directions[] = {&elements.northButton,     &elements.southButton,
                                &elements.eastButton,      &elements.westButton,
                                &elements.northEastButton, &elements.northWestButton,
                                &elements.southEastButton, &elements.southWestButton,
                                &elements.upButton,        &elements.downButton};
    for (std::size_t at = 0; at < std::size(directions); ++at)
        *directions[at] = &directionButtons[at];
    return elements;
}

ZNTSessionServices ZNTConsoleClient::services()
{
    return {.database = store,
            .macros = macroList,
            .sounds = surroundings.sounds,
            .speechEngine = surroundings.speechEngine,
            .screenReader = screenReader,
            .streams = surroundings.streams,
            .showZNTCommandRecorderView =
                [this](ZNTCommandRecorderDataSource& commands) {
                    _zntCommandRecorderView.set_theDataSource(commands);
                },
            .sessionChanged = [this](ZNTSessionChange) { sessionChanged(); },
            .textShown = [this] { textShown(); },
            .silencePassed = [this] { silencePassed(); },
            .settings = keeper.settings()};
}

void ZNTConsoleClient::start()
{
    if (!surroundings.input.start({.line = [this](const std::string& line) { handleLine(line); },
                                   .end = [this] { inputEnded(); },
                                   .catchUp = [this] { surroundings.output.catchUp(); }})) {
        complain(u"Standard input cannot be read: the system has no room for waiting for it.");
        finish(exitBroken);
        return;
    }
    if (options.demo)
        startDemo();
    else if (!options.host.empty())
        connect(znt::textFromUtf8(options.host), options.port);
    else if (const auto offered = host.text(); !offered.empty())
        say(u"Type /connect to play " + mudName.text() + u" (" + offered + u" " + port.text() +
            u"), or /help.");
    else
        say(u"Type /connect HOST PORT to play, /muds for a list of games, or /help.");
}

void ZNTConsoleClient::startDemo()
{
    isStartingDemo = true;
    demoGame = std::make_unique<ZNTDemoGame>(platform.runLoop, surroundings.demoProgram);
    demoGame->start(controller.cfStringEncoding(), [this](const ZNTResult<std::uint16_t>& started) {
        isStartingDemo = false;
        if (started) {
            connect(u"127.0.0.1", started.value());
            return;
        }
        complain(znt::textFromUtf8(started.error().description));
        finish(exitBroken);
    });
}

void ZNTConsoleClient::connect(std::u16string_view newHost, int newPort)
{
    if (controller.state() != ZNTSessionState::Idle) {
        complain(u"There is a connection already; /disconnect ends it.");
        return;
    }
    if (!newHost.empty()) {
        host.setText(newHost);
        port.setText(znt::decimalText(newPort));
    }
    if (host.text().empty() || znt::integerValue(port.text()) <= 0) {
        complain(u"Name a game: /connect HOST PORT, or make one of /muds the default.");
        return;
    }
    controller.connectToServer();
    if (controller.lastEnding() == ZNTSessionEnding::Broken && !surroundings.inputIsTerminal)
        finish(exitBroken); // refused before an attempt could begin
}

void ZNTConsoleClient::disconnect()
{
    if (controller.isConnected()) {
        controller.connectToServer();
    } else if (controller.state() == ZNTSessionState::Connecting) {
        controller.stopConnecting();
        say(u"The attempt to connect is given up.");
    } else {
        complain(u"There is no connection.");
    }
}

bool ZNTConsoleClient::mustWait() const
{
    return isStartingDemo || controller.state() == ZNTSessionState::Connecting ||
           (isAnswerAwaited && controller.isConnected());
}

void ZNTConsoleClient::handleLine(const std::string& utf8)
{
    // On a terminal the client's own commands work at once, also to give up an attempt to connect.
    const bool isOwnCommand = utf8.starts_with('/') && !utf8.starts_with("//");
    if (surroundings.inputIsTerminal && isOwnCommand) {
        carryOut(utf8);
        return;
    }
    waitingLines.push_back(utf8);
    sendWaitingLines();
}

void ZNTConsoleClient::readOnOrPause()
{
    surroundings.input.setPaused(waitingLines.size() >= mostWaitingLines);
}

void ZNTConsoleClient::sendWaitingLines()
{
    while (!waitingLines.empty() && !mustWait() && !hasFinished) {
        const auto line = std::move(waitingLines.front());
        waitingLines.pop_front();
        carryOut(line);
    }
    readOnOrPause();
}

void ZNTConsoleClient::carryOut(const std::string& utf8)
{
    if (utf8.starts_with('/') && !utf8.starts_with("//")) {
        commands->carryOut(znt::textFromUtf8(std::string_view(utf8).substr(1)));
        keeper.noteChoices(controller.settings());
        return;
    }
    if (!controller.isConnected()) {
        hasLostLine = true;
        complain(u"Not connected, so this was not sent: " + znt::textFromUtf8(utf8));
        return;
    }
    surroundings.input.replaceTypedLine();
    commandLine.setText(znt::textFromUtf8(std::string_view(utf8).substr(utf8.starts_with("//") ? 1 : 0)));
    isAnswerAwaited = !surroundings.inputIsTerminal;
    lastSent = platform.runLoop.now();
    controller.controlTextViewDoCommandBySelector(ZNTCommandLineKey::InsertNewline);
}

void ZNTConsoleClient::textShown()
{
    isAnswerAwaited = false;
    platform.runLoop.post([this] { sendWaitingLines(); });
}

void ZNTConsoleClient::silencePassed()
{
    if (platform.runLoop.now() - lastSent < silenceSeconds)
        return; // it began before the last line was sent
    isAnswerAwaited = false;
    sendWaitingLines();
    finishAfterLastLine();
}

void ZNTConsoleClient::finishAfterLastLine()
{
    const bool isOnItsWay = controller.isConnected() && controller.isWalking();
    if (hasInputEnded && waitingLines.empty() && !mustWait() && !isOnItsWay)
        finish(hasLostLine && !surroundings.inputIsTerminal ? exitBroken : exitFine);
}

void ZNTConsoleClient::inputEnded()
{
    hasInputEnded = true;
    if (!isStartingDemo && controller.state() == ZNTSessionState::Idle)
        finishAfterLastLine();
}

void ZNTConsoleClient::sessionChanged()
{
    const auto state = controller.state();
    if (state == std::exchange(knownState, state))
        return;
    useSettingsOfGame(state);
    if (state == ZNTSessionState::Connected) {
        alerts.showWaiting();                            // of the connection before
        isAnswerAwaited = !surroundings.inputIsTerminal; // a script reads the greeting first
        platform.runLoop.post([this] { sendWaitingLines(); });
    }
    if (state != ZNTSessionState::Idle || surroundings.inputIsTerminal)
        return;
    if (controller.lastEnding() == ZNTSessionEnding::Broken) {
        finish(exitBroken);
        return;
    }
    isAnswerAwaited = false;
    platform.runLoop.post([this] {
        sendWaitingLines();
        finishAfterLastLine();
    });
}

/// A game may have settings of its own. They end with the connection.
void ZNTConsoleClient::useSettingsOfGame(ZNTSessionState state)
{
    if (state == ZNTSessionState::Connecting)
        keeper.beginGame(znt::utf8FromText(host.text()), znt::utf8FromText(port.text()));
    else if (state == ZNTSessionState::Idle)
        keeper.endGame();
    controller.setSettings(keeper.settings());
}

void ZNTConsoleClient::quit() { finish(exitFine); }

void ZNTConsoleClient::finish(int exitCode)
{
    if (std::exchange(hasFinished, true))
        return;
    // On a later turn: what is held back is shown first, and nobody's callback is cut short.
    platform.runLoop.post([this, exitCode] {
        controller.showAllThatCame();
        alerts.showWaiting();
        if (controller.isConnected())
            controller.connectToServer();
        surroundings.output.catchUp();
        surroundings.exit(exitCode);
    });
}

/// What the game said last is held back until half a second of silence, also when it closed the connection.
/// The alert about that stands below it.
bool ZNTConsoleClient::isFarewellHeldBack() const
{
    return controller.lastEnding() != ZNTSessionEnding::None && controller.hasTextHeldBack();
}

void ZNTConsoleClient::showAlertsAfterFarewell()
{
    // The session's own wait has begun before this one, which is as long, and so ends before it. It begins
    // again where triggers had a long chunk to answer first.
    alertTimer = platform.runLoop.startTimer(silenceSeconds, RunLoopRepeat::Once, [this] {
        if (isFarewellHeldBack())
            showAlertsAfterFarewell();
        else
            alerts.showWaiting();
    });
}

void ZNTConsoleClient::rereadMacroGroups()
{
    platform.notifications.post(ZNTMacroGroupDropDownController::comboBoxChangedName, &groups);
}

void ZNTConsoleClient::finishRecording(std::u16string_view name, std::u16string_view seconds)
{
    controller.doneRecording();
    for (const auto& command : controller.recorder().getACopyOfTheCommands())
        say(u"  " + command);
    if (name.empty())
        return;
    recordingName.setText(name);
    recordingSeconds.setText(seconds);
    _zntCommandRecorderView.saveToDatabase();
}

void ZNTConsoleClient::say(std::u16string_view line)
{
    surroundings.output.write(znt::utf8FromText(line) + "\n");
}

void ZNTConsoleClient::complainIfNotConnected()
{
    if (!controller.isConnected())
        complain(u"Not connected");
}

void ZNTConsoleClient::complain(std::u16string_view sentence)
{
    platform.log.log(znt::utf8FromText(sentence));
}
