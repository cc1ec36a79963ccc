#include "ZNTDatabase.h"
#include "ZNTDatabaseAndPropertyUpdater.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDatabaseLocation.h"
#include "ZNTStoreWait.h"
#include "ZNTStoredFiles.h"
#include "ZNTTestPlatform.h"
#include "ZNTUpdater.h"

#include <filesystem>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class ZNTDatabaseStart : public testing::Test
{
protected:
    /// Starts the store as a program does, and ends it.
    void start()
    {
        ZNTDatabaseHelper helper(places, machine.log);
        shownMuds = helper.getAllMudsFromMudList().size();
    }
    void putTemplateInPlace()
    {
        std::filesystem::create_directories(machine.home.path(files.folder));
        std::filesystem::copy_file(places.resource("zantorDB.db"), machine.home.path(files.database));
    }
    bool hasColumn(const std::string& name) const
    {
        return files.rows("select 1 from pragma_table_info('ZNTTrigger') where name = '" + name + "'")
                   .size() == 1;
    }
    bool hasTriggerColumns() const { return hasColumn("gag") && hasColumn("sound_file_to_play"); }

    ZNTTestPlatform machine;
    ZNTFilePlaces places = machine.platform.places;
    ZNTStoredFiles files{machine.home};
    std::size_t shownMuds = 0;
};

TEST_F(ZNTDatabaseStart, TheFirstRunBringsTheTemplateUpToDateAndLaterOnesHarmNothing)
{
    start();
    EXPECT_TRUE(hasTriggerColumns());
    EXPECT_TRUE(files.hasTable("ZNTAlias"));
    EXPECT_THAT(files.rows("select name, port, typeof(port) from ZNTMudList order by oid desc limit 3"),
                ElementsAre("Anathema Online (Italian)|4000|integer",
                            "萬  王  之  王 (King of Kings - Chinese BIG5 encoding)|4000|integer",
                            "QuestMud|3000|integer"));
    EXPECT_EQ(
        files.value("select count(*) from ZNTMudList where defaultConnection or not active or userCreated "
                    "or telnetURL = '' or url = '' or port < 1"),
        "0");
    EXPECT_EQ(files.readProperties(), files.counter(3));
    const auto database = machine.home.read(files.database);
    start();
    EXPECT_EQ(machine.home.read(files.database), database);
    EXPECT_THAT(machine.log.lines,
                ElementsAre("Root ZNTDatabaseAndPropertyUpdater: " + machine.home.path(files.properties)))
        << "logged by the first run alone";

    EXPECT_THAT(files.rows("insert into ZNTTrigger (name, sound_file_to_play) values ('kept', 'a.wav')"),
                IsEmpty());
    files.writeProperties(files.counter(1));
    start();
    EXPECT_EQ(files.readProperties(), files.counter(3)) << "steps that fail advance it";
    EXPECT_EQ(files.value("select name, sound_file_to_play from ZNTTrigger"), "kept|a.wav");

    const std::string damaged(5000, 'x');
    machine.home.write(files.database, damaged);
    start();
    EXPECT_EQ(shownMuds, 0u);
    EXPECT_EQ(machine.home.read(files.database), damaged) << "a damaged database is left as it is";
}

TEST_F(ZNTDatabaseStart, TheCounterDecidesWhichStepsRun)
{
    const std::pair<std::string, bool> rows[] = {
        {files.counter(2), true}, // and the file keeps its 2
        {files.counter(3), false},
        {files.counter(1).substr(0, 180), false},
        {files.propertiesWith("<true/>"), false},
    };
    for (const auto& [properties, addsAliases] : rows) {
        SCOPED_TRACE(properties);
        std::filesystem::remove_all(machine.home.path("Library"));
        putTemplateInPlace();
        files.writeProperties(properties);
        start();
        EXPECT_FALSE(hasTriggerColumns());
        EXPECT_EQ(files.hasTable("ZNTAlias"), addsAliases);
        EXPECT_EQ(files.readProperties(), properties);
    }
    EXPECT_THAT(machine.log.lines, IsEmpty());
}

