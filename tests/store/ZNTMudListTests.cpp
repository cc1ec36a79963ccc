#include "ZNTDatabaseHelper.h"
#include "ZNTMudListArrayController.h"
#include "ZNTMudListController.h"
#include "ZNTPlainElements.h"
#include "ZNTStoredFiles.h"
#include "ZNTTestPlatform.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ZNTMudListTest : public testing::Test
{
protected:
    ZNTMudListTest()
    {
        store.runSQL("delete from ZNTMudList");
        store.runSQL("insert into ZNTMudList (name, url, telnetURL, port, userCreated) values "
                     "('b', 'http://b', 'b.example', 23, 0), ('a', 'http://a', 'a.example', 4000, 0), "
                     "('a', 'http://a', 'other.example', 4000, 0)");
        list = std::make_unique<ZNTMudListArrayController>(store);
        list->set_tableView(&table);
    }
    std::vector<std::u16string> shownHosts() const
    {
        std::vector<std::u16string> hosts;
        for (long row = 0; row < list->numberOfRowsInTableView(); ++row)
            hosts.push_back(list->objectAtIndex(row)->telnetURL);
        return hosts;
    }
    std::vector<std::string> storedDefaults()
    {
        return files.rows("select telnetURL from ZNTMudList where defaultConnection");
    }

    ZNTTestPlatform machine;
    ZNTStoredFiles files{machine.home};
    ZNTDatabaseHelper store{machine.platform.places, machine.log};
    ZNTPlainTableView table;
    std::unique_ptr<ZNTMudListArrayController> list;
};

TEST_F(ZNTMudListTest, ANewRowIsStoredBeforeItIsEdited)
{
    list->addEmptyRow();
    ASSERT_EQ(list->numberOfRowsInTableView(), 4);
    const auto* added = list->objectAtIndex(3);
    EXPECT_GT(added->oid, 0);
    EXPECT_EQ(files.value("select name, url, port, telnetURL from ZNTMudList where oid = " +
                          std::to_string(added->oid)),
              "New Row|http://|0|some url");
    EXPECT_EQ(table.timesScrolledToEnd, 1);
}

TEST_F(ZNTMudListTest, AnEditedCellIsStoredAtOnce)
{
    using Value = ZNTMudListArrayController::Value;
    const auto reloadsBefore = table.timesReloaded;
    list->tableViewSetObjectValue(u"Dragons", "name", 0);
    list->tableViewSetObjectValue(u"http://d", "url", 0);
    list->tableViewSetObjectValue(u"d.example", "telnetURL", 0);
    list->tableViewSetObjectValue(u" 7777 ", "port", 0);
    list->tableViewSetObjectValue(false, "active", 0);
    EXPECT_EQ(table.timesReloaded, reloadsBefore + 5);
    EXPECT_EQ(files.value(
                  "select name, url, telnetURL, port, active, userCreated from ZNTMudList where userCreated"),
              "Dragons|http://d|d.example|7777|0|1");
    EXPECT_EQ(list->tableViewObjectValueForTableColumn("name", 0), Value(u"Dragons"));
    EXPECT_EQ(list->tableViewObjectValueForTableColumn("port", 0), Value(std::int64_t{7777}));
    EXPECT_EQ(list->tableViewObjectValueForTableColumn("active", 0), Value(false));

    for (const long row : {-1L, 3L}) {
        list->tableViewSetObjectValue(u"lost", "name", row);
        EXPECT_EQ(list->tableViewObjectValueForTableColumn("name", row), Value(std::u16string()));
    }
    list->tableViewSetObjectValue(u"lost", "no such column", 1);
    EXPECT_EQ(list->tableViewObjectValueForTableColumn("no such column", 1), Value(std::u16string()));
    EXPECT_EQ(list->tableViewObjectValueForTableColumn("displayToUser", 1), Value(true));
    EXPECT_EQ(files.value("select count(*) from ZNTMudList where name = 'lost'"), "0");
}

TEST_F(ZNTMudListTest, AtMostOneEntryIsTheDefault)
{
    list->tableViewSetObjectValue(true, "defaultConnection", 2);
    EXPECT_THAT(storedDefaults(), ElementsAre("b.example"));
    list->tableViewSetObjectValue(u"1", "defaultConnection", 1);
    EXPECT_THAT(storedDefaults(), ElementsAre("other.example"));
    EXPECT_FALSE(list->objectAtIndex(2)->defaultConnection);
    list->tableViewSetObjectValue(false, "defaultConnection", 1);
    EXPECT_THAT(storedDefaults(), IsEmpty());
}

