#include "ZNTGameSettings.h"
#include "ZNTSessionFixture.h"
#include "ZNTSettingsKeeper.h"

using SessionControls = ZNTSessionFixture;

TEST_F(SessionControls, TheSpeechSwitchesFollowTheStateOfTheirMenuItem)
{
    const auto isSilent = [this] { return session().zntSpeechSynth().isSpeachOn(); };
    for (const int state : {1, 0}) {
        session().setSpeechOnOffBindingState(state);
        session().setSpeechInterruptOnOffBindingState(state);
        EXPECT_EQ(session().settings().speech, state == 1);
        EXPECT_EQ(session().settings().interruption, state == 1);
        session().textToSpeechOnAndOff();
        EXPECT_EQ(isSilent(), state == 0);
        session().shortcutKeySpeechOnAndOff(); // the key acts before the item changes its state
        EXPECT_EQ(isSilent(), state == 1);
    }
}

TEST_F(SessionControls, TheSettingsOfAGameHoldToItsLastWord)
{
    ZNTSettingsKeeper keeper(machine.platform.places, machine.log);
    EXPECT_TRUE(keeper.chooseForGame("mud.example 4000", "full-colours", "on"));
    session();
    whenSessionChanges = [&] { znt::useSettingsOfGame(keeper, session(), u"mud.example", u"4000"); };
    connect();
    receive("So long.\x1b[2K");
    EXPECT_TRUE(session().settings().fullColours);
    server.closeWhenSent();
    settle();
    EXPECT_FALSE(session().settings().fullColours);
    EXPECT_EQ(shown(), u"So long.") << "what was held back is read as the rest was";
}

TEST_F(SessionControls, ADoubleClickSendsTheTextOfTheMacro)
{
    macros.setNewList(
        {{.name = u"greet", .dataToExecute = u"say %1"}, {.name = u"note", .dataToExecute = u"#x"}});
    connect();
    for (const long row : {-1L, 2L, 1L, 0L}) {
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

TEST_F(SessionControls, ARecordingThatRunsIsNotRecordedAndEndsWithItsConnectionOrAStop)
{
    const auto run = [this] {
        return session().runRecording({u"hunt", 2, {u"look", u"!n"}}, ZNTReplay::Times::AgainAndAgain);
    };
    EXPECT_FALSE(run());
    connect();
    session().startOrPauseRecording();
    EXPECT_TRUE(run());
    machine.loop.advance(5);
    EXPECT_EQ(received(), "look\r\nn\r\nlook\r\n");
    EXPECT_TRUE(session().recorder().getACopyOfTheCommands().empty());
    session().stopAllThatRuns();
    EXPECT_TRUE(session().runningRecording().empty() && !session().isWalking());

    EXPECT_TRUE(run());
    session().connectToServer(); // disconnects
    EXPECT_EQ(session().runningRecording(), u"");
    const auto before = shown();
    connect();
    machine.loop.advance(10);
    EXPECT_EQ(shown(), before);
}
