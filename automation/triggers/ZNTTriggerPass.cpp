#include "ZNTTriggerPass.h"

#include "ZNTPlatformLog.h"
#include "ZNTText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

/// Seconds for trying single lines, of all triggers together.
constexpr double allowanceOfLines = 0.05;
/// These and the limits of `znt::patience` are for each full or partial such part of a chunk.
constexpr double charactersPerAllowance = 256 * 1024;

const std::span<const ZNTTriggerReaction> allReactions = znt::triggerReactions();

} // namespace

ZNTTriggerPass::ZNTTriggerPass(std::shared_ptr<ZNTPreparedTriggers> givenPrepared,
                               std::unique_ptr<ZNTTriggerPassMemory>& givenMemory,
                               const ZNTWordCharacters& wordCharacters, ZNTPlatformLog& log,
                               std::u16string_view text, ZNTTriggerActions& actions,
                               const ZNTTriggerRules& rules)
    : prepared(std::move(givenPrepared)),
      givenMemory(givenMemory),
      memory(givenMemory ? std::move(givenMemory) : std::make_unique<ZNTTriggerPassMemory>()),
      wordCharacters(wordCharacters),
      log(log),
      text(text),
      actions(actions),
      rules(rules),
      scale(1 + std::floor(static_cast<double>(text.size()) / charactersPerAllowance)),
      allowanceLeft(znt::patience::allowanceOfAll * scale),
      allowanceForLines(allowanceOfLines * scale)
{
    memory->matches.clear();
}

ZNTTriggerPass::~ZNTTriggerPass() { givenMemory = std::move(memory); }

bool ZNTTriggerPass::goOn()
{
    if (std::exchange(isBusy, true))
        return false;
    if (!std::exchange(hasCandidates, true))
        findCandidates();
    const auto& candidates = memory->candidates;
    for (bool hasTime = true; hasTime && candidate < candidates.size(); hasTime = hasTimeForMore()) {
        if (!tryTrigger(prepared->triggers[candidates[candidate]]))
            break;
        ++candidate;
        forgetSearch();
    }
    isBusy = false;
    return candidate == candidates.size();
}

void ZNTTriggerPass::forgetSearch()
{
    icuSearch.reset();
    wildcardSearch.reset();
    memory->matches.clear();
    isSearching = true;
    isSearchOver = false;
    answered = 0;
}

/// The triggers that can match: those without a required literal, and those whose literal occurs in the text.
/// They are tried in the order of the list.
void ZNTTriggerPass::findCandidates()
{
    auto& candidates = memory->candidates;
    candidates = prepared->triggersWithoutLiteral;
    prepared->filter.search(text, memory->occurrences);
    for (const auto literal : memory->occurrences.found()) {
        const auto& triggers = prepared->triggersByLiteral[literal];
        candidates.insert(candidates.end(), triggers.begin(), triggers.end());
    }
    std::sort(candidates.begin(), candidates.end());
}

/// Searches and answers in turns, until the trigger is done with the chunk. False if it must wait for more
/// time.
bool ZNTTriggerPass::tryTrigger(ZNTArmedTrigger& armed)
{
    for (;;) {
        if (!canChangeAnything(armed.trigger))
            return true;
        if (isSearching) {
            const auto found = search(armed);
            if (found == Search::IsCut)
                return false;
            if (found == Search::Failed)
                return true;
            isSearching = false;
            isSearchOver = found == Search::FoundAll;
        }
        const auto answers = answer(armed);
        if (answers == Answers::AreCut)
            return false;
        if (answers == Answers::Failed || isSearchOver)
            return true;
        memory->matches.clear();
        isSearching = true;
        answered = 0;
    }
}

ZNTTriggerPass::Search ZNTTriggerPass::search(ZNTArmedTrigger& armed)
{
    return canUseWildcards(armed) ? searchWithWildcards(armed) : searchWithIcu(armed);
}

/// The matcher for wildcards reads the text unit by unit, ICU reads it by characters. A text without
/// surrogates is the same for both. Most texts have none, so they are looked at once, when the first such
/// trigger comes.
bool ZNTTriggerPass::canUseWildcards(const ZNTArmedTrigger& armed)
{
    if (!armed.pattern->wildcards())
        return false;
    if (!textHasSurrogates)
        textHasSurrogates = !ZNTWildcardMatcher::canRead(text);
    return !*textHasSurrogates;
}

