#include "ZNTDatabase.h"
#include "ZNTDatabaseAndPropertyUpdater.h"
#include "ZNTDatabaseLocation.h"
#include "ZNTStoreWait.h"
#include "ZNTStoredFiles.h"
#include "ZNTUpdater.h"

#include <filesystem>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ZNTDatabaseStart : public ZNTStoreFixture
{
protected:
    /// Starts the store as a program does, and ends it.
    void start()
    {
        ZNTDatabaseHelper helper(places, machine.log);
        shownMuds = helper.getAllMudsFromMudList().size();
    }
    /// `columns` are one SQL expression of the columns of triggers, of which there are none.
    bool triggersHave(const std::string& columns) const
    {
        return files.value("select count(" + columns + ") from ZNTTrigger") == "0";
    }

    std::size_t shownMuds = 0;
};

TEST_F(ZNTDatabaseStart, TheFirstRunBringsTheTemplateUpToDateAndLaterOnesHarmNothing)
{
    start();
    EXPECT_TRUE(triggersHave("gag || sound_file_to_play"));
    EXPECT_TRUE(files.hasTable("ZNTAlias"));
    EXPECT_THAT(files.rows("select name, port, typeof(port) from ZNTMudList order by oid desc limit 3"),
                ElementsAre("Anathema Online (Italian)|4000|integer",
                            "萬  王  之  王 (King of Kings - Chinese BIG5 encoding)|4000|integer",
                            "QuestMud|3000|integer"));
    EXPECT_EQ(
        files.value("select count(*) from ZNTMudList where defaultConnection or not active or userCreated "
                    "or telnetURL = '' or url = '' or port < 1"),
        "0");
    EXPECT_EQ(machine.home.read(files.properties), files.counter(3));
    const auto database = machine.home.read(files.database);
    start();
    EXPECT_EQ(machine.home.read(files.database), database);
    EXPECT_THAT(machine.log.lines,
                ElementsAre("Root ZNTDatabaseAndPropertyUpdater: " + machine.home.path(files.properties)))
        << "logged by the first run alone";

    EXPECT_THAT(files.rows("insert into ZNTTrigger (name, sound_file_to_play) values ('kept', 'a.wav')"),
                IsEmpty());
    const std::string more = "</integer>\n\t<key>more</key>\n\t<integer>7</integer>";
    machine.home.write(files.properties, files.propertiesWith("<integer>1" + more));
    start();
    EXPECT_EQ(machine.home.read(files.properties), files.propertiesWith("<integer>3" + more))
        << "steps that fail advance it";
    EXPECT_EQ(files.value("select name, sound_file_to_play from ZNTTrigger"), "kept|a.wav");

    const std::string damaged(5000, 'x');
    machine.home.write(files.database, damaged);
    start();
    EXPECT_EQ(shownMuds, 0u);
    EXPECT_EQ(machine.home.read(files.database), damaged) << "a damaged database is left as it is";
}

TEST_F(ZNTDatabaseStart, TheCounterDecidesWhichStepsRunAndLaterColumnsNeedNone)
{
    std::array<ZNTTriggerColumn, 2> added{ZNTTriggerColumns.back(), ZNTTriggerColumns.back()};
    std::tie(added[0].stored, added[0].addedByStep) = std::pair("early", 1);
    std::tie(added[1].stored, added[1].addedByStep) = std::pair("colour", 2);
    const auto startWith = [&](std::size_t columns, std::string_view second) {
        const std::array<ZNTDatabaseAndPropertyUpdater::LaterStatement, 3> statements{
            {{2, second}, {1, "create table later (at integer)"}, {1, "insert into later values (1)"}}};
        ZNTDatabaseAndPropertyUpdater updater(places, machine.log);
        ZNTStoreWait wait(machine.loop, machine.log);
        ZNTDatabase database(machine.home.path(files.database), wait);
        updater.runDatabaseUpdates([&](std::string_view statement) { database.execute(statement); });
        updater.runLaterSteps(database, std::span(added).first(1 + columns),
                              std::span(statements).last(2 + columns));
    };
    const std::tuple<std::string, bool, bool> rows[] = {
        {files.counter(2), true, true}, // and the file keeps its 2
        {files.counter(3), true, false},
        {files.counter(1).substr(0, 180), false, false},
        {files.propertiesWith("<true/>"), false, false},
    };
    for (const auto& [properties, isKnown, addsAliases] : rows) {
        SCOPED_TRACE(properties);
        std::filesystem::remove_all(machine.home.path("Library"));
        machine.home.write(files.properties, properties);
        std::filesystem::copy_file(places.resource("zantorDB.db"), machine.home.path(files.database));
        start();
        EXPECT_FALSE(triggersHave("gag || sound_file_to_play"));
        EXPECT_EQ(files.hasTable("ZNTAlias"), addsAliases);
        startWith(0, "");
        EXPECT_EQ(files.hasTable("later"), isKnown);
        EXPECT_TRUE(triggersHave("early"));
        startWith(1, "insert into nowhere values (2)");
        EXPECT_EQ(triggersHave("colour"), !isKnown) << "a step that fails leaves nothing of itself";
        EXPECT_EQ(machine.home.read(files.properties), properties);
        machine.home.write(files.properties, files.counter(1)); // a lost number is known again
        for (int starts = 0; starts < 2; ++starts)
            startWith(1, "insert into later select 3 + count(colour) from ZNTTrigger");
        EXPECT_THAT(files.rows("select at from later"), ElementsAre("1", "3")) << "each step runs once";
    }
    EXPECT_THAT(machine.log.lines, testing::Contains(testing::HasSubstr("up to date")).Times(2))
        << "of the two that failed";
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
    EXPECT_EQ(machine.home.read(files.properties), files.counter(1)) << "no step ran";
}

TEST_F(ZNTDatabaseStart, TheSampleSoundIsCopiedOnceAndNeverOverThePlayersOwn)
{
    constexpr const char* sample = "Music/Zantor/sounds/dying_groan.wav";
    ZNTUpdater updater(places, machine.log);
    updater.createSoundFolder();
    EXPECT_THAT(machine.home.read(sample), testing::StartsWith("RIFF"));
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
