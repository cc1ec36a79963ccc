#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTPlatformLog.h"
#include "ZNTTemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <tuple>

namespace fs = std::filesystem;

namespace
{

constexpr const char* file = "Library/Zantor/database/.zantorDB.db";
constexpr std::size_t mostThousandSteps =
    1'000; ///< steps, in thousands, that a foreign schema may take to make

struct SilentLog final : ZNTPlatformLog {
    void log(std::string_view) override {}
};

ZNTMacro macro(std::int64_t group)
{
    return {.oid = 0, .groupOid = group, .name = u"greet", .dataToExecute = u"say hello %1"};
}

ZNTTrigger trigger()
{
    return {.oid = 0,
            .name = u"kick",
            .check = u"A %1 kicks you hard!",
            .action = u"kick %1",
            .soundFileToPlay = u"hit.wav",
            .gag = true,
            .active = true};
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
            ZNTMacroGroup group{.oid = 0, .groupName = u"friends", .macrosList = {}};
            store.insertMacroGroup(group);
            auto stored = macro(group.oid);
            store.insertMacroSetWithMacroGroup(stored);
            auto kick = trigger();
            store.insertTrigger(kick);
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

/// What is stored in a sound database can be read again, unless SQLite said that it could not be stored.
class Expectation
{
public:
    Expectation(const ZNTDatabaseHelper& store, bool isSound) : holds(isSound && store.didLastChangeSucceed())
    {
    }
    void operator()(bool isRead) const { require(isRead || !holds, "what is stored can be read again"); }

private:
    bool holds;
};

void useMacros(ZNTDatabaseHelper& store, bool isSound)
{
    ZNTMacroGroup group{.oid = 0, .groupName = u"new", .macrosList = {}};
    store.insertMacroGroup(group);
    auto greet = macro(group.oid);
    store.insertMacroSetWithMacroGroup(greet);
    const Expectation expect(store, isSound);
    const auto isStored = [&] {
        return std::ranges::any_of(
            store.getAllMacrosFromDatabaseByMacroGroupId(group.oid), [&](const ZNTMacro& each) {
                return each.oid == greet.oid && each.dataToExecute == greet.dataToExecute;
            });
    };
    expect(isStored());
    greet.dataToExecute = u"wave";
    store.updateMacro(greet);
    expect(isStored());
    expect(store.getMacroFromDatabaseByName(u"greet").has_value());
    expect(!store.getAllMacroNames().empty());
    for (const auto& known : store.getAllMacroGroupsFromDatabase())
        static_cast<void>(store.getAllMacrosFromDatabaseByMacroGroupId(known.oid));
    store.deleteMacro(greet);
    expect(!isStored());
    store.deleteMacroByOid(group.oid);
}

void useTriggers(ZNTDatabaseHelper& store, bool isSound)
{
    auto kick = trigger();
    store.insertTrigger(kick);
    const Expectation expect(store, isSound);
    const auto isStored = [&] {
        return std::ranges::any_of(store.loadAllTriggers(), [&](const ZNTTrigger& each) {
            return std::tie(each.oid, each.check, each.action, each.gag, each.active, each.soundFileToPlay) ==
                   std::tie(kick.oid, kick.check, kick.action, kick.gag, kick.active, kick.soundFileToPlay);
        });
    };
    expect(isStored());
    expect(!store.loadTriggers().empty());
    kick.soundFileToPlay.reset();
    store.updateTrigger(kick);
    expect(isStored());
    store.deleteTrigger(kick);
    expect(!isStored());
}

void useAddressBook(ZNTDatabaseHelper& store, bool isSound)
{
    ZNTMudList mud;
    mud.name = u"Home";
    mud.port = 4000;
    store.addNewRowMudList(mud);
    const Expectation expect(store, isSound);
    const auto isShown = [&] {
        return std::ranges::any_of(store.getAllMudsFromMudList(), [&](const ZNTMudList& each) {
            return each.oid == mud.oid && each.port == mud.port;
        });
    };
    expect(isShown());
    mud.port = 5000;
    store.updateMudListObject(mud);
    expect(isShown());
    store.hideZNTMudListValueFromUser(u"ZNTMudList", mud.oid);
    expect(!isShown());
    store.restoreSystemDefaultMudList();
    expect(isShown());
    store.removeZNTMudListObjectFromTable(u"ZNTMudList", mud.oid);
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
    useMacros(store, isSound);
    useTriggers(store, isSound);
    useAddressBook(store, isSound);
    return 0;
}
