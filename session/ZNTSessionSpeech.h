#pragma once

#include "ZNTClock.h"
#include "ZNTPrompts.h"
#include "ZNTSettings.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTSpeechReview.h"
#include "ZNTSpeechSynth.h"
#include "ZNTSpokenLines.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

struct ZNTTriggerOutcome;

/// What a session does with speech: it reads received text aloud, lets a line that is sent interrupt it, and
/// keeps what can be heard again. A state is 1 for on, as the speech menu's items have it.
class ZNTSessionSpeech
{
public:
    /// UTF-16 units kept for `replay`, the newest; hours more could not be listened to.
    static constexpr std::size_t mostReplayed = std::size_t{1} << 20;
    static constexpr double noPause = 0;

    /// `beforePause` is called before the run loop's thread pauses: what is queued for the server leaves
    /// then. All that is passed outlives this object.
    ZNTSessionSpeech(RunLoop& runLoop, ZNTClock& clock, ZNTPlatformLog& log, ZNTSpeechEngine& engine,
                     ZNTScreenReader& screenReader, std::function<void()> beforePause);

    /// Puts what a session speaks, and when, into force. The switches below have operations of their own.
    void setSettings(const ZNTSettings& wanted) { settings = wanted; }

    int speechOnOffBindingState = 0;
    int speechInterruptOnOffBindingState = 0;

    /// A received chunk: it is kept for review and replay. Unless it is gagged or speech is off, it is spoken
    /// as `lines` says.
    /// Lines that are gagged one by one stay in the review alone, and a prompt that is not to be repeated is
    /// kept nowhere.
    void chunkReceived(const std::u16string& plainText, const ZNTTriggerOutcome& outcome);
    /// A line of the client's own.
    void speakIfOn(std::u16string plainText);

    /// Silences what is being said before a line goes out, if interruption is on. Then the thread pauses for
    /// `pause` seconds (not at 0): the voice ends before the echo begins.
    void interrupt(double pause);
    /// Without pauses `interrupt` returns at once: a player who silences the voice by a key needs none.
    void setPausing(bool pauses) { isPausing = pauses; }
    /// Speech and its interruption on: what a screen reader's user expects.
    void turnOnForScreenReader();
    /// The key. It comes before the menu item has changed its state.
    void toggle();
    /// The menu item, whose state has changed already: speech follows it.
    void followState();
    /// Speaks again what came since `forgetReplay`; while speech is off, with the setting for it alone.
    void replay();
    [[nodiscard]] bool hasReplay() const { return !_replayLastTextFromMUD.empty(); }
    /// Says the last prompt at once, when `replay` would speak.
    void sayPrompt();
    [[nodiscard]] const std::u16string& lastPrompt() const { return prompts.last(); }
    /// A connection stands: another game begins.
    void gameBegins();
    /// A line goes out. If it is the player's, what comes from now on is newer than the game's first text.
    void lineGoesOut();
    void forgetReplay() { _replayLastTextFromMUD.clear(); }
    /// Silences what is being said and what waits. What comes next is spoken if speech is on.
    void silence();

    /// Which lines of the game are spoken at once, and which are not.
    [[nodiscard]] ZNTSpokenLines& lines() { return spokenLines; }
    [[nodiscard]] ZNTSpeechSynth& synth() { return zntSpeechSynth; }
    [[nodiscard]] ZNTSpeechReview& review() { return speechReview; }

    /// While one lives, lines come from a trigger or a walk and not from the player. Such lines share one
    /// pause a turn of the loop, or else a game could hold the client up for as long as it likes.
    class AutomaticLines
    {
    public:
        explicit AutomaticLines(ZNTSessionSpeech& speech);
        ~AutomaticLines();
        AutomaticLines(const AutomaticLines&) = delete;
        AutomaticLines& operator=(const AutomaticLines&) = delete;

    private:
        ZNTSessionSpeech& speech;
        const bool wasAutomatic;
    };
    /// The turns of the loop in which one chunk is answered count as one.
    void setChunkInHand(bool isInHand);

private:
    void takeReplay(std::u16string_view text);
    void speakOrStop(const std::u16string& plainText);
    bool mayPause();
    void allowPauseNextTurn();

    RunLoop& runLoop;
    ZNTClock& clock;
    std::function<void()> beforePause;
    ZNTSpeechSynth zntSpeechSynth;
    ZNTSpeechHandOver speechHandOver;
    ZNTSpeechReview speechReview;
    ZNTSettings settings;
    ZNTPrompts prompts;
    ZNTSpokenLines spokenLines;
    std::u16string _replayLastTextFromMUD;
    bool isPausing = true;
    bool isAutomatic = false;
    bool isChunkInHand = false;
    bool hasPausedForTheGame = false; ///< an automatic line has paused in this turn
    std::shared_ptr<char> life = std::make_shared<char>();
};
