#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"
#include "ZNTResult.h"
#include "ZNTTriggerColumns.h"

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

class ZNTDatabase;

/// Brings an older database up to the present schema.
///
/// The first two steps are counted in a property list beside the database. It holds the number of the next
/// step. 0 means that the number is not known; then neither of them runs. A database that came with 2 keeps
/// its 2, and the second step is tried again at each start. So the list cannot say whether a third step has
/// run.
///
/// Later steps are counted in the database itself, as its `user_version`. The number is written in the same
/// transaction as the steps, so each of them runs once, also when a program is killed or two are started
/// together. Later steps have numbers from 1 up. A step that players have had stays as it is; what is new
/// gets the next number.
///
/// A later column of the triggers needs only its row in `ZNTTriggerColumns`. The store's statements name
/// every column, so no trigger could be stored without it. Therefore it is added if the table lacks it, also
/// if the number in the property list is lost.
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

    /// A statement of a later step that does something else than adding a column to the triggers.
    struct LaterStatement {
        int step;
        std::string_view sql;
    };
    /// Runs the later steps that `database` has not had, all in one transaction. In each step the columns
    /// come before the statements. None of the steps is kept if one fails, and the next start tries again. To
    /// be called after the first two steps. Without a known number it only adds the columns that are missing,
    /// and counts nothing.
    void runLaterSteps(ZNTDatabase& database, std::span<const ZNTTriggerColumn> columns = ZNTTriggerColumns,
                       std::span<const LaterStatement> statements = shippedLaterStatements);

private:
    static constexpr std::int32_t lastCounter = 3; ///< the first two steps have run
    static constexpr std::array<LaterStatement, 0> shippedLaterStatements{};

    std::string path;
    std::string pathInUse; ///< the list's place once the store is in use
    ZNTPlatformLog& log;
    std::int32_t update_db_ = 0;
    ZNTResult<void> saving;
};
