#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTPlatformLog.h"
#include "ZNTTemporaryFolder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <tuple>

namespace fs = std::filesystem;

namespace
{

constexpr const char* file = "Library/Zantor/database/.zantorDB.db";
/// How many thousand steps a foreign schema may take to make.
constexpr std::size_t mostThousandSteps = 1'000;

struct SilentLog final : ZNTPlatformLog {
    void log(std::string_view) override {}
};

using Steps = std::array<std::function<void()>, 3>;

/// Stores a record, changes it and deletes it. If the database is sound and SQLite has stored the record,
/// each step can be read back.
void storeAndDelete(const ZNTDatabaseHelper& store, bool isSound, const Steps& steps,
                    const std::function<bool()>& isStored)
{
    steps[0]();
    const bool counts = isSound && store.didLastChangeSucceed();
    require(isStored() || !counts, "a stored record can be read");
    steps[1]();
    require(isStored() || !counts, "a changed record can be read");
    steps[2]();
    require(!isStored() || !counts, "a deleted record cannot be read");
}

void useMacros(ZNTDatabaseHelper& store, bool isSound)
{
    ZNTMacroGroup group{.oid = 0, .groupName = u"friends", .macrosList = {}};
    store.insertMacroGroup(group);
    ZNTMacro greet{.oid = 0, .groupOid = group.oid, .name = u"greet", .dataToExecute = u"say hello %1"};
    const Steps steps{[&] { store.insertMacroSetWithMacroGroup(greet); },
                      [&] {
                          greet.dataToExecute = u"wave";
                          store.updateMacro(greet);
                          static_cast<void>(store.getMacroFromDatabaseByName(u"greet"));
                          static_cast<void>(store.getAllMacroNames());
                          for (const auto& known : store.getAllMacroGroupsFromDatabase())
                              static_cast<void>(store.getAllMacrosFromDatabaseByMacroGroupId(known.oid));
                      },
                      [&] { store.deleteMacro(greet); }};
    storeAndDelete(store, isSound, steps, [&] {
        return std::ranges::any_of(
            store.getAllMacrosFromDatabaseByMacroGroupId(group.oid), [&](const ZNTMacro& each) {
                return each.oid == greet.oid && each.dataToExecute == greet.dataToExecute;
            });
    });
    store.deleteMacroByOid(group.oid);
}

void useTriggers(ZNTDatabaseHelper& store, bool isSound)
{
    ZNTTrigger kick;
    kick.check = u"A %1 kicks you hard!";
    kick.soundFileToPlay = u"hit.wav";
    kick.gag = true;
    const Steps steps{[&] { store.insertTrigger(kick); },
                      [&] {
                          kick.soundFileToPlay.reset();
                          store.updateTrigger(kick);
                          static_cast<void>(store.loadTriggers());
                      },
                      [&] { store.deleteTrigger(kick); }};
    storeAndDelete(store, isSound, steps, [&] {
        return std::ranges::any_of(store.loadAllTriggers(), [&](const ZNTTrigger& each) {
            return std::tie(each.oid, each.check, each.gag, each.soundFileToPlay) ==
                   std::tie(kick.oid, kick.check, kick.gag, kick.soundFileToPlay);
        });
    });
}

void useAddressBook(ZNTDatabaseHelper& store, bool isSound)
{
    ZNTMudList mud;
    mud.port = 4000;
    const Steps steps{[&] { store.addNewRowMudList(mud); },
                      [&] {
                          mud.port = 5000;
                          store.updateMudListObject(mud);
                      },
                      [&] { store.hideZNTMudListValueFromUser(u"ZNTMudList", mud.oid); }};
    storeAndDelete(store, isSound, steps, [&] {
        return std::ranges::any_of(store.getAllMudsFromMudList(), [&](const ZNTMudList& each) {
            return each.oid == mud.oid && each.port == mud.port;
        });
    });
    store.restoreSystemDefaultMudList();
    store.removeZNTMudListObjectFromTable(u"ZNTMudList", mud.oid);
}

void useEverything(ZNTDatabaseHelper& store, bool isSound)
{
    useMacros(store, isSound);
    useTriggers(store, isSound);
    useAddressBook(store, isSound);
}

/// A home with a database that a player has used.
struct Home {
    ZNTTemporaryFolder home;
    ZNTFilePlaces places{home.path(), ZNTFilePlaces::forThisProcess().resources, home.path("cache")};
    SilentLog log;
    std::string used, schema;

    Home()
    {
        {
            ZNTDatabaseHelper store(places, log);
            useEverything(store, false);
            ZNTMacro macro{.oid = 0, .groupOid = 1, .name = u"kept", .dataToExecute = u"say hello %1"};
            store.insertMacroSetWithMacroGroup(macro);
            ZNTTrigger trigger;
            store.insertTrigger(trigger);
        }
        used = home.read(file);
        schema = soundSchema();
        require(!schema.empty(), "the shipped database is whole");
    }

    /// The tables' statements; empty where SQLite finds anything wrong with the file.
    [[nodiscard]] std::string soundSchema() const
    {
        std::string found;
        const auto append = [](void* text, int, char** values, char**) {
            static_cast<std::string*>(text)->append(values[0] ? values[0] : "").append("\n");
            return 0;
        };
        run("select sql from sqlite_master union all select * from pragma_integrity_check", append, &found);
        return found.ends_with("\nok\n") ? found : "";
    }
    /// Past the code under test. Statements that end neither soon nor well are given up.
    void run(const std::string& sql, int (*eachRow)(void*, int, char**, char**), void* context) const
    {
        sqlite3* opened = nullptr;
        sqlite3_open_v2(home.path(file).c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
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
        sqlite3_exec(opened, sql.c_str(), eachRow, context, nullptr);
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
        fs::remove(home.home.path(file) + suffix);
    if (kind == 'R')
        home.home.write(file, input.rest());
    else
        home.home.write(file, kind == 'S' ? home.used : damaged(home.used, input));
    if (kind == 'S')
        home.run(std::string(input.rest()), nullptr, nullptr);

    const bool isSound = kind != 'R' && home.soundSchema() == home.schema;
    ZNTDatabaseHelper store(home.places, home.log);
    useEverything(store, isSound);
    return 0;
}
