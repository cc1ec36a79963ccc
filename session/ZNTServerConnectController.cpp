#include "ZNTServerConnectController.h"

#include "ZNTDatabaseHelper.h"
#include "ZNTNetworkAddress.h"
#include "ZNTTelnetScanner.h"
#include "ZNTUpdater.h"

#include <utility>

namespace
{

using namespace znt::telnet;

constexpr double noPause = 0;

} // namespace

ZNTServerConnectController::ZNTServerConnectController(const ZNTPlatform& platform,
                                                       const ZNTSessionScreen& screen,
                                                       ZNTSessionServices givenServices)
    : platform(platform),
      screen(screen),
      services(std::move(givenServices)),
      settings_(services.settings),
      zntSpeechSynth_(platform.runLoop, services.speechEngine, services.screenReader),
      speechHandOver(zntSpeechSynth_),
      speechReview_(zntSpeechSynth_),
      _zntSpeedwalking(platform.runLoop, linesOfWalks, platform.log),
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
    _zntSpeedwalking.walkingChanged = [this] { changed(ZNTSessionChange::Walking); };
    services.speechEngine.setAvailabilityListener([this] { changed(ZNTSessionChange::Speech); });
    reloadTriggers();
}

ZNTServerConnectController::~ZNTServerConnectController()
{
    services.speechEngine.setAvailabilityListener({});
    if (chunkInHand) // never to be shown
        _zntLogger.loggerText(chunkInHand->result.text);
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
    forgetWrites();
    mudServer = services.streams(*this);
    if (!mudServer->connectToHost(host, static_cast<std::uint16_t>(port))) {
        lastEnding_ = ZNTSessionEnding::Broken;
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
    mccp2.startStream();
    screen.myProgressIndicator->stopAnimation();
    screen.connectionButton->setTitle(u"Disconnect");
    isConnected_ = true;
    connectedSince_ = platform.clock.timeOfDay();
    screen.ipAddress->setEnabled(false);
    screen.port->setEnabled(false);
    enableAlmostAllWidgets();
    screen.textToServer->placeCaretAtEnd();
    giveUpAnswers(); // those of another game, or of the time between
    readNextBlock();
    changed(ZNTSessionChange::State);
}

void ZNTServerConnectController::onSocketWillDisconnectWithError(ZNTStream& socket, const ZNTError* error)
{
    lastEnding_ = error ? ZNTSessionEnding::Broken : ZNTSessionEnding::ByServer;
    takeWhatWasHeldUp(socket);
    _mccp_ = false;
    screen.myProgressIndicator->stopAnimation();
    screen.myProgressIndicator->setHidden(true);
    showMudNotResponding();
    socket.disconnect();
}

void ZNTServerConnectController::onSocketDidDisconnect(ZNTStream&)
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
    forgetWrites();
    giveUpAnswers();
    showFarewellInAWhile();
    changed(ZNTSessionChange::State);
    changed(ZNTSessionChange::Compression); // last, since what is called may connect again
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

// Settings

void ZNTServerConnectController::changeEncoding(std::u16string_view title)
{
    cfStringEncoding_ = znt::encodingTitled(title).value_or(cfStringEncoding_);
    settings_.encoding = cfStringEncoding_;
    changed(ZNTSessionChange::Encoding);
}

void ZNTServerConnectController::changeFont(const ZNTFont& font)
{
    _zntParserUtility.colours().setFont(font);
}

void ZNTServerConnectController::set_isMccpOnOff(bool on)
{
    settings_.compression = _isMspOnOff_ = on;
    _zntParserUtility.set_isMccpOnOff(on);
    _zntParserUtility.sendCommand(on ? DO : Refusal, option::CompressionV2);
    _mccp_ = on;
    changed(ZNTSessionChange::Compression); // the switch, also if the stream stays as it is
}

void ZNTServerConnectController::set_isMspOnOff(bool on)
{
    settings_.sounds = _isMspOnOff_ = on;
    _zntParserUtility.set_isMspOnOff(on);
    _zntParserUtility.sendCommand(on ? DO : Refusal, option::Sound);
    changed(ZNTSessionChange::Sounds);
}

void ZNTServerConnectController::acceptCompressionOffers(bool accept)
{
    settings_.compression = _isMspOnOff_ = accept;
    _zntParserUtility.set_isMccpOnOff(accept);
    changed(ZNTSessionChange::Compression);
}

void ZNTServerConnectController::set_mccp(bool isCompressed)
{
    if (std::exchange(_mccp_, isCompressed) != isCompressed)
        changed(ZNTSessionChange::Compression);
}

void ZNTServerConnectController::reloadTriggers() { triggers.setTriggers(services.database.loadTriggers()); }

// Speech

void ZNTServerConnectController::speakForScreenReader()
{
    zntSpeechSynth_.speechOn();
    speechOnOffBindingState_ = speechInterruptOnOffBindingState_ = 1;
    changed(ZNTSessionChange::Speech);
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
    settings_.speech = state == 1;
    changed(ZNTSessionChange::Speech);
}

void ZNTServerConnectController::setSpeechInterruptOnOffBindingState(int state)
{
    speechInterruptOnOffBindingState_ = state;
    settings_.interruption = state == 1;
    changed(ZNTSessionChange::Speech);
}

// Recorder

void ZNTServerConnectController::startOrPauseRecording()
{
    _zntRecorder.startOrPauseRecording();
    changed(ZNTSessionChange::Recording);
}

void ZNTServerConnectController::doneRecording()
{
    _zntRecorder.startOrPauseRecording();
    _zntRecorder.doneRecording();
    changed(ZNTSessionChange::Recording);
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

void ZNTServerConnectController::changed(ZNTSessionChange what)
{
    if (services.sessionChanged)
        services.sessionChanged(what);
}
