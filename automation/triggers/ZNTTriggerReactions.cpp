#include "ZNTTriggerReactions.h"

#include "ZNTPlatformLog.h"
#include "ZNTPreparedTriggers.h"
#include "ZNTText.h"
#include "ZNTTriggerActions.h"
#include "ZNTTriggerCommand.h"

namespace
{

using Reach = ZNTTriggerReaction::Reach;

bool wantsGag(const ZNTTrigger& trigger, const ZNTTriggerOutcome& soFar)
{
    return trigger.gag && !soFar.isGagged;
}

bool gag(const ZNTTriggerOccasion&, ZNTTriggerOutcome& outcome)
{
    outcome.isGagged = true;
    return true;
}

/// Also of a trigger with an empty action, which sends an empty line.
bool wantsAnswer(const ZNTTrigger&, const ZNTTriggerOutcome&) { return true; }

bool answer(const ZNTTriggerOccasion& occasion, ZNTTriggerOutcome&)
{
    const auto& trigger = occasion.armed.trigger;
    if (!occasion.armed.usesGroup) {
        occasion.actions.sendCommand(trigger.action);
        return true;
    }
    const auto command = znt::triggerCommand(trigger.action, occasion.group);
    if (command)
        occasion.actions.sendCommand(*command);
    else
        occasion.log.log("Trigger \"" + znt::utf8FromText(trigger.name) +
                         "\" skipped: the text of its group 1 is no replacement template");
    return command.has_value();
}

/// Also of a file name that is present but empty.
bool wantsSound(const ZNTTrigger& trigger, const ZNTTriggerOutcome&)
{
    return trigger.soundFileToPlay.has_value();
}

bool playSound(const ZNTTriggerOccasion& occasion, ZNTTriggerOutcome&)
{
    occasion.actions.playTriggerSound(*occasion.armed.trigger.soundFileToPlay);
    return true;
}

// The gag stands even if the answer fails, and a failed answer plays no sound. So the order matters.
constexpr ZNTTriggerReaction reactions[] = {
    {Reach::Chunk, wantsGag, gag},
    {Reach::Outside, wantsAnswer, answer},
    {Reach::Outside, wantsSound, playSound},
};

} // namespace

namespace znt
{

std::span<const ZNTTriggerReaction> triggerReactions() { return reactions; }

} // namespace znt
