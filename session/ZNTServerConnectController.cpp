#include "ZNTServerConnectController.h"

#include "ZNTBlockDecoder.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTNetworkAddress.h"
#include "ZNTTelnetScanner.h"
#include "ZNTUpdater.h"

#include <array>
#include <utility>

namespace
{

using namespace znt::telnet;

constexpr double readTimeoutSeconds = 0.5;
constexpr long readTag = 0;
constexpr double noPause = 0;

constexpr char16_t optionCompressionV1 = 85, optionCompressionV2 = 86, optionSound = 90;

struct EncodingTitle {
    std::u16string_view title;
    ZNTStringEncoding encoding;
};
constexpr std::array encodingTitles{
    EncodingTitle{u"ASCII", ZNTStringEncoding::Ascii},
    EncodingTitle{u"EUC_CN - Chinese", ZNTStringEncoding::EucCn},
    EncodingTitle{u"BIG5 - Chinese", ZNTStringEncoding::Big5Hkscs},
};

/// Whether a block shows what was held back before it: at IAC WONT, sent before a password, and at IAC GA.
bool releasesHeldBackText(std::u16string_view text)
{
    for (std::size_t at = 0; (at = znt::findUnit(text, IAC, at)) != text.npos; ++at)
        if (at + 1 < text.size() && (text[at + 1] == WONT || text[at + 1] == GA))
            return true;
    return false;
}

} // namespace

ZNTServerConnectController::ZNTServerConnectController(const ZNTPlatform& platform,
                                                       const ZNTSessionScreen& screen,
                                                       ZNTSessionServices givenServices)
    : platform(platform),
      screen(screen),
      services(std::move(givenServices)),
      zntSpeechSynth_(platform.runLoop, services.speechEngine, services.screenReader),
      speechHandOver(zntSpeechSynth_),
      speechReview_(zntSpeechSynth_),
      _zntSpeedwalking(platform.runLoop, *this, platform.log),
      _soundProcessor(platform.places, services.sounds),
      _zntParserUtility(*this,
                        [this](std::u16string_view tag) {
                            // A tag that cannot be understood is dropped.
                            static_cast<void>(_soundProcessor.processSound(tag));
                        }),
      commandInterpreter(*this, *this),
      triggers(platform.log, platform.runLoop),
      _zntLogger(platform.places, platform.clock)
{
    ZNTUpdater updater(platform.places, platform.log);
    updater.createSoundFolder();
    rootPath_ = updater.getSoundPath();
    _zntSpeedwalking.walkingChanged = [this] { changed(); };
    services.speechEngine.setAvailabilityListener([this] { changed(); });
    reloadTriggers();
}

ZNTServerConnectController::~ZNTServerConnectController()
{
    services.speechEngine.setAvailabilityListener({});
}

void ZNTServerConnectController::awakeFromNib()
{
    disableAlmostAllWidgets();
    screen.ipAddress->takeFocus();
    fillFromDefaultMud();
    if (services.screenReader.isRunning())
        speakForScreenReader();
    changed();
}

void ZNTServerConnectController::fillFromDefaultMud()
{
    for (const auto& mud : services.database.getAllMudsFromMudList()) {
        if (!mud.defaultConnection)
            continue;
        screen.ipAddress->setText(mud.telnetURL);
        screen.port->setText(znt::decimalText(mud.port));
        screen.mudName->setText(mud.name);
    }
}

// Connecting

void ZNTServerConnectController::connectToServer()
{
    const auto host = znt::utf8FromText(screen.ipAddress->text());
    const auto port = znt::integerValue(screen.port->text());
    if (isConnected_ || host.empty() || port <= 0) {
        if (mudServer)
            mudServer->disconnect();
        return;
    }
    screen.myProgressIndicator->setHidden(false);
    screen.myProgressIndicator->startAnimation();
    lastEnding_ = ZNTSessionEnding::None;
    repliesOnTheirWay = 0;
    isReadPutOff = false;
    mudServer = std::make_unique<AsyncSocket>(platform.runLoop, this);
    if (!mudServer->connectToHost(host, static_cast<std::uint16_t>(port))) {
        lastEnding_ = ZNTSessionEnding::Broken;
        showMudNotResponding();
    }
    changed();
}

void ZNTServerConnectController::stopConnecting()
{
    if (state() == ZNTSessionState::Connecting)
        mudServer->disconnect();
}