TEST_F(ZNTMudListTest, HiddenEntriesComeBackTogetherWithAllTheirFields)
{
    EXPECT_THAT(shownHosts(), ElementsAre(u"a.example", u"other.example", u"b.example"));
    table.selected = 1;
    list->deleteSelectedRow();
    EXPECT_THAT(shownHosts(), ElementsAre(u"a.example", u"b.example"));
    list->deleteSelectedRow();
    EXPECT_THAT(shownHosts(), ElementsAre(u"a.example"));
    for (const long row : {-1L, 1L}) { // nothing selected, or a row that has gone
        table.selected = row;
        list->deleteSelectedRow();
        EXPECT_THAT(shownHosts(), ElementsAre(u"a.example"));
    }
    EXPECT_EQ(files.value("select count(*) from ZNTMudList"), "3");
    list->restoreSystemMudList();
    EXPECT_THAT(shownHosts(), ElementsAre(u"a.example", u"other.example", u"b.example"));
    EXPECT_EQ(list->objectAtIndex(2)->port, 23);
    EXPECT_FALSE(list->objectAtIndex(2)->userCreated);
}

TEST_F(ZNTMudListTest, ARowWhoseInsertFailedIsInsertedLaterAndTouchesNoOther)
{
    list->addEmptyRow();
    store.runSQL("create trigger refuse before insert on ZNTMudList begin select raise(abort, ''); end");
    list->addEmptyRow();
    list->addEmptyRow();
    EXPECT_EQ(list->numberOfRowsInTableView(), 6) << "shown all the same";
    store.runSQL("drop trigger refuse");

    table.selected = 5;
    list->deleteSelectedRow();
    EXPECT_EQ(files.value("select count(*) from ZNTMudList where not displayToUser"), "0");
    EXPECT_TRUE(list->tableViewToolTipForRow(4).starts_with(u"Not saved"));
    list->tableViewSetObjectValue(true, "defaultConnection", 3);
    list->tableViewSetObjectValue(true, "defaultConnection", 4);
    EXPECT_THAT(files.rows("select oid, defaultConnection from ZNTMudList where name = 'New Row'"),
                ElementsAre(testing::EndsWith("|0"), testing::EndsWith("|1")));
    EXPECT_EQ(list->tableViewToolTipForRow(4) + list->tableViewToolTipForRow(5), u"");
    list->tableViewSetObjectValue(u"mine", "name", 4);
    EXPECT_THAT(files.rows("select name from ZNTMudList where userCreated order by oid"),
                ElementsAre("New Row", "mine"));
}

TEST_F(ZNTMudListTest, AGameThatDoesNotAnswerIsMarkedByHostAndPort)
{
    list->setInactiveByIpAndPort(u"b.example", 24);
    list->setInactiveByIpAndPort(u"B.example", 23);
    EXPECT_EQ(files.value("select count(*) from ZNTMudList where not active"), "0");
    list->setInactiveByIpAndPort(u"b.example", 23);
    EXPECT_EQ(files.value("select telnetURL from ZNTMudList where not active"), "b.example");
    EXPECT_FALSE(list->objectAtIndex(2)->active);
}

TEST_F(ZNTMudListTest, PickingAGameFillsTheMainWindowAndClosesTheSheet)
{
    ZNTPlainPanel sheet;
    ZNTPlainTextField host, port, name;
    {
        ZNTMudListController controller(*list, {table, sheet, host, port, name});
        controller.showWindow();
        table.selected = -1;
        controller.connectToMud();
        EXPECT_TRUE(sheet.isShown) << "nothing was picked";
        EXPECT_EQ(host.content, u"");
        table.selected = 2;
        controller.connectToMud();
        EXPECT_EQ(host.content, u"b.example");
        EXPECT_EQ(port.content, u"23");
        EXPECT_EQ(name.content, u"b");
        EXPECT_FALSE(sheet.isShown);
    }
    const auto reloads = table.timesReloaded;
    list->addEmptyRow(); // the list outlives the sheet, and its table
    EXPECT_EQ(table.timesReloaded, reloads);
}

} // namespace
