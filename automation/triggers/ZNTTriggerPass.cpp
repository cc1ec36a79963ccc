#include "ZNTTriggerPass.h"

#include "ZNTPlatformLog.h"
#include "ZNTText.h"
#include "ZNTTriggerCommand.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

// Seconds of processor time that ICU may take, for each full or partial `charactersPerAllowance` of a chunk.
constexpr double allowanceOfTrigger = 0.05;
constexpr double leastAllowanceOfTrigger = 0.001;
/// Together, for triggers that exceed theirs; past it each of the others is given the least.
constexpr double allowanceOfPass = 0.2;
constexpr double charactersPerAllowance = 256 * 1024;

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

} // namespace

ZNTTriggerPass::ZNTTriggerPass(std::shared_ptr<ZNTPreparedTriggers> givenPrepared,
                               std::unique_ptr<ZNTTriggerPassMemory>& givenMemory,
                               const ZNTWordCharacters& wordCharacters, ZNTPlatformLog& log,
                               std::u16string_view text, ZNTTriggerActions& actions)
    : prepared(std::move(givenPrepared)),
      givenMemory(givenMemory),
      memory(givenMemory ? std::move(givenMemory) : std::make_unique<ZNTTriggerPassMemory>()),
      wordCharacters(wordCharacters),
      log(log),
      text(text),
      actions(actions),
      scale(1 + std::floor(static_cast<double>(text.size()) / charactersPerAllowance)),
      allowanceLeft(allowanceOfPass * scale)
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
        icuSearch.reset();
        wildcardSearch.reset();
        memory->matches.clear();
        isSearching = true;
        isSearchOver = false;
        answered = 0;
    }
    isBusy = false;
    return candidate == candidates.size();
}

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

/// False where it must wait for more time.
bool ZNTTriggerPass::tryTrigger(ZNTArmedTrigger& armed)
{
    for (;;) {
        if (!isAnswering && (isGagged_ || !armed.trigger.gag))
            return true; // it can change nothing
        if (isSearching) {
            const auto outcome = search(armed);
            if (outcome == Search::IsCut)
                return false;
            if (outcome == Search::Failed)
                return true;
            isSearching = false;
            isSearchOver = outcome == Search::FoundAll;
        }
        const auto outcome = answer(armed);
        if (outcome == Answers::AreCut)
            return false;
        if (outcome == Answers::Failed || isSearchOver)
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

bool ZNTTriggerPass::canUseWildcards(const ZNTArmedTrigger& armed)
{
    if (!armed.pattern->wildcards())
        return false;
    if (!textHasSurrogates)
        textHasSurrogates = hasSurrogates(text);
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
    const auto most = armed.patience.isResting() ? leastAllowanceOfTrigger : allowanceOfTrigger;
    const auto allowance = std::clamp(allowanceLeft, leastAllowanceOfTrigger * scale, most * scale);
    if (!icuSearch)
        icuSearch.emplace(ZNTUserExpression::Search{text, allowance});
    const auto outcome = armed.pattern->expression().collectMatches(*icuSearch, mostMatchesAtOnce,
                                                                    memory->matches, hasTimeForMore);
    if (!outcome) {
        allowanceLeft -= allowance;
        noteFailure(armed, outcome.error().description);
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
        return; // the log has it
    const bool isRestToBegin = armed.patience.noteFailure();
    log.log("Trigger \"" + znt::utf8FromText(armed.trigger.name) + "\" skipped: its pattern " + reason +
            (isRestToBegin ? ", and is given 1 ms a chunk for the next 30 s" : ""));
}

std::u16string_view ZNTTriggerPass::groupOf(const ZNTTriggerMatch& match) const
{
    return text.substr(static_cast<std::size_t>(match.groupStart),
                       static_cast<std::size_t>(match.groupEnd - match.groupStart));
}

ZNTTriggerPass::Answers ZNTTriggerPass::answer(const ZNTArmedTrigger& armed)
{
    while (answered < memory->matches.size()) {
        const auto match = memory->matches[answered++];
        isGagged_ |= armed.trigger.gag;
        if (!isAnswering)
            return Answers::All;
        if (!send(armed, match))
            return Answers::Failed;
        if (armed.trigger.soundFileToPlay)
            actions.playTriggerSound(*armed.trigger.soundFileToPlay);
        if (!actions.hasTimeForMore())
            return Answers::AreCut;
    }
    return Answers::All;
}

/// False where the text of the group is no replacement template.
bool ZNTTriggerPass::send(const ZNTArmedTrigger& armed, const ZNTTriggerMatch& match)
{
    const auto& action = armed.trigger.action;
    if (!armed.usesGroup) {
        actions.sendCommand(action);
        return true;
    }
    const auto command = znt::triggerCommand(action, groupOf(match));
    if (command)
        actions.sendCommand(*command);
    else
        log.log("Trigger \"" + znt::utf8FromText(armed.trigger.name) +
                "\" skipped: the text of its group 1 is no replacement template");
    return command.has_value();
}
