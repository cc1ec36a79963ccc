#pragma once

#include "ZNTConsoleInput.h"

/// Lines from a descriptor, as they are.
class ZNTPlainInput : public ZNTConsoleInput
{
public:
    /// Reads from `descriptor`, which stays the caller's.
    ZNTPlainInput(RunLoop& runLoop, int descriptor) : runLoop(runLoop), descriptor(descriptor) {}
    [[nodiscard]] bool start(Handlers given) override;
    void setPaused(bool isPaused) override;

    /// Bytes of one line. A longer line is delivered in pieces of about this size, so that no line fills the
    /// memory. No piece ends in the middle of a character.
    static constexpr std::size_t longestLine = std::size_t{1} << 20;

private:
    void readSome();
    void readOnNextTurn();
    void deliverLines();
    [[nodiscard]] std::size_t endOfPiece() const;
    void finish();

    RunLoop& runLoop;
    int descriptor;
    Handlers handlers;
    std::string unfinished;
    bool isPaused = false;
    bool hasEnded = false;
    std::unique_ptr<RunLoopWatch> watch;
    std::unique_ptr<RunLoopTimer> nextRead; ///< for a regular file, which cannot be watched
};
