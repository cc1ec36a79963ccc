#include "ZNTStoreMaker.h"

#include "ZNTDatabase.h"
#include "ZNTDatabaseAndPropertyUpdater.h"
#include "ZNTDatabaseLocation.h"
#include "ZNTPrivateFiles.h"
#include "ZNTStoreHealth.h"
#include "ZNTStoreWait.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr double pauseForLock = 0.005;      // seconds between two tries
constexpr double patienceWhenMending = 3.0; // seconds

bool exists(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

/// Renames unless `to` exists. A plain rename would replace an empty folder.
ZNTResult<void> renameToFree(const std::string& from, const std::string& to)
{
    int result = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (result != 0 && errno == EINVAL) // a file system without such a rename
        result = exists(to) ? (errno = EEXIST, -1) : std::rename(from.c_str(), to.c_str());
    if (result != 0)
        return posixError(errno);
    return {};
}

/// Makes the folder's changes durable, even if the machine stops now.
void syncFolder(const std::string& folder)
{
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

/// While it exists, this program alone may make, move or remove stores. The kernel releases the lock of a
/// program that is killed. The file stays, because another program may be waiting for it.
class ZNTStoreMaker::Lock
{
public:
    explicit Lock(const std::string& file)
        : descriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)),
          reason(errno)
    {
    }
    ~Lock()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    bool takeIfFree()
    {
        if (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
            return true;
        if (descriptor >= 0)
            reason = errno;
        return false;
    }
    ZNTResult<void> take(ZNTStoreWait& wait)
    {
        bool isTaken = takeIfFree();
        while (!isTaken && (reason == EWOULDBLOCK || reason == EINTR) && wait.pause(pauseForLock))
            isTaken = takeIfFree();
        wait.end();
        return isTaken ? ZNTResult<void>() : posixError(reason);
    }

private:
    int descriptor;
    int reason;
};

// Without the slash at the end, so that they can be renamed
std::string ZNTStoreMaker::place() const { return places.home + "/Library/Zantor/database"; }
std::string ZNTStoreMaker::folderBeside() const { return place() + ".unfinished"; }

std::string ZNTStoreMaker::preparedDatabasePath()
{
    const auto path = ZNTDatabaseLocation::databaseIn(place() + "/");
    const auto lockFile = place() + ".lock";
    if (exists(place())) {
        if (exists(folderBeside())) {
            Lock lock(lockFile);
            std::error_code ignored;
            if (lock.takeIfFree())
                std::filesystem::remove_all(folderBeside(), ignored);
        }
        return path;
    }

    const auto complain = [this](const ZNTError& error) { log.log("File copy issue " + error.description); };
    if (const auto made = znt::makePrivateFolder(places.home + "/Library/Zantor"); !made) {
        complain(made.error());
        return path;
    }
    Lock lock(lockFile);
    if (const auto taken = lock.take(wait); !taken) {
        complain(taken.error());
        return path;
    }
    if (exists(place()))
        return path; // another program was faster
    auto result = fillBeside();
    if (result)
        result = moveIntoPlace();
    hasMadeStore_ = result.succeeded();
    if (result || exists(place()))
        return path;
    complain(result.error());
    return ZNTDatabase::inMemory;
}

ZNTResult<void> ZNTStoreMaker::fillBeside()
{
    const auto folder = folderBeside() + "/";
    std::error_code ignored;
    std::filesystem::remove_all(folderBeside(), ignored);
    if (auto made = znt::makePrivateFolder(folder); !made)
        return made;
    auto result =
        znt::copyToPrivateFile(places.resource("zantorDB.db"), ZNTDatabaseLocation::databaseIn(folder));
    // Without the shipped property list the database is used as it was shipped; see the updater.
    const auto properties = places.resource("database_properties.plist");
    if (result && exists(properties))
        result = znt::copyToPrivateFile(properties, ZNTDatabaseLocation::propertiesIn(folder));
    if (result)
        result = bringUpToDate(folder);
    syncFolder(folder);
    if (!result)
        std::filesystem::remove_all(folderBeside(), ignored);
    return result;
}

ZNTResult<void> ZNTStoreMaker::moveIntoPlace()
{
    auto moved = renameToFree(folderBeside(), place());
    std::error_code ignored;
    if (!moved)
        std::filesystem::remove_all(folderBeside(), ignored);
    syncFolder(places.home + "/Library/Zantor");
    return moved;
}

ZNTResult<void> ZNTStoreMaker::bringUpToDate(const std::string& folder)
{
    ZNTDatabaseAndPropertyUpdater updater(places, log, folder);
    ZNTDatabase database(ZNTDatabaseLocation::databaseIn(folder), wait);
    if (!database.isOpen())
        return database.lastError();
    bool haveAllRun = true;
    updater.runDatabaseUpdates(
        [&](std::string_view statement) { haveAllRun = database.execute(statement) && haveAllRun; });
    updater.runLaterSteps(database);
    return haveAllRun ? updater.lastSaving() : database.lastError();
}

ZNTStoreMaker::Mended ZNTStoreMaker::mend()
{
    if (!exists(place()))
        return {true, "There is no store yet; the next start makes one. Nothing was changed."};
    wait.setPatience(patienceWhenMending);
    Lock lock(place() + ".lock");
    if (const auto taken = lock.take(wait); !taken)
        return {false,
                "The store could not be locked (" + taken.error().description + "); nothing was changed."};
    const auto health = healthOfStore();
    const auto file = ZNTDatabaseLocation::databaseIn(place() + "/");
    switch (health.state) {
    case ZNTStoreHealth::State::Usable:
        return {true, "The database " + file + " is sound; nothing was changed."};
    case ZNTStoreHealth::State::Locked:
        return {false, "Another program has locked the database " + file +
                           ". End that program and try again; nothing was changed."};
    case ZNTStoreHealth::State::Unreadable:
        return {false,
                "The database " + file + " cannot be read (" + health.reason + "); nothing was changed."};
    case ZNTStoreHealth::State::Broken:
        break;
    }
    return replaceBrokenStore();
}

ZNTStoreHealth ZNTStoreMaker::healthOfStore()
{
    using State = ZNTStoreHealth::State;
    const auto path = ZNTDatabaseLocation::databaseIn(place() + "/");
    std::error_code failure;
    const auto kind = std::filesystem::status(path, failure).type();
    if (kind == std::filesystem::file_type::none)
        return {.state = State::Unreadable, .reason = failure.message()};
    if (kind != std::filesystem::file_type::regular)
        return {.state = State::Broken, .reason = {}}; // opening a missing file would make it
    ZNTDatabase database(path, wait);
    if (!database.isOpen())
        return {.state = State::Unreadable, .reason = database.lastError().description};
    return ZNTStoreHealth::of(database, ZNTStoreHealth::Look::AtEveryPage);
}

ZNTStoreMaker::Mended ZNTStoreMaker::replaceBrokenStore()
{
    // The new store is complete before the old one moves: a full disk changes nothing.
    if (const auto filled = fillBeside(); !filled)
        return {false, "No new store could be made (" + filled.error().description +
                           "); the broken one was left as it is."};
    std::string aside;
    ZNTResult<void> moved = posixError(EEXIST);
    for (int number = 1; !moved && moved.error().code == EEXIST; ++number) {
        aside = place() + ".broken-" + std::to_string(number);
        moved = renameToFree(place(), aside);
    }
    if (moved) {
        moved = moveIntoPlace();
        if (!moved)
            static_cast<void>(renameToFree(aside, place()));
    }
    if (!moved)
        return {false, "The broken store could not be put aside (" + moved.error().description +
                           "); it was left as it is."};
    return {true, "The broken store was put aside as " + aside +
                      ". A new one is in its place, with the games, triggers and macros of a first start."};
}
