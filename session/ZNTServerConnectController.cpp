#include "ZNTServerConnectController.h"

#include "ZNTChannelHistory.h"
#include "ZNTCommandInterpreter.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDecodeFirstReceiver.h"
#include "ZNTFullColourParser.h"
#include "ZNTLogger.h"
#include "ZNTMSPProcessor.h"
#include "ZNTOutgoing.h"
#include "ZNTParserUtility.h"
#include "ZNTRecorder.h"
#include "ZNTSessionActors.h"
#include "ZNTSessionSpeech.h"
#include "ZNTSoundFactory.h"
#include "ZNTSpeedWalking.h"
#include "ZNTStandardReceiver.h"
#include "ZNTTriggerList.h"
#include "ZNTUpdater.h"

#include <utility>

namespace
{

ZNTStandardChoices choicesFrom(const ZNTSettings& settings)
{
    return {.compression = settings.compression,
            .sounds = settings.sounds,
            .isEncodingNamed = settings.isEncodingNamed,
            .fullColours = settings.fullColours,
            .tellsScreenReader = settings.tellScreenReader};
}

} // namespace

ZNTServerConnectController::ZNTServerConnectController(const ZNTPlatform& platform,
                                                       const ZNTSessionScreen& screen,
                                                       ZNTSessionServices givenServices)
    : platform(platform),
      screen(screen),
      services(std::move(givenServices)),
      settings_(services.settings),
      _zntLogger(std::make_unique<ZNTLogger>(platform.places, platform.clock)),
      outgoing(std::make_unique<ZNTOutgoing>()),
      speech(std::make_unique<ZNTSessionSpeech>(platform.runLoop, platform.clock, platform.log,
                                                services.speechEngine, services.screenReader,
                                                [this] { outgoing->flush(); })),
      channelHistory_(std::make_unique<ZNTChannelHistory>(platform.clock, platform.runLoop, platform.log)),
      _zntRecorder(std::make_unique<ZNTRecorder>()),
      walks(std::make_unique<Walks>(*this)),
      _zntSpeedwalking(std::make_unique<ZNTSpeedWalking>(platform.runLoop, *walks, platform.log)),
      replay(std::make_unique<ZNTReplay>(platform.runLoop, *walks)),
      _soundProcessor(std::make_unique<ZNTMSPProcessor>(platform.places, services.sounds)),
      commands(std::make_unique<Commands>(*this)),
      commandInterpreter(std::make_unique<ZNTCommandInterpreter>(*commands, *this)),
      _zntParserUtility(std::make_unique<ZNTParserUtility>()),
      fullColours(std::make_unique<ZNTFullColourParser>()),
      settledReceiver(std::make_unique<ZNTDecodeFirstReceiver>(*_zntParserUtility)),
      receiver(settledReceiver.get()),
      triggers(std::make_unique<ZNTTriggerList>(platform.log, platform.runLoop)),
      answers(std::make_unique<Answers>(*this)),
      chunk(platform.runLoop, *triggers, *answers, *this),
      viewSize(platform.runLoop, [this](ZNTViewSizeReport::Size size) { reportViewSize(size); })
{
    ZNTUpdater updater(platform.places, platform.log);
    updater.createSoundFolder();
    rootPath_ = updater.getSoundPath();
    _zntSpeedwalking->walkingChanged = [this] { changed(ZNTSessionChange::Walking); };
    _zntSpeedwalking->endedWithoutStep = [this] { note(znt::notices::walkWithoutStep); };
    replay->runningChanged = [this] { changed(ZNTSessionChange::Walking); };
    services.speechEngine.setAvailabilityListener([this] { changed(ZNTSessionChange::Speech); });
    reloadTriggers();
}

ZNTServerConnectController::~ZNTServerConnectController()
{
    services.speechEngine.setAvailabilityListener({});
    if (chunk.isInHand()) // never to be shown
        _zntLogger->loggerText(chunk.text());
}

void ZNTServerConnectController::awakeFromNib()
{
    disableAlmostAllWidgets();
    screen.ipAddress->takeFocus();
    fillFromDefaultMud();
    if (services.screenReader.isRunning())
        speakForScreenReader();
    changed(ZNTSessionChange::State);
    putIntoForce({}); // a new session has the defaults
}

void ZNTServerConnectController::fillFromDefaultMud()
{
    for (const auto& mud : services.database.getAllMudsFromMudList()) {
        if (!mud.defaultConnection)
            continue;
        screen.ipAddress->setText(mud.telnetURL);
        screen.port->setText(znt::decimalText(mud.port));
        screen.mudName->setText(mud.name);
        changed(ZNTSessionChange::Title);
    }
}