void ZNTServerConnectController::onSocketDidConnectToHost(AsyncSocket&, const std::string& host,
                                                          std::uint16_t)
{
    services.sounds.setGameIsLocal(!znt::isPublicAddress(host));
    farewellTimer.reset(); // what is held back from before shows with this game's first words
    mccp2.startStream();
    screen.myProgressIndicator->stopAnimation();
    screen.connectionButton->setTitle(u"Disconnect");
    isConnected_ = true;
    connectedSince_ = platform.clock.timeOfDay();
    screen.ipAddress->setEnabled(false);
    screen.port->setEnabled(false);
    enableAlmostAllWidgets();
    screen.textToServer->placeCaretAtEnd();
    readNextBlock();
    changed();
}

void ZNTServerConnectController::onSocketWillDisconnectWithError(AsyncSocket& socket, const ZNTError* error)
{
    lastEnding_ = error ? ZNTSessionEnding::Broken : ZNTSessionEnding::ByServer;
    _mccp_ = false;
    screen.myProgressIndicator->stopAnimation();
    screen.myProgressIndicator->setHidden(true);
    showMudNotResponding();
    socket.disconnect();
}

void ZNTServerConnectController::onSocketDidDisconnect(AsyncSocket&)
{
    if (lastEnding_ == ZNTSessionEnding::None)
        lastEnding_ = ZNTSessionEnding::ByPlayer;
    _mccp_ = false;
    screen.connectionButton->setTitle(u"Connect");
    screen.ipAddress->setEnabled(true);
    screen.port->setEnabled(true);
    disableAlmostAllWidgets();
    isConnected_ = false;
    screen.myProgressIndicator->stopAnimation();
    if (!mudServerTextSentBuffer.empty())
        farewellTimer =
            platform.runLoop.startTimer(readTimeoutSeconds, RunLoopRepeat::Once, [this] { timeUp(); });
    changed();
}

void ZNTServerConnectController::showMudNotResponding()
{
    platform.alert.showMessage(
        u"MUD Not Responding",
        u"Please select a new MUD or try again later. The MUD address entered is unavailable.");
}

void ZNTServerConnectController::enableAlmostAllWidgets() { setAlmostAllWidgetsEnabled(true); }

void ZNTServerConnectController::disableAlmostAllWidgets() { setAlmostAllWidgetsEnabled(false); }

void ZNTServerConnectController::setAlmostAllWidgetsEnabled(bool enabled)
{
    screen.textToServer->setEnabled(enabled);
    for (ZNTButton* button : {screen.northButton, screen.southButton, screen.eastButton, screen.westButton,
                              screen.northEastButton, screen.northWestButton, screen.southEastButton,
                              screen.southWestButton, screen.upButton, screen.downButton})
        button->setEnabled(enabled);
}

// Receiving

void ZNTServerConnectController::readNextBlock()
{
    mudServer->readDataWithTimeout(readTimeoutSeconds, std::make_shared<std::string>(), 0, readTag);
}

void ZNTServerConnectController::onSocketDidReadData(AsyncSocket& socket, std::string_view data, std::int64_t)
{
    if (_mccp_ && isToBeInflated(data)) {
        const auto block = inflated(data);
        processMessage(znt::textOfBlock(block, cfStringEncoding_));
    } else {
        processMessage(znt::textOfBlock(data, cfStringEncoding_));
    }
    // What was told of the block may have ended the connection, or replaced it by another.
    if (mudServer.get() == &socket && !socket.isDisconnected())
        readOn();
}

/// A server that offers without end and takes no answers gets no more of our memory.
void ZNTServerConnectController::readOn()
{
    isReadPutOff = repliesOnTheirWay > mostRepliesOnTheirWay;
    if (!isReadPutOff)
        readNextBlock();
}

void ZNTServerConnectController::onSocketDidWriteDataWithTag(AsyncSocket&, std::int64_t tag)
{
    if (tag != ZNTParserUtility::replyTag)
        return;
    --repliesOnTheirWay;
    if (isReadPutOff)
        readOn();
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
    _zntParserUtility.sendCommand(Refusal, optionCompressionV2);
    _zntParserUtility.sendCommand(Refusal, optionCompressionV1);
}

double ZNTServerConnectController::onSocketShouldTimeoutReadWithTag(AsyncSocket&, std::int64_t, double,
                                                                    std::size_t)
{
    timeUp();
    if (services.silencePassed)
        services.silencePassed();
    return readTimeoutSeconds;
}

void ZNTServerConnectController::timeUp()
{
    readTimeout_ = true;
    processMessage(_emptyString);
}

