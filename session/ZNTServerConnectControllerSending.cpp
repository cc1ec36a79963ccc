// The way out: lines to the game, and what is shown of them.
#include "ZNTMacroSource.h"
#include "ZNTServerConnectController.h"

#include <utility>

namespace
{

constexpr double noTimeout = -1;
constexpr long lineTag = 0;
constexpr double pauseWhenSending = 0.3, pauseAtReturn = 0.2, noPause = 0; // seconds

} // namespace

void ZNTServerConnectController::sendMessageToServer(std::u16string_view line, bool ignoreSpecials)
{
    if (!ignoreSpecials && ZNTCommandInterpreter::hasPrefix(line)) {
        commandInterpreter.showStrings(line);
        return;
    }
    interruptSpeech(pauseWhenSending);
    insertTextInWindow(line);
    std::u16string withLineEnd(line);
    withLineEnd += u"\r\n";
    writeData(znt::encodedText(withLineEnd, cfStringEncoding_), noTimeout, lineTag);
}

void ZNTServerConnectController::writeData(std::string_view data, double timeout, long tag)
{
    if (!mudServer || mudServer->isDisconnected() || data.empty())
        return;
    if (areLinesGathered && tag == lineTag) {
        gatheredLines += data;
        return;
    }
    sendGatheredLines();
    pendingWrites.add(data.size(), tag == ZNTParserUtility::replyTag ? ZNTPendingWrites::Kind::Reply
                                                                     : ZNTPendingWrites::Kind::Line);
    mudServer->writeData(std::string(data), timeout, tag);
}

/// The answers of one part leave in one write: thousands of writes would each wait for a turn of the loop.
void ZNTServerConnectController::sendGatheredLines()
{
    if (gatheredLines.empty())
        return;
    const auto lines = std::exchange(gatheredLines, {});
    const bool wereGathered = std::exchange(areLinesGathered, false);
    writeData(lines, noTimeout, lineTag);
    areLinesGathered = wereGathered;
}

void ZNTServerConnectController::interruptSpeech(double pause)
{
    if (speechInterruptOnOffBindingState_ != 1)
        return;
    zntSpeechSynth_.stopIt();
    if (pause > 0 && mayPause()) {
        writeQueuedLines();
        platform.clock.sleepFor(pause);
    }
    zntSpeechSynth_.speechOn();
}

/// A line of the player's always may. Those that triggers and walks send share one pause a turn of the loop,
/// or else a game could hold the client up for as long as it likes; the turns in which one chunk is answered
/// count as one.
bool ZNTServerConnectController::mayPause()
{
    if (!isAutomatic)
        return true;
    if (std::exchange(hasPausedForTheGame, true))
        return false;
    allowPauseNextTurn();
    return true;
}

void ZNTServerConnectController::allowPauseNextTurn()
{
    platform.runLoop.post([this, alive = std::weak_ptr<char>(life)] {
        if (!alive.expired() && !chunkInHand)
            hasPausedForTheGame = false;
    });
}

/// While it lives, lines are not the player's own.
class ZNTServerConnectController::AutomaticLines
{
public:
    explicit AutomaticLines(ZNTServerConnectController& session)
        : session(session),
          wasAutomatic(std::exchange(session.isAutomatic, true))
    {
    }
    ~AutomaticLines() { session.isAutomatic = wasAutomatic; }
    AutomaticLines(const AutomaticLines&) = delete;
    AutomaticLines& operator=(const AutomaticLines&) = delete;

private:
    ZNTServerConnectController& session;
    const bool wasAutomatic;
};

void ZNTServerConnectController::LinesOfWalks::sendMessageToServer(std::u16string_view line,
                                                                   bool ignoreSpecials)
{
    const AutomaticLines automatic(session);
    session.sendMessageToServer(line, ignoreSpecials);
}

void ZNTServerConnectController::writeQueuedLines()
{
    sendGatheredLines();
    if (mudServer)
        mudServer->flushQueuedWrites();
}

void ZNTServerConnectController::sendTextToServer()
{
    const auto line = screen.textToServer->text();
    _zntRecorder.addCommand(line);
    if (!line.empty()) {
        lastCommand_ = line;
        forgetReplay();
    }
    sendMessageToServer(line, /*ignoreSpecials=*/false);
    screen.textToServer->setText(_emptyString);
}

void ZNTServerConnectController::sendTextToServerNoWidget(std::u16string_view givenLine)
{
    const std::u16string line(givenLine); // may be the last command itself
    _zntRecorder.addCommand(line);
    commandInterpreter.showStrings(line);
    if (!line.empty()) {
        forgetReplay();
        if (!ZNTCommandInterpreter::hasPrefix(line))
            sendMessageToServer(line, /*ignoreSpecials=*/false);
    }
    screen.textToServer->setText(_emptyString);
}

