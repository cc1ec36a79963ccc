#include "ZNTSessionFixture.h"

using SessionControls = ZNTSessionFixture;

TEST_F(SessionControls, ANewFontIsForLaterTextAndAClearedViewIsEmpty)
{
    const auto fontOf = [](const auto& piece) { return std::get<ZNTFont>(piece.attributesAt(0)->font); };
    connect();
    receive("before\xFF\xF9");
    session().changeFont({u"Hack", 20});
    receive("after\xFF\xF9");
    EXPECT_EQ(fontOf(view.pieces.front()), (ZNTFont{u"Menlo", 12}));
    EXPECT_EQ(fontOf(view.pieces.back()), (ZNTFont{u"Hack", 20}));
    session().clearScreen();
    EXPECT_EQ(shown(), u"");
}

TEST_F(SessionControls, TheSpeechSwitchesFollowTheStateOfTheirMenuItem)
{
    const auto isSilent = [this] { return session().zntSpeechSynth().isSpeachOn(); };
    session().setSpeechOnOffBindingState(1);
    session().textToSpeechOnAndOff();
    EXPECT_FALSE(isSilent());
    session().shortcutKeySpeechOnAndOff(); // the key acts before the item changes its state
    EXPECT_TRUE(isSilent());
    session().setSpeechOnOffBindingState(0);
    session().shortcutKeySpeechOnAndOff();
    EXPECT_FALSE(isSilent());
    session().textToSpeechOnAndOff();
    EXPECT_TRUE(isSilent());
}

TEST_F(SessionControls, TheRecorderNotesTypedAndResentLinesAndOpensItsSheetWhenDone)
{
    connect();
    type(u"before");
    session().startOrPauseRecording();
    type(u"north");
    session().resendLastCommand();
    session().sendEastToServer(); // a button is not typed
    session().doneRecording();
    type(u"behind");
    EXPECT_EQ(session().recorder().getACopyOfTheCommands(),
              (std::vector<std::u16string>{u"north", u"north"}));
    EXPECT_EQ(timesRecorderSheetShown, 1);
}

TEST_F(SessionControls, ADoubleClickSendsTheTextOfTheMacroWhileConnected)
{
    macros.setNewList(
        {{.name = u"greet", .dataToExecute = u"say %1"}, {.name = u"note", .dataToExecute = u"#x"}});
    macroTable.selected = 0;
    session().invokeMacro();
    EXPECT_EQ(shown(), u"") << "not connected";
    connect();
    for (const long row : {-1L, 2L, 3L, 1L, 0L}) {
        macroTable.selected = row;
        session().invokeMacro();
    }
    EXPECT_EQ(received(), "say %1\r\n");
}

TEST_F(SessionControls, MacroNamesAreListedEachInItsOwnFrameAndInterruptSpeechWithoutAPauseAndAreNotSent)
{
    ZNTMacroGroup group;
    database.insertMacroGroup(group);
    for (const auto* name : {u"greet", u"kick"}) {
        ZNTMacro macro{.groupOid = group.oid, .name = name, .dataToExecute = u"say hello"};
        database.insertMacroSetWithMacroGroup(macro);
    }
    connect();
    session().setSpeechInterruptOnOffBindingState(1);
    session().sendMessageToServer(u"~list-macro", false);
    EXPECT_EQ(received(), "");
    EXPECT_EQ(shown(), u"Macro Names\rgreet\rEnd of Macro Names\rMacro Names\rkick\rEnd of Macro Names\r");
    EXPECT_EQ(speech.timesStopped, 6);
    EXPECT_TRUE(machine.loop.slept.empty());
}
