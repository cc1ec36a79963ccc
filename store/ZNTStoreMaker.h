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
/// do this. What a killed program left is removed by the next one that has the lock.
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

    /// Makes the store unless its folder exists, and logs why it could not. The path to open afterwards: that
    /// of a database in memory without any table if a store could not be filled.
    std::string preparedDatabasePath();

    struct Mended {
        bool succeeded;
        std::string sentence; ///< what was done, or why nothing was
    };
    /// Puts a store that is missing tables or is damaged aside under a name of its own, with everything in
    /// its folder, and makes a new one. Anything else is left as it is, also a store that is in use: whether
    /// a locked database is sound cannot be seen.
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
};
