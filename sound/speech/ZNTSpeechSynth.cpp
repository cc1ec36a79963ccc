#include "ZNTSpeechSynth.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace
{
constexpr double pollingInterval = 0.5;
constexpr double correctedRate = 0.5;
/// Words per minute that a screen reader says at least, unless its player has made it slower. It reports no
/// ends, so the next line is given to it when it should have ended.
constexpr double leastReaderRate = 180;
/// Between two lines that follow a voice which does not say that it is busy. The screen reader is given
/// lines no faster anyway.
constexpr double shortestGap = 0.04;
/// What a reader is given while it ends is lost, and it begins a line within this time. What it may have
/// begun is not said again, since no line is to be said by two voices.
constexpr double readerBegins = 0.3;
/// A timer may fire so many seconds early.
constexpr double timerTolerance = 0.001;
} // namespace

ZNTSpeechSynth::ZNTSpeechSynth(RunLoop& runLoop, ZNTSpeechEngine& speechSynth, ZNTScreenReader& screenReader)
    : runLoop(runLoop),
      speechSynth(speechSynth),
      _voiceOverScriptFile(screenReader)
{
    speechSynth.setEndListener([this] { lookAtQueue(); });
    turnOnSpeach();
}

ZNTSpeechSynth::~ZNTSpeechSynth() { speechSynth.setEndListener({}); }

void ZNTSpeechSynth::speakLine(std::u16string line) { speakLine(std::move(line), stopCount()); }

void ZNTSpeechSynth::speakLine(std::u16string line, std::uint64_t atStopCount, double arrival,
                               ZNTSpeechQueue::Source source)
{
    const auto text = currentFilters().applied(std::move(line));
    {
        const std::lock_guard lock(queueMutex);
        if (DO_NOT_SPEAK || atStopCount != stops || text.empty())
            return;
        stackText.append(text, arrival, source);
        // One look is enough for all lines that come before it.
        if (!followsVoice || std::exchange(isLookPosted, true))
            return;
    }
    lookAtQueueSoon();
}

void ZNTSpeechSynth::lookAtQueueSoon()
{
    runLoop.post([this, alive = std::weak_ptr<char>(life)] {
        if (alive.expired())
            return;
        {
            const std::lock_guard lock(queueMutex);
            isLookPosted = false;
        }
        lookAtQueue();
    });
}

void ZNTSpeechSynth::lookAtQueue()
{
    {
        const std::lock_guard lock(queueMutex);
        if (DO_NOT_SPEAK || (!followsVoice && urgentText.isEmpty()))
            return;
    }
    if (!speechSynth.isSpeaking() && !isReaderBusy())
        talk();
}

void ZNTSpeechSynth::setFollowsVoice(bool followsVoice)
{
    {
        const std::lock_guard lock(queueMutex);
        this->followsVoice = followsVoice;
    }
    lookAtQueue();
}

void ZNTSpeechSynth::setCatchesUp(bool catchesUp)
{
    this->catchesUp = catchesUp;
    const std::lock_guard lock(queueMutex);
    stackText.setCatchesUp(catchesUp);
}

void ZNTSpeechSynth::setFinishedTexts(ZNTSpeechQueue::Finished finished)
{
    const std::lock_guard lock(queueMutex);
    stackText.setFinishedTexts(finished);
}

void ZNTSpeechSynth::firstTextBegins()
{
    const auto now = runLoop.now();
    const std::lock_guard lock(queueMutex);
    stackText.beginFirstText(now);
}

void ZNTSpeechSynth::firstTextEnds()
{
    const auto now = runLoop.now();
    const std::lock_guard lock(queueMutex);
    stackText.endFirstText(now);
}

void ZNTSpeechSynth::setFilters(ZNTSpeechFilters filters)
{
    const std::lock_guard lock(queueMutex);
    this->filters = filters;
}

ZNTSpeechFilters ZNTSpeechSynth::currentFilters() const
{
    const std::lock_guard lock(queueMutex);
    return filters;
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
    silenceVoices();
    theTimer.reset();
    hasSaidAtOnce_ = false;
    const std::lock_guard lock(queueMutex);
    stackText.clear();
    urgentText.clear();
    DO_NOT_SPEAK = true;
    ++stops;
}

