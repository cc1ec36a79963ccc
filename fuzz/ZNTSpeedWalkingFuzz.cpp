#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "VirtualRunLoop.h"
#include "ZNTPlatformLog.h"
#include "ZNTSpeedWalking.h"
#include "ZNTText.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace
{

constexpr std::size_t mostSteps = 200;
constexpr std::size_t mostLines = 8;

struct SentLines final : ZNTLineSender {
    std::vector<std::u16string> lines;
    void sendMessageToServer(std::u16string_view line, bool) override { lines.emplace_back(line); }
};

struct SilentLog final : ZNTPlatformLog {
    void log(std::string_view) override {}
};

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

/// The steps of a path in the order in which they are sent, up to `mostSteps`. A path that ends in the middle
/// of a step ends without it.
std::vector<std::u16string> stepsOf(std::u16string_view path)
{
    std::vector<std::u16string> steps;
    for (std::size_t at = 0; at < path.size() && steps.size() < mostSteps;) {
        std::u16string count;
        while (at < path.size() && ZNTSpeedWalking::isNumeric(characterAt(path, at))) {
            const auto digit = characterAt(path, at);
            count += digit;
            at += digit.size();
        }
        if (at >= path.size())
            break;
        std::u16string step = characterAt(path, at);
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
    if (steps.size() > mostSteps)
        steps.resize(mostSteps);
    return steps;
}

struct WalkLine {
    double interval = 1;
    std::u16string path;
};

WalkLine understood(std::u16string_view line)
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
    VirtualRunLoop loop;
    SentLines sent;
    SilentLog log;
    ZNTSpeedWalking walker(loop, sent, log);
    const auto walk = understood(line);
    const auto steps = stepsOf(walk.path);
    walker.speedwalk(line);
    require(walker.isWalking() && sent.lines.empty(), "the first step goes out one interval later");
    loop.advance(walk.interval * (static_cast<double>(steps.size()) + 0.5));
    require(sent.lines == steps, "a walk sends its steps, one at each tick");
    if (steps.size() < mostSteps) {
        loop.advance(walk.interval);
        require(!walker.isWalking(), "a walk ends one interval after its last step");
        require(sent.lines == steps, "the tick that ends a walk sends nothing");
    }
}

/// Walks at once share their counters, so what they send has no plain rule; but each tick sends one line at
/// most.
void checkManyWalks(const std::vector<std::u16string>& lines)
{
    VirtualRunLoop loop;
    SentLines sent;
    SilentLog log;
    ZNTSpeedWalking walker(loop, sent, log);
    for (const auto& line : lines) {
        if (line == u"stop")
            walker.stop();
        else
            walker.speedwalk(line);
        loop.advance(2.5);
        sent.lines.clear();
    }
    loop.advance(1);
    require(sent.lines.size() <= lines.size(), "a tick sends one line at most");
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
    const bool areSlow = std::all_of(lines.begin(), lines.end(),
                                     [](const auto& line) { return understood(line).interval >= 1; });
    if (lines.size() > 1 && areSlow)
        checkManyWalks(lines);
    return 0;
}
