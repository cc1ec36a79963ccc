#include "ZNTStoredFiles.h"
#include "ZNTTriggerColumns.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

auto fieldsOf(const ZNTTrigger& trigger)
{
    std::vector<std::variant<bool, std::u16string, std::optional<std::u16string>>> fields;
    for (const auto& column : ZNTTriggerColumns)
        std::visit([&](auto field) { fields.emplace_back(trigger.*field); }, column.field);
    return std::pair(trigger.oid, fields);
}

void fill(bool& field) { field = true; }
void fill(std::optional<std::u16string>& field) { field = u""; }
void fill(std::u16string& field) { field.append(u"\0'王\"; \U0001F409\r\n", 10); }

class ZNTDatabaseOperations : public ZNTStoreFixture
{
protected:
    ZNTDatabaseHelper store{places, machine.log};
};

TEST_F(ZNTDatabaseOperations, ATriggerComesBackAsItWasStored)
{
    // Quotes, characters beyond the basic plane, line ends and NUL must all survive.
    ZNTTrigger trigger{.name = u"name", .check = u"check", .action = u"action"};
    for (const auto& column : ZNTTriggerColumns)
        std::visit([&](auto field) { fill(trigger.*field); }, column.field);
    store.insertTrigger(trigger);
    auto read = store.loadTriggers();
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(fieldsOf(read[0]), fieldsOf(trigger));

    trigger = {.oid = trigger.oid, .name = u"name", .check = u"check"};
    store.updateTrigger(trigger);
    EXPECT_THAT(store.loadTriggers(), IsEmpty()) << "switched off";
    read = store.loadAllTriggers();
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(fieldsOf(read[0]), fieldsOf(trigger)) << "an absent sound file is not an empty one";
    store.deleteTrigger(trigger);
    EXPECT_THAT(store.loadAllTriggers(), IsEmpty());
}

TEST_F(ZNTDatabaseOperations, OfMacrosWithOneNameTheLaterRowIsFound)
{
    storedMacro(store, u"go", u"north", 1);
    auto later = storedMacro(store, u"go", u"south", 2);
    storedMacro(store, u"Go", u"case matters", 1);
    EXPECT_EQ(store.getMacroFromDatabaseByName(u"go")->dataToExecute, u"south");

    later.name = u"flee";
    later.groupOid = 1;
    store.updateMacro(later);
    EXPECT_EQ(store.getMacroFromDatabaseByName(u"flee")->groupOid, 2) << "a macro never changes its group";
    store.deleteMacro(later);
    EXPECT_THAT(store.getAllMacroNames(), ElementsAre(u"go", u"Go"));
}

TEST_F(ZNTDatabaseOperations, DeletingAGroupTakesItsMacrosAndNoOthers)
{
    ZNTMacroGroup fight{.oid = 0, .groupName = u"fight", .macrosList = {}};
    ZNTMacroGroup walk{.oid = 0, .groupName = u"walk", .macrosList = {}};
    store.insertMacroGroup(fight);
    store.insertMacroGroup(walk);
    storedMacro(store, u"kick", u"kick", fight.oid);
    storedMacro(store, u"home", u"recall", walk.oid);
    store.deleteMacroByOid(fight.oid);
    EXPECT_EQ(store.getAllMacroGroupsFromDatabase()[0].groupName, u"walk");
    EXPECT_THAT(store.getAllMacroNames(), ElementsAre(u"home"));
}

TEST_F(ZNTDatabaseOperations, ASavedEntryIsThePlayersOwnAndVisible)
{
    auto shipped = store.getAllMudsFromMudList().at(0);
    ASSERT_FALSE(shipped.userCreated);
    shipped.userCreated = shipped.displayToUser = shipped.active = false;
    shipped.defaultConnection = true;
    shipped.port = 70000;
    store.updateMudListObject(shipped);
    EXPECT_EQ(
        files.value("select port, defaultConnection, active, userCreated, displayToUser from ZNTMudList "
                    "where oid = " +
                    std::to_string(shipped.oid)),
        "70000|1|0|1|1");
}

TEST_F(ZNTDatabaseOperations, AFailedStatementIsSilentAndTheNextOneWorks)
{
    const auto before = storedMacro(store, u"before", u"x");
    EXPECT_TRUE(store.didLastChangeSucceed());
    store.runSQL("alter table ZNTMacro rename to away");
    EXPECT_EQ(storedMacro(store, u"lost", u"x").oid, before.oid) << "the key of the insert before";
    EXPECT_FALSE(store.didLastChangeSucceed());
    EXPECT_THAT(store.getAllMacroNames(), IsEmpty());
    store.runSQL("alter table away rename to ZNTMacro");
    auto after = storedMacro(store, u"after", u"x");
    EXPECT_GT(after.oid, before.oid);
    EXPECT_TRUE(store.didLastChangeSucceed());

    store.deleteMacro(after);
    EXPECT_TRUE(store.didLastChangeSucceed());
    store.updateMacro(after);
    EXPECT_FALSE(store.didLastChangeSucceed()) << "there is no such row any more";
    EXPECT_THAT(store.getAllMacroNames(), ElementsAre(u"before"));
    EXPECT_FALSE(store.didLastChangeSucceed()) << "a read changes no answer";
}

} // namespace
