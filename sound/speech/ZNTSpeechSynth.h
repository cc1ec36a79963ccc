#pragma once

#include "RunLoop.h"
#include "ZNTScreenReader.h"
#include "ZNTSpeechEngine.h"
#include "ZNTSpeechFilters.h"
#include "ZNTSpeechQueue.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// Reads received text aloud, line by line in order of arrival, through the screen reader while it runs, else
/// through the speech engine.
///
/// Waiting lines are taken by a timer that re-arms itself: every half second while there is nothing to do,
/// and after a line for as long as it should take at `speechRate` words per minute. Speech starts switched
/// off.
///
/// If it follows the voice, it takes a line as soon as nothing sounds: when a line comes, and when the engine
/// reports an end. A screen reader reports none, but has a queue of its own. So each line goes to the reader
/// as it comes: nothing is lost, and only the reader's own speed delays it. If the queue also catches up, a
/// line goes to the reader when the last one should have ended at `speechRate`, so that what is late is still
/// here and can be dropped.
///
/// `stopCount` and the `speakLine` with three arguments may be called from any thread; all else belongs to
/// the run loop's.
class ZNTSpeechSynth
{
public:
    /// The caller owns what it passes; all of it outlives the synth.
    ZNTSpeechSynth(RunLoop& runLoop, ZNTSpeechEngine& speechSynth, ZNTScreenReader& screenReader);
    ~ZNTSpeechSynth();
    ZNTSpeechSynth(const ZNTSpeechSynth&) = delete;
    ZNTSpeechSynth& operator=(const ZNTSpeechSynth&) = delete;

    /// Queues a line, unless it is empty or speech is off.
    void speakLine(std::u16string line);
    /// The same for a line that was handed over when `stopCount` answered `atStopCount`: one that a stop has
    /// overtaken since is dropped, as it would have been in the queue.
    void speakLine(std::u16string line, std::uint64_t atStopCount)
    {
        speakLine(std::move(line), atStopCount, runLoop.now());
    }
    /// `arrival` is the run loop's time at which the line came.
    void speakLine(std::u16string line, std::uint64_t atStopCount, double arrival,
                   ZNTSpeechQueue::Source source = ZNTSpeechQueue::Source::Game);
    /// The run loop's time, for lines that are handed over.
    [[nodiscard]] double now() const { return runLoop.now(); }
    /// How often speech was stopped.
    [[nodiscard]] std::uint64_t stopCount() const;

    /// Switches speech on and polls the queue again in half a second.
    void speechOn();
    /// Silences what is being said, forgets what waits and refuses new lines until `speechOn`.
    void stopIt();
    /// True while speech is OFF: the name says the opposite. It stays, because callers rely on it.
    [[nodiscard]] bool isSpeachOn() const;

    /// Cuts off what is being said and says `text`, also while speech is off. The queue goes on after it.
    void speakAtOnce(std::u16string_view text);
    /// Whether `speakAtOnce` was called since speech was stopped last.
    [[nodiscard]] bool hasSaidAtOnce() const { return hasSaidAtOnce_; }
    /// Gives `text` to the voice now, before everything in the queue.
    void speakNext(std::u16string_view text);
    /// Says `text` when the text that sounds now has ended, at once if nothing sounds, and before everything
    /// in the queue. Several keep their order. Ignored while speech is off; a stop drops it as it drops the
    /// queue.
    void speakBeforeWaiting(std::u16string text);

    /// The reader has ended. What it was given last is said again if it can hardly have said it.
    void readerIsGone();

    /// The timer's work: speaks the next line if nothing is being said, and re-arms the timer.
    void talk();
    /// Restarts the polling of the queue.
    void turnOnSpeach();
    /// Hands one line to the reader, else to the engine. A line that meets a speaking engine is dropped and
    /// the queue looked at again in half a second.
    void speakVoiceOverText(std::u16string_view text);
    /// Hands one line to the reader. False if the reader does not run, is switched off or cannot be reached.
    bool speakVoiceOver(std::u16string_view text);

    /// Kept as part of the interface: holds the calling thread for 0.1 seconds; nothing calls it.
    static void pause();

    [[nodiscard]] static std::size_t wordCount(std::u16string_view text) { return znt::wordCount(text); }

