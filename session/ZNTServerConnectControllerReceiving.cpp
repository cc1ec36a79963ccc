// The way in: from a received block to shown text.
#include "ZNTChannelHistory.h"
#include "ZNTFullColourParser.h"
#include "ZNTLogger.h"
#include "ZNTMSPProcessor.h"
#include "ZNTOutgoing.h"
#include "ZNTParserUtility.h"
#include "ZNTReceiver.h"
#include "ZNTServerConnectController.h"
#include "ZNTSessionSpeech.h"
#include "ZNTSoundTagScanner.h"

#include <utility>

namespace
{

/// Counted from the last block. The front end is called after each such silence.
constexpr double silenceSeconds = 0.5;
constexpr long readTag = 0;

} // namespace

/// The first tick comes after the receiver's time of quiet, counted from the last block: if the game sends
/// something more often, only what the receiver calls a release, and the length, release text. While reading
/// is held no tick counts; after that the next tick does, however soon it comes.
void ZNTServerConnectController::readNextBlock()
{
    silenceSoFar = 0;
    nextTick = hasTextHeldBack() ? receiver->secondsOfQuiet() : silenceSeconds;
    mudServer->readDataWithTimeout(nextTick, std::make_shared<std::string>(), 0, readTag);
    holdReadingWhileBusy();
}

/// The read stays pending, with its idle ticks. The network keeps what comes in, so a flood takes none of our
/// memory: neither behind a chunk that is still being answered, nor before a terminal that shows nothing, nor
/// in replies and lines that the server does not take.
void ZNTServerConnectController::holdReadingWhileBusy()
{
    if (mudServer)
        mudServer->holdReading(chunk.isInHand() || isScreenFull || outgoing->isFull());
}

void ZNTServerConnectController::setScreenFull(bool isFull)
{
    isScreenFull = isFull;
    holdReadingWhileBusy();
}

void ZNTServerConnectController::onSocketDidReadData(ZNTStream& stream, std::string_view data, std::int64_t)
{
    receive(receiver->read(data, cfStringEncoding_));
    // What was called because of the block may have ended the connection, or replaced it by another.
    if (mudServer.get() == &stream && !stream.isDisconnected())
        readNextBlock();
}

void ZNTServerConnectController::processMessage(std::optional<std::u16string_view> text)
{
    if (text) {
        receive(receiver->readText(std::u16string(*text)));
    } else if (chunk.isInHand()) {
        chunk.wait([this] { processMessage(std::nullopt); });
    } else {
        isGoAhead_ = readTimeout_ = false;
        ZNTAttributedText notice;
        notice.text = u"Data not readable!";
        screen.textFromServer->append(notice);
    }
}

/// The order is a promise: replies leave before anything of the block is shown, and sounds start before
/// triggers answer.
void ZNTServerConnectController::receive(const ZNTReceived& received)
{
    if (chunk.isInHand()) {
        chunk.wait([this, received] { receive(received); });
        return;
    }
    writeData(received.replies, ZNTParserUtility::replyTimeout, ZNTOutgoing::replyTag);
    endOfNegotiations_ |= received.isEndOfNegotiations;
    isGoAhead_ |= received.isGoAhead;
    noteAgreements(received);
    const bool isRelease = received.isRelease || readTimeout_;
    const auto ready = readTimeout_ ? received.text.size() : received.ready;
    auto released = mudServerTextSentBuffer.take(received.text, isRelease, ready);
    if (isRelease || released)
        isGoAhead_ = readTimeout_ = false;
    if (released) {
        speech->setChunkInHand(true);
        chunk.start(coloured(std::move(released->text)), released->isFlood);
    }
    if (!received.failure.empty())
        endUnreadable(received.failure);
}

/// What the block has changed for the rest of the connection.
void ZNTServerConnectController::noteAgreements(const ZNTReceived& received)
{
    if (received.agreedEncoding && *received.agreedEncoding != cfStringEncoding_) {
        cfStringEncoding_ = *received.agreedEncoding;
        changed(ZNTSessionChange::Encoding);
    }
    if (received.isRefusal && !std::exchange(isHintGiven, true))
        note(znt::notices::standardTelnetMayHelp);
    if (std::exchange(wasTypingHidden, isTypingHidden()) != isTypingHidden())
        changed(ZNTSessionChange::Typing);
    noteCompression();
}

bool ZNTServerConnectController::isTypingHidden() const
{
    return isConnected_ && receiver->isEchoedByServer();
}

