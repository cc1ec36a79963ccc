#include "ZNTSessionSpeech.h"

#include "ZNTText.h"
#include "ZNTTriggerReactions.h"

#include <memory>
#include <utility>

ZNTSessionSpeech::ZNTSessionSpeech(RunLoop& runLoop, ZNTClock& clock, ZNTPlatformLog& log,
                                   ZNTSpeechEngine& engine, ZNTScreenReader& screenReader,
                                   std::function<void()> beforePause)
    : runLoop(runLoop),
      clock(clock),
      beforePause(std::move(beforePause)),
      zntSpeechSynth(runLoop, engine, screenReader),
      speechHandOver(zntSpeechSynth),
      speechReview(zntSpeechSynth),
      spokenLines(runLoop, log)
{
}

void ZNTSessionSpeech::chunkReceived(const std::u16string& plainText, const ZNTTriggerOutcome& outcome)
{
    const auto withoutRepeat = prompts.unitsWithoutRepeat(plainText);
    const auto kept =
        std::u16string_view(plainText).substr(0, settings.changedPrompts ? withoutRepeat : plainText.npos);
    speechReview.addReceivedText(kept);
    if (kept.size() == plainText.size() && outcome.gaggedLines.isEmpty()) {
        takeReplay(plainText);
        if (!outcome.isGagged)
            speakOrStop(plainText);
        return;
    }
    const auto toSpeak = outcome.gaggedLines.takenOutOf(kept);
    takeReplay(toSpeak);
    if (!outcome.isGagged && !znt::trimmedOfWhitespace(toSpeak).empty())
        speakOrStop(toSpeak);
}

void ZNTSessionSpeech::takeReplay(std::u16string_view text)
{
    _replayLastTextFromMUD += znt::lastUnits(text, mostReplayed);
    if (_replayLastTextFromMUD.size() > 2 * mostReplayed) // seldom, since it moves what stays
        _replayLastTextFromMUD.erase(0, _replayLastTextFromMUD.size() - mostReplayed);
}

void ZNTSessionSpeech::speakOrStop(const std::u16string& plainText)
{
    const bool isOff = zntSpeechSynth.isSpeachOn(); // the name says the opposite
    if (speechOnOffBindingState != 1) {
        // What the player asked for sounds on. Each command switches the synth on, so the next text of the
        // game would cut off every line of the review.
        if (!isOff && !zntSpeechSynth.hasSaidAtOnce())
            zntSpeechSynth.stopIt();
        return;
    }
    if (isOff)
        zntSpeechSynth.speechOn();
    auto parts = spokenLines.parted(plainText);
    for (auto& line : parts.atOnce)
        zntSpeechSynth.speakBeforeWaiting(std::move(line));
    if (!parts.inTurn.empty())
        speechHandOver.speakOnNewThread(std::move(parts.inTurn));
}

void ZNTSessionSpeech::speakIfOn(std::u16string plainText)
{
    if (speechOnOffBindingState == 1)
        speechHandOver.speakOnNewThread(std::move(plainText));
}

void ZNTSessionSpeech::interrupt(double pause)
{
    if (speechInterruptOnOffBindingState != 1)
        return;
    zntSpeechSynth.stopIt();
    if (pause > 0 && isPausing && mayPause()) {
        beforePause();
        clock.sleepFor(pause);
    }
    zntSpeechSynth.speechOn();
}

void ZNTSessionSpeech::turnOnForScreenReader()
{
    zntSpeechSynth.speechOn();
    speechOnOffBindingState = speechInterruptOnOffBindingState = 1;
}

void ZNTSessionSpeech::toggle()
{
    if (speechOnOffBindingState != 0)
        zntSpeechSynth.stopIt();
    else
        zntSpeechSynth.speechOn();
}

void ZNTSessionSpeech::followState()
{
    if (speechOnOffBindingState == 1)
        zntSpeechSynth.speechOn();
    else
        zntSpeechSynth.stopIt();
}

void ZNTSessionSpeech::replay()
{
    if (_replayLastTextFromMUD.empty())
        return;
    interrupt(noPause);
    const auto text = znt::lastUnits(_replayLastTextFromMUD, mostReplayed);
    if (speechOnOffBindingState == 1)
        speechHandOver.speakOnNewThread(std::u16string(text), ZNTSpeechQueue::Source::Replay);
    else if (settings.replayWhenOff)
        zntSpeechSynth.speakAtOnce(text);
}

void ZNTSessionSpeech::sayPrompt()
{
    if (speechOnOffBindingState == 1 || settings.replayWhenOff)
        zntSpeechSynth.speakAtOnce(prompts.last().empty() ? u"No prompt yet." : prompts.last());
}

void ZNTSessionSpeech::gameBegins()
{
    prompts.forget();
    zntSpeechSynth.firstTextBegins();
}

void ZNTSessionSpeech::lineGoesOut()
{
    if (!isAutomatic)
        zntSpeechSynth.firstTextEnds();
}

void ZNTSessionSpeech::silence()
{
    zntSpeechSynth.stopIt();
    if (speechOnOffBindingState == 1)
        zntSpeechSynth.speechOn();
}

ZNTSessionSpeech::AutomaticLines::AutomaticLines(ZNTSessionSpeech& speech)
    : speech(speech),
      wasAutomatic(std::exchange(speech.isAutomatic, true))
{
}

ZNTSessionSpeech::AutomaticLines::~AutomaticLines() { speech.isAutomatic = wasAutomatic; }

/// A line of the player's may always pause.
bool ZNTSessionSpeech::mayPause()
{
    if (!isAutomatic)
        return true;
    if (std::exchange(hasPausedForTheGame, true))
        return false;
    allowPauseNextTurn();
    return true;
}

void ZNTSessionSpeech::allowPauseNextTurn()
{
    runLoop.post([this, alive = std::weak_ptr<char>(life)] {
        if (!alive.expired() && !isChunkInHand)
            hasPausedForTheGame = false;
    });
}

void ZNTSessionSpeech::setChunkInHand(bool isInHand)
{
    if (std::exchange(isChunkInHand, isInHand) && !isInHand && hasPausedForTheGame)
        allowPauseNextTurn();
}