void ZNTServerConnectController::processMessage(std::optional<std::u16string_view> text)
{
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
    auto result = _zntParserUtility.processIncomingStream(mudServerTextSentBuffer.releasedWith(*text));
    pausesLeft = mostPauses;
    const bool isGagged = triggers.passOver(result.text, *this);
    pausesLeft.reset();
    if (!result.empty())
        show(result, isGagged);
    if (isHeldBack) // a flood: what comes next will need as much room
        mudServerTextSentBuffer.reuse(std::move(result.text));
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

// Settings

void ZNTServerConnectController::changeEncoding(std::u16string_view title)
{
    for (const auto& known : encodingTitles)
        if (known.title == title)
            cfStringEncoding_ = known.encoding;
    changed();
}

void ZNTServerConnectController::changeFont(const ZNTFont& font)
{
    _zntParserUtility.colours().setFont(font);
}

void ZNTServerConnectController::set_isMccpOnOff(bool on)
{
    _isMspOnOff_ = on;
    _zntParserUtility.set_isMccpOnOff(on);
    _zntParserUtility.sendCommand(on ? DO : Refusal, optionCompressionV2);
    set_mccp(on);
}

void ZNTServerConnectController::set_isMspOnOff(bool on)
{
    _isMspOnOff_ = on;
    _zntParserUtility.set_isMspOnOff(on);
    _zntParserUtility.sendCommand(on ? DO : Refusal, optionSound);
    changed();
}

void ZNTServerConnectController::acceptCompressionOffers(bool accept)
{
    _isMspOnOff_ = accept;
    _zntParserUtility.set_isMccpOnOff(accept);
}

void ZNTServerConnectController::set_mccp(bool isCompressed)
{
    _mccp_ = isCompressed;
    changed();
}

void ZNTServerConnectController::reloadTriggers() { triggers.setTriggers(services.database.loadTriggers()); }

// Speech

void ZNTServerConnectController::interruptSpeech(double pause)
{
    if (speechInterruptOnOffBindingState_ != 1)
        return;
    zntSpeechSynth_.stopIt();
    if (pause > 0 && (!pausesLeft || (*pausesLeft)-- > 0))
        platform.clock.sleepFor(pause);
    zntSpeechSynth_.speechOn();
}

void ZNTServerConnectController::speakForScreenReader()
{
    zntSpeechSynth_.speechOn();
    speechOnOffBindingState_ = speechInterruptOnOffBindingState_ = 1;
    changed();
}

void ZNTServerConnectController::shortcutKeySpeechOnAndOff()
{
    if (speechOnOffBindingState_ != 0)
        zntSpeechSynth_.stopIt();
    else
        zntSpeechSynth_.speechOn();
}

void ZNTServerConnectController::textToSpeechOnAndOff()
{
    if (speechOnOffBindingState_ == 1)
        zntSpeechSynth_.speechOn();
    else
        zntSpeechSynth_.stopIt();
}

void ZNTServerConnectController::replayLastText()
{
    if (_replayLastTextFromMUD.empty())
        return;
    interruptSpeech(noPause);
    if (speechOnOffBindingState_ == 1)
        speechHandOver.speakOnNewThread(std::u16string(znt::lastUnits(_replayLastTextFromMUD, mostReplayed)));
}

void ZNTServerConnectController::stopSpeaking()
{
    zntSpeechSynth_.stopIt();
    if (speechOnOffBindingState_ == 1)
        zntSpeechSynth_.speechOn();
}

void ZNTServerConnectController::setSpeechOnOffBindingState(int state)
{
    speechOnOffBindingState_ = state;
    changed();
}

void ZNTServerConnectController::setSpeechInterruptOnOffBindingState(int state)
{
    speechInterruptOnOffBindingState_ = state;
    changed();
}

// Recorder

void ZNTServerConnectController::startOrPauseRecording()
{
    _zntRecorder.startOrPauseRecording();
    changed();
}

void ZNTServerConnectController::doneRecording()
{
    _zntRecorder.startOrPauseRecording();
    _zntRecorder.doneRecording();
    changed();
    services.showZNTCommandRecorderView(_zntRecorder._textRecorderBean());
}

// Queries

ZNTSessionState ZNTServerConnectController::state() const
{
    if (isConnected_)
        return ZNTSessionState::Connected;
    return mudServer && !mudServer->isDisconnected() ? ZNTSessionState::Connecting : ZNTSessionState::Idle;
}

bool ZNTServerConnectController::isWalking() const { return _zntSpeedwalking.isWalking(); }

void ZNTServerConnectController::changed()
{
    if (services.sessionChanged)
        services.sessionChanged();
}