TEST_F(ZNTDatabaseStart, ALaterStepRunsOnceAtEveryCounterAndALostOneGetsTheColumnAlone)
{
    using Statements = std::vector<ZNTDatabaseAndPropertyUpdater::LaterStatement>;
    const Statements first{{1, "create table later (at integer)"}, {1, "insert into later values (1)"}};
    const Statements failing{{2, "insert into nowhere values (2)"}, first[0], first[1]};
    const Statements second{
        {2, "insert into later select 3 + count(colour) from ZNTTrigger"}, first[0], first[1]};
    auto column = ZNTTriggerColumns.back();
    column.stored = "colour";
    column.addedByStep = 2;
    const auto startWith = [&](const Statements& statements, std::size_t columns) {
        ZNTDatabaseAndPropertyUpdater updater(places, machine.log);
        ZNTStoreWait wait(machine.loop, machine.log);
        ZNTDatabase database(machine.home.path(files.database), wait);
        updater.runDatabaseUpdates([&](std::string_view statement) { database.execute(statement); });
        updater.runLaterSteps(database, {&column, columns}, statements);
    };
    for (const int counter : {0, 1, 4}) {
        SCOPED_TRACE(counter);
        const bool isLost = counter == 0;
        std::filesystem::remove_all(machine.home.path("Library"));
        putTemplateInPlace();
        files.writeProperties(files.counter(counter));
        startWith(first, 0);
        EXPECT_EQ(files.hasTable("later"), !isLost);
        startWith(failing, 1);
        EXPECT_EQ(hasColumn("colour"), isLost) << "a step that fails leaves nothing of itself";
        if (isLost)
            files.writeProperties(files.counter(4)); // found again
        for (int start = 0; start < 2; ++start) {
            startWith(second, 1);
            EXPECT_THAT(files.rows("select at from later"), ElementsAre("1", "3")) << "and is tried again";
        }
        EXPECT_EQ(files.readProperties(), files.counter(counter == 1 ? 3 : 4));
    }
}

TEST_F(ZNTDatabaseStart, ADatabaseThatCannotBeOpenedIsReportedOnceAndNothingIsStored)
{
    std::filesystem::create_directories(machine.home.path(files.database) + "/in the way");
    ZNTDatabaseHelper helper(places, machine.log);
    ZNTMacro macro{.oid = 7, .groupOid = 1, .name = u"a", .dataToExecute = u"b"};
    helper.insertMacroSetWithMacroGroup(macro);
    EXPECT_EQ(macro.oid, 0);
    EXPECT_THAT(helper.getAllMacroNames(), IsEmpty());
    EXPECT_THAT(machine.log.lines, ElementsAre("Could not open db.")) << "once, not for each operation";
    EXPECT_EQ(files.readProperties(), files.counter(1)) << "no step ran";
}

TEST_F(ZNTDatabaseStart, TheSampleSoundIsCopiedOnceAndNeverOverThePlayersOwn)
{
    constexpr const char* sample = "Music/Zantor/sounds/dying_groan.wav";
    ZNTUpdater updater(places, machine.log);
    updater.createSoundFolder();
    EXPECT_THAT(machine.home.read(sample), StartsWith("RIFF"));
    machine.home.write(sample, "the player's own");
    updater.createSoundFolder();
    EXPECT_EQ(machine.home.read(sample), "the player's own");
    EXPECT_THAT(machine.log.lines, IsEmpty());
}

TEST_F(ZNTDatabaseStart, ASandboxedDatabaseIsMovedAndItsContainerRemoved)
{
    const std::string container = "Library/Containers/com.quellith.Zantor";
    ZNTDatabaseLocation location(places, machine.log);
    machine.home.write(files.database, "present");
    location.checkIfContainersExist();
    EXPECT_EQ(machine.home.read(files.database), "present") << "there is no container";
    machine.home.write(container + "/Data/Library/Zantor/database/.zantorDB.db", "sandboxed");
    location.checkIfContainersExist();
    EXPECT_EQ(machine.home.read(files.database), "sandboxed");
    EXPECT_FALSE(machine.home.has(container));
    EXPECT_TRUE(machine.home.has("Library/Containers"));
}

} // namespace