void ZNTSpeechSynth::silenceVoices()
{
    speechSynth.stopSpeaking();
    _voiceOverScriptFile.forgetWhatWaits();
    readerBusyUntil = lastOfReaderUnsaidUntil = 0;
}

void ZNTSpeechSynth::readerIsGone()
{
    readerBusyUntil = 0;
    if (runLoop.now() < std::exchange(lastOfReaderUnsaidUntil, 0))
        speakBeforeWaiting(lastOfReader);
}

bool ZNTSpeechSynth::isSpeachOn() const
{
    const std::lock_guard lock(queueMutex);
    return DO_NOT_SPEAK;
}

void ZNTSpeechSynth::speakAtOnce(std::u16string_view text)
{
    silenceVoices();
    hasSaidAtOnce_ = true;
    speakNext(text);
}

void ZNTSpeechSynth::speakNext(std::u16string_view text)
{
    while (!text.empty()) {
        const auto utterance = text.substr(0, znt::utteranceLength(text));
        text.remove_prefix(utterance.size());
        if (!speakVoiceOver(utterance))
            speechSynth.startSpeaking(forVoice(utterance));
    }
}

void ZNTSpeechSynth::speakBeforeWaiting(std::u16string text)
{
    {
        const std::lock_guard lock(queueMutex);
        if (DO_NOT_SPEAK || text.empty())
            return;
        urgentText.append(text, runLoop.now());
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
    const auto now = runLoop.now();
    const std::lock_guard lock(queueMutex);
    // The reader has a queue of its own, so what is urgent need not wait until it has ended.
    auto urgent = urgentText.takeUtterance(now);
    return urgent || isReaderBusy() ? urgent : stackText.takeUtterance(now);
}

void ZNTSpeechSynth::talk()
{
    const auto utterance = nextUtterance();
    if (!utterance) {
        startTimer(isReaderBusy() ? readerBusyUntil - runLoop.now() : pollingInterval);
        return;
    }
    if (followsVoice)
        speakFollowing(*utterance);
    else
        speakPaced(*utterance);
}

void ZNTSpeechSynth::speakPaced(std::u16string_view utterance)
{
    // The wait is computed with the old rate. If that is 0, the wait is infinite and the timer never fires.
    const double rate = speechRate_;
    if (rate <= 0)
        speechRate_ = correctedRate;
    const auto words = static_cast<double>(wordCount(utterance));
    startTimer(useTimer_ ? words / rate * 60 : pollingInterval);
    speakVoiceOverText(utterance);
}

void ZNTSpeechSynth::speakFollowing(std::u16string_view utterance)
{
    speakNext(utterance);
    // The engine's end comes before the poll, unless the service has lost it.
    if (speechSynth.isSpeaking())
        startTimer(pollingInterval);
    else
        startTimer(isReaderBusy() ? readerBusyUntil - runLoop.now() : shortestGap);
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
    speechSynth.startSpeaking(forVoice(text));
}

bool ZNTSpeechSynth::speakVoiceOver(std::u16string_view text)
{
    if (useSystemVoiceNotVO_ || !_voiceOverScriptFile.isRunning() ||
        !_voiceOverScriptFile.sayThis(forVoice(text)))
        return false;
    const auto seconds = secondsToSay(text);
    lastOfReader = text;
    lastOfReaderUnsaidUntil = runLoop.now() + readerBegins;
    readerBusyUntil = std::max(readerBusyUntil, runLoop.now()) + seconds;
    return true;
}

bool ZNTSpeechSynth::isReaderBusy() const
{
    return followsVoice && catchesUp && runLoop.now() < readerBusyUntil - timerTolerance;
}

double ZNTSpeechSynth::secondsToSay(std::u16string_view text) const
{
    return static_cast<double>(wordCount(text)) / std::max(speechRate_, leastReaderRate) * 60;
}

std::u16string ZNTSpeechSynth::forVoice(std::u16string_view text) const
{
    auto wanted = currentFilters();
    wanted.skipsDecoration = false;
    return znt::speakableText(wanted.applied(std::u16string(text)));
}

void ZNTSpeechSynth::startTimer(double seconds)
{
    theTimer = runLoop.startTimer(seconds, RunLoopRepeat::Once, [this, number = ++timersStarted] {
        replacedTimers.erase(number);
        talk();
    });
}
