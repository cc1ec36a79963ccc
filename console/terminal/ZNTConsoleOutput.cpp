#include "ZNTConsoleOutput.h"

#include <utility>

namespace
{

/// Our own colours are no text: they may stand before the first character and behind the last line break.
std::string_view withoutColoursAround(std::string_view text)
{
    while (text.starts_with('\x1b'))
        text.remove_prefix(text.find('m') + 1);
    while (text.ends_with('m')) {
        const auto escape = text.rfind('\x1b');
        if (escape == text.npos || text.find('m', escape) != text.size() - 1)
            break;
        text.remove_suffix(text.size() - escape);
    }
    return text;
}

} // namespace

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
        handOver(Part::Middle);
    writeOnNextTurn();
}

void ZNTConsoleOutput::writeAside(std::string_view line)
{
    handOver(Part::Middle);
    const bool isAlone = sink.hasWrittenAll();
    std::string bytes(line);
    if (input.sharesStandardError()) {
        bytes = makeWay(ZNTConsoleInput::Passing::Aside, line) + bytes;
        if (isAlone)
            bytes += lineAgain();
    }
    if (isAlone) {
        input.writeAside(bytes);
        return;
    }
    sink.write(bytes, ZNTTextSink::To::Errors);
    writeOnNextTurn();
}

void ZNTConsoleOutput::catchUp()
{
    finishTurn();
    if (const auto bytes = lineAgainNow(); !bytes.empty())
        sink.write(bytes, ZNTTextSink::To::Output);
    sink.waitUntilWritten();
    setGameHeld(false);
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
    handOver(Part::End);
    hasMadeWay = false;
    showLineAgain();
}

void ZNTConsoleOutput::handOver(Part partOfTurn)
{
    if (gathered.empty())
        return;
    const bool isAlone = sink.hasWrittenAll();
    if (const auto way = makeWay(ZNTConsoleInput::Passing::Text, gathered); !way.empty())
        gathered.insert(0, way);
    if (partOfTurn == Part::End && isAlone)
        gathered += lineAgain();
    sink.write(gathered, ZNTTextSink::To::Output);
    gathered.clear();
    if (sink.isFull())
        setGameHeld(true);
}

/// Text of one turn belongs together. So way is made once for it, but for each line on stderr.
std::string ZNTConsoleOutput::makeWay(ZNTConsoleInput::Passing passing, std::string_view text)
{
    const auto visible = withoutColoursAround(text);
    const bool isText = passing == ZNTConsoleInput::Passing::Text;
    std::string way;
    if (!isText || !std::exchange(hasMadeWay, true))
        way = input.makeWay(passing, isAtLineStart || visible.starts_with('\n'));
    if (!visible.empty())
        isAtLineStart = visible.ends_with('\n');
    return way;
}

void ZNTConsoleOutput::setGameHeld(bool isToWait)
{
    if (std::exchange(isGameHeld, isToWait) != isToWait && holdGame)
        holdGame(isToWait);
}

/// What shows the line being typed again. Empty if that must wait for its second.
std::string ZNTConsoleOutput::lineAgain()
{
    const double wait = nextHalfLine - runLoop.now();
    if (!input.hasHiddenHalfLine() || wait <= 0)
        return lineAgainNow();
    if (!halfLineTimer)
        halfLineTimer = runLoop.startTimer(wait, RunLoopRepeat::Once, [this] {
            halfLineTimer.reset();
            showLineAgain();
        });
    return {};
}

std::string ZNTConsoleOutput::lineAgainNow()
{
    halfLineTimer.reset();
    if (input.hasHiddenHalfLine())
        nextHalfLine = runLoop.now() + secondsBetweenHalfLines;
    return input.lineAgain(unfinishedLine, !isAtLineStart);
}

void ZNTConsoleOutput::showLineAgain()
{
    if (!gathered.empty() || !sink.hasWrittenAll())
        return;
    if (const auto bytes = lineAgain(); !bytes.empty())
        sink.write(bytes, ZNTTextSink::To::Output);
}
