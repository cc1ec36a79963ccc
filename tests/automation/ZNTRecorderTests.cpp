#include "ZNTCommandRecorderView.h"
#include "ZNTPlainElements.h"
#include "ZNTRecorder.h"
#include "ZNTTestPlatform.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ZNTRecorderStates, OnlyWhatIsSentWhileRecordingIsKept)
{
    ZNTRecorder recorder;
    EXPECT_EQ(recorder._recorderState(), 4);
    recorder.addCommand(u"fresh");
    recorder.startOrPauseRecording();
    EXPECT_EQ(recorder._recorderState(), 1);
    recorder.addCommand(u"north");
    recorder.addCommand(u"");
    recorder.startOrPauseRecording();
    EXPECT_EQ(recorder._recorderState(), 2);
    recorder.addCommand(u"paused");
    recorder.startOrPauseRecording();
    recorder.addCommand(u"north");
    recorder.doneRecording();
    EXPECT_EQ(recorder._recorderState(), 0);
    recorder.addCommand(u"finished");
    EXPECT_THAT(recorder.getACopyOfTheCommands(), ElementsAre(u"north", u"", u"north"));

    recorder.startOrPauseRecording();
    EXPECT_EQ(recorder._recorderState(), 1);
    recorder.addCommand(u"south");
    EXPECT_THAT(recorder.getACopyOfTheCommands(), ElementsAre(u"north", u"", u"north", u"south"))
        << "starting again goes on with the list that is there";
    recorder.removeCommand(u"north");
    EXPECT_THAT(recorder.getACopyOfTheCommands(), ElementsAre(u"", u"south")) << "every equal entry";
    recorder.clearCommandsList();
    EXPECT_THAT(recorder.getACopyOfTheCommands(), IsEmpty());
    EXPECT_EQ(recorder._recorderState(), 1);
}

TEST(ZNTRecorderStates, FinishingEndsInTheSameStateFromEach)
{
    for (const int state : {0, 1, 2, 4}) {
        ZNTRecorder recorder;
        recorder.set_recorderState(state);
        recorder.startOrPauseRecording(); // as the finish button does
        recorder.doneRecording();
        EXPECT_EQ(recorder._recorderState(), 0) << "from " << state;
    }
    ZNTRecorder recorder;
    recorder.set_recorderState(3);
    recorder.startOrPauseRecording();
    EXPECT_EQ(recorder._recorderState(), 3) << "not a state of ours";
}

TEST(ZNTRecorderStates, AResetDropsTheListForANewOne)
{
    ZNTRecorder recorder;
    recorder.startOrPauseRecording();
    recorder.addCommand(u"north");
    recorder.resetRecorder();
    EXPECT_EQ(recorder._recorderState(), 4);
    EXPECT_THAT(recorder.getACopyOfTheCommands(), IsEmpty());
}

class ZNTRecorderSheet : public testing::Test
{
protected:
    ZNTRecorderSheet()
    {
        recorder.startOrPauseRecording();
        for (const auto* command : {u"open door", u"north", u"north"})
            recorder.addCommand(command);
    }
    std::vector<std::u16string> recorded() const { return recorder.getACopyOfTheCommands(); }

    ZNTRecorder recorder;
    ZNTRecordedLog log;
    ZNTPlainTableView table;
    ZNTPlainTextField name, seconds;
    ZNTPlainPanel panel;
    ZNTCommandRecorderView sheet{{table, name, seconds, panel}, log};
};

TEST_F(ZNTRecorderSheet, EditsTheVeryListThatTheRecorderFills)
{
    sheet.set_theDataSource(recorder._textRecorderBean());
    EXPECT_EQ(table.timesReloaded, 1);
    sheet.addEmptyRow();
    EXPECT_THAT(recorded(), ElementsAre(u"open door", u"north", u"north", u"New Command"));
    EXPECT_EQ(table.timesScrolledToEnd, 1);
    auto& rows = *sheet._theDataSource();
    rows.tableViewSetObjectValue(u"east", 3);
    rows.tableViewSetObjectValue(u"lost", 4);
    rows.tableViewSetObjectValue(u"lost", -1);
    EXPECT_EQ(rows.tableViewObjectValue(3), u"east");
    EXPECT_EQ(rows.tableViewObjectValue(4), u"");
    EXPECT_EQ(rows.numberOfRowsInTableView(), 4);

    table.selected = 1;
    sheet.removeItem();
    EXPECT_THAT(recorded(), ElementsAre(u"open door", u"north", u"east"))
        << "that row, not all that equal it";
    table.selected = -1;
    sheet.removeItem();
    EXPECT_EQ(recorded().size(), 3u);
    EXPECT_EQ(table.timesEditingAborted, 2);

    const int reloads = table.timesReloaded;
    recorder.addCommand(u"typed while the sheet is open");
    EXPECT_EQ(table.timesReloaded, reloads + 1);
    EXPECT_EQ(recorded().size(), 4u);
    sheet.clearList();
    EXPECT_THAT(recorded(), IsEmpty());
}

TEST_F(ZNTRecorderSheet, SavingLogsTheRecordAndEmptiesListAndRecord)
{
    sheet.set_theDataSource(recorder._textRecorderBean());
    sheet.showWindow();
    const std::vector<std::pair<std::u16string, std::string>> table{
        {u"12 seconds", "12"}, {u"soon", "0"}, {u"", "0"}, {u"-1", "-1"}, {u"99999999999", "2147483647"}};
    for (const auto& [typed, logged] : table) {
        SCOPED_TRACE(logged);
        recorder.clearCommandsList();
        recorder.addCommand(u"open door");
        recorder.addCommand(u"");
        name.content = u"小路";
        seconds.content = typed;
        sheet.saveToDatabase();
        EXPECT_EQ(log.lines.back(),
                  "OBJ: OID: 0, NAME: 小路, COMMANDS: (open door, ), SECONDS BETWEEN COMMANDS: " + logged);
        EXPECT_EQ(sheet._autoCommands()._name, u"小路");
        EXPECT_EQ(std::to_string(sheet._autoCommands()._secondsBetweenSendingCommand), logged);
        EXPECT_THAT(recorded(), IsEmpty());
        EXPECT_THAT(*sheet._autoCommands()._commands, IsEmpty()) << "they are one list";
    }
    EXPECT_EQ(log.lines.size(), table.size());
    EXPECT_TRUE(panel.isShown) << "saving leaves the sheet open";
    recorder.addCommand(u"later");
    sheet.cancelEditing();
    EXPECT_FALSE(panel.isShown);
    EXPECT_THAT(recorded(), ElementsAre(u"later")) << "and closing keeps the list";
}

TEST_F(ZNTRecorderSheet, ShowsAnExistingRecord)
{
    ZNTAutoCommands record;
    record._oid = 5;
    record._commands->push_back(u"wave");
    sheet.set_theDataSource(recorder._textRecorderBean());
    sheet.buildUIFromDatabaseObjectForUpdate(record);
    sheet.addEmptyRow();
    EXPECT_THAT(*record._commands, ElementsAre(u"wave", u"New Command"));
    sheet.saveToDatabase();
    EXPECT_THAT(log.lines.back(), testing::StartsWith("OBJ: OID: 5, NAME: , COMMANDS: (wave, New Command)"));
}

} // namespace
