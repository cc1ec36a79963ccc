#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"

#include <string>

/// Where the database is, and how it comes there on a player's first run.
class ZNTDatabaseLocation
{
public:
    /// Both outlive this.
    ZNTDatabaseLocation(const ZNTFilePlaces& places, ZNTPlatformLog& log) : places(places), log(log) {}

    [[nodiscard]] std::string folder() const { return places.home + "/Library/Zantor/database/"; }
    [[nodiscard]] std::string databasePath() const { return folder() + ".zantorDB.db"; }
    [[nodiscard]] std::string propertiesPath() const { return folder() + "database_properties.plist"; }

    /// The database's path; on a first run its folder is made and the shipped template copied there. Where
    /// the folder exists nothing is copied, even if the file is missing.
    std::string preparedDatabasePath();

    /// Moves the database of an earlier, sandboxed installation here, if there is one, and removes what is
    /// left of that installation. Offered for an upgrade; nothing calls it.
    void checkIfContainersExist();

private:
    const ZNTFilePlaces& places;
    ZNTPlatformLog& log;
};
