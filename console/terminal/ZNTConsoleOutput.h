#pragma once

#include "RunLoop.h"
#include "ZNTConsoleInput.h"
#include "ZNTTextSink.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Everything that the terminal client writes. Text is gathered during a turn of the run loop and handed to
/// the sink once, on the next turn; a flood is handed over in pieces of 64 KiB. While text passes, the line
/// being typed is hidden; it is shown again when everything is written. If the sink keeps pace, that is all
/// one piece. Belongs to the run loop's thread.
///
/// A half-typed line is shown again at most once a second, as a screen reader reads all that is written; a
/// key shows it at once.
class ZNTConsoleOutput
{
public:
    /// All outlive this.
    ZNTConsoleOutput(RunLoop& runLoop, ZNTConsoleInput& input, ZNTTextSink& sink);

    /// Takes text for stdout, in UTF-8.
    void write(std::string_view utf8);
    /// `utf8` is the end of the text written last, if no line break has ended it yet. As a rule it is a
    /// prompt. The line being typed is shown behind it.
    void setUnfinishedLine(std::string_view utf8) { unfinishedLine = utf8; }
    /// Takes a line (with its line end) for stderr. It is written after the text given before it.
    void writeAside(std::string_view line);
    /// Returns when everything is written and the line being typed is shown again.
    void catchUp();

    /// Called before the text of a turn is handed over: what goes to the game leaves first. Optional.
    std::function<void()> aboutToWrite;

    /// Called with true when so much text waits that the game's should wait for now, and with false when it
    /// may go on. Optional.
    std::function<void(bool isToWait)> holdGame;

    static constexpr std::size_t largestPiece = std::size_t{64} << 10;
    static constexpr double secondsBetweenHalfLines = 1;

private:
    enum class Part { Middle, End };
    void writeOnNextTurn();
    void finishTurn();
    void handOver(Part partOfTurn);
    [[nodiscard]] std::string makeWay(ZNTConsoleInput::Passing passing, std::string_view text);
    [[nodiscard]] std::string lineAgain();
    [[nodiscard]] std::string lineAgainNow();
    void showLineAgain();
    void setGameHeld(bool isToWait);

    RunLoop& runLoop;
    ZNTConsoleInput& input;
    ZNTTextSink& sink;
    std::string gathered;
    std::string unfinishedLine;
    bool isTurnToBeFinished = false;
    bool hasMadeWay = false;   ///< for the text of this turn
    bool isAtLineStart = true; ///< the text that was handed over last
    double nextHalfLine = 0;   ///< the run loop's time from which on one may be shown
    std::unique_ptr<RunLoopTimer> halfLineTimer;
    bool isGameHeld = false;
};
