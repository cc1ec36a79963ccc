#include "ZNTSpeechSynth.h"

#include <chrono>
#include <thread>
#include <utility>

namespace
{
constexpr double pollingInterval = 0.5;
constexpr double correctedRate = 0.5;
} // namespace

ZNTSpeechSynth::ZNTSpeechSynth(RunLoop& runLoop, ZNTSpeechEngine& speechSynth, ZNTScreenReader& screenReader)
    : runLoop(runLoop),
      speechSynth(speechSynth),
      _voiceOverScriptFile(screenReader)
{
    turnOnSpeach();
}

void ZNTSpeechSynth::speakLine(std::u16string line) { speakLine(std::move(line), stopCount()); }

void ZNTSpeechSynth::speakLine(std::u16string line, std::uint64_t atStopCount)
{
    const std::lock_guard lock(queueMutex);
    if (!DO_NOT_SPEAK && atStopCount == stops && !line.empty())
        stackText.append(line);
}

std::uint64_t ZNTSpeechSynth::stopCount() const
{
    const std::lock_guard lock(queueMutex);
    return stops;
}

void ZNTSpeechSynth::speechOn()
{
    {
        const std::lock_guard lock(queueMutex);
        DO_NOT_SPEAK = false;
    }
    turnOnSpeach();
}

void ZNTSpeechSynth::turnOnSpeach() { startTimer(pollingInterval); }

void ZNTSpeechSynth::stopIt()
{
    speechSynth.stopSpeaking();
    _voiceOverScriptFile.forgetWhatWaits();
    theTimer.reset();
    hasSaidAtOnce_ = false;
    const std::lock_guard lock(queueMutex);
    stackText.clear();
    urgentText.clear();
    DO_NOT_SPEAK = true;
    ++stops;
}

bool ZNTSpeechSynth::isSpeachOn() const
{
    const std::lock_guard lock(queueMutex);
    return DO_NOT_SPEAK;
}

void ZNTSpeechSynth::speakAtOnce(std::u16string_view text)
{
    speechSynth.stopSpeaking();
    _voiceOverScriptFile.forgetWhatWaits();
    hasSaidAtOnce_ = true;
    speakNext(text);
}

void ZNTSpeechSynth::speakNext(std::u16string_view text)
{
    while (!text.empty()) {
        const auto utterance = text.substr(0, znt::utteranceLength(text));
        text.remove_prefix(utterance.size());
        if (!speakVoiceOver(utterance))
            speechSynth.startSpeaking(znt::speakableText(utterance));
    }
}

void ZNTSpeechSynth::speakBeforeWaiting(std::u16string text)
{
    {
        const std::lock_guard lock(queueMutex);
        if (DO_NOT_SPEAK || text.empty())
            return;
        urgentText.append(text);
    }
    // The timer may be set for the pace of the line that sounds, which can be much longer than the line.
    if (speechSynth.isSpeaking())
        startTimer(pollingInterval);
    else
        talk();
}

void ZNTSpeechSynth::pause() { std::this_thread::sleep_for(std::chrono::milliseconds(100)); }

std::optional<std::u16string> ZNTSpeechSynth::nextUtterance()
{
    if (speechSynth.isSpeaking())
        return {};
    const std::lock_guard lock(queueMutex);
    auto urgent = urgentText.takeUtterance();
    return urgent ? urgent : stackText.takeUtterance();
}

void ZNTSpeechSynth::talk()
{
    const auto utterance = nextUtterance();
    if (!utterance) {
        startTimer(pollingInterval);
        return;
    }
    // The wait is computed with the old rate. If that is 0, the wait is infinite and the timer never fires.
    const double rate = speechRate_;
    if (rate <= 0)
        speechRate_ = correctedRate;
    const auto words = static_cast<double>(wordCount(*utterance));
    startTimer(useTimer_ ? words / rate * 60 : pollingInterval);
    speakVoiceOverText(*utterance);
}

void ZNTSpeechSynth::speakVoiceOverText(std::u16string_view text)
{
    if (speakVoiceOver(text))
        return;
    if (speechSynth.isSpeaking()) {
        replacedTimers[timersStarted] = std::move(theTimer);
        startTimer(pollingInterval);
        return;
    }
    speechSynth.startSpeaking(znt::speakableText(text));
}

bool ZNTSpeechSynth::speakVoiceOver(std::u16string_view text)
{
    return !useSystemVoiceNotVO_ && _voiceOverScriptFile.isRunning() &&
           _voiceOverScriptFile.sayThis(znt::speakableText(text));
}

void ZNTSpeechSynth::startTimer(double seconds)
{
    theTimer = runLoop.startTimer(seconds, RunLoopRepeat::Once, [this, number = ++timersStarted] {
        replacedTimers.erase(number);
        talk();
    });
}
