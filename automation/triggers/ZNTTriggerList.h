#pragma once

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

/// The triggers that are in force, and the pass that holds them against each chunk of the game's text.
///
/// A trigger's check is an ICU regular expression in which "%1" stands for one or more word or white-space
/// characters and "*" for any number of them. Everything that can be prepared is prepared when the list is
/// set, so that a pass over text in which nothing matches costs little more than reading it: a literal that
/// every match contains is searched for, for all triggers at once, and only a trigger whose literal occurs is
/// looked at. The answers are those of compiling and running every expression afresh.
///
/// Belongs to the run loop's thread. What a pass calls may call back: a list that is set meanwhile takes
/// effect with the next pass.
class ZNTTriggerList
{
public:
    /// The log hears once of each check that cannot be used, when the list is set, and of each trigger that a
    /// chunk proved too costly for. It and the run loop, whose clock times the rests of such triggers,
    /// outlive the list.
    ZNTTriggerList(ZNTPlatformLog& log, const RunLoop& runLoop);
    ~ZNTTriggerList();
    ZNTTriggerList(const ZNTTriggerList&) = delete;
    ZNTTriggerList& operator=(const ZNTTriggerList&) = delete;

    /// Replaces the list. Checks that were in force before, or not long ago, are not compiled again.
    void setTriggers(std::vector<ZNTTrigger> triggers);

    /// Begins a pass: every trigger is tried in order. For each match, in order of position, the action is
    /// sent, its "%1" replaced by group 1 (as a replacement template in ICU's sense), and the sound is
    /// played. The chunk is gagged if a trigger with `gag` set matched. It goes on with
    /// `ZNTTriggerPass::goOn`.
    ///
    /// A trigger that cannot be used does nothing: its expression is ill-formed, its action holds "%1" where
    /// there is no group, or the expression takes more processor time than a chunk is worth (about 50 ms,
    /// more for chunks past 256 Ki characters; after three such chunks in a row the limit is 1 ms for 30 s).
    /// An ill-formed template ends its trigger for the chunk; the matches before it are answered.
    ///
    /// `plainText`, the actions and this list outlive the pass.
    [[nodiscard]] std::unique_ptr<ZNTTriggerPass> startPass(std::u16string_view plainText,
                                                            ZNTTriggerActions& actions);

    /// A whole pass. True when the chunk is gagged.
    bool passOver(std::u16string_view plainText, ZNTTriggerActions& actions);
    /// Whether the trigger with that key was too slow for three chunks in a row and is given little time now.
    [[nodiscard]] bool isResting(std::int64_t oid) const;

private:
    ZNTPlatformLog& log;
    const RunLoop& runLoop;
    const ZNTWordCharacters wordCharacters;
    std::unique_ptr<ZNTTriggerPatternCache> patterns;
    std::shared_ptr<ZNTPreparedTriggers> prepared;
    std::unique_ptr<ZNTTriggerPassMemory> memory; ///< null while a pass uses it
};
