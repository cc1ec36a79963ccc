#include "ZNTDatabaseLocation.h"

#include "ZNTPrivateFiles.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

std::string ZNTDatabaseLocation::preparedDatabasePath()
{
    std::error_code ignored;
    if (!std::filesystem::exists(folder(), ignored)) {
        znt::makePrivateFolder(folder());
        if (const auto copied = znt::copyToPrivateFile(places.resource("zantorDB.db"), databasePath());
            !copied)
            log.log("File copy issue " + copied.error().description);
    }
    return databasePath();
}

void ZNTDatabaseLocation::checkIfContainersExist()
{
    const auto container = places.home + "/Library/Containers/com.quellith.Zantor/";
    const auto left = container + "Data/Library/Zantor/database/.zantorDB.db";
    std::error_code ignored;
    if (!std::filesystem::exists(left, ignored))
        return;
    std::filesystem::remove_all(folder(), ignored);
    znt::makePrivateFolder(folder());
    if (std::rename(left.c_str(), databasePath().c_str()) != 0)
        log.log("File copy issue " + posixError(errno).description);
    std::filesystem::remove_all(container, ignored);
}
