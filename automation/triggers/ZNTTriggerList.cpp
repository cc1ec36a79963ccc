#include "ZNTTriggerList.h"

#include "ZNTPlatformLog.h"
#include "ZNTText.h"
#include "ZNTTriggerPatternCache.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

namespace
{

/// How many patterns of triggers no longer in the list are kept.
constexpr std::size_t mostPatternsUnused = 512;

constexpr std::u16string_view placeholder = u"%1";
constexpr std::uint32_t noLiteral = std::numeric_limits<std::uint32_t>::max();

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
    auto next = std::make_shared<ZNTPreparedTriggers>();
    std::vector<std::u16string> literals;
    std::unordered_map<std::u16string_view, std::uint32_t> numbers; // keys are the patterns' own
    for (auto& trigger : triggers) {
        ZNTArmedTrigger armed{std::move(trigger), ZNTTriggerPatience(runLoop), nullptr};
        armed.pattern = patterns->patternForCheck(armed.trigger.check);
        armed.usesGroup = znt::contains(armed.trigger.action, placeholder);
        auto problem = armed.pattern->problem();
        if (problem.empty() && armed.usesGroup && !armed.pattern->hasGroup())
            problem = "no group for the %1 of its action";
        if (!problem.empty()) {
            log.log("Trigger \"" + znt::utf8FromText(armed.trigger.name) +
                    "\" cannot be used: its check has " + problem);
            continue;
        }
        const auto index = static_cast<std::uint32_t>(next->triggers.size());
        const auto& literal = armed.pattern->requiredLiteral();
        if (literal.empty()) {
            armed.literal = noLiteral;
            next->triggersWithoutLiteral.push_back(index);
        } else {
            const auto [known, isNew] = numbers.try_emplace(literal, literals.size());
            if (isNew) {
                literals.push_back(literal);
                next->triggersByLiteral.emplace_back();
            }
            armed.literal = known->second;
            next->triggersByLiteral[armed.literal].push_back(index);
        }
        next->triggers.push_back(std::move(armed));
    }
    next->filter = ZNTLiteralFilter(std::move(literals));
    prepared = std::move(next);
    patterns->trim(triggers.size() + mostPatternsUnused);
}

std::unique_ptr<ZNTTriggerPass> ZNTTriggerList::startPass(std::u16string_view plainText,
                                                          ZNTTriggerActions& actions)
{
    return std::make_unique<ZNTTriggerPass>(prepared, memory, wordCharacters, log, plainText, actions);
}

bool ZNTTriggerList::passOver(std::u16string_view plainText, ZNTTriggerActions& actions)
{
    const auto pass = startPass(plainText, actions);
    while (!pass->goOn())
        continue;
    return pass->isGagged();
}

bool ZNTTriggerList::isResting(std::int64_t oid) const
{
    return std::any_of(prepared->triggers.begin(), prepared->triggers.end(), [oid](const auto& armed) {
        return armed.trigger.oid == oid && armed.patience.isResting();
    });
}
