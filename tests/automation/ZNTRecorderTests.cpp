#include "ZNTCommandRecorderView.h"
#include "ZNTPlainElements.h"
#include "ZNTRecorder.h"
#include "ZNTTestPlatform.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ZNTRecorderTest : public testing::Test
{
protected:
    void record(std::initializer_list<const char16_t*> commands)
    {
        for (const auto* command : commands)
            recorder.addCommand(command);
    }
    std::vector<std::u16string> recorded() const { return recorder.getACopyOfTheCommands(); }
    /// The recorder's list in the sheet, with three commands.
    void showSheet()
    {
        recorder.startOrPauseRecording();
        record({u"open door", u"north", u"north"});
        sheet.set_theDataSource(recorder._textRecorderBean());
        sheet.showWindow();
    }

    ZNTRecorder recorder;
    ZNTRecordedLog log;
    ZNTPlainTableView table;
    ZNTPlainTextField name, seconds;
    ZNTPlainPanel panel;
    ZNTCommandRecorderView sheet{{table, name, seconds, panel}, log};
};

TEST_F(ZNTRecorderTest, OnlyCommandsSentWhileRecordingAreKept)
{
    for (int press = 0; press < 4; ++press) { // fresh, then started, paused and started again
        record({u"north", u""});
        recorder.startOrPauseRecording();
    }
    recorder.doneRecording();
    record({u"finished"});
    EXPECT_THAT(recorded(), ElementsAre(u"north", u"", u"north", u""));

    recorder.startOrPauseRecording();
    record({u"south"});
    recorder.removeCommand(u"north"); // each of them
    EXPECT_THAT(recorded(), ElementsAre(u"", u"", u"south")) << "the list goes on";
}

TEST_F(ZNTRecorderTest, TheSheetEditsTheListThatTheRecorderFills)
{
    showSheet();
    sheet.addEmptyRow();
    auto& rows = *sheet._theDataSource();
    for (const long missing : {-1L, 4L}) {
        rows.tableViewSetObjectValue(u"lost", missing);
        EXPECT_EQ(rows.tableViewObjectValue(missing), u"");
    }
    rows.tableViewSetObjectValue(u"east", 3);
    for (const long row : {1L, -1L}) {
        table.selected = row;
        sheet.removeItem();
        EXPECT_THAT(recorded(), ElementsAre(u"open door", u"north", u"east")) << "that row alone";
    }
    EXPECT_EQ(table.timesEditingAborted, 2) << "else an open editor writes into the row that moves up";
    record({u"typed while the sheet is open"});
    sheet.clearList();
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_EQ(table.timesReloaded, 5) << "for the list and its four changes";
    ZNTAutoCommands stored;
    stored._commands->emplace_back(u"stored");
    sheet.buildUIFromDatabaseObjectForUpdate(stored);
    EXPECT_THAT(recorded(), ElementsAre(u"stored"));
}

TEST_F(ZNTRecorderTest, SavingLogsTheRecordAndEmptiesTheList)
{
    showSheet();
    name.content = u"小路";
    recorder.clearCommandsList();
    record({u"open door", u""});
    seconds.content = u"12 seconds";
    sheet.saveToDatabase();
    EXPECT_EQ(log.lines.back(),
              "OBJ: OID: 0, NAME: 小路, COMMANDS: (open door, ), SECONDS BETWEEN COMMANDS: 12");
    EXPECT_THAT(recorded(), IsEmpty());
    EXPECT_TRUE(panel.isShown) << "saving leaves the sheet open";
}

} // namespace
