#include "ZNTLinePatterns.h"

#include "RunLoop.h"
#include "ZNTLiteralFilter.h"
#include "ZNTPlatformLog.h"
#include "ZNTText.h"
#include "ZNTTriggerMatch.h"
#include "ZNTTriggerPatience.h"
#include "ZNTTriggerPattern.h"
#include "ZNTWordCharacters.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace
{

const std::function<bool()> alwaysHasTime = [] { return true; };

} // namespace

struct ZNTLinePatterns::Pattern {
    std::size_t place; ///< in the list
    std::u16string words;
    ZNTTriggerPattern pattern;
    ZNTTriggerPatience patience;
    std::uint32_t literal = 0;            ///< its number in the filter, if it has one
    std::optional<double> allowance = {}; ///< seconds that ICU has left for this text, once it was asked
    double allowanceAtStart = 0;
};

struct ZNTLinePatterns::State {
    std::vector<Pattern> patterns;
    std::vector<std::uint32_t> withoutLiteral;
    std::vector<std::vector<std::uint32_t>> byLiteral;
    ZNTLiteralFilter filter{{}};
    const ZNTWordCharacters wordCharacters{};

    // Of the text begun last
    double allowanceOfAll = 0;
    std::vector<std::uint32_t> asked; ///< those whose allowance has begun

    // Of the line asked about last
    ZNTLiteralOccurrences occurrences;
    std::vector<std::uint32_t> candidates;
    std::vector<ZNTTriggerMatch> found;
    std::vector<std::size_t> places;
};

ZNTLinePatterns::ZNTLinePatterns(const RunLoop& runLoop, ZNTPlatformLog& log)
    : runLoop(runLoop),
      log(log),
      state(std::make_unique<State>())
{
}

ZNTLinePatterns::~ZNTLinePatterns() = default;

std::vector<std::u16string> ZNTLinePatterns::setPatterns(const std::vector<std::u16string>& patterns)
{
    state = std::make_unique<State>();
    std::vector<std::u16string> problems, literals;
    for (std::size_t place = 0; place < patterns.size(); ++place) {
        Pattern made{place, patterns[place], ZNTTriggerPattern(patterns[place]), ZNTTriggerPatience(runLoop)};
        if (const auto& problem = made.pattern.problem(); !problem.empty()) {
            problems.push_back(u"The pattern \"" + patterns[place] + u"\" cannot be used: it has " +
                               znt::textFromUtf8(problem) + u".");
            continue;
        }
        const auto index = static_cast<std::uint32_t>(state->patterns.size());
        if (const auto& literal = made.pattern.requiredLiteral(); literal.empty()) {
            state->withoutLiteral.push_back(index);
        } else {
            const auto known = std::ranges::find(literals, literal);
            made.literal = static_cast<std::uint32_t>(known - literals.begin());
            if (known == literals.end()) {
                literals.push_back(literal);
                state->byLiteral.emplace_back();
            }
            state->byLiteral[made.literal].push_back(index);
        }
        state->patterns.push_back(std::move(made));
    }
    state->filter = ZNTLiteralFilter(std::move(literals));
    return problems;
}

bool ZNTLinePatterns::begin(std::u16string_view text)
{
    state->allowanceOfAll = znt::patience::allowanceOfAll;
    for (const auto index : std::exchange(state->asked, {})) {
        auto& pattern = state->patterns[index];
        if (*pattern.allowance > 0)
            pattern.patience.noteSuccess();
        pattern.allowance.reset();
    }
    if (!state->withoutLiteral.empty())
        return true;
    if (state->patterns.empty())
        return false;
    state->filter.search(text, state->occurrences);
    return !state->occurrences.found().empty();
}

const std::vector<std::size_t>& ZNTLinePatterns::matchesIn(std::u16string_view line)
{
    state->filter.search(line, state->occurrences);
    auto& candidates = state->candidates;
    candidates = state->withoutLiteral;
    for (const auto literal : state->occurrences.found())
        candidates.insert(candidates.end(), state->byLiteral[literal].begin(),
                          state->byLiteral[literal].end());
    state->places.clear();
    for (const auto index : candidates)
        if (auto& pattern = state->patterns[index]; isIn(pattern, line))
            state->places.push_back(pattern.place);
    std::ranges::sort(state->places);
    return state->places;
}

bool ZNTLinePatterns::isIn(Pattern& pattern, std::u16string_view line)
{
    const auto& wildcards = pattern.pattern.wildcards();
    if (!wildcards || !ZNTWildcardMatcher::canRead(line))
        return isFoundByIcu(pattern, line);
    state->found.clear();
    ZNTWildcardMatcher::Search search(
        *wildcards, line,
        ZNTLiteralPlaces(state->occurrences, pattern.literal, wildcards->requiredLiteral(), line),
        state->wordCharacters);
    search.collect(1, state->found, alwaysHasTime);
    return !state->found.empty();
}

/// Lines of a flood are many, and the window must stay usable; so the allowance does not grow with the text,
/// as that of a trigger does.
bool ZNTLinePatterns::isFoundByIcu(Pattern& pattern, std::u16string_view line)
{
    if (!pattern.allowance) {
        const auto most =
            pattern.patience.isResting() ? znt::patience::leastAllowance : znt::patience::allowance;
        pattern.allowanceAtStart = std::clamp(state->allowanceOfAll, znt::patience::leastAllowance, most);
        pattern.allowance = pattern.allowanceAtStart;
        state->asked.push_back(static_cast<std::uint32_t>(&pattern - state->patterns.data()));
    }
    if (*pattern.allowance <= 0)
        return false;
    state->found.clear();
    ZNTUserExpression::Search search{line, *pattern.allowance};
    const auto collected =
        pattern.pattern.expression().collectMatches(search, 1, state->found, alwaysHasTime);
    pattern.allowance = collected ? search.allowance : 0;
    if (*pattern.allowance <= 0)
        noteFailure(pattern);
    return !state->found.empty();
}

void ZNTLinePatterns::noteFailure(Pattern& pattern)
{
    state->allowanceOfAll -= pattern.allowanceAtStart;
    if (pattern.patience.isResting())
        return; // the log says already that it rests
    const bool isRestToBegin = pattern.patience.noteFailure();
    log.log("The pattern \"" + znt::utf8FromText(pattern.words) +
            "\" skipped lines of a chunk: it took too long" +
            (isRestToBegin ? ", and is given 1 ms a chunk for the next 30 s" : ""));
}
