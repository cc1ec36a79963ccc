#pragma once

#include "ZNTPreparedTriggers.h"
#include "ZNTTrigger.h"
#include "ZNTTriggerActions.h"
#include "ZNTTriggerPass.h"
#include "ZNTWordCharacters.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

class RunLoop;
class ZNTPlatformLog;
class ZNTTriggerPatternCache;

/// The triggers that are in force, and the pass that tries them on each chunk of the game's text.
///
/// A trigger's check is an ICU regular expression in which "%1" stands for one or more word or white-space
/// characters and "*" for any number of them. Everything that can be prepared is prepared when the list is
/// set, so that a pass over text in which nothing matches costs little more than reading it: one search finds
/// the literals that the matches of all triggers must contain, and only a trigger whose literal occurs is
/// tried. The answers are the same as if every expression were compiled and run anew.
///
/// Belongs to the run loop's thread. The actions of a pass may call this list: triggers that are set
/// meanwhile take effect with the next pass.
class ZNTTriggerList
{
public:
    /// The log gets a line for each check that cannot be used, when the list is set, and for each trigger
    /// that is too slow for a chunk. The clock of `runLoop` times the rests of slow triggers. Both outlive
    /// the list.
    ZNTTriggerList(ZNTPlatformLog& log, const RunLoop& runLoop);
    ~ZNTTriggerList();
    ZNTTriggerList(const ZNTTriggerList&) = delete;
    ZNTTriggerList& operator=(const ZNTTriggerList&) = delete;

    /// Replaces the list. Checks that were in force before or shortly before that are not compiled again.
    void setTriggers(std::vector<ZNTTrigger> triggers);

    /// What the player has set for all triggers; from the next pass on.
    void setRules(const ZNTTriggerRules& wanted) { rules = wanted; }

    /// Begins a pass; `ZNTTriggerPass::goOn` carries it on. Every trigger is tried in order. For each match,
    /// in order of position, the trigger does what `ZNTTriggerReactions.h` lists.
    ///
    /// A trigger does nothing if its expression is ill-formed, if its action holds "%1" but its check has no
    /// group, or if the expression takes more processor time than its limit (about 50 ms a chunk, more for
    /// chunks past 256 Ki characters; after three slow chunks in a row the limit is 1 ms for 30 s). An
    /// ill-formed template ends its trigger for the chunk; the matches before it are answered.
    ///
    /// `plainText`, the actions and this list outlive the pass.
    [[nodiscard]] std::unique_ptr<ZNTTriggerPass> startPass(std::u16string_view plainText,
                                                            ZNTTriggerActions& actions);

    /// Whether the trigger with that key was too slow for three chunks in a row and gets little time now.
    [[nodiscard]] bool isResting(std::int64_t oid) const;

private:
    ZNTPlatformLog& log;
    const RunLoop& runLoop;
    const ZNTWordCharacters wordCharacters{};
    std::unique_ptr<ZNTTriggerPatternCache> patterns;
    std::shared_ptr<ZNTPreparedTriggers> prepared;
    ZNTTriggerRules rules;
    std::unique_ptr<ZNTTriggerPassMemory> memory; ///< null while a pass uses it
};
