#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTRecordedLines.h"
#include "ZNTSpeedWalking.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"

#include <algorithm>

namespace
{

constexpr std::size_t mostSteps = 200;
constexpr std::size_t mostLines = 8;

std::u16string characterAt(std::u16string_view path, std::size_t at)
{
    const bool isPair =
        at + 1 < path.size() && (path[at] & 0xFC00) == 0xD800 && (path[at + 1] & 0xFC00) == 0xDC00;
    return std::u16string(path.substr(at, isPair ? 2 : 1));
}

/// How often a step with this count is sent.
std::size_t times(std::u16string_view count)
{
    std::size_t value = 0;
    for (const auto unit : count) {
        if (unit < u'0' || unit > u'9') // a digit of another script ends the number
            break;
        value = std::min<std::size_t>(value * 10 + (unit - u'0'), mostSteps);
    }
    return std::max<std::size_t>(value, 1);
}

/// The steps of a path in the order in which they are sent, up to `mostSteps`. If a path ends in the middle
/// of a step, that step is not sent.
std::vector<std::u16string> stepsOf(std::u16string_view path)
{
    std::vector<std::u16string> steps;
    for (std::size_t at = 0; at < path.size() && steps.size() < mostSteps;) {
        std::u16string count, step;
        while (at < path.size() && ZNTSpeedWalking::isNumeric(characterAt(path, at))) {
            count += characterAt(path, at);
            at += characterAt(path, at).size();
        }
        if (at >= path.size())
            break;
        step = characterAt(path, at);
        at += step.size();
        if (step == u"[") {
            const auto close = path.find(u']', at);
            if (close == path.npos)
                break;
            step = path.substr(at, close - at);
            at = close + 1;
        }
        steps.insert(steps.end(), times(count), step);
    }
    steps.resize(std::min(steps.size(), mostSteps));
    return steps;
}

/// Interval and path of a line.
std::pair<double, std::u16string> understood(std::u16string_view line)
{
    const auto rest = line.substr(std::min<std::size_t>(1, line.size()));
    const auto tilde = rest.find(u'~');
    if (tilde == rest.npos || rest.find(u'~', tilde + 1) != rest.npos)
        return {1, std::u16string(rest.substr(0, tilde))};
    const auto interval = znt::integerValue(rest.substr(0, tilde));
    return {interval > 0 ? interval : 0.001, std::u16string(rest.substr(tilde + 1))};
}

/// A walk alone sends exactly its steps, one at each tick, and ends.
void checkOneWalk(std::u16string_view line)
{
    ZNTWalkMachine machine;
    const auto [interval, path] = understood(line);
    const auto steps = stepsOf(path);
    machine.walker.speedwalk(line);
    require(machine.walker.isWalking() && machine.sent.lines.empty(),
            "the first step goes out one interval later");
    machine.loop.advance(interval * (static_cast<double>(steps.size()) + 0.5));
    require(machine.sent.lines == steps, "a walk sends its steps, one at each tick");
    if (steps.size() < mostSteps) {
        machine.loop.advance(interval);
        require(!machine.walker.isWalking(), "a walk ends one interval after its last step");
        require(machine.sent.lines == steps, "the tick that ends a walk sends nothing");
    }
}

/// Walks at once share their counters, so what they send has no plain rule; but each tick sends one line at
/// most.
void checkManyWalks(const std::vector<std::u16string>& lines)
{
    ZNTWalkMachine machine;
    for (const auto& line : lines) {
        if (line == u"stop")
            machine.walker.stop();
        else
            machine.walker.speedwalk(line);
        machine.loop.advance(2.5);
        machine.sent.lines.clear();
    }
    machine.loop.advance(1);
    require(machine.sent.lines.size() <= lines.size(), "a tick sends one line at most");
}

} // namespace

/// Lines in UTF-8, each a walk, or "stop".
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    std::vector<std::u16string> lines;
    while (!input.empty() && lines.size() < mostLines)
        lines.push_back(znt::textFromUtf8(input.field('\n')));
    for (const auto& line : lines)
        checkOneWalk(line);
    // A thousand ticks a second are too many to try for long.
    const bool areSlow =
        std::all_of(lines.begin(), lines.end(), [](const auto& line) { return understood(line).first >= 1; });
    if (lines.size() > 1 && areSlow)
        checkManyWalks(lines);
    return 0;
}
