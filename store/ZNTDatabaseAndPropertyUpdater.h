#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"
#include "ZNTResult.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class ZNTDatabase;

/// Brings an older database up to the present schema.
///
/// The first two steps are counted in a property list beside the database. It holds the number of the next
/// step. 0 means that the number is not known; then no step runs. A database that came with 2 keeps its 2,
/// and the second step is tried again at each start. So the list cannot say whether a third step has run.
///
/// Steps added from now on are counted in the database itself, as its `user_version`. The number is written
/// in the same transaction as the steps, so each of them runs once, also when a program is killed or two are
/// started together.
class ZNTDatabaseAndPropertyUpdater
{
public:
    /// Copies the shipped property list to its place if none is there, then reads the number. Both outlive
    /// this.
    ZNTDatabaseAndPropertyUpdater(const ZNTFilePlaces& places, ZNTPlatformLog& log);
    /// The same for a store that is being made in `folder`, a path with a slash at its end.
    ZNTDatabaseAndPropertyUpdater(const ZNTFilePlaces& places, ZNTPlatformLog& log,
                                  const std::string& folder);

    /// Kept as part of the interface: the number of the next step.
    [[nodiscard]] std::int32_t update_db() const { return update_db_; }
    /// Kept as part of the interface: sets the number that is saved next.
    void setUpdate_db(std::int32_t number) { update_db_ = number; }

    /// Runs those of the first two steps that are due. A statement that fails is skipped. True if the first
    /// step has run; only then is the number saved.
    bool runDatabaseUpdates(const std::function<void(std::string_view statement)>& runSQL);

    /// Writes the number and the list's other entries as XML.
    void saveOutThePropertiesFile();
    /// How the last saving ended; success if there was none.
    [[nodiscard]] const ZNTResult<void>& lastSaving() const { return saving; }

    /// Each step is a list of SQL statements.
    using LaterSteps = std::span<const std::vector<std::string_view>>;
    /// Runs the later steps that `database` has not had, each a list of statements, all in one transaction.
    /// None of them is kept if one fails, and the next start tries again. To be called after the first two
    /// steps; without a known number nothing is run.
    void runLaterSteps(ZNTDatabase& database, LaterSteps steps = shippedLaterSteps);

private:
    static constexpr std::int32_t lastCounter = 3; ///< the first two steps have run
    static constexpr LaterSteps shippedLaterSteps{};

    std::string path;
    std::string pathInUse; ///< the list's place once the store is in use
    ZNTPlatformLog& log;
    std::int32_t update_db_ = 0;
    ZNTResult<void> saving;
};
