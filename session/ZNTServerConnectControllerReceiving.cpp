// The way in: from a received block to shown text.
#include "ZNTServerConnectController.h"

#include "ZNTBlockDecoder.h"
#include "ZNTTelnetScanner.h"

#include <utility>

namespace
{

using namespace znt::telnet;

constexpr double readTimeoutSeconds = 0.5;
constexpr long readTag = 0;

/// Whether a block shows what was held back before it: at IAC WONT, sent before a password, and at IAC GA.
bool releasesHeldBackText(std::u16string_view text)
{
    for (std::size_t at = 0; (at = znt::findUnit(text, IAC, at)) != text.npos; ++at)
        if (at + 1 < text.size() && (text[at + 1] == WONT || text[at + 1] == GA))
            return true;
    return false;
}

} // namespace

void ZNTServerConnectController::readNextBlock()
{
    mudServer->readDataWithTimeout(readTimeoutSeconds, std::make_shared<std::string>(), 0, readTag);
    holdReadingWhileBusy();
}

/// The read stays pending, with its idle ticks. The network keeps what comes in, so a flood takes none of our
/// memory: neither behind a chunk that is still being answered, nor before a terminal that shows nothing, nor
/// in replies and lines that the server does not take.
void ZNTServerConnectController::holdReadingWhileBusy()
{
    if (mudServer)
        mudServer->holdReading(chunkInHand || isScreenFull || pendingWrites.replyBytes() > mostReplyBytes ||
                               pendingWrites.bytes() > mostBytesOnTheirWay);
}

void ZNTServerConnectController::setScreenFull(bool isFull)
{
    isScreenFull = isFull;
    holdReadingWhileBusy();
}

void ZNTServerConnectController::onSocketDidReadData(ZNTStream& socket, std::string_view data, std::int64_t)
{
    processBlock(data);
    // What was told of the block may have ended the connection, or replaced it by another.
    if (mudServer.get() == &socket && !socket.isDisconnected())
        readNextBlock();
}

void ZNTServerConnectController::processBlock(std::string_view data)
{
    if (_mccp_ && isToBeInflated(data)) {
        const auto block = inflated(data);
        processMessage(znt::textOfBlock(block, cfStringEncoding_));
    } else {
        processMessage(znt::textOfBlock(data, cfStringEncoding_));
    }
}

/// What was kept from being read would be lost with a connection that breaks.
void ZNTServerConnectController::takeWhatWasHeldUp(ZNTStream& socket)
{
    if (!socket.isReadingHeld())
        return;
    if (const auto rest = socket.unreadData(); rest && !rest->empty())
        processBlock(*rest);
}

void ZNTServerConnectController::onSocketDidWriteDataWithTag(ZNTStream&, std::int64_t)
{
    pendingWrites.finishOldest();
    holdReadingWhileBusy();
    if (isWaitingForRoom && hasRoomForAnswers())
        goOnWithChunkNextTurn();
}

bool ZNTServerConnectController::isToBeInflated(std::string_view block) const
{
    // Servers announce compression with commands that are not compressed themselves. A block that cannot
    // even be decoded is no such block.
    if (block.empty() || static_cast<unsigned char>(block.front()) != IAC)
        return !block.empty();
    const auto text = znt::decodedText(block, cfStringEncoding_);
    return !text || !holdsOnlyCommands(*text);
}

std::string ZNTServerConnectController::inflated(std::string_view block)
{
    auto result = mccp2.anotherInflate(block);
    if (result.outcome != ZNTInflater::Outcome::GoesOn)
        refuseCompression();
    return std::move(result.bytes);
}

void ZNTServerConnectController::refuseCompression()
{
    set_mccp(false);
    _zntParserUtility.sendCommand(Refusal, option::CompressionV2);
    _zntParserUtility.sendCommand(Refusal, option::CompressionV1);
}

double ZNTServerConnectController::onSocketShouldTimeoutReadWithTag(ZNTStream& socket, std::int64_t, double,
                                                                    std::size_t)
{
    if (socket.isReadingHeld())
        return readTimeoutSeconds; // nobody listened, so this is no silence
    timeUp();
    if (services.silencePassed)
        services.silencePassed();
    return readTimeoutSeconds;
}

void ZNTServerConnectController::timeUp()
{
    if (chunkInHand) {
        waitingForChunk.emplace_back([this] { timeUp(); });
        return;
    }
    readTimeout_ = true;
    processMessage(_emptyString);
}

/// Shows what a server said just before it closed, unless the next connection stands first.
void ZNTServerConnectController::showFarewellInAWhile()
{
    if (!mudServerTextSentBuffer.empty())
        farewellTimer =
            platform.runLoop.startTimer(readTimeoutSeconds, RunLoopRepeat::Once, [this] { timeUp(); });
}

void ZNTServerConnectController::showAllThatCame()
{
    const auto finishChunkInHand = [this] {
        while (chunkInHand && !isBusyWithChunk) {
            giveUpAnswers();
            goOnWithChunk();
        }
    };
    finishChunkInHand();
    timeUp();
    finishChunkInHand();
}