// Connecting

/// One button, three meanings. While a connection stands it disconnects. Without a host and a port there is
/// nothing to connect to; an attempt that is under way ends then, too. Otherwise it connects, and an attempt
/// under way is replaced: the old stream goes without a callback.
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
    lastEnd_ = {};
    mudServer = services.streams(*this);
    outgoing->useConnection(mudServer.get());
    if (const auto begun = mudServer->connectToHost(host, static_cast<std::uint16_t>(port)); !begun) {
        noteEnd(ZNTSessionEnding::Broken, znt::endReasonOf(begun.error()));
        hideProgress(); // a failure here has no callback
        showMudNotResponding();
    }
    changed(ZNTSessionChange::State);
}

void ZNTServerConnectController::stopConnecting()
{
    if (state() == ZNTSessionState::Connecting)
        mudServer->disconnect();
}

void ZNTServerConnectController::onSocketDidConnectToHost(ZNTStream&, const std::string& host, std::uint16_t)
{
    services.sounds.setGameAddress(host);
    farewellTimer.reset(); // what is held back from before shows with this game's first words
    receiver = &chooseReceiver();
    receiver->startStream();
    keepBlanksAsReceiverDoes();
    speech->gameBegins();
    fullColours->reset();
    isHintGiven = false;
    screen.myProgressIndicator->stopAnimation();
    screen.connectionButton->setTitle(u"Disconnect");
    isConnected_ = true;
    connectedSince_ = platform.clock.timeOfDay();
    screen.ipAddress->setEnabled(false);
    screen.port->setEnabled(false);
    enableAlmostAllWidgets();
    screen.textToServer->placeCaretAtEnd();
    chunk.giveUpAnswers(); // those of another game, or of the time between
    readNextBlock();
    changed(ZNTSessionChange::State);
}

/// What the player changes while a game is played.
void ZNTServerConnectController::noteChoices()
{
    settledReceiver->setWholeLines(settings_.wholeLines);
    keepBlanksAsReceiverDoes();
    if (standardReceiver)
        standardReceiver->setChoices(choicesFrom(settings_));
}

void ZNTServerConnectController::keepBlanksAsReceiverDoes()
{
    mudServerTextSentBuffer.setBlanks(receiver->keepsBlanks() ? ZNTHeldBackText::Blanks::Kept
                                                              : ZNTHeldBackText::Blanks::Trimmed);
}

/// The choice holds until the next connect: two ways to read one stream would each have half of its state.
ZNTReceiver& ZNTServerConnectController::chooseReceiver()
{
    if (!settings_.standardTelnet)
        return *settledReceiver;
    standardReceiver = std::make_unique<ZNTStandardReceiver>(choicesFrom(settings_));
    const auto size = viewSize.size();
    static_cast<void>(standardReceiver->windowSizeChanged(size.columns, size.rows)); // nobody has asked yet
    return *standardReceiver;
}

void ZNTServerConnectController::reportViewSize(ZNTViewSizeReport::Size size)
{
    writeData(receiver->windowSizeChanged(size.columns, size.rows), ZNTParserUtility::replyTimeout,
              ZNTOutgoing::replyTag);
}

void ZNTServerConnectController::onSocketWillDisconnectWithError(ZNTStream& socket, const ZNTError* error)
{
    noteEnd(error ? ZNTSessionEnding::Broken : ZNTSessionEnding::ByServer,
            error ? znt::endReasonOf(*error) : ZNTEndReason::ClosedByGame);
    takeWhatWasHeldUp(socket);
    receiver->stopInflating();
    hideProgress();
    if (error || receiver->isCloseAnError())
        showMudNotResponding();
    else
        note(znt::notices::gameClosed);
    socket.disconnect();
}

void ZNTServerConnectController::onSocketDidDisconnect(ZNTStream&)
{
    if (lastEnding_ == ZNTSessionEnding::None)
        noteEnd(ZNTSessionEnding::ByPlayer, ZNTEndReason::ByPlayer);
    receiver->stopInflating();
    if (settings_.stopSounds)
        stopAllSounds();
    screen.connectionButton->setTitle(u"Connect");
    screen.ipAddress->setEnabled(true);
    screen.port->setEnabled(true);
    disableAlmostAllWidgets();
    isConnected_ = false;
    replay->stop(); // it must not go on in another game
    endAgreements();
    screen.myProgressIndicator->stopAnimation();
    outgoing->forget();
    chunk.giveUpAnswers();
    showFarewellInAWhile();
    changed(ZNTSessionChange::State);
    noteCompression(); // last, since what is called may connect again
}

