#include "ZNTDatabaseHelper.h"
#include "ZNTPlainElements.h"
#include "ZNTTestPlatform.h"
#include "ZNTTriggersDataSource.h"

#include <gtest/gtest.h>

namespace
{

std::u16string text(const ZNTTriggersDataSource::Value& value) { return std::get<std::u16string>(value); }

class TriggersDataSource : public testing::Test
{
protected:
    std::vector<ZNTTrigger> stored() { return database.loadAllTriggers(); }

    ZNTTestPlatform machine;
    ZNTDatabaseHelper database{machine.platform.places, machine.log};
    ZNTPlainTableView table;
    ZNTPlainTextArea pane;
    ZNTTriggersDataSource editor{database, table, pane};
};

TEST_F(TriggersDataSource, ANewRowIsStoredInactiveAndOnlyInThisEditorUntilSwitchedOn)
{
    const auto before = stored().size();
    editor.addEmptyRow();
    ASSERT_EQ(editor.countOfDataObjects(), 1);
    EXPECT_EQ(table.timesReloaded, 1);
    EXPECT_EQ(table.timesScrolledToEnd, 1);
    EXPECT_EQ(text(editor.tableViewObjectValueForTableColumn("name", 0)), u"Change Me");
    EXPECT_EQ(text(editor.tableViewObjectValueForTableColumn("check", 0)), u"A %1 kicks you hard!");
    EXPECT_EQ(text(editor.tableViewObjectValueForTableColumn("action", 0)), u"kick %1");
    EXPECT_EQ(text(editor.tableViewObjectValueForTableColumn("soundFileToPlay", 0)), u"");
    EXPECT_FALSE(std::get<bool>(editor.tableViewObjectValueForTableColumn("gag", 0)));
    EXPECT_EQ(stored().size(), before + 1);

    ZNTTriggersDataSource second(database, table, pane);
    EXPECT_EQ(second.countOfDataObjects(), 0) << "inactive, so not loaded";
    editor.tableViewSetObjectValue(true, "active", 0);
    ZNTTriggersDataSource third(database, table, pane);
    ASSERT_EQ(third.countOfDataObjects(), 1);
    EXPECT_EQ(third.getObjectAtIndex(0)->oid, editor.getObjectAtIndex(0)->oid);
}

TEST_F(TriggersDataSource, ACellIsStoredAtOnceAndNonsenseChangesNothing)
{
    editor.addEmptyRow();
    editor.addEmptyRow();
    editor.tableViewSetObjectValue(u"Kick back", "name", 1);
    editor.tableViewSetObjectValue(u"ouch.wav", "soundFileToPlay", 1);
    editor.tableViewSetObjectValue(true, "gag", 1);
    const auto changed = stored().back();
    EXPECT_EQ(changed.name, u"Kick back");
    EXPECT_EQ(changed.soundFileToPlay, u"ouch.wav");
    EXPECT_TRUE(changed.gag);
    EXPECT_EQ(table.timesReloaded, 5);

    editor.tableViewSetObjectValue(true, "name", 1);
    editor.tableViewSetObjectValue(u"x", "oid", 1);
    editor.tableViewSetObjectValue(u"x", "name", 2);
    editor.tableViewSetObjectValue(u"x", "name", -1);
    EXPECT_EQ(stored().back().name, u"Kick back");
    EXPECT_EQ(text(editor.tableViewObjectValueForTableColumn("name", 2)), u"");
    EXPECT_EQ(table.timesReloaded, 5);
}

TEST_F(TriggersDataSource, ARowWhoseInsertFailedIsInsertedLaterAndTouchesNoOther)
{
    editor.addEmptyRow();
    editor.tableViewSetObjectValue(u"first", "name", 0);
    const auto before = stored().size();
    database.runSQL("create trigger refuse before insert on ZNTTrigger begin select raise(abort, ''); end");
    editor.addEmptyRow();
    editor.addEmptyRow();
    editor.tableViewSetObjectValue(u"still nowhere", "name", 1);
    EXPECT_EQ(editor.countOfDataObjects(), 3) << "shown all the same";
    database.runSQL("drop trigger refuse");

    table.selected = 2;
    editor.removeItem();
    EXPECT_EQ(stored().size(), before) << "a row of its own was never there";
    EXPECT_TRUE(editor.tableViewToolTipForRow(1).starts_with(u"Not saved"));
    editor.tableViewSetObjectValue(u"second", "name", 1);
    EXPECT_EQ(editor.tableViewToolTipForRow(1) + editor.tableViewToolTipForRow(2), u"");
    editor.tableViewSetObjectValue(true, "gag", 1);
    ASSERT_EQ(stored().size(), before + 1);
    EXPECT_EQ(stored()[before - 1].name, u"first");
    EXPECT_EQ(stored()[before].name, u"second");
    EXPECT_TRUE(stored()[before].gag) << "and an edit after that changes its row";
}

TEST_F(TriggersDataSource, ThePaneShowsTheSelectedTriggerAndIsReadBackOnSave)
{
    editor.addEmptyRow();
    pane.content = u"typed before";
    editor.saveToDatabase();
    EXPECT_EQ(stored().back().check, u"A %1 kicks you hard!") << "without a selection nothing is saved";
    editor.tableViewSelectionDidChange();
    EXPECT_EQ(pane.content, u"");

    table.selected = 0;
    EXPECT_TRUE(editor.tableViewShouldSelectRow(0));
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nkick %1");

    struct Case {
        std::u16string pane, check, action;
    };
    const Case cases[] = {{u"look~\nsay hi", u"look", u"say hi"},
                          {u"look~", u"look", u""},
                          {u"look", u"look", u""},
                          {u"a~~\nb", u"a", u"b"},
                          {u"a~\nb~\nc", u"a", u"b"},
                          {u"a\nb~\nc\nd", u"a\nb", u"c\nd"},
                          {u"~\nb~", u"", u"b~"},
                          {u"", u"", u""}};
    for (const auto& row : cases) {
        pane.content = row.pane;
        editor.saveToDatabase();
        EXPECT_EQ(stored().back().check, row.check);
        EXPECT_EQ(stored().back().action, row.action);
    }
}

TEST_F(TriggersDataSource, ThePaneFollowsACellEditedBesideItUnlessItHoldsUnsavedText)
{
    editor.addEmptyRow();
    editor.addEmptyRow();
    table.selected = 0;
    editor.insertTriggerText();
    editor.tableViewSetObjectValue(u"bow", "action", 0);
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nbow");
    editor.tableViewSetObjectValue(u"wave", "action", 1);
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nbow") << "another row";
    editor.saveToDatabase();
    EXPECT_EQ(stored().front().action, u"bow") << "saving the pane does not undo the edit";

    editor.tableViewSetObjectValue(u"look~", "check", 0);
    editor.tableViewSetObjectValue(u"sit", "action", 0);
    EXPECT_EQ(pane.content, u"look~~\nsit")
        << "a pane that shows what would be read back in part is not edited";

    pane.content = u"a long pattern~\nbeing written";
    editor.tableViewSetObjectValue(true, "active", 0);
    editor.tableViewSetObjectValue(u"kneel", "action", 0);
    EXPECT_EQ(pane.content, u"a long pattern~\nbeing written");
}

TEST_F(TriggersDataSource, ARecordThatWasNeverStoredIsInsertedOnSave)
{
    ZNTTrigger fresh;
    fresh.oid = -1;
    editor.addObjectToList(fresh);
    table.selected = 0;
    pane.content = u"look~\nsay hi";
    const auto before = stored().size();
    editor.saveToDatabase();
    ASSERT_EQ(stored().size(), before + 1);
    EXPECT_EQ(stored().back().check, u"look");
    EXPECT_EQ(editor.getObjectAtIndex(0)->oid, stored().back().oid);
    editor.saveToDatabase();
    EXPECT_EQ(stored().size(), before + 1);
}

TEST_F(TriggersDataSource, ATriggerThatRestsSaysSoInItsToolTip)
{
    editor.addEmptyRow();
    editor.addEmptyRow();
    EXPECT_EQ(editor.tableViewToolTipForRow(1), u"");
    const auto resting = editor.getObjectAtIndex(1)->oid;
    editor.isTriggerResting = [resting](std::int64_t oid) { return oid == resting; };
    EXPECT_EQ(editor.tableViewToolTipForRow(0), u"");
    EXPECT_TRUE(editor.tableViewToolTipForRow(1).starts_with(u"Too slow: "));
    EXPECT_EQ(editor.tableViewToolTipForRow(2), u"");
}

TEST_F(TriggersDataSource, RemovingTakesTheSelectedTriggerFromTheStoreAndClearingDoesNot)
{
    const auto before = stored().size();
    for (int row = 0; row < 3; ++row)
        editor.addEmptyRow();
    const auto last = editor.getObjectAtIndex(2)->oid;
    editor.tableViewSetObjectValue(u"bow", "action", 2);
    editor.removeItem();
    EXPECT_EQ(editor.countOfDataObjects(), 3) << "nothing is selected";
    table.selected = 1;
    editor.removeItem();
    EXPECT_EQ(table.timesEditingAborted, 2);
    EXPECT_EQ(stored().size(), before + 2);
    ASSERT_EQ(editor.countOfDataObjects(), 2);
    EXPECT_EQ(editor.getObjectAtIndex(1)->oid, last);
    EXPECT_EQ(pane.content, u"A %1 kicks you hard!~\nbow") << "else saving gave it the removed one's text";
    editor.clearMacroList();
    EXPECT_EQ(editor.countOfDataObjects(), 0);
    EXPECT_EQ(stored().size(), before + 2);
    editor.removeItem();
    EXPECT_EQ(stored().size(), before + 2) << "the table still has a selection, the list no such row";
}

} // namespace