void ZNTServerConnectController::resendLastCommand()
{
    if (!lastCommand_.empty())
        sendTextToServerNoWidget(lastCommand_);
}

bool ZNTServerConnectController::controlTextViewDoCommandBySelector(ZNTCommandLineKey key)
{
    switch (key) {
    case ZNTCommandLineKey::InsertNewline:
        screen._voiceOver->setText(_emptyString);
        interruptSpeech(pauseAtReturn);
        speechReview_.startOver();
        if (!screen.textToServer->text().empty())
            forgetReplay();
        sendTextToServer();
        return true;
    case ZNTCommandLineKey::MoveUp:
        if (lastCommand_.empty()) // what is typed there already stays
            return false;
        screen.textToServer->setText(lastCommand_);
        screen.textToServer->placeCaretAtEnd();
        return false;
    default:
        return false;
    }
}

void ZNTServerConnectController::invokeMacro()
{
    if (!isConnected_)
        return;
    const long row = screen.macroTable->selectedRow();
    if (const auto macro = services.macros.textOfMacroAtIndex(row))
        sendMessageToServer(*macro, /*ignoreSpecials=*/false);
}

void ZNTServerConnectController::sendNorthToServer() { sendMessageToServer(u"north", false); }
void ZNTServerConnectController::sendSouthToServer() { sendMessageToServer(u"south", false); }
void ZNTServerConnectController::sendEastToServer() { sendMessageToServer(u"east", false); }
void ZNTServerConnectController::sendWestToServer() { sendMessageToServer(u"west", false); }
void ZNTServerConnectController::sendNorthEastToServer() { sendMessageToServer(u"northeast", false); }
void ZNTServerConnectController::sendNorthWestToServer() { sendMessageToServer(u"northwest", false); }
void ZNTServerConnectController::sendSouthEastToServer() { sendMessageToServer(u"southeast", false); }
void ZNTServerConnectController::sendSouthWestToServer()
{
    sendMessageToServer(u"southWest", false);
} // its W is kept
void ZNTServerConnectController::sendUpToServer() { sendMessageToServer(u"up", false); }
void ZNTServerConnectController::sendDownToServer() { sendMessageToServer(u"down", false); }

void ZNTServerConnectController::speedwalk(const std::shared_ptr<const ZNTSpeedWalking::Route>& route)
{
    _zntSpeedwalking.speedwalk(route);
}

void ZNTServerConnectController::stopSpeedwalk() { _zntSpeedwalking.stop(); }

void ZNTServerConnectController::stopAllWalks() { _zntSpeedwalking.stopAll(); }

std::vector<std::u16string> ZNTServerConnectController::getAllMacroNames()
{
    return services.macros.getAllMacroNames();
}

std::optional<std::u16string> ZNTServerConnectController::getMacroByName(std::u16string_view name)
{
    return services.macros.textOfMacroNamed(name);
}

void ZNTServerConnectController::sendCommand(std::u16string_view command)
{
    const AutomaticLines automatic(*this);
    ++answersOfTurn;
    sendMessageToServer(command, /*ignoreSpecials=*/false);
}

void ZNTServerConnectController::playTriggerSound(std::u16string_view fileName)
{
    _soundProcessor.playTriggerSound(fileName);
}

void ZNTServerConnectController::stopAllSounds() { _soundProcessor.stopAllSounds(); }

// Local output

void ZNTServerConnectController::insertText(std::u16string_view text, ZNTColour)
{
    if (text.empty())
        return;
    const auto result = _zntParserUtility.processIncomingStream(std::u16string(text));
    if (result.empty())
        return;
    if (speechOnOffBindingState_ == 1)
        speechHandOver.speakOnNewThread(result.text);
    screen.textFromServer->append(result);
    _zntLogger.loggerText(result.text);
}

void ZNTServerConnectController::insertTextInWindow(std::u16string_view text)
{
    std::u16string echo = u"\x1b[1;36m";
    echo.append(text).append(u"\r");
    screen.textFromServer->setEditable(true);
    insertText(echo, znt::colours::blue);
    screen.textFromServer->setEditable(false);
    _zntLogger.loggerText(echo);
}

void ZNTServerConnectController::insertTextIntoTheWindow(std::u16string_view text)
{
    interruptSpeech(noPause);
    insertTextInWindow(text);
}

void ZNTServerConnectController::clearScreen() { screen.textFromServer->clear(); }
