#include "ZNTChannelHistory.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDecodeFirstReceiver.h"
#include "ZNTFullColourParser.h"
#include "ZNTMSPProcessor.h"
#include "ZNTOutgoing.h"
#include "ZNTParserUtility.h"
#include "ZNTServerConnectController.h"
#include "ZNTSessionSpeech.h"
#include "ZNTTriggerList.h"

#include <optional>
#include <utility>
#include <vector>

namespace
{

ZNTSpeechQueue::Finished inQueue(ZNTFinishedTexts texts)
{
    switch (texts) {
    case ZNTFinishedTexts::None:
        break;
    case ZNTFinishedTexts::First:
        return ZNTSpeechQueue::Finished::First;
    case ZNTFinishedTexts::Every:
        return ZNTSpeechQueue::Finished::Every;
    }
    return ZNTSpeechQueue::Finished::None;
}

} // namespace

void ZNTServerConnectController::setSettings(const ZNTSettings& wanted)
{
    putIntoForce(std::exchange(settings_, wanted));
}

/// `settings_` holds the wanted values already, so that a front end which looks during one change does not
/// take the values that are still to come for a player's choice.
void ZNTServerConnectController::putIntoForce(const ZNTSettings& before)
{
    const auto wanted = settings_;
    noteChoices();
    if (wanted.encoding != before.encoding) {
        cfStringEncoding_ = wanted.encoding;
        changed(ZNTSessionChange::Encoding);
    }
    if (wanted.compression != before.compression) {
        // Without a connection nobody can be asked, and what a game sends first is never compressed.
        if (isConnected_)
            set_isMccpOnOff(wanted.compression);
        else
            acceptCompressionOffers(wanted.compression);
    }
    if (wanted.sounds != before.sounds) {
        if (isConnected_) {
            set_isMspOnOff(wanted.sounds);
        } else { // the game is not asked, its offer is answered
            _isMspOnOff_ = wanted.sounds;
            _zntParserUtility->set_isMspOnOff(wanted.sounds);
            changed(ZNTSessionChange::Sounds);
        }
    }
    if (wanted.speech != before.speech) {
        setSpeechOnOffBindingState(wanted.speech ? 1 : 0);
        textToSpeechOnAndOff();
    }
    if (wanted.interruption != before.interruption)
        setSpeechInterruptOnOffBindingState(wanted.interruption ? 1 : 0);
    if (wanted.speechFollowsReader != before.speechFollowsReader)
        screenReaderChanged(); // one may run already
    speech->setSettings(wanted);
    triggers->setRules({.gagsLines = wanted.gagLines, .emptyActsSilent = wanted.emptyAction});
    _soundProcessor->setStandardTags(wanted.standardSounds);
    speech->setPausing(wanted.silenceKey == ZNTSilenceKey::None);
    auto& synth = speech->synth();
    synth.setUseSystemVoiceNotVO(wanted.systemVoice);
    synth.setUseTimer(wanted.pacing);
    synth.setSpeechRate(wanted.rate);
    synth.setFollowsVoice(wanted.followVoice);
    synth.setCatchesUp(wanted.catchUp);
    synth.setFinishedTexts(inQueue(wanted.finishTexts));
    synth.setFilters({.skipsDecoration = wanted.skipDecoration,
                      .shortensRuns = wanted.shortenRuns,
                      .skipsControlSequences = wanted.skipControlSequences});
    putPatternsIntoForce(wanted);
}

void ZNTServerConnectController::putPatternsIntoForce(const ZNTSettings& wanted)
{
    const auto noteAll = [this](const std::vector<std::u16string>& problems) {
        for (const auto& problem : problems)
            note({ZNTSessionNotice::Kind::Fact, problem});
    };
    noteAll(speech->lines().setPatterns(wanted.urgentLines, wanted.quietLines));
    noteAll(
        channelHistory_->setChannels(wanted.channelHistory ? std::optional(wanted.channels) : std::nullopt));
}

// One setting at a time

void ZNTServerConnectController::changeEncoding(std::u16string_view title)
{
    if (const auto encoding = znt::encodingTitled(title))
        changeEncoding(*encoding);
}

void ZNTServerConnectController::changeEncoding(ZNTStringEncoding encoding)
{
    cfStringEncoding_ = settings_.encoding = encoding;
    settings_.isEncodingNamed = true;
    noteChoices();
    changed(ZNTSessionChange::Encoding);
}

void ZNTServerConnectController::changeFont(const ZNTFont& font)
{
    _zntParserUtility->colours().setFont(font);
    fullColours->setFont(font);
}

/// A standard receiver is made from the settings at each connect, so what is switched before that has to
/// reach the settled one.
ZNTReceiver& ZNTServerConnectController::switched() { return isConnected_ ? *receiver : *settledReceiver; }

void ZNTServerConnectController::set_isMccpOnOff(bool on)
{
    settings_.compression = _isMspOnOff_ = on;
    writeData(switched().switchCompression(on), ZNTParserUtility::replyTimeout, ZNTOutgoing::replyTag);
    wasInflating = receiver->isInflating();
    changed(ZNTSessionChange::Compression); // the switch, also if the stream stays as it is
}

void ZNTServerConnectController::set_isMspOnOff(bool on)
{
    settings_.sounds = _isMspOnOff_ = on;
    _zntParserUtility->set_isMspOnOff(on); // sound tags, whichever receiver reads them
    writeData(switched().switchSounds(on), ZNTParserUtility::replyTimeout, ZNTOutgoing::replyTag);
    changed(ZNTSessionChange::Sounds);
}

void ZNTServerConnectController::acceptCompressionOffers(bool accept)
{
    settings_.compression = _isMspOnOff_ = accept;
    switched().acceptCompressionOffers(accept);
    changed(ZNTSessionChange::Compression);
}

bool ZNTServerConnectController::playsSoundTags() const { return _zntParserUtility->_isMspOnOff(); }

bool ZNTServerConnectController::_mccp() const { return receiver->isInflating(); }

void ZNTServerConnectController::reloadTriggers() { triggers->setTriggers(services.database.loadTriggers()); }

bool ZNTServerConnectController::isTriggerResting(std::int64_t oid) const { return triggers->isResting(oid); }