    /// Whether lines follow the voice, whatever the two paces say.
    void setFollowsVoice(bool followsVoice);
    /// Whether lines that wait too long are dropped and counted (see ZNTSpeechQueue).
    void setCatchesUp(bool catchesUp);
    /// Which texts a queue that catches up keeps.
    void setFinishedTexts(ZNTSpeechQueue::Finished finished);
    /// What comes from now on is a game's first text, until the player has sent a line.
    void firstTextBegins();
    void firstTextEnds();
    /// For received lines that come from now on. Texts that do not wait in the queue, such as a line of the
    /// review, keep their decoration: the player asked for them.
    void setFilters(ZNTSpeechFilters filters);

    /// Whether the words of a line decide when the next one is taken; else one is taken every half second.
    /// Kept as part of the interface, like the two getters below: the settings know their values.
    [[nodiscard]] bool useTimer() const { return useTimer_; }
    void setUseTimer(bool useTimer) { useTimer_ = useTimer; }
    /// Whether the engine speaks even when the screen reader runs.
    [[nodiscard]] bool useSystemVoiceNotVO() const { return useSystemVoiceNotVO_; }
    void setUseSystemVoiceNotVO(bool useSystemVoice) { useSystemVoiceNotVO_ = useSystemVoice; }
    /// Words per minute, for the pacing only: the voice keeps its own speed. At 0 the wait after the next
    /// line never ends, so polling stops until `speechOn`; from then on the rate is 0.5.
    [[nodiscard]] double speechRate() const { return speechRate_; }
    void setSpeechRate(double wordsPerMinute) { speechRate_ = wordsPerMinute; }

private:
    void startTimer(double seconds);
    void silenceVoices();
    [[nodiscard]] std::optional<std::u16string> nextUtterance();
    /// Speaks a line in the settled pace.
    void speakPaced(std::u16string_view utterance);
    /// Speaks a line at once, because nothing sounds.
    void speakFollowing(std::u16string_view utterance);
    /// Takes a line without waiting for the timer, if one is due: in the queue while lines follow the voice,
    /// else an urgent one.
    void lookAtQueue();
    void lookAtQueueSoon();
    /// Whether a line that follows must wait for the reader.
    [[nodiscard]] bool isReaderBusy() const;
    [[nodiscard]] double secondsToSay(std::u16string_view text) const;
    [[nodiscard]] ZNTSpeechFilters currentFilters() const;
    [[nodiscard]] std::u16string forVoice(std::u16string_view text) const;

    RunLoop& runLoop;
    ZNTSpeechEngine& speechSynth;
    ZNTScreenReader& _voiceOverScriptFile;

    /// Guards the fields down to `stops`, which the hand-over threads share with the run loop's.
    mutable std::mutex queueMutex;
    ZNTSpeechQueue stackText;
    /// What is spoken before all of `stackText`.
    ZNTSpeechQueue urgentText;
    ZNTSpeechFilters filters;
    bool followsVoice = false; ///< only the run loop's thread changes it, so it reads it without the mutex
    bool isLookPosted = false; ///< a look at the queue is on its way to the run loop's thread
    bool DO_NOT_SPEAK = true;
    /// Kept as part of the interface: nothing sets it; the engine knows whether it speaks.
    [[maybe_unused]] bool isSpeaking = false;
    std::uint64_t stops = 0;

    bool hasSaidAtOnce_ = false;
    bool useTimer_ = true;
    bool useSystemVoiceNotVO_ = false;
    double speechRate_ = 120;
    bool catchesUp = false;
    /// When the reader should have ended, by the run loop's clock.
    double readerBusyUntil = 0;
    /// What the reader was given last, and until when it can hardly have said that.
    std::u16string lastOfReader;
    double lastOfReaderUnsaidUntil = 0;
    std::unique_ptr<RunLoopTimer> theTimer;
    /// Timers that were replaced while they ran. They still fire once, then remove themselves.
    std::map<std::uint64_t, std::unique_ptr<RunLoopTimer>> replacedTimers;
    /// The number of `theTimer`.
    std::uint64_t timersStarted = 0;
    std::shared_ptr<char> life = std::make_shared<char>();
};
