#include "ZNTTriggerList.h"

#include "ZNTLiteralFilter.h"
#include "ZNTPlatformLog.h"
#include "ZNTText.h"
#include "ZNTTriggerCommand.h"
#include "ZNTTriggerPatternCache.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_map>
#include <utility>

namespace
{

// Seconds of processor time that ICU may take, for each full or partial `charactersPerAllowance` of a chunk.
constexpr double allowanceOfTrigger = 0.05;
constexpr double leastAllowanceOfTrigger = 0.001;
/// Together, for triggers that exceed theirs; past it each of the others is given the least.
constexpr double allowanceOfPass = 0.2;
constexpr double charactersPerAllowance = 256 * 1024;
constexpr int mostFailuresRunning = 3;

/// How many patterns of triggers no longer in the list are kept.
constexpr std::size_t mostPatternsUnused = 512;

constexpr std::u16string_view placeholder = u"%1";

bool hasSurrogates(std::u16string_view text)
{
    // Block by block, without a branch for each character, so that the compiler can take many at once.
    constexpr std::size_t blockLength = 4096;
    for (std::size_t start = 0; start < text.size(); start += blockLength) {
        unsigned found = 0;
        for (const char16_t unit : text.substr(start, blockLength))
            found |= (unit & 0xF800) == 0xD800 ? 1 : 0;
        if (found != 0)
            return true;
    }
    return false;
}

void findAll(std::u16string_view text, std::u16string_view literal, std::vector<std::int32_t>& offsets)
{
    offsets.clear();
    for (auto at = text.find(literal); at != std::u16string_view::npos; at = text.find(literal, at + 1))
        offsets.push_back(static_cast<std::int32_t>(at));
}

struct ArmedTrigger {
    ZNTTrigger trigger;
    std::shared_ptr<ZNTTriggerPattern> pattern;
    bool usesGroup = false; ///< the action holds "%1"
    std::uint32_t literal = 0;
    int failuresRunning = 0;
};

constexpr std::uint32_t noLiteral = std::numeric_limits<std::uint32_t>::max();

} // namespace

/// The usable triggers of one list, in its order.
struct ZNTTriggerList::Prepared {
    std::vector<ArmedTrigger> triggers;
    std::vector<std::uint32_t> triggersWithoutLiteral;
    std::vector<std::vector<std::uint32_t>> triggersByLiteral;
    ZNTLiteralFilter filter{{}};
};

/// Memory that one pass leaves to the next.
struct ZNTTriggerList::Scratch {
    ZNTLiteralOccurrences occurrences;
    std::vector<std::uint32_t> candidates;
    std::vector<std::int32_t> offsets;
    std::vector<ZNTTriggerMatch> matches;
};

/// One walk through the list for one chunk.
class ZNTTriggerList::Pass
{
public:
    Pass(Prepared& prepared, Scratch& scratch, const ZNTWordCharacters& wordCharacters, ZNTPlatformLog& log,
         std::u16string_view text, ZNTTriggerActions& actions)
        : prepared(prepared),
          scratch(scratch),
          wordCharacters(wordCharacters),
          log(log),
          text(text),
          actions(actions),
          scale(1 + std::floor(static_cast<double>(text.size()) / charactersPerAllowance)),
          allowanceLeft(allowanceOfPass * scale)
    {
    }

    bool run();

private:
    void findCandidates();
    bool collectMatches(ArmedTrigger& armed);
    bool collectWithIcu(ArmedTrigger& armed);
    bool collectWithWildcards(const ArmedTrigger& armed);
    void noteFailure(ArmedTrigger& armed, const std::string& reason);
    bool templatesAreWellFormed(const ArmedTrigger& armed);
    void act(const ArmedTrigger& armed);
    [[nodiscard]] std::u16string_view groupOf(const ZNTTriggerMatch& match) const;

    Prepared& prepared;
    Scratch& scratch;
    const ZNTWordCharacters& wordCharacters;
    ZNTPlatformLog& log;
    std::u16string_view text;
    ZNTTriggerActions& actions;
    double scale, allowanceLeft;
    std::optional<bool> textHasSurrogates;
    bool isGagged = false;
};

bool ZNTTriggerList::Pass::run()
{
    findCandidates();
    for (const auto index : scratch.candidates) {
        auto& armed = prepared.triggers[index];
        if (armed.failuresRunning < mostFailuresRunning && collectMatches(armed) &&
            templatesAreWellFormed(armed))
            act(armed);
    }
    return isGagged;
}

