#pragma once

#include "ZNTLiteralFilter.h"
#include "ZNTPreparedTriggers.h"
#include "ZNTTriggerActions.h"
#include "ZNTTriggerMatch.h"
#include "ZNTTriggerReactions.h"
#include "ZNTUserExpression.h"
#include "ZNTWildcardMatcher.h"
#include "ZNTWordCharacters.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class ZNTPlatformLog;

/// Memory that one pass hands on to the next.
struct ZNTTriggerPassMemory {
    ZNTLiteralOccurrences occurrences;
    std::vector<std::uint32_t> candidates;
    std::vector<ZNTTriggerMatch> matches;
};

/// One walk through a list of triggers for one chunk, as `ZNTTriggerList::startPass` describes it.
///
/// A pass can take several turns of the run loop: a chunk of some megabytes can hold a million matches, and
/// the window must stay usable. So `goOn` returns as soon as the actions have no more time, and everything
/// that says where the pass stands is a member: the candidate at hand, its search, and which of the matches
/// found are answered. The answers are the same however often the pass is interrupted.
///
/// Matches are answered `mostMatchesAtOnce` at a time, so that they do not fill the memory. So an expression
/// that finds that many and fails after that has answered before it failed.
class ZNTTriggerPass
{
public:
    /// `memory` is taken for the length of the pass and given back at its end. It may be null, because
    /// another pass has it; then this pass makes its own. All arguments outlive the pass.
    ZNTTriggerPass(std::shared_ptr<ZNTPreparedTriggers> prepared,
                   std::unique_ptr<ZNTTriggerPassMemory>& memory, const ZNTWordCharacters& wordCharacters,
                   ZNTPlatformLog& log, std::u16string_view text, ZNTTriggerActions& actions,
                   const ZNTTriggerRules& rules);
    ~ZNTTriggerPass();
    ZNTTriggerPass(const ZNTTriggerPass&) = delete;
    ZNTTriggerPass& operator=(const ZNTTriggerPass&) = delete;

    /// Goes on until every trigger was tried (true) or the actions have no time for more. If it is called
    /// from inside an action, it does nothing.
    bool goOn();
    /// From now on nothing is sent or played; the rest of the pass only decides about the chunk.
    void stopAnswering() { isAnswering = false; }
    /// What the triggers have decided about the chunk. To be read when `goOn` has returned true; before that
    /// it is not final. The reader may move from it.
    [[nodiscard]] ZNTTriggerOutcome& outcome() { return decided; }

    static constexpr std::size_t mostMatchesAtOnce = 65'536;

private:
    enum class Search { FoundAll, FoundMany, IsCut, Failed };
    enum class Answers { All, AreCut, Failed };

    void findCandidates();
    void forgetSearch();
    bool tryTrigger(ZNTArmedTrigger& armed);
    Search search(ZNTArmedTrigger& armed);
    Search searchWithIcu(ZNTArmedTrigger& armed);
    Search searchWithWildcards(const ZNTArmedTrigger& armed);
    [[nodiscard]] bool canUseWildcards(const ZNTArmedTrigger& armed);
    void noteFailure(ZNTArmedTrigger& armed, const std::string& reason);
    [[nodiscard]] bool canChangeAnything(const ZNTTrigger& trigger) const;
    Answers answer(const ZNTArmedTrigger& armed);
    bool react(const ZNTArmedTrigger& armed, const ZNTTriggerMatch& match);
    [[nodiscard]] bool matchesAlone(const ZNTArmedTrigger& armed, std::u16string_view line);
    [[nodiscard]] std::u16string_view groupOf(const ZNTTriggerMatch& match) const;

    std::shared_ptr<ZNTPreparedTriggers> prepared;
    std::unique_ptr<ZNTTriggerPassMemory>& givenMemory;
    std::unique_ptr<ZNTTriggerPassMemory> memory;
    const ZNTWordCharacters& wordCharacters;
    ZNTPlatformLog& log;
    std::u16string_view text;
    ZNTTriggerActions& actions;
    const ZNTTriggerRules rules;
    const std::function<bool()> hasTimeForMore{[this] { return actions.hasTimeForMore(); }};
    double scale, allowanceLeft;
    double allowanceForLines; ///< likewise, for trying single lines
    std::optional<bool> textHasSurrogates;
    bool hasCandidates = false;
    bool isBusy = false; ///< inside `goOn`
    bool isAnswering = true;
    ZNTTriggerOutcome decided;

    // Where the pass stands
    std::size_t candidate = 0;
    std::optional<ZNTUserExpression::Search> icuSearch;
    std::optional<ZNTWildcardMatcher::Search> wildcardSearch;
    bool isSearching = true; ///< else `matches` are to be answered
    bool isSearchOver = false;
    std::size_t answered = 0;
};