void ZNTServerConnectController::endUnreadable(std::u16string_view sentence)
{
    noteEnd(ZNTSessionEnding::Broken, ZNTEndReason::Unreadable);
    platform.alert.showMessage(u"Connection closed", sentence);
    if (mudServer)
        mudServer->disconnect();
}

void ZNTServerConnectController::noteCompression()
{
    if (std::exchange(wasInflating, receiver->isInflating()) != receiver->isInflating())
        changed(ZNTSessionChange::Compression);
}

ZNTAttributedText ZNTServerConnectController::coloured(std::u16string gameText)
{
    auto text = processed(std::move(gameText));
    return settings_.fullColours ? fullColours->attributedText(std::move(text))
                                 : _zntParserUtility->colours().attributedText(std::move(text));
}

std::u16string ZNTServerConnectController::processed(std::u16string text)
{
    // What is shown after the end would begin a sound that nothing ends.
    const bool mayPlay = isConnected_ || !settings_.stopSounds;
    if (const auto tag = _zntParserUtility->soundTag(text); tag && mayPlay)
        static_cast<void>(_soundProcessor->processSound(*tag)); // a tag that cannot be understood is dropped
    receiver->stripCommands(text);
    znt::stripSoundTags(text);
    return text;
}

// The chunk's way to the player

void ZNTServerConnectController::answersBegin() { outgoing->gatherLines(true); }

void ZNTServerConnectController::answersEnd()
{
    outgoing->gatherLines(false);
    outgoing->flush();
}

bool ZNTServerConnectController::hasRoomForAnswers() const { return outgoing->hasRoomForAnswers(); }

void ZNTServerConnectController::showChunk(const ZNTAttributedText& shown, const ZNTTriggerOutcome& outcome)
{
    speech->chunkReceived(shown.text, outcome);
    channelHistory_->addText(shown.text);
    screen.textFromServer->append(shown);
    screen.scrollView()->scrollToEnd();
    _zntLogger->loggerText(shown.text);
    if (services.textShown)
        services.textShown(shown.text);
}

void ZNTServerConnectController::chunkEnded(ZNTAttributedText&& shown, bool isFlood)
{
    if (isFlood) // what comes next will need as much room
        mudServerTextSentBuffer.reuse(std::move(shown.text));
    speech->setChunkInHand(false);
}

void ZNTServerConnectController::chunkMoved() { holdReadingWhileBusy(); }

void ZNTServerConnectController::waitingEnded()
{
    if (!isConnected_)
        showFarewellInAWhile();
}

// Silence, and the end

double ZNTServerConnectController::onSocketShouldTimeoutReadWithTag(ZNTStream& stream, std::int64_t, double,
                                                                    std::size_t)
{
    if (stream.isReadingHeld())
        return nextTick; // nothing was read meanwhile, so this is no silence
    timeUp();
    silenceSoFar += nextTick;
    if (silenceSoFar < silenceSeconds)
        return nextTick = silenceSeconds - silenceSoFar;
    silenceSoFar = 0;
    if (services.silencePassed)
        services.silencePassed();
    return nextTick = silenceSeconds;
}

void ZNTServerConnectController::timeUp()
{
    if (chunk.isInHand()) {
        chunk.wait([this] { timeUp(); });
        return;
    }
    readTimeout_ = true;
    processMessage(_emptyString);
}

void ZNTServerConnectController::onSocketDidWriteDataWithTag(ZNTStream&, std::int64_t)
{
    outgoing->finishOldest();
    holdReadingWhileBusy();
    chunk.roomWasMade();
}

/// What was kept from being read would be lost with a connection that breaks.
void ZNTServerConnectController::takeWhatWasHeldUp(ZNTStream& stream)
{
    if (!stream.isReadingHeld())
        return;
    if (const auto rest = stream.unreadData(); rest && !rest->empty())
        receive(receiver->read(*rest, cfStringEncoding_));
}

/// Shows what a server said just before it closed. If the next connection stands first, that text comes with
/// the new game's first words.
void ZNTServerConnectController::showFarewellInAWhile()
{
    if (!mudServerTextSentBuffer.empty())
        farewellTimer = platform.runLoop.startTimer(receiver->secondsOfQuiet(), RunLoopRepeat::Once,
                                                    [this] { timeUp(); });
}

void ZNTServerConnectController::showAllThatCame()
{
    chunk.finishNow();
    timeUp();
    chunk.finishNow();
}
