#include "FuzzInput.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTTestPlatform.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <string>

namespace fs = std::filesystem;

namespace
{

constexpr const char* file = "Library/Zantor/database/.zantorDB.db";
/// How many thousand steps a foreign schema may take to make.
constexpr std::size_t mostThousandSteps = 1'000;

/// Every operation, whatever it finds.
void useEverything(ZNTDatabaseHelper& store)
{
    ZNTMacroGroup group{.oid = 0, .groupName = u"friends", .macrosList = {}};
    store.insertMacroGroup(group);
    ZNTMacro greet{.oid = 0, .groupOid = group.oid, .name = u"greet", .dataToExecute = u"say hello %1"};
    store.insertMacroSetWithMacroGroup(greet);
    store.updateMacro(greet);
    static_cast<void>(store.getMacroFromDatabaseByName(u"greet"));
    static_cast<void>(store.getAllMacroNames());
    for (const auto& known : store.getAllMacroGroupsFromDatabase())
        static_cast<void>(store.getAllMacrosFromDatabaseByMacroGroupId(known.oid));
    store.deleteMacro(greet);
    store.deleteMacroByOid(group.oid);

    ZNTTrigger kick;
    store.insertTrigger(kick);
    store.updateTrigger(kick);
    static_cast<void>(store.loadTriggers());
    static_cast<void>(store.loadAllTriggers());
    store.deleteTrigger(kick);

    ZNTMudList mud;
    store.addNewRowMudList(mud);
    store.updateMudListObject(mud);
    store.hideZNTMudListValueFromUser(u"ZNTMudList", mud.oid);
    static_cast<void>(store.getAllMudsFromMudList());
    store.restoreSystemDefaultMudList();
    store.removeZNTMudListObjectFromTable(u"ZNTMudList", mud.oid);
}

/// A home with a database that a player has used.
struct Home {
    ZNTTestPlatform machine;
    const ZNTTemporaryFolder& folder = machine.home;
    std::string used;

    Home()
    {
        {
            ZNTDatabaseHelper store(machine.platform.places, machine.log);
            ZNTMacro macro{.oid = 0, .groupOid = 1, .name = u"kept", .dataToExecute = u"say hello %1"};
            store.insertMacroSetWithMacroGroup(macro);
            ZNTTrigger trigger;
            store.insertTrigger(trigger);
        }
        used = folder.read(file);
    }

    /// Past the code under test. Statements that end neither soon nor well are given up.
    void run(const std::string& sql) const
    {
        sqlite3* opened = nullptr;
        sqlite3_open_v2(folder.path(file).c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection(opened, &sqlite3_close);
        std::size_t left = mostThousandSteps;
        sqlite3_progress_handler(
            opened, 1'000, [](void* count) { return --*static_cast<std::size_t*>(count) == 0 ? 1 : 0; },
            &left);
        // No file but this one.
        sqlite3_set_authorizer(
            opened,
            [](void*, int action, const char*, const char*, const char*, const char*) {
                return action == SQLITE_ATTACH ? SQLITE_DENY : SQLITE_OK;
            },
            nullptr);
        sqlite3_limit(opened, SQLITE_LIMIT_LENGTH, 1'000'000);
        sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, nullptr);
    }
};

/// Damages the image as the fuzzer chooses: bytes written over, blocks copied over others, the end cut off.
std::string damaged(std::string image, FuzzInput& damage)
{
    const auto offset = [&] {
        const std::size_t high = damage.byte(), middle = damage.byte(), low = damage.byte();
        return (high << 16 | middle << 8 | low) % image.size();
    };
    while (!damage.empty() && !image.empty()) {
        const auto choice = damage.byte();
        const auto at = offset();
        if (choice == 255) {
            image.resize(at);
        } else if (choice >= 240) {
            const auto from = offset();
            const auto count =
                std::min({std::size_t{1} << (choice - 240), image.size() - at, image.size() - from});
            image.replace(at, count, image.substr(from, count));
        } else {
            const auto bytes = damage.take(1 + choice % 8U);
            image.replace(at, std::min(bytes.size(), image.size() - at), bytes);
        }
    }
    return image;
}

} // namespace

/// The database as a player's home may hold it. The first byte says what the rest is: "R" the file itself,
/// "S" statements that were run on a database in use, else damage to such a database.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Home home;
    FuzzInput input(data, size);
    const auto kind = input.byte();
    for (const auto* suffix : {"", "-journal", "-wal", "-shm"})
        fs::remove(home.folder.path(file) + suffix);
    if (kind == 'R')
        home.folder.write(file, input.rest());
    else
        home.folder.write(file, kind == 'S' ? home.used : damaged(home.used, input));
    if (kind == 'S')
        home.run(std::string(input.rest()));
    home.machine.log.lines.clear();
    ZNTDatabaseHelper store(home.machine.platform.places, home.machine.log);
    useEverything(store);
    return 0;
}
