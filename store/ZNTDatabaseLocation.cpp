#include "ZNTDatabaseLocation.h"

#include "ZNTPrivateFiles.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

void ZNTDatabaseLocation::checkIfContainersExist()
{
    const auto container = places.home + "/Library/Containers/com.quellith.Zantor/";
    const auto left = container + "Data/Library/Zantor/database/.zantorDB.db";
    std::error_code ignored;
    if (!std::filesystem::exists(left, ignored))
        return;
    std::filesystem::remove_all(folder(), ignored);
    static_cast<void>(znt::makePrivateFolder(folder())); // the move fails then, too
    if (std::rename(left.c_str(), databaseIn(folder()).c_str()) != 0)
        log.log("File copy issue " + posixError(errno).description);
    std::filesystem::remove_all(container, ignored);
}