void ZNTServerConnectController::noteEnd(ZNTSessionEnding ending, ZNTEndReason reason)
{
    lastEnding_ = ending;
    lastEnd_ = {reason, isConnected_, platform.clock.timeOfDay()};
}

/// What the game and the receiver had agreed on holds for one connection.
void ZNTServerConnectController::endAgreements()
{
    if (std::exchange(cfStringEncoding_, settings_.encoding) != settings_.encoding)
        changed(ZNTSessionChange::Encoding);
    if (std::exchange(wasTypingHidden, false))
        changed(ZNTSessionChange::Typing);
}

void ZNTServerConnectController::showMudNotResponding()
{
    platform.alert.showMessage(
        u"MUD Not Responding",
        u"Please select a new MUD or try again later. The MUD address entered is unavailable.");
}

void ZNTServerConnectController::hideProgress()
{
    screen.myProgressIndicator->stopAnimation();
    screen.myProgressIndicator->setHidden(true);
}

void ZNTServerConnectController::enableAlmostAllWidgets() { setAlmostAllWidgetsEnabled(true); }

void ZNTServerConnectController::disableAlmostAllWidgets() { setAlmostAllWidgetsEnabled(false); }

void ZNTServerConnectController::setAlmostAllWidgetsEnabled(bool enabled)
{
    screen.textToServer->setEnabled(enabled);
    for (ZNTButton* button : screen.directionButtons)
        button->setEnabled(enabled);
}

// Speech

void ZNTServerConnectController::speakForScreenReader()
{
    speech->turnOnForScreenReader();
    changed(ZNTSessionChange::Speech);
}

void ZNTServerConnectController::screenReaderChanged()
{
    if (!services.screenReader.isRunning())
        zntSpeechSynth().readerIsGone();
    if (settings_.speechFollowsReader && services.screenReader.isRunning() && !hasPlayerSwitchedSpeech &&
        speechOnOffBindingState() != 1)
        speakForScreenReader();
}

void ZNTServerConnectController::shortcutKeySpeechOnAndOff() { speech->toggle(); }

void ZNTServerConnectController::textToSpeechOnAndOff() { speech->followState(); }

void ZNTServerConnectController::replayLastText() { speech->replay(); }

bool ZNTServerConnectController::hasTextToReplay() const { return speech->hasReplay(); }

void ZNTServerConnectController::sayPrompt() { speech->sayPrompt(); }

const std::u16string& ZNTServerConnectController::lastPrompt() const { return speech->lastPrompt(); }

void ZNTServerConnectController::stopSpeaking() { speech->silence(); }

void ZNTServerConnectController::setSpeechOnOffBindingState(int state)
{
    hasPlayerSwitchedSpeech = true;
    speech->speechOnOffBindingState = state;
    settings_.speech = state == 1;
    changed(ZNTSessionChange::Speech);
}

void ZNTServerConnectController::setSpeechInterruptOnOffBindingState(int state)
{
    speech->speechInterruptOnOffBindingState = state;
    settings_.interruption = state == 1;
    changed(ZNTSessionChange::Speech);
}

int ZNTServerConnectController::speechOnOffBindingState() const { return speech->speechOnOffBindingState; }

int ZNTServerConnectController::speechInterruptOnOffBindingState() const
{
    return speech->speechInterruptOnOffBindingState;
}

bool ZNTServerConnectController::isSpeechAvailable() const { return services.speechEngine.isAvailable(); }

ZNTSpeechSynth& ZNTServerConnectController::zntSpeechSynth() { return speech->synth(); }

ZNTSpeechReview& ZNTServerConnectController::speechReview() { return speech->review(); }

// Recorder

void ZNTServerConnectController::startOrPauseRecording()
{
    _zntRecorder->startOrPauseRecording();
    changed(ZNTSessionChange::Recording);
}

void ZNTServerConnectController::doneRecording()
{
    _zntRecorder->startOrPauseRecording();
    _zntRecorder->doneRecording();
    changed(ZNTSessionChange::Recording);
    services.showZNTCommandRecorderView(_zntRecorder->_textRecorderBean());
}

// Queries

ZNTSessionState ZNTServerConnectController::state() const
{
    if (isConnected_)
        return ZNTSessionState::Connected;
    return mudServer && !mudServer->isDisconnected() ? ZNTSessionState::Connecting : ZNTSessionState::Idle;
}

bool ZNTServerConnectController::isWalking() const { return _zntSpeedwalking->isWalking(); }

void ZNTServerConnectController::note(const ZNTSessionNotice& notice)
{
    if (services.notice)
        services.notice(notice);
}

void ZNTServerConnectController::changed(ZNTSessionChange what)
{
    if (services.sessionChanged)
        services.sessionChanged(what);
}
