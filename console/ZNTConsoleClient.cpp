#include "ZNTConsoleClient.h"

#include "ZNTCommandRecorderView.h"
#include "ZNTConsoleCommands.h"
#include "ZNTGameSettings.h"
#include "ZNTRecorder.h"
#include "ZNTTerminalSize.h"
#include "ZNTText.h"

#include <algorithm>
#include <utility>

namespace
{

/// `line` as one line: what a player typed or stored may hold control characters, which a terminal obeys.
std::u16string withoutControls(std::u16string_view line)
{
    std::u16string text(line);
    std::ranges::replace_if(
        text, [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); }, u' ');
    return text;
}

} // namespace

ZNTConsoleClient::ZNTConsoleClient(Surroundings givenSurroundings, const ZNTConsoleOptions& options)
    : surroundings(std::move(givenSurroundings)),
      options(options),
      alerts(surroundings.platform.runLoop, surroundings.platform.alert, ZNTConsoleScript::secondsOfSilence,
             [this] { return isFarewellHeldBack(); }),
      platform{surroundings.platform.runLoop,
               surroundings.platform.clock,
               surroundings.platform.log,
               surroundings.platform.notifications,
               alerts,
               surroundings.platform.places},
      outputView(options.isInColour(surroundings.outputIsTerminal) ? ZNTConsoleColour::Always
                                                                   : ZNTConsoleColour::Never,
                 surroundings.output, surroundings.colourDepth),
      completion(outputView, [this] { return macros.getAllMacroNames(); }),
      screen(surroundings.inputIsTerminal ? static_cast<ZNTTextView&>(completion) : outputView),
      keeper(platform.places, platform.log, options.settings),
      kept(platform.places, platform.log),
      store(platform.places, platform.log),
      groups(store, platform.log),
      macros(store),
      controller(platform, screen.elements(), services()),
      script(
          platform.runLoop, surroundings.input, controller,
          surroundings.inputIsTerminal ? ZNTConsoleScript::Pace::AtOnce
                                       : ZNTConsoleScript::Pace::AnswerByAnswer,
          {.carryOut = [this](const std::string& line) { carryOut(line); },
           .done = [this] { finish(hasLostLine && !surroundings.inputIsTerminal ? exitBroken : exitFine); }}),
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

ZNTSessionServices ZNTConsoleClient::services()
{
    return {.database = store,
            .macros = macros,
            .sounds = surroundings.sounds,
            .speechEngine = surroundings.speechEngine,
            .screenReader = screenReader,
            .streams = surroundings.streams,
            // There is no sheet; `finishRecording` shows the commands.
            .showZNTCommandRecorderView = [](ZNTCommandRecorderDataSource&) {},
            .sessionChanged =
                [this](ZNTSessionChange what) {
                    if (what == ZNTSessionChange::State)
                        stateChanged();
                    else if (what == ZNTSessionChange::Typing)
                        surroundings.input.setTypingHidden(controller.isTypingHidden());
                },
            .textShown =
                [this](std::u16string_view text) {
                    const auto& settings = controller.settings();
                    script.textShown((settings.standardTelnet || settings.wholeLines) &&
                                     text.ends_with(u'\n'));
                },
            .silencePassed =
                [this] {
                    noteTerminalSize();
                    script.silencePassed();
                },
            .notice = [this](const ZNTSessionNotice& notice) { showNotice(notice); },
            .settings = keeper.settings()};
}

void ZNTConsoleClient::start()
{
    if (!surroundings.input.start(
            {.line = [this](const std::string& line) { handleLine(line); },
             .end = [this] { script.inputEnded(); },
             .catchUp = [this] { surroundings.output.catchUp(); },
             .keyTyped = [this] { silenceAtKey(/*isReturn=*/false); },
             .complete = [this](std::string_view before) { return completion.completed(before); }})) {
        complain(u"Standard input cannot be read: the system has no room for waiting for it.");
        finish(exitBroken);
        return;
    }
    if (options.demo)
        startDemo();
    else if (!options.host.empty())
        connect(znt::textFromUtf8(options.host), options.port);
    else if (const auto offered = screen.host.text(); !offered.empty())
        say(u"Type /connect to play " + screen.mudName.text() + u" (" + offered + u" " + screen.port.text() +
            u"), or /help.");
    else
        say(u"Type /connect HOST PORT to play, /muds for a list of games, or /help.");
}

