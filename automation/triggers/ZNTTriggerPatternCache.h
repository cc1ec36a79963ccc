#pragma once

#include "ZNTTriggerPattern.h"

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

/// Keeps patterns by their check text, so that a reload of the triggers compiles only what changed.
class ZNTTriggerPatternCache
{
public:
    using Pattern = std::shared_ptr<ZNTTriggerPattern>;

    /// The pattern for `check`, made now if it is not kept; it becomes the one most recently used.
    Pattern patternForCheck(std::u16string_view check);
    /// Lets go of those unused for longest until `mostKept` are left.
    void trim(std::size_t mostKept);

private:
    struct Kept {
        std::u16string check;
        Pattern pattern;
    };
    std::list<Kept> kept;                                                       ///< most recently used first
    std::unordered_map<std::u16string_view, std::list<Kept>::iterator> byCheck; ///< keys are those of `kept`
};
