#include "ZNTSpeedWalking.h"

#include "ZNTPlatformLog.h"
#include "ZNTText.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <utility>

namespace
{

constexpr std::u16string_view standingInterval = u"1";

} // namespace

std::shared_ptr<const ZNTSpeedWalking::Route> ZNTSpeedWalking::routeOfLine(std::u16string_view line)
{
    line.remove_prefix(std::min<std::size_t>(1, line.size()));
    const auto first = line.find(u'~');
    const auto second = first == line.npos ? line.npos : line.find(u'~', first + 1);
    const bool namesInterval = first != line.npos && second == line.npos;
    const auto interval = namesInterval ? line.substr(0, first) : standingInterval;
    const auto path = namesInterval ? line.substr(first + 1) : line.substr(0, first);
    return std::make_shared<const Route>(Route{znt::integerValue(interval), std::u16string(path)});
}

void ZNTSpeedWalking::speedwalk(std::shared_ptr<const Route> route)
{
    if (!hasRoomFor(route)) {
        logRefusal();
        return;
    }
    speedTimer = ++walksStarted;
    auto& walk = walks[speedTimer];
    walk.timer = runLoop.startTimer(route->speed, RunLoopRepeat::Forever,
                                    [this, started = speedTimer] { takeAStep(started); });
    walk.route = std::move(route);
    tellOfChange();
}

bool ZNTSpeedWalking::hasRoomFor(const std::shared_ptr<const Route>& route) const
{
    if (walks.size() >= mostWalks)
        return false;
    std::size_t pathText = route->path.size();
    const Route* previous = nullptr; // walks of one line are mostly neighbours, so a shared path counts once
    for (const auto& [number, walk] : walks) {
        if (walk.route != route && walk.route.get() != previous)
            pathText += walk.route->path.size();
        previous = walk.route.get();
    }
    return walks.empty() || pathText <= mostPathText;
}

void ZNTSpeedWalking::logRefusal()
{
    if (runLoop.now() < nextRefusalLine)
        return;
    nextRefusalLine = runLoop.now() + refusalInterval;
    log.log("Speed walk refused: " + std::to_string(walks.size()) + " walks go on already");
}

void ZNTSpeedWalking::stop()
{
    forgetStep();
    if (walks.erase(std::exchange(speedTimer, 0)) > 0)
        tellOfChange();
}

void ZNTSpeedWalking::stopAll()
{
    forgetStep();
    speedTimer = 0;
    if (!std::exchange(walks, {}).empty())
        tellOfChange();
}

void ZNTSpeedWalking::tellOfChange() const
{
    if (walkingChanged)
        walkingChanged();
}

void ZNTSpeedWalking::forgetStep()
{
    stepToTakeAgain.clear();
    stepCount = maxSteps = 0;
}

void ZNTSpeedWalking::endWalk(WalkNumber walk)
{
    const bool hasStepped = walks.at(walk).hasStepped;
    forgetStep();
    walks.erase(walk);
    counter = 0;
    tellOfChange();
    if (!hasStepped && walks.empty() && endedWithoutStep)
        endedWithoutStep();
}

void ZNTSpeedWalking::takeAStep(WalkNumber walk)
{
    // A server that reads nothing would otherwise make the queue of an endless walk grow without bound.
    if (!zntServerConnectController.hasRoom())
        return;
    auto& ticking = walks.at(walk);
    const auto route = ticking.route; // a step may stop the walk
    const auto& path = route->path;
    std::u16string step;
    if (stepCount < maxSteps) {
        ++stepCount;
        step = stepToTakeAgain;
    } else if (!readStep(path, step)) {
        endWalk(walk);
        return;
    }
    ticking.hasStepped = true;
    zntServerConnectController.sendMessageToServer(step, /*ignoreSpecials=*/false);
}

bool ZNTSpeedWalking::readCharacter(std::u16string_view path, std::u16string& character)
{
    if (counter >= path.size())
        return false;
    const bool isPair =
        U16_IS_LEAD(path[counter]) && counter + 1 < path.size() && U16_IS_TRAIL(path[counter + 1]);
    character = path.substr(counter, isPair ? 2 : 1);
    counter += character.size();
    return true;
}

bool ZNTSpeedWalking::readStep(std::u16string_view path, std::u16string& step)
{
    forgetStep();
    std::u16string character, count;
    if (!readCharacter(path, character))
        return false;
    while (isNumeric(character)) {
        count += character;
        if (!readCharacter(path, character))
            return false;
    }
    if (character == u"[") {
        for (;;) {
            if (!readCharacter(path, character))
                return false;
            if (character == u"]")
                break;
            step += character;
        }
    } else {
        step = character;
    }
    if (!count.empty()) {
        maxSteps = std::max(znt::integerValue(count), 1) - 1;
        stepToTakeAgain = step;
    }
    return true;
}

bool ZNTSpeedWalking::isNumeric(std::u16string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        if (!u_isdigit(character))
            return false;
    }
    return true;
}