void ZNTServerConnectController::processMessage(std::optional<std::u16string_view> text)
{
    if (chunkInHand) {
        waitingForChunk.emplace_back([this, later = text ? std::optional(std::u16string(*text))
                                                         : std::nullopt] { processMessage(later); });
        return;
    }
    if (!text) {
        isGoAhead_ = readTimeout_ = false;
        ZNTAttributedText notice;
        notice.text = u"Data not readable!";
        screen.textFromServer->append(notice);
        return;
    }
    _zntParserUtility.processServerCommands(*text);

    const bool isHeldBack = !releasesHeldBackText(*text) && !readTimeout_;
    if (isHeldBack) {
        mudServerTextSentBuffer.add(*text);
        if (mudServerTextSentBuffer.size() <= mostHeldBack)
            return;
        text = _emptyString;
    }
    isGoAhead_ = readTimeout_ = false;
    if (text->empty() && mudServerTextSentBuffer.empty())
        return; // a silence that releases nothing is no chunk, which triggers could match
    auto& chunk = chunkInHand.emplace();
    chunk.result = _zntParserUtility.processIncomingStream(mudServerTextSentBuffer.releasedWith(*text));
    chunk.isFlood = isHeldBack;
    chunk.pass = triggers.startPass(chunk.result.text, *this);
    goOnWithChunk();
}

// The chunk in hand

/// Answers as many matches of the chunk as one turn of the loop has room for, and handles the chunk on after
/// the last. What comes after it waits; lines of the player's do not.
void ZNTServerConnectController::goOnWithChunk()
{
    nextPart.reset();
    isWaitingForRoom = false;
    answersOfTurn = 0;
    endOfTurn = platform.runLoop.now() + secondsForAnswers;
    isBusyWithChunk = areLinesGathered = true;
    const bool isAnswered = chunkInHand->pass->goOn();
    areLinesGathered = false;
    writeQueuedLines(); // the answers leave before anything is drawn
    if (isAnswered)
        finishChunk();
    else
        goOnWithChunkNextTurn();
    isBusyWithChunk = false;
    holdReadingWhileBusy();
    if (isAnswered)
        processWhatWaits();
}

void ZNTServerConnectController::goOnWithChunkNextTurn()
{
    isWaitingForRoom = !hasRoomForAnswers();
    if (!isWaitingForRoom)
        nextPart = platform.runLoop.startTimer(0, RunLoopRepeat::Once, [this] { goOnWithChunk(); });
}

/// Answers that the server does not take would fill the memory.
bool ZNTServerConnectController::hasRoomForAnswers() const
{
    return pendingWrites.bytes() <= mostAnswerBytes;
}

bool ZNTServerConnectController::hasTimeForMore()
{
    return answersOfTurn < mostAnswersInATurn && gatheredLines.size() <= mostAnswerBytes &&
           platform.runLoop.now() < endOfTurn;
}

/// An answer reaches the game that its chunk came from, or nobody.
void ZNTServerConnectController::giveUpAnswers()
{
    if (!chunkInHand)
        return;
    chunkInHand->pass->stopAnswering();
    if (isWaitingForRoom)
        goOnWithChunkNextTurn();
}

/// Those of a connection that has ended.
void ZNTServerConnectController::forgetWrites()
{
    pendingWrites.clear();
    gatheredLines.clear();
}

void ZNTServerConnectController::finishChunk()
{
    if (!chunkInHand->result.empty())
        show(chunkInHand->result, chunkInHand->pass->isGagged());
    auto text = std::move(chunkInHand->result.text);
    const bool isFlood = chunkInHand->isFlood;
    chunkInHand.reset();
    if (isFlood) // what comes next will need as much room
        mudServerTextSentBuffer.reuse(std::move(text));
    if (hasPausedForTheGame)
        allowPauseNextTurn();
}

void ZNTServerConnectController::processWhatWaits()
{
    if (waitingForChunk.empty() || std::exchange(isProcessingWhatWaits, true))
        return;
    while (!chunkInHand && !waitingForChunk.empty()) {
        const auto process = std::move(waitingForChunk.front());
        waitingForChunk.pop_front();
        process();
    }
    isProcessingWhatWaits = false;
    if (!isConnected_)
        showFarewellInAWhile();
}

void ZNTServerConnectController::show(const ZNTAttributedText& result, bool isGagged)
{
    _replayLastTextFromMUD += znt::lastUnits(result.text, mostReplayed);
    if (_replayLastTextFromMUD.size() > 2 * mostReplayed) // seldom, since it moves what stays
        _replayLastTextFromMUD.erase(0, _replayLastTextFromMUD.size() - mostReplayed);
    speechReview_.addReceivedText(result.text);
    if (!isGagged)
        speakOrStop(result.text);
    screen.textFromServer->append(result);
    screen.scrollView()->scrollToEnd();
    _zntLogger.loggerText(result.text);
    if (services.textShown)
        services.textShown();
}

void ZNTServerConnectController::speakOrStop(const std::u16string& plainText)
{
    const bool isOff = zntSpeechSynth_.isSpeachOn(); // its name has it the wrong way round
    if (speechOnOffBindingState_ != 1) {
        if (!isOff) // else only a line that the player asked to hear again can be sounding
            zntSpeechSynth_.stopIt();
        return;
    }
    if (isOff)
        zntSpeechSynth_.speechOn();
    speechHandOver.speakOnNewThread(plainText);
}
