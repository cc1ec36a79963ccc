#include "ZNTTriggerPatternCache.h"

ZNTTriggerPatternCache::Pattern ZNTTriggerPatternCache::patternForCheck(std::u16string_view check)
{
    if (const auto known = byCheck.find(check); known != byCheck.end()) {
        kept.splice(kept.begin(), kept, known->second);
        return known->second->pattern;
    }
    kept.push_front({std::u16string(check), std::make_shared<ZNTTriggerPattern>(check)});
    byCheck.emplace(kept.front().check, kept.begin());
    return kept.front().pattern;
}

void ZNTTriggerPatternCache::trim(std::size_t mostKept)
{
    while (kept.size() > mostKept) {
        byCheck.erase(kept.back().check);
        kept.pop_back();
    }
}
