#pragma once

#include "ZNTGaggedLines.h"

#include <span>
#include <string_view>

class ZNTPlatformLog;
class ZNTTriggerActions;
struct ZNTArmedTrigger;
struct ZNTTrigger;
struct ZNTTriggerMatch;

/// What the player has set for all triggers.
struct ZNTTriggerRules {
    bool gagsLines = false;       ///< a gag takes out the lines that its matches touch, not the whole chunk
    bool emptyActsSilent = false; ///< an empty action sends nothing, not an empty line
};

/// What the triggers decide about the chunk itself.
struct ZNTTriggerOutcome {
    bool isGagged = false;      ///< neither spoken nor a reason to stop speech
    ZNTGaggedLines gaggedLines; ///< not spoken; the rest of the chunk is
};

/// One match of one trigger.
struct ZNTTriggerOccasion {
    const ZNTArmedTrigger& armed;
    const ZNTTriggerMatch& match; ///< where it stands in the chunk
    std::u16string_view group;    ///< the text of group 1
    std::u16string_view chunk;    ///< the whole text that the triggers watch
    ZNTTriggerActions& actions;
    ZNTPlatformLog& log;
    const ZNTGaggedLines::MatchesAlone& matchesAlone;
};

/// One thing that a trigger can do at each of its matches. The README of this room says how to add one.
struct ZNTTriggerReaction {
    enum class Reach {
        Chunk, ///< changes only how the chunk is shown or spoken. It happens even if it is too late to answer
               ///< the game
        Outside ///< reaches the game or the loudspeakers
    };
    Reach reach;
    /// Whether a match of `trigger` would change anything.
    bool (*isWanted)(const ZNTTrigger& trigger, const ZNTTriggerOutcome& soFar, const ZNTTriggerRules& rules);
    /// False if the trigger does nothing more with this chunk.
    bool (*carryOut)(const ZNTTriggerOccasion& occasion, ZNTTriggerOutcome& outcome);
};

namespace znt
{

/// All reactions, in the order in which a match causes them.
std::span<const ZNTTriggerReaction> triggerReactions();

} // namespace znt
