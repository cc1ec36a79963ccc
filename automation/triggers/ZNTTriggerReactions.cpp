#include "ZNTTriggerReactions.h"

#include "ZNTPlatformLog.h"
#include "ZNTPreparedTriggers.h"
#include "ZNTText.h"
#include "ZNTTriggerActions.h"
#include "ZNTTriggerCommand.h"
#include "ZNTTriggerMatch.h"

#include <cstddef>

namespace
{

using Reach = ZNTTriggerReaction::Reach;

bool wantsGag(const ZNTTrigger& trigger, const ZNTTriggerOutcome& soFar, const ZNTTriggerRules& rules)
{
    return trigger.gag && !soFar.isGagged && !rules.gagsLines;
}

bool gag(const ZNTTriggerOccasion&, ZNTTriggerOutcome& outcome)
{
    outcome.isGagged = true;
    return true;
}

/// Each match may touch other lines.
bool wantsLineGag(const ZNTTrigger& trigger, const ZNTTriggerOutcome&, const ZNTTriggerRules& rules)
{
    return trigger.gag && rules.gagsLines;
}

bool gagLines(const ZNTTriggerOccasion& occasion, ZNTTriggerOutcome& outcome)
{
    outcome.gaggedLines.add(occasion.chunk, static_cast<std::size_t>(occasion.match.start),
                            static_cast<std::size_t>(occasion.match.end), occasion.matchesAlone);
    return true;
}

/// Also of a trigger with an empty action, which sends an empty line unless the player has set otherwise.
bool wantsAnswer(const ZNTTrigger& trigger, const ZNTTriggerOutcome&, const ZNTTriggerRules& rules)
{
    return !(rules.emptyActsSilent && trigger.action.empty());
}

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
bool wantsSound(const ZNTTrigger& trigger, const ZNTTriggerOutcome&, const ZNTTriggerRules&)
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
    {Reach::Chunk, wantsLineGag, gagLines},
    {Reach::Outside, wantsAnswer, answer},
    {Reach::Outside, wantsSound, playSound},
};

} // namespace

namespace znt
{

std::span<const ZNTTriggerReaction> triggerReactions() { return reactions; }

} // namespace znt