void ZNTTriggerList::Pass::findCandidates()
{
    auto& candidates = scratch.candidates;
    candidates = prepared.triggersWithoutLiteral;
    prepared.filter.search(text, scratch.occurrences);
    for (const auto literal : scratch.occurrences.found()) {
        const auto& triggers = prepared.triggersByLiteral[literal];
        candidates.insert(candidates.end(), triggers.begin(), triggers.end());
    }
    std::sort(candidates.begin(), candidates.end());
}

bool ZNTTriggerList::Pass::collectMatches(ArmedTrigger& armed)
{
    scratch.matches.clear();
    if (!armed.pattern->wildcards())
        return collectWithIcu(armed);
    if (!textHasSurrogates)
        textHasSurrogates = hasSurrogates(text);
    return *textHasSurrogates ? collectWithIcu(armed) : collectWithWildcards(armed);
}

bool ZNTTriggerList::Pass::collectWithWildcards(const ArmedTrigger& armed)
{
    const auto& wildcards = *armed.pattern->wildcards();
    if (!scratch.occurrences.offsetsOf(armed.literal, scratch.offsets))
        findAll(text, wildcards.requiredLiteral(), scratch.offsets);
    wildcards.collectMatches(text, scratch.offsets, wordCharacters, scratch.matches);
    return !scratch.matches.empty();
}

bool ZNTTriggerList::Pass::collectWithIcu(ArmedTrigger& armed)
{
    const auto allowance =
        std::clamp(allowanceLeft, leastAllowanceOfTrigger * scale, allowanceOfTrigger * scale);
    const auto outcome = armed.pattern->expression().collectMatches(text, allowance, scratch.matches);
    if (outcome) {
        armed.failuresRunning = 0;
        return !scratch.matches.empty();
    }
    allowanceLeft -= allowance;
    noteFailure(armed, outcome.error().description);
    return false;
}

void ZNTTriggerList::Pass::noteFailure(ArmedTrigger& armed, const std::string& reason)
{
    const bool isLast = ++armed.failuresRunning == mostFailuresRunning;
    log.log("Trigger \"" + znt::utf8FromText(armed.trigger.name) + "\" skipped: its pattern " + reason +
            (isLast ? ", and is left out until the triggers are loaded again" : ""));
}

std::u16string_view ZNTTriggerList::Pass::groupOf(const ZNTTriggerMatch& match) const
{
    return text.substr(static_cast<std::size_t>(match.groupStart),
                       static_cast<std::size_t>(match.groupEnd - match.groupStart));
}

/// Looked at before anything is sent, so that a trigger acts on all its matches or on none.
bool ZNTTriggerList::Pass::templatesAreWellFormed(const ArmedTrigger& armed)
{
    if (!armed.usesGroup ||
        std::all_of(scratch.matches.begin(), scratch.matches.end(), [&](const auto& match) {
            return znt::triggerCommand(placeholder, groupOf(match)).has_value();
        }))
        return true;
    log.log("Trigger \"" + znt::utf8FromText(armed.trigger.name) +
            "\" skipped: the text of its group 1 is no replacement template");
    return false;
}

void ZNTTriggerList::Pass::act(const ArmedTrigger& armed)
{
    const auto& trigger = armed.trigger;
    for (const auto& match : scratch.matches) {
        isGagged |= trigger.gag;
        if (armed.usesGroup)
            actions.sendCommand(znt::triggerCommand(trigger.action, groupOf(match)).value_or(trigger.action));
        else
            actions.sendCommand(trigger.action);
        if (trigger.soundFileToPlay)
            actions.playTriggerSound(*trigger.soundFileToPlay);
    }
}

// The list

ZNTTriggerList::ZNTTriggerList(ZNTPlatformLog& log)
    : log(log),
      patterns(std::make_unique<ZNTTriggerPatternCache>()),
      prepared(std::make_shared<Prepared>()),
      scratch(std::make_unique<Scratch>())
{
}

ZNTTriggerList::~ZNTTriggerList() = default;

void ZNTTriggerList::setTriggers(std::vector<ZNTTrigger> triggers)
{
    auto next = std::make_shared<Prepared>();
    std::vector<std::u16string> literals;
    std::unordered_map<std::u16string_view, std::uint32_t> numbers; // keys are the patterns' own
    for (auto& trigger : triggers) {
        ArmedTrigger armed{std::move(trigger), nullptr};
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

bool ZNTTriggerList::passOver(std::u16string_view plainText, ZNTTriggerActions& actions)
{
    const auto list = prepared; // lives through the pass, whatever is set meanwhile
    auto memory = scratch ? std::move(scratch) : std::make_unique<Scratch>();
    const bool isGagged = Pass(*list, *memory, wordCharacters, log, plainText, actions).run();
    scratch = std::move(memory);
    return isGagged;
}