ZNTTriggerPass::Search ZNTTriggerPass::searchWithWildcards(const ZNTArmedTrigger& armed)
{
    const auto& wildcards = *armed.pattern->wildcards();
    if (!wildcardSearch)
        wildcardSearch.emplace(
            wildcards, text,
            ZNTLiteralPlaces(memory->occurrences, armed.literal, wildcards.requiredLiteral(), text),
            wordCharacters);
    if (wildcardSearch->collect(mostMatchesAtOnce, memory->matches, hasTimeForMore))
        return Search::FoundAll;
    return memory->matches.size() >= mostMatchesAtOnce ? Search::FoundMany : Search::IsCut;
}

ZNTTriggerPass::Search ZNTTriggerPass::searchWithIcu(ZNTArmedTrigger& armed)
{
    const auto most = armed.patience.isResting() ? znt::patience::leastAllowance : znt::patience::allowance;
    const auto allowance = std::clamp(allowanceLeft, znt::patience::leastAllowance * scale, most * scale);
    if (!icuSearch)
        icuSearch.emplace(ZNTUserExpression::Search{text, allowance});
    const auto collected = armed.pattern->expression().collectMatches(*icuSearch, mostMatchesAtOnce,
                                                                      memory->matches, hasTimeForMore);
    if (!collected) {
        allowanceLeft -= allowance;
        noteFailure(armed, collected.error().description);
        return Search::Failed;
    }
    if (icuSearch->isOver) {
        armed.patience.noteSuccess();
        return Search::FoundAll;
    }
    return memory->matches.size() >= mostMatchesAtOnce ? Search::FoundMany : Search::IsCut;
}

void ZNTTriggerPass::noteFailure(ZNTArmedTrigger& armed, const std::string& reason)
{
    if (armed.patience.isResting())
        return; // the log says already that it rests
    const bool isRestToBegin = armed.patience.noteFailure();
    log.log("Trigger \"" + znt::utf8FromText(armed.trigger.name) + "\" skipped: its pattern " + reason +
            (isRestToBegin ? ", and is given 1 ms a chunk for the next 30 s" : ""));
}

std::u16string_view ZNTTriggerPass::groupOf(const ZNTTriggerMatch& match) const
{
    return text.substr(static_cast<std::size_t>(match.groupStart),
                       static_cast<std::size_t>(match.groupEnd - match.groupStart));
}

/// Whether a further match of `trigger` would change anything. While answers are given, each match causes
/// one.
bool ZNTTriggerPass::canChangeAnything(const ZNTTrigger& trigger) const
{
    return isAnswering ||
           std::any_of(allReactions.begin(), allReactions.end(), [&](const ZNTTriggerReaction& reaction) {
               return reaction.reach == ZNTTriggerReaction::Reach::Chunk &&
                      reaction.isWanted(trigger, decided, rules);
           });
}

ZNTTriggerPass::Answers ZNTTriggerPass::answer(const ZNTArmedTrigger& armed)
{
    while (answered < memory->matches.size() && canChangeAnything(armed.trigger)) {
        const bool wasAnswering = isAnswering;
        if (!react(armed, memory->matches[answered++]))
            return Answers::Failed;
        // Without an answer a match costs next to nothing.
        if (wasAnswering && !actions.hasTimeForMore())
            return Answers::AreCut;
    }
    return Answers::All;
}

/// Does all that the trigger does at one match. False if it does nothing more with this chunk.
bool ZNTTriggerPass::react(const ZNTArmedTrigger& armed, const ZNTTriggerMatch& match)
{
    const bool mayAnswer = isAnswering; // an answer may end the answering, but only from the next match on
    const ZNTGaggedLines::MatchesAlone alone = [&](auto line) { return matchesAlone(armed, line); };
    const ZNTTriggerOccasion occasion{armed, match, groupOf(match), text, actions, log, alone};
    for (const auto& reaction : allReactions) {
        const bool mayHappen = mayAnswer || reaction.reach == ZNTTriggerReaction::Reach::Chunk;
        if (mayHappen && reaction.isWanted(armed.trigger, decided, rules) &&
            !reaction.carryOut(occasion, decided))
            return false;
    }
    return true;
}

/// Few lines are asked about, and most lack the literal, so ICU does for every check. False once the time for
/// it is used up.
bool ZNTTriggerPass::matchesAlone(const ZNTArmedTrigger& armed, std::u16string_view line)
{
    if (allowanceForLines <= 0 || line.find(armed.pattern->requiredLiteral()) == line.npos)
        return false;
    ZNTUserExpression::Search search{line, allowanceForLines};
    std::vector<ZNTTriggerMatch> found;
    const auto collected = armed.pattern->expression().collectMatches(search, 1, found, [] { return true; });
    allowanceForLines = collected ? search.allowance : 0;
    return !found.empty();
}
