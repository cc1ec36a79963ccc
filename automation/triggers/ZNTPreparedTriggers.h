#pragma once

#include "ZNTLiteralFilter.h"
#include "ZNTTrigger.h"
#include "ZNTTriggerPatience.h"
#include "ZNTTriggerPattern.h"

#include <cstdint>
#include <memory>
#include <vector>

class RunLoop;
class ZNTPlatformLog;
class ZNTTriggerPatternCache;

/// A trigger that can be used, and what matching it needs.
struct ZNTArmedTrigger {
    ZNTTrigger trigger = {};
    ZNTTriggerPatience patience;
    std::shared_ptr<ZNTTriggerPattern> pattern = nullptr;
    bool usesGroup = false; ///< the action holds "%1"
    std::uint32_t literal = 0;
};

/// The usable triggers of one list, in its order, and the filter that says which of them can match a text.
struct ZNTPreparedTriggers {
    std::vector<ZNTArmedTrigger> triggers;
    std::vector<std::uint32_t> triggersWithoutLiteral;
    std::vector<std::vector<std::uint32_t>> triggersByLiteral;
    ZNTLiteralFilter filter{{}};

    /// Names in the log each trigger that cannot be used, and leaves it out. The loop's clock times the rests
    /// of triggers that are too slow; it outlives the result.
    static std::shared_ptr<ZNTPreparedTriggers> of(std::vector<ZNTTrigger> triggers,
                                                   ZNTTriggerPatternCache& patterns, ZNTPlatformLog& log,
                                                   const RunLoop& runLoop);
};
