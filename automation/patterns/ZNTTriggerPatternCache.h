#pragma once

#include "ZNTTriggerPattern.h"

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

/// Keeps patterns by their check text, so that a reload of the triggers compiles only what changed.
///
/// A player who edits one trigger of a thousand reloads them all, and to compile an expression takes long. A
/// pattern depends on its check alone, so triggers with the same check share one. Patterns of triggers that
/// left the list stay for a while, because a player often switches a trigger off and on again.
class ZNTTriggerPatternCache
{
public:
    using Pattern = std::shared_ptr<ZNTTriggerPattern>;

    /// The pattern for `check`. It is made now if it is not kept, and becomes the most recently used one.
    Pattern patternForCheck(std::u16string_view check);
    /// Forgets the patterns that were unused for longest, until `mostKept` are left. A trigger that still
    /// uses one keeps it alive.
    void trim(std::size_t mostKept);

private:
    struct Kept {
        std::u16string check;
        Pattern pattern;
    };
    std::list<Kept> kept;                                                       ///< most recently used first
    std::unordered_map<std::u16string_view, std::list<Kept>::iterator> byCheck; ///< keys are those of `kept`
};
