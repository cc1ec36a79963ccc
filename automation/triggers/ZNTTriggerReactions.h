#pragma once

#include <span>
#include <string_view>

class ZNTPlatformLog;
class ZNTTriggerActions;
struct ZNTArmedTrigger;
struct ZNTTrigger;

/// What the triggers decide about the chunk itself.
struct ZNTTriggerOutcome {
    bool isGagged = false; ///< neither spoken nor a reason to stop speech
};

/// One match of one trigger.
struct ZNTTriggerOccasion {
    const ZNTArmedTrigger& armed;
    std::u16string_view group; ///< the text of group 1
    ZNTTriggerActions& actions;
    ZNTPlatformLog& log;
};

/// One thing that a trigger can do at each of its matches. To teach triggers something new, add a row to the
/// list in the source; what changes the chunk is noted in `ZNTTriggerOutcome`.
struct ZNTTriggerReaction {
    enum class Reach {
        Chunk,  ///< changes only how the chunk is shown or spoken, and so also happens when it is too late to
                ///< answer the game
        Outside ///< reaches the game or the loudspeakers
    };
    Reach reach;
    /// Whether a match of `trigger` would change anything.
    bool (*isWanted)(const ZNTTrigger& trigger, const ZNTTriggerOutcome& soFar);
    /// False if the trigger does nothing more with this chunk.
    bool (*carryOut)(const ZNTTriggerOccasion& occasion, ZNTTriggerOutcome& outcome);
};

namespace znt
{

/// All reactions, in the order in which a match causes them.
std::span<const ZNTTriggerReaction> triggerReactions();

} // namespace znt
