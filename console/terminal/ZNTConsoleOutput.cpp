#include "ZNTConsoleOutput.h"

#include <utility>

ZNTConsoleOutput::ZNTConsoleOutput(RunLoop& runLoop, ZNTConsoleInput& input, ZNTTextSink& sink)
    : runLoop(runLoop),
      input(input),
      sink(sink)
{
    sink.roomAgain = [this] { setGameHeld(false); };
    if (input.isTerminal())
        sink.writtenAll = [this] { showLineAgain(); };
}

void ZNTConsoleOutput::write(std::string_view utf8)
{
    gathered += utf8;
    if (gathered.size() >= largestPiece)
        handOver();
    writeOnNextTurn();
}

void ZNTConsoleOutput::writeAside(std::string_view line)
{
    if (gathered.empty() && sink.hasWrittenAll()) {
        input.writeAside(line);
        return;
    }
    handOver();
    sink.write(line, ZNTTextSink::To::Errors);
    writeOnNextTurn();
}

void ZNTConsoleOutput::catchUp()
{
    finishTurn();
    sink.waitUntilWritten();
    setGameHeld(false);
    showLineAgain();
}

void ZNTConsoleOutput::writeOnNextTurn()
{
    if (!std::exchange(isTurnToBeFinished, true))
        runLoop.post([this] { finishTurn(); });
}

void ZNTConsoleOutput::finishTurn()
{
    isTurnToBeFinished = false;
    if (aboutToWrite)
        aboutToWrite();
    handOver();
    showLineAgain();
}

void ZNTConsoleOutput::handOver()
{
    if (gathered.empty())
        return;
    if (!std::exchange(isLineHidden, true))
        input.hideLine();
    sink.write(gathered, ZNTTextSink::To::Output);
    gathered.clear();
    if (sink.isFull())
        setGameHeld(true);
}

void ZNTConsoleOutput::setGameHeld(bool isToWait)
{
    if (std::exchange(isGameHeld, isToWait) != isToWait && holdGame)
        holdGame(isToWait);
}

void ZNTConsoleOutput::showLineAgain()
{
    if (!isLineHidden || !gathered.empty() || !sink.hasWrittenAll())
        return;
    isLineHidden = false;
    input.showLine(unfinishedLine);
}
