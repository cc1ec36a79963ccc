#include "ZNTDatabaseHelper.h"
#include "ZNTPlainElements.h"
#include "ZNTTestPlatform.h"
#include "ZNTTriggersDataSource.h"

namespace
{

using Value = ZNTTriggersDataSource::Value;

/// An editor with two new rows; the store had `before` triggers.
class TriggersDataSource : public testing::Test
{
protected:
    TriggersDataSource()
    {
        editor.addEmptyRow();
        editor.addEmptyRow();
    }
    std::vector<ZNTTrigger> stored() { return database.loadAllTriggers(); }
    void set(const Value& value, std::string_view column, long row)
    {
        editor.tableViewSetObjectValue(value, column, row);
    }

    ZNTTestPlatform machine;
    ZNTDatabaseHelper database{machine.platform.places, machine.log};
    ZNTPlainTableView table;
    ZNTPlainTextArea pane;
    const std::size_t before = stored().size();
    ZNTTriggersDataSource editor{database, table, pane};
};

TEST_F(TriggersDataSource, ANewRowIsStoredInactiveAndOnlyInThisEditorUntilSwitchedOn)
{
    EXPECT_EQ(stored().size(), before + 2);
    EXPECT_EQ(ZNTTriggersDataSource(database, table, pane).countOfDataObjects(), 0) << "inactive, not loaded";
    set(true, "active", 1);
    const ZNTTriggersDataSource next(database, table, pane);
    ASSERT_EQ(next.countOfDataObjects(), 1);
    EXPECT_EQ(next.getObjectAtIndex(0)->oid, editor.getObjectAtIndex(1)->oid);
}

TEST_F(TriggersDataSource, ACellIsStoredAtOnceAndNonsenseChangesNothing)
{
    set(u"Kick back", "name", 1);
    set(u"ouch.wav", "soundFileToPlay", 1);
    set(true, "gag", 1);
    EXPECT_EQ(table.timesReloaded, 2 + 3) << "for the new rows and for each edit";
    set(true, "name", 1);
    set(u"x", "oid", 1);
    for (const long missing : {-1L, 2L})
        set(u"x", "name", missing);
    EXPECT_EQ(editor.tableViewObjectValueForTableColumn("name", 2), Value(u""));
    EXPECT_EQ(stored().back().name, u"Kick back");
    EXPECT_EQ(stored().back().soundFileToPlay, u"ouch.wav");
    EXPECT_TRUE(stored().back().gag);
}

TEST_F(TriggersDataSource, TheToolTipNamesARowThatIsNotSavedOrRestsAndSavingItChangesNoOther)
{
    set(u"first", "name", 1);
    database.runSQL("create trigger refuse before insert on ZNTTrigger begin select raise(abort, ''); end");
    editor.addEmptyRow();
    editor.addEmptyRow();
    set(u"still nowhere", "name", 2);
    database.runSQL("drop trigger refuse");

    table.selected = 3;
    editor.removeItem();
    EXPECT_EQ(stored().size(), before + 2) << "it never had a row of its own";
    EXPECT_TRUE(editor.tableViewToolTipForRow(2).starts_with(u"Not saved"));
    set(u"second", "name", 2);
    EXPECT_EQ(editor.tableViewToolTipForRow(2) + editor.tableViewToolTipForRow(3), u"");
    editor.isTriggerResting = [this](std::int64_t oid) { return oid == editor.getObjectAtIndex(2)->oid; };
    EXPECT_TRUE(editor.tableViewToolTipForRow(2).starts_with(u"Too slow: "));
    ASSERT_EQ(stored().size(), before + 3);
    EXPECT_EQ(stored()[before + 1].name, u"first");
    EXPECT_EQ(stored()[before + 2].name, u"second");
}

TEST_F(TriggersDataSource, ThePaneShowsTheSelectedTriggerAndIsReadBackOnSave)
{
    pane.content = u"typed before";
    editor.saveToDatabase();
    editor.tableViewSelectionDidChange();
    EXPECT_EQ(pane.content, u"") << "nothing is selected, so nothing was saved";

    table.selected = 1;
    EXPECT_TRUE(editor.tableViewShouldSelectRow(1));
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nkick %1");

    const std::u16string cases[][3] = {{u"look", u"look", u""},    {u"a~~\nb", u"a", u"b"},
                                       {u"a~\nb~\nc", u"a", u"b"}, {u"a\nb~\nc\nd", u"a\nb", u"c\nd"},
                                       {u"~\nb~", u"", u"b~"},     {u"", u"", u""}};
    for (const auto& [shown, check, action] : cases) {
        pane.content = shown;
        editor.saveToDatabase();
        EXPECT_EQ(stored().back().check, check);
        EXPECT_EQ(stored().back().action, action);
    }
    EXPECT_EQ(table.timesReloaded, 2 + 6) << "each save shows its check and its action";
}

TEST_F(TriggersDataSource, ThePaneFollowsACellEditedBesideItUnlessItHoldsUnsavedText)
{
    table.selected = 0;
    editor.insertTriggerText();
    set(u"bow", "action", 0);
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nbow");
    set(u"wave", "action", 1);
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nbow") << "another row";
    editor.saveToDatabase();
    EXPECT_EQ(stored()[before].action, u"bow") << "saving the pane does not undo the edit";

    set(u"look~", "check", 0);
    set(u"sit", "action", 0);
    EXPECT_EQ(pane.content, u"look~~\nsit") << "a pane that is read back in part only is not edited";
    pane.content = u"a long pattern~\nbeing written";
    set(true, "active", 0);
    set(u"kneel", "action", 0);
    EXPECT_EQ(pane.content, u"a long pattern~\nbeing written");
}

TEST_F(TriggersDataSource, RemovingTakesTheSelectedTriggerFromTheStoreAndClearingDoesNot)
{
    editor.addEmptyRow();
    set(u"bow", "action", 2);
    editor.removeItem();
    EXPECT_EQ(editor.countOfDataObjects(), 3) << "nothing is selected";
    table.selected = 1;
    editor.removeItem();
    ASSERT_EQ(editor.countOfDataObjects(), 2);
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nbow") << "the row that is selected now";
    editor.clearMacroList();
    editor.removeItem(); // the table has a selection, but the list has no such row
    EXPECT_EQ(table.timesReloaded, 3 + 3) << "a row less, or none";
    EXPECT_EQ(table.timesEditingAborted, 3) << "else an open editor writes into the row that moves up";
    EXPECT_EQ(stored().size(), before + 2);
}

} // namespace
