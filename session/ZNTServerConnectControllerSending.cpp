// The way out: lines to the game, and what is shown of them.
#include "ZNTCommandInterpreter.h"
#include "ZNTDirections.h"
#include "ZNTLogger.h"
#include "ZNTMSPProcessor.h"
#include "ZNTMacroSource.h"
#include "ZNTOutgoing.h"
#include "ZNTParserUtility.h"
#include "ZNTReceiver.h"
#include "ZNTRecorder.h"
#include "ZNTServerConnectController.h"
#include "ZNTSessionActors.h"
#include "ZNTSessionSpeech.h"

#include <utility>

namespace
{

constexpr double pauseWhenSending = 0.3, pauseAtReturn = 0.2; // seconds

} // namespace

void ZNTServerConnectController::sendMessageToServer(std::u16string_view line, bool ignoreSpecials)
{
    if (!ignoreSpecials && ZNTCommandInterpreter::hasPrefix(line)) {
        commandInterpreter->showStrings(line);
        return;
    }
    speech->lineGoesOut();
    speech->interrupt(pauseWhenSending);
    if (!isTypingHidden())
        showOwnLine(line, settings_.silentEcho ? Aloud::No : Aloud::Yes, OwnLine::Sent);
    std::u16string withLineEnd(line);
    withLineEnd += u"\r\n";
    writeData(receiver->encodedLine(withLineEnd, cfStringEncoding_), ZNTOutgoing::noTimeout,
              ZNTOutgoing::lineTag);
}

void ZNTServerConnectController::writeData(std::string_view data, double timeout, long tag)
{
    outgoing->write(data, timeout, tag);
}

void ZNTServerConnectController::writeQueuedLines() { outgoing->flush(); }

void ZNTServerConnectController::sendTextToServer()
{
    const auto line = screen.textToServer->text();
    const bool isHidden = isTypingHidden(); // a password may begin with a prefix
    if (!isHidden) {
        _zntRecorder->addCommand(line);
        if (!line.empty()) {
            lastCommand_ = line;
            speech->review().noteCommand(line);
        }
    }
    if (!line.empty())
        speech->forgetReplay();
    sendMessageToServer(line, /*ignoreSpecials=*/isHidden);
    screen.textToServer->setText(_emptyString);
}

void ZNTServerConnectController::sendTextToServerNoWidget(std::u16string_view givenLine)
{
    const std::u16string line(givenLine); // may be the last command itself
    if (isTypingHidden()) {
        sendMessageToServer(line, /*ignoreSpecials=*/true);
        screen.textToServer->setText(_emptyString);
        return;
    }
    _zntRecorder->addCommand(line);
    commandInterpreter->showStrings(line);
    if (!line.empty()) {
        speech->forgetReplay();
        speech->review().noteCommand(line);
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
        speech->interrupt(pauseAtReturn);
        speech->review().startOver();
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

void ZNTServerConnectController::sendToServer(ZNTDirection direction)
{
    const auto& word = znt::rowOf(direction).word;
    speech->review().noteCommand(word);
    sendMessageToServer(word, /*ignoreSpecials=*/false);
}

void ZNTServerConnectController::sendNorthToServer() { sendToServer(ZNTDirection::North); }
void ZNTServerConnectController::sendSouthToServer() { sendToServer(ZNTDirection::South); }
void ZNTServerConnectController::sendEastToServer() { sendToServer(ZNTDirection::East); }
void ZNTServerConnectController::sendWestToServer() { sendToServer(ZNTDirection::West); }
void ZNTServerConnectController::sendNorthEastToServer() { sendToServer(ZNTDirection::NorthEast); }
void ZNTServerConnectController::sendNorthWestToServer() { sendToServer(ZNTDirection::NorthWest); }
void ZNTServerConnectController::sendSouthEastToServer() { sendToServer(ZNTDirection::SouthEast); }
void ZNTServerConnectController::sendSouthWestToServer() { sendToServer(ZNTDirection::SouthWest); }
void ZNTServerConnectController::sendUpToServer() { sendToServer(ZNTDirection::Up); }
void ZNTServerConnectController::sendDownToServer() { sendToServer(ZNTDirection::Down); }

void ZNTServerConnectController::stopAllWalks() { _zntSpeedwalking->stopAll(); }

bool ZNTServerConnectController::runRecording(ZNTKeptRecording recording, ZNTReplay::Times times)
{
    if (!isConnected_)
        return false;
    replay->start(std::move(recording), times);
    return true;
}

void ZNTServerConnectController::stopAllThatRuns()
{
    stopAllWalks();
    replay->stop();
}

void ZNTServerConnectController::stopAllSounds() { _soundProcessor->stopAllSounds(); }

// Local output

void ZNTServerConnectController::insertText(std::u16string_view text, ZNTColour)
{
    showOwnText(text, Aloud::Yes);
}

void ZNTServerConnectController::showOwnText(std::u16string_view text, Aloud aloud, OwnLine kind)
{
    if (text.empty())
        return;
    auto result = _zntParserUtility->colours().attributedText(processed(std::u16string(text)));
    if (result.empty())
        return;
    result.isSentLine = kind == OwnLine::Sent;
    if (aloud == Aloud::Yes)
        speech->speakIfOn(result.text);
    screen.textFromServer->append(result);
    _zntLogger->loggerText(result.text);
}

void ZNTServerConnectController::insertTextInWindow(std::u16string_view text)
{
    showOwnLine(text, Aloud::Yes, OwnLine::Message);
}

void ZNTServerConnectController::showOwnLine(std::u16string_view line, Aloud aloud, OwnLine kind)
{
    std::u16string echo = u"\x1b[1;36m";
    echo.append(line).append(u"\r");
    screen.textFromServer->setEditable(true);
    showOwnText(echo, aloud, kind);
    screen.textFromServer->setEditable(false);
    _zntLogger->loggerText(echo);
}

void ZNTServerConnectController::insertTextIntoTheWindow(std::u16string_view text)
{
    speech->interrupt(ZNTSessionSpeech::noPause);
    insertTextInWindow(text);
}

void ZNTServerConnectController::clearScreen() { screen.textFromServer->clear(); }