void ZNTConsoleClient::startDemo()
{
    script.setHeld(true);
    demoGame = std::make_unique<ZNTDemoGame>(platform.runLoop, surroundings.demoProgram);
    demoGame->start(controller.cfStringEncoding(), [this](const ZNTResult<std::uint16_t>& started) {
        script.setHeld(false);
        if (started) {
            keeper.noteDemoGame("127.0.0.1", std::to_string(started.value()));
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
        screen.host.setText(newHost);
        screen.port.setText(znt::decimalText(newPort));
    }
    if (screen.host.text().empty() || znt::integerValue(screen.port.text()) <= 0) {
        complain(u"Name a game: /connect HOST PORT. /mud default N offers one from the next start on.");
        return;
    }
    controller.connectToServer();
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

/// A terminal does not say when Control alone is pressed, so any key stands for it.
void ZNTConsoleClient::silenceAtKey(bool isReturn)
{
    const auto chosen = controller.settings().silenceKey;
    if (chosen != ZNTSilenceKey::None && (isReturn || chosen != ZNTSilenceKey::Return))
        controller.stopSpeaking();
}

void ZNTConsoleClient::handleLine(const std::string& utf8)
{
    silenceAtKey(/*isReturn=*/true);
    // On a terminal the client's own commands work at once, also to give up an attempt to connect.
    if (surroundings.inputIsTerminal && isOwnCommand(utf8)) {
        carryOut(utf8);
        return;
    }
    script.add(utf8);
}

/// While typing is hidden a password may begin with a slash. Then only a command's whole name is one.
bool ZNTConsoleClient::isOwnCommand(std::string_view utf8) const
{
    if (!utf8.starts_with('/') || utf8.starts_with("//"))
        return false;
    return !controller.isTypingHidden() || commands->has(znt::textFromUtf8(utf8.substr(1)));
}

void ZNTConsoleClient::carryOut(const std::string& utf8)
{
    if (isOwnCommand(utf8)) {
        hasAnswered = false;
        commands->carryOut(znt::textFromUtf8(std::string_view(utf8).substr(1)));
        keeper.noteChoices(controller.settings());
        return;
    }
    if (!controller.isConnected()) {
        hasLostLine = true;
        complain(u"Not connected, so this was not sent: " + znt::textFromUtf8(utf8));
        return;
    }
    const auto line = znt::textFromUtf8(
        std::string_view(utf8).substr(utf8.starts_with("//") && !controller.isTypingHidden() ? 1 : 0));
    if (!surroundings.input.takeBackTypedLine())
        outputView.setLineOnScreen(line);
    screen.commandLine.setText(line);
    script.lineSent();
    controller.controlTextViewDoCommandBySelector(ZNTCommandLineKey::InsertNewline);
    outputView.setLineOnScreen(std::nullopt);
}

void ZNTConsoleClient::stateChanged()
{
    const auto state = controller.state();
    confirmState();
    useSettingsOfGame();
    if (state == ZNTSessionState::Connected) {
        noteTerminalSize();
        alerts.showWaiting(); // of the connection before
        script.connected();
    }
    if (state != ZNTSessionState::Idle || surroundings.inputIsTerminal)
        return;
    if (controller.lastEnding() == ZNTSessionEnding::Broken)
        finish(exitBroken);
    else
        script.disconnected();
}

void ZNTConsoleClient::confirmState()
{
    const auto state = controller.state();
    if (std::exchange(confirmedState, state) == state || !surroundings.confirmsChanges)
        return;
    if (state == ZNTSessionState::Connecting)
        say(u"Connecting to " + screen.host.text() + u" " + screen.port.text() + u".");
    else if (state == ZNTSessionState::Connected)
        say(u"Connected.");
    else if (controller.lastEnding() == ZNTSessionEnding::ByPlayer) // a notice or an alert says the others
        say(u"Disconnected.");
}

/// A hint is for people who read it and have made no choice, and not for the demo game, which plays right
/// both ways.
void ZNTConsoleClient::showNotice(const ZNTSessionNotice& notice)
{
    if (notice.kind == ZNTSessionNotice::Kind::Hint &&
        (!surroundings.errorIsTerminal || demoGame || !keeper.mayNeedHint() ||
         std::exchange(isHintShown, true)))
        return;
    complain(notice.sentence);
}

void ZNTConsoleClient::noteTerminalSize()
{
    if (const auto size = surroundings.outputIsTerminal ? znt::terminalSize() : std::nullopt)
        controller.setViewSize(size->columns, size->rows);
}

void ZNTConsoleClient::useSettingsOfGame()
{
    znt::useSettingsOfGame(keeper, controller, screen.host.text(), screen.port.text());
    const bool isSaid = controller.isConnected() && keeper.hasSettingsForGame();
    if (!std::exchange(areGameSettingsSaid, isSaid) && isSaid && surroundings.errorIsTerminal)
        complain(u"With settings for this game; /set shows them.");
}

void ZNTConsoleClient::setStandardTelnet(bool isOn)
{
    static_cast<void>(keeper.choose(znt::standardTelnet, isOn ? "on" : "off"));
    controller.setSettings(keeper.settings());
    say(znt::notices::standardTelnetSwitched(isOn, controller.isConnected()).sentence);
}

void ZNTConsoleClient::quit() { finish(exitFine); }

void ZNTConsoleClient::finish(int exitCode)
{
    if (std::exchange(hasFinished, true))
        return;
    script.stop();
    // On a later turn, because the caller may be in the middle of the session's work. What is held back is
    // shown first.
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
/// The alert about that is shown below it.
bool ZNTConsoleClient::isFarewellHeldBack() const
{
    return controller.lastEnding() != ZNTSessionEnding::None && controller.hasTextHeldBack();
}

void ZNTConsoleClient::finishRecording(std::u16string_view name, std::u16string_view seconds)
{
    controller.doneRecording();
    for (const auto& command : controller.recorder().getACopyOfTheCommands())
        say(u"  " + command);
    if (name.empty())
        return;
    ZNTAutoCommands record;
    ZNTCommandRecorderView::save(record, controller.recorder()._textRecorderBean(), name, seconds,
                                 platform.log);
}

void ZNTConsoleClient::say(std::u16string_view line)
{
    hasAnswered = true;
    surroundings.output.write(znt::utf8FromText(withoutControls(line)) + "\n");
}

void ZNTConsoleClient::confirm(std::u16string_view sentence)
{
    if (surroundings.confirmsChanges && !hasAnswered)
        say(sentence);
}

void ZNTConsoleClient::complainIfNotConnected()
{
    if (!controller.isConnected())
        complain(u"Not connected");
}

void ZNTConsoleClient::complain(std::u16string_view sentence)
{
    hasAnswered = true;
    platform.log.log(znt::utf8FromText(withoutControls(sentence)));
}
