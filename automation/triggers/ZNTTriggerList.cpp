#include "ZNTTriggerList.h"

#include "ZNTTriggerPatternCache.h"

#include <algorithm>
#include <utility>

namespace
{

/// How many patterns of triggers no longer in the list are kept.
constexpr std::size_t mostPatternsUnused = 512;

} // namespace

ZNTTriggerList::ZNTTriggerList(ZNTPlatformLog& log, const RunLoop& runLoop)
    : log(log),
      runLoop(runLoop),
      patterns(std::make_unique<ZNTTriggerPatternCache>()),
      prepared(std::make_shared<ZNTPreparedTriggers>())
{
}

ZNTTriggerList::~ZNTTriggerList() = default;

void ZNTTriggerList::setTriggers(std::vector<ZNTTrigger> triggers)
{
    const auto mostKept = triggers.size() + mostPatternsUnused;
    prepared = ZNTPreparedTriggers::of(std::move(triggers), *patterns, log, runLoop);
    patterns->trim(mostKept);
}

std::unique_ptr<ZNTTriggerPass> ZNTTriggerList::startPass(std::u16string_view plainText,
                                                          ZNTTriggerActions& actions)
{
    return std::make_unique<ZNTTriggerPass>(prepared, memory, wordCharacters, log, plainText, actions, rules);
}

bool ZNTTriggerList::isResting(std::int64_t oid) const
{
    return std::any_of(prepared->triggers.begin(), prepared->triggers.end(), [oid](const auto& armed) {
        return armed.trigger.oid == oid && armed.patience.isResting();
    });
}
