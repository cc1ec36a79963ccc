#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"
#include "ZNTResult.h"
#include "ZNTStoreHealth.h"

#include <string>

class ZNTStoreWait;

/// Makes a player's store: the database with every step run on it, and its property list.
///
/// A store is filled in a folder beside its place and then renamed, so that its place holds nothing or a
/// whole store, also after a crash or on a full disk. A lock on a file beside both lets one program at a time
/// do this. The next program that has the lock removes what a killed program left.
class ZNTStoreMaker
{
public:
    /// All of it outlives this.
    ZNTStoreMaker(const ZNTFilePlaces& places, ZNTPlatformLog& log, ZNTStoreWait& wait)
        : places(places),
          log(log),
          wait(wait)
    {
    }

    /// Makes the store unless its folder exists; a failure is logged. Returns the path to open. That is a
    /// database in memory without any table if no store could be filled.
    std::string preparedDatabasePath();

    /// Whether `preparedDatabasePath` has made the store, because there was none.
    [[nodiscard]] bool hasMadeStore() const { return hasMadeStore_; }

    struct Mended {
        bool succeeded;
        std::string sentence; ///< what was done, or why nothing was
    };
    /// If tables are missing or the database is damaged, renames the store's folder and makes a new store.
    /// Any other store is left as it is. So is a locked one, because it cannot be checked.
    Mended mend();

private:
    class Lock;
    ZNTResult<void> fillBeside();
    ZNTResult<void> moveIntoPlace();
    ZNTResult<void> bringUpToDate(const std::string& folder);
    ZNTStoreHealth healthOfStore();
    Mended replaceBrokenStore();
    [[nodiscard]] std::string place() const;
    [[nodiscard]] std::string folderBeside() const;

    const ZNTFilePlaces& places;
    ZNTPlatformLog& log;
    ZNTStoreWait& wait;
    bool hasMadeStore_ = false;
};
