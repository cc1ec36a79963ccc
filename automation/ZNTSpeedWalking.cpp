#include "ZNTSpeedWalking.h"

#include "ZNTText.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <utility>
#include <vector>

namespace
{

constexpr std::u16string_view standingInterval = u"1";

std::vector<std::u16string_view> splitAtTildes(std::u16string_view text)
{
    std::vector<std::u16string_view> pieces;
    for (;;) {
        const auto end = text.find(u'~');
        pieces.push_back(text.substr(0, end));
        if (end == text.npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

} // namespace

void ZNTSpeedWalking::speedwalk(std::u16string_view line)
{
    const auto pieces = splitAtTildes(line.substr(std::min<std::size_t>(1, line.size())));
    const bool namesInterval = pieces.size() == 2;
    const auto interval = namesInterval ? pieces[0] : standingInterval;
    const auto path = namesInterval ? pieces[1] : pieces[0];

    lastStarted = ++walksStarted;
    auto& walk = walks[lastStarted];
    walk.path = path;
    walk.timer = runLoop.startTimer(znt::integerValue(interval), RunLoopRepeat::Forever,
                                    [this, started = lastStarted] { takeAStep(started); });
    tellOfChange();
}

void ZNTSpeedWalking::stop()
{
    forgetStep();
    walks.erase(std::exchange(lastStarted, 0));
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

void ZNTSpeedWalking::endWalk(std::uint64_t walk)
{
    forgetStep();
    walks.erase(walk);
    counter = 0;
    tellOfChange();
}

void ZNTSpeedWalking::takeAStep(std::uint64_t walk)
{
    const std::u16string path = walks.at(walk).path; // a step may stop the walk
    std::u16string step;
    if (stepCount < maxSteps) {
        ++stepCount;
        step = stepToTakeAgain;
    } else if (counter >= path.size() || !readStep(path, step)) {
        endWalk(walk);
        return;
    }
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
