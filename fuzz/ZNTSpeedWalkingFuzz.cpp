#include "FuzzInput.h"
#include "ZNTRecordedLines.h"
#include "ZNTText.h"

namespace
{

constexpr std::size_t mostLines = 8;
constexpr int mostSeconds = 500; ///< a walk may be endless

/// Lets walks of the given lines go on. They share their counters, so what they send together has no plain
/// rule.
void letWalk(ZNTWalkMachine& machine, const std::u16string& lines, int seconds)
{
    for (; seconds > 0 && machine.walker.isWalking(); --seconds) {
        machine.sent.lines.clear();
        machine.loop.advance(1);
        require(machine.sent.lines.size() <= mostLines, "a tick sends one line at most");
        for (const auto& step : machine.sent.lines)
            require(znt::contains(lines, step), "a step stands in the path of a walk");
    }
}

} // namespace

/// Lines in UTF-8, each a walk, or "stop".
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    ZNTWalkMachine machine;
    std::u16string lines;
    for (std::size_t count = 0; count < mostLines && !input.empty(); ++count) {
        const auto line = znt::textFromUtf8(input.field('\n'));
        lines += line + u'\n';
        if (line == u"stop")
            machine.walker.stop();
        else if (ZNTSpeedWalking::routeOfLine(line)->speed >= 1) // a thousand ticks a second are too many
            machine.walker.speedwalk(line);
        letWalk(machine, lines, 3);
    }
    letWalk(machine, lines, mostSeconds);
    return 0;
}
