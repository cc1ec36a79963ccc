#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"

#include <string>

/// The place of the database.
class ZNTDatabaseLocation
{
public:
    /// Both outlive this.
    ZNTDatabaseLocation(const ZNTFilePlaces& places, ZNTPlatformLog& log) : places(places), log(log) {}

    [[nodiscard]] std::string folder() const { return folderBelow(places.home); }
    /// Folders end with a slash.
    [[nodiscard]] static std::string folderBelow(const std::string& home)
    {
        return home + "/Library/Zantor/database/";
    }
    [[nodiscard]] static std::string databaseIn(const std::string& folder) { return folder + ".zantorDB.db"; }
    [[nodiscard]] static std::string propertiesIn(const std::string& folder)
    {
        return folder + "database_properties.plist";
    }

    /// Moves the database of an earlier, sandboxed installation here, if there is one, and removes what is
    /// left of that installation. Kept as part of the interface: for an upgrade.
    void checkIfContainersExist();

private:
    const ZNTFilePlaces& places;
    ZNTPlatformLog& log;
};
