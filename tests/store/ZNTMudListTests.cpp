#include "ZNTFilteredGames.h"
#include "ZNTMudListArrayController.h"
#include "ZNTMudListController.h"
#include "ZNTPlainElements.h"
#include "ZNTStoredFiles.h"

namespace
{

using testing::ElementsAre;

class ZNTMudListTest : public ZNTStoreFixture
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

    ZNTDatabaseHelper store{places, machine.log};
    ZNTPlainTableView table;
    std::unique_ptr<ZNTMudListArrayController> list;
};

TEST_F(ZNTMudListTest, AnEditedCellIsStoredAtOnce)
{
    using Value = ZNTMudListArrayController::Value;
    const std::pair<std::string_view, Value> edits[] = {{"name", u"Dragons"},
                                                        {"url", u"http://d"},
                                                        {"telnetURL", u"d.example"},
                                                        {"port", u" 7777 "},
                                                        {"active", false}};
    for (const auto& [column, value] : edits)
        list->tableViewSetObjectValue(value, column, 0);
    EXPECT_EQ(files.value(
                  "select name, url, telnetURL, port, active, userCreated from ZNTMudList where userCreated"),
              "Dragons|http://d|d.example|7777|0|1");
    EXPECT_EQ(list->tableViewObjectValueForTableColumn("port", 0), Value(std::int64_t{7777}));
    EXPECT_EQ(list->tableViewObjectValueForTableColumn("active", 0), Value(false));

    for (const auto& [column, row] : {std::pair("name", -1L), {"name", 3L}, {"no such column", 1L}}) {
        list->tableViewSetObjectValue(u"lost", column, row);
        EXPECT_EQ(list->tableViewObjectValueForTableColumn(column, row), Value(std::u16string()));
    }
}

TEST_F(ZNTMudListTest, AtMostOneEntryIsTheDefault)
{
    const auto storedDefaults = [&] {
        return files.rows("select telnetURL from ZNTMudList where defaultConnection");
    };
    list->tableViewSetObjectValue(true, "defaultConnection", 2);
    EXPECT_THAT(storedDefaults(), ElementsAre("b.example"));
    list->tableViewSetObjectValue(u"1", "defaultConnection", 1);
    EXPECT_THAT(storedDefaults(), ElementsAre("other.example"));
    EXPECT_FALSE(list->objectAtIndex(2)->defaultConnection);
    list->tableViewSetObjectValue(false, "defaultConnection", 1);
    EXPECT_THAT(storedDefaults(), testing::IsEmpty());
}

TEST_F(ZNTMudListTest, HiddenEntriesComeBackTogetherWithAllTheirFields)
{
    EXPECT_THAT(shownHosts(), ElementsAre(u"a.example", u"other.example", u"b.example"));
    for (const long row : {1L, 1L, -1L, 1L}) { // two rows, nothing selected, and a row that has gone
        table.selected = row;
        list->deleteSelectedRow();
    }
    EXPECT_THAT(shownHosts(), ElementsAre(u"a.example"));
    list->restoreSystemMudList();
    EXPECT_THAT(shownHosts(), ElementsAre(u"a.example", u"other.example", u"b.example"));
    EXPECT_FALSE(list->objectAtIndex(2)->userCreated);
}

TEST_F(ZNTMudListTest, ARowWhoseInsertFailedIsInsertedLaterAndTouchesNoOther)
{
    list->addEmptyRow();
    store.runSQL("create trigger refuse before insert on ZNTMudList begin select raise(abort, ''); end");
    list->addEmptyRow();
    list->addEmptyRow();
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
}

TEST_F(ZNTMudListTest, AFilterFindsEachWordInNameAddressOrPort)
{
    ZNTFilteredGames filtered(*list, table);
    const std::pair<std::u16string, std::vector<long>> filters[] = {
        {u"", {0, 1, 2}}, {u" \t ", {0, 1, 2}},  {u"OTHER.ex", {1}}, {u"400", {0, 1}},  {u"23 B", {2}},
        {u"4000 23", {}}, {u"a a.example", {0}}, {u"http", {}},      {u"exampleb", {}}, {u"\xD800", {}},
    };
    for (const auto& [text, expected] : filters) {
        SCOPED_TRACE(testing::PrintToString(text));
        const int timesBefore = table.timesReloaded;
        filtered.setFilter(text);
        EXPECT_EQ(table.timesReloaded, timesBefore + 1);
        std::vector<long> rows;
        for (long row = 0; row < filtered.numberOfShownRows(); ++row)
            rows.push_back(filtered.listRow(row));
        EXPECT_EQ(rows, expected);
    }
    list->tableViewSetObjectValue(u"\u0416ar", "name", 0);
    filtered.setFilter(u"\u0436AR");
    EXPECT_EQ(filtered.numberOfShownRows(), 1);
}

TEST_F(ZNTMudListTest, UnderAFilterEveryOperationMeansTheGameThatIsSeen)
{
    ZNTFilteredGames filtered(*list, table);
    list->set_tableView(&filtered);
    ZNTPlainPanel sheet;
    ZNTPlainTextField host, port, name;
    ZNTMudListController controller(*list, {filtered, sheet, host, port, name});
    filtered.setFilter(u"example");
    list->tableViewSetObjectValue(u"gone", "telnetURL", filtered.listRow(0));
    EXPECT_EQ(filtered.shownRow(1), 1) << "an edited game stays where it is";
    filtered.setFilter(u"example");
    EXPECT_EQ(filtered.shownRow(0), -1);
    controller.showWindow();
    for (const long row : {-1L, 1L}) {
        table.selected = row;
        EXPECT_TRUE(sheet.isShown) << "nothing was picked";
        controller.connectToMud();
    }
    EXPECT_EQ(name.content + u" " + host.content + u" " + port.content, u"b b.example 23");
    EXPECT_FALSE(sheet.isShown);
    table.selected = 0;
    list->deleteSelectedRow();
    EXPECT_THAT(shownHosts(), ElementsAre(u"gone", u"b.example"));
    EXPECT_EQ(filtered.listRow(0), 1);
    for (const long row : {1L, -1L}) { // the last row has gone, and then nothing is selected
        table.selected = row;
        list->deleteSelectedRow();
    }
    EXPECT_EQ(list->numberOfRowsInTableView(), 2);
    list->addEmptyRow();
    EXPECT_EQ(filtered.shownRow(2), -1);
    filtered.setFilter(u"");
    EXPECT_EQ(filtered.listRow(2), 2);
}

} // namespace
