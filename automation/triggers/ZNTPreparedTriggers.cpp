#include "ZNTPreparedTriggers.h"

#include "ZNTPlatformLog.h"
#include "ZNTText.h"
#include "ZNTTriggerPatternCache.h"

#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace
{

constexpr std::u16string_view placeholder = u"%1";
constexpr std::uint32_t noLiteral = std::numeric_limits<std::uint32_t>::max();

/// Gives each literal a number, the same one whenever it occurs again.
class LiteralNumbers
{
public:
    std::uint32_t numberOf(const std::u16string& literal)
    {
        const auto number = static_cast<std::uint32_t>(literals.size());
        const auto [known, isNew] = numbers.try_emplace(literal, number);
        if (isNew)
            literals.push_back(literal);
        return known->second;
    }
    [[nodiscard]] std::size_t count() const { return literals.size(); }
    std::vector<std::u16string> take() { return std::move(literals); }

private:
    std::vector<std::u16string> literals;
    std::unordered_map<std::u16string_view, std::uint32_t> numbers; ///< keys are the patterns' own
};

} // namespace

std::shared_ptr<ZNTPreparedTriggers> ZNTPreparedTriggers::of(std::vector<ZNTTrigger> triggers,
                                                             ZNTTriggerPatternCache& patterns,
                                                             ZNTPlatformLog& log, const RunLoop& runLoop)
{
    auto prepared = std::make_shared<ZNTPreparedTriggers>();
    LiteralNumbers literals;
    for (auto& trigger : triggers) {
        ZNTArmedTrigger armed{.trigger = std::move(trigger), .patience = ZNTTriggerPatience(runLoop)};
        armed.pattern = patterns.patternForCheck(armed.trigger.check);
        armed.usesGroup = znt::contains(armed.trigger.action, placeholder);
        if (const auto problem = armed.pattern->problemWith(armed.trigger.action); !problem.empty()) {
            log.log("Trigger \"" + znt::utf8FromText(armed.trigger.name) +
                    "\" cannot be used: its check has " + problem);
            continue;
        }
        const auto index = static_cast<std::uint32_t>(prepared->triggers.size());
        const auto& literal = armed.pattern->requiredLiteral();
        if (literal.empty()) {
            armed.literal = noLiteral;
            prepared->triggersWithoutLiteral.push_back(index);
        } else {
            armed.literal = literals.numberOf(literal);
            prepared->triggersByLiteral.resize(literals.count());
            prepared->triggersByLiteral[armed.literal].push_back(index);
        }
        prepared->triggers.push_back(std::move(armed));
    }
    prepared->filter = ZNTLiteralFilter(literals.take());
    return prepared;
}
