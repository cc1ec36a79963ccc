#pragma once

#include "ZNTLiteralFilter.h"
#include "ZNTTrigger.h"
#include "ZNTTriggerActions.h"
#include "ZNTTriggerMatch.h"
#include "ZNTTriggerPatience.h"
#include "ZNTTriggerPattern.h"
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

/// A trigger that can be used, and what matching it needs.
struct ZNTArmedTrigger {
    ZNTTrigger trigger;
    ZNTTriggerPatience patience;
    std::shared_ptr<ZNTTriggerPattern> pattern;
    bool usesGroup = false; ///< the action holds "%1"
    std::uint32_t literal = 0;
};

/// The usable triggers of one list, in its order.
struct ZNTPreparedTriggers {
    std::vector<ZNTArmedTrigger> triggers;
    std::vector<std::uint32_t> triggersWithoutLiteral;
    std::vector<std::vector<std::uint32_t>> triggersByLiteral;
    ZNTLiteralFilter filter{{}};
};

/// Memory that one pass leaves to the next.
struct ZNTTriggerPassMemory {
    ZNTLiteralOccurrences occurrences;
    std::vector<std::uint32_t> candidates;
    std::vector<ZNTTriggerMatch> matches;
};

/// One walk through a list of triggers for one chunk, as `ZNTTriggerList::passOver` describes it, in as many
/// parts as the time of its owner allows.
///
/// Matches are answered `mostMatchesAtOnce` at a time. Only an expression that has found as many and then
/// fails has answered before it failed.
class ZNTTriggerPass
{
public:
    /// `memory` is taken for the length of the pass, if there is any, and given back at its end. It, the text
    /// and all else that is referred to outlive the pass.
    ZNTTriggerPass(std::shared_ptr<ZNTPreparedTriggers> prepared,
                   std::unique_ptr<ZNTTriggerPassMemory>& memory, const ZNTWordCharacters& wordCharacters,
                   ZNTPlatformLog& log, std::u16string_view text, ZNTTriggerActions& actions);
    ~ZNTTriggerPass();
    ZNTTriggerPass(const ZNTTriggerPass&) = delete;
    ZNTTriggerPass& operator=(const ZNTTriggerPass&) = delete;

    /// Goes on until every trigger was tried (true) or the actions have no time for more. Called from inside
    /// an action it does nothing.
    bool goOn();
    /// From now on nothing is sent or played; what is left to do decides the gag only.
    void stopAnswering() { isAnswering = false; }
    /// Of the matches answered so far; of the chunk when all is done.
    [[nodiscard]] bool isGagged() const { return isGagged_; }

    static constexpr std::size_t mostMatchesAtOnce = 65'536;

private:
    enum class Search { FoundAll, FoundMany, IsCut, Failed };
    enum class Answers { All, AreCut, Failed };

    void findCandidates();
    bool tryTrigger(ZNTArmedTrigger& armed);
    Search search(ZNTArmedTrigger& armed);
    Search searchWithIcu(ZNTArmedTrigger& armed);
    Search searchWithWildcards(const ZNTArmedTrigger& armed);
    [[nodiscard]] bool canUseWildcards(const ZNTArmedTrigger& armed);
    void noteFailure(ZNTArmedTrigger& armed, const std::string& reason);
    Answers answer(const ZNTArmedTrigger& armed);
    bool send(const ZNTArmedTrigger& armed, const ZNTTriggerMatch& match);
    [[nodiscard]] std::u16string_view groupOf(const ZNTTriggerMatch& match) const;

    std::shared_ptr<ZNTPreparedTriggers> prepared;
    std::unique_ptr<ZNTTriggerPassMemory>& givenMemory;
    std::unique_ptr<ZNTTriggerPassMemory> memory;
    const ZNTWordCharacters& wordCharacters;
    ZNTPlatformLog& log;
    std::u16string_view text;
    ZNTTriggerActions& actions;
    const std::function<bool()> hasTimeForMore{[this] { return actions.hasTimeForMore(); }};
    double scale, allowanceLeft;
    std::optional<bool> textHasSurrogates;
    bool hasCandidates = false;
    bool isBusy = false; ///< inside `goOn`
    bool isAnswering = true;
    bool isGagged_ = false;

    // Where the pass stands: a candidate, its search, and which of the matches found are answered.
    std::size_t candidate = 0;
    std::optional<ZNTUserExpression::Search> icuSearch;
    std::optional<ZNTWildcardMatcher::Search> wildcardSearch;
    bool isSearching = true; ///< else `matches` are to be answered
    bool isSearchOver = false;
    std::size_t answered = 0;
};
