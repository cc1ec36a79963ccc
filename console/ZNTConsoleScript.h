#pragma once

#include "RunLoop.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>

class ZNTConsoleInput;
class ZNTServerConnectController;

/// The lines of the input that wait to be carried out.
///
/// While a connection is being made, every line waits for it. Lines of a script (not from a terminal) are
/// sent one by one, each when the answer to the one before has been shown, so that a script reads the same as
/// a session.
class ZNTConsoleScript
{
public:
    /// How far lines go ahead of their answers.
    enum class Pace { AtOnce, AnswerByAnswer };
    struct Handlers {
        std::function<void(const std::string& utf8)> carryOut;
        /// The input has ended, and everything in it is carried out and answered.
        std::function<void()> done;
    };

    /// All outlive this.
    ZNTConsoleScript(RunLoop& runLoop, ZNTConsoleInput& input, const ZNTServerConnectController& session,
                     Pace pace, Handlers handlers);

    /// Takes a line of the input and carries out what need not wait.
    void add(const std::string& utf8);
    /// No more lines will come.
    void inputEnded();
    /// While held, all lines wait, even if there is no connection.
    void setHeld(bool isToBeHeld) { isHeld = isToBeHeld; }
    /// From now on nothing more is carried out.
    void stop() { hasStopped = true; }

    // What happens in the session
    void lineSent();
    void connected();
    void disconnected();
    /// `mayGoOn`: it ended with a line that was shown at once, so that the prompt may still come.
    void textShown(bool mayGoOn);
    void silencePassed();

    /// Lines of a script that are read ahead of the one being sent, about.
    static constexpr std::size_t mostWaitingLines = 1000;
    /// As long as the session waits before it takes a pause for the end of the game's text.
    static constexpr double secondsOfSilence = 0.5;
    /// A game that sends line after line and no prompt keeps a script waiting for so long at each line.
    static constexpr double secondsOfAnswer = 2;

private:
    void sendWaitingLines();
    void reportIfDone();
    [[nodiscard]] bool mustWait() const;

    RunLoop& runLoop;
    ZNTConsoleInput& input;
    const ZNTServerConnectController& session;
    const Pace pace;
    Handlers handlers;

    std::deque<std::string> waitingLines;
    bool isHeld = false;
    bool isAnswerAwaited = false; ///< the game has not answered the last line of a script yet
    double lastSent = 0;          ///< the run loop's time
    bool hasInputEnded = false;
    bool hasStopped = false;
};
