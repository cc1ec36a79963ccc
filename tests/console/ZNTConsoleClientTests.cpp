#include "ZNTConsoleFixture.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

using ZNTConsoleClientTest = ZNTConsoleFixture;

TEST_F(ZNTConsoleClientTest, AScriptWaitsForTheConnectionAndThenForEachAnswer)
{
    startConnected();
    for (const char* line : {"look", "north", "//slash"})
        type(line);
    endInput();
    EXPECT_EQ(received(), "") << "the greeting is read first";
    receive("Welcome\r\n> ");
    machine.loop.advance(0.3);
    EXPECT_EQ(server.received(), "look\r\n") << "not answered yet";
    receive("A square\r\n> ");
    EXPECT_EQ(server.received(), "look\r\nnorth\r\n");
    silence(); // the game has nothing to say to it
    EXPECT_EQ(server.received(), "look\r\nnorth\r\n/slash\r\n");
    server.send("The end");
    settle();
    EXPECT_THAT(exitCodes, IsEmpty()) << "held back until a silence";
    silence();
    EXPECT_THAT(exitCodes, ElementsAre(0));
    EXPECT_EQ(output, "Welcome\n> look\nA square\n> north\n/slash\nThe end");
}

TEST_F(ZNTConsoleClientTest, LinesToTheGameLeaveBeforeAnythingIsShownOfThem)
{
    startConnected(From::Terminal);
    type("/trigger add Kick: A %1 kicks you => kick %1");
    consoleOutput.catchUp();

    std::string sent = "kick goblin\r\nkick troll\r\n";
    sink.beforeWriting = [&](std::string_view) { EXPECT_EQ(server.received(), sent); };
    receive("A goblin kicks you. A troll kicks you.");
    EXPECT_THAT(output, EndsWith("A troll kicks you."));
    sent += "look\r\n";
    type("look");
    consoleOutput.catchUp();
    EXPECT_THAT(output, EndsWith("look\n"));
    type("/trigger off Kick");
    receive("A goblin kicks you.");
    type("/trigger on Kick");
    consoleOutput.catchUp();
    sent += "kick bat\r\n";
    receive("A bat kicks you.");
    EXPECT_EQ(received(), sent);
}

TEST_F(ZNTConsoleClientTest, WhileTheTerminalIsFullTheGameWaitsAndTypedLinesLeave)
{
    startConnected(From::Terminal);
    sink.isFullNow = true;
    receive("One.");
    receive("Two.");
    silence();
    EXPECT_THAT(output, EndsWith("One.")) << "the rest is left to the network";
    type("look");
    EXPECT_EQ(received(), "look\r\n");
    sink.isFullNow = false;
    sink.roomAgain();
    settle();
    EXPECT_THAT(output, EndsWith("look\nTwo."));
}

TEST_F(ZNTConsoleClientTest, AWalkIsFinishedBeforeAScriptEnds)
{
    startConnected();
    silence();
    type("!2n");
    endInput();
    machine.loop.advance(2.5);
    EXPECT_EQ(server.received(), "n\r\nn\r\n");
    machine.loop.advance(1.5);
    EXPECT_THAT(exitCodes, ElementsAre(0));
}

TEST_F(ZNTConsoleClientTest, LinesOnATerminalGoOutAtOnceAndCommandsDoNotWaitForTheConnection)
{
    start(From::Terminal);
    type("look");
    EXPECT_THAT(machine.log.lines.back(), EndsWith("Not connected, so this was not sent: look"));
    type("/connect 127.0.0.1 4000");
    type("look");
    type("/encoding utf-8");
    EXPECT_EQ(client->session().cfStringEncoding(), ZNTStringEncoding::Utf8);
    waitForConnection();
    type("north");
    EXPECT_EQ(received(), "look\r\nnorth\r\n");
    EXPECT_THAT(answerTo("/connect mud.example 4000"), ElementsAre(HasSubstr("a connection already")));
    type("/disconnect");
    settle();
    type("/connect"); // the same game again, not the one that was refused
    waitForConnection();
}

TEST_F(ZNTConsoleClientTest, TheGamesLastWordsComeBeforeTheAlertThatItIsGone)
{
    machine.alert.whenShown = [this](std::u16string_view) { consoleOutput.write("[gone]"); };
    for (const auto& [next, expected] :
         {std::pair{"", "Goodbye.[gone]"}, {"/quit", "Goodbye.[gone]"}, {"/connect", "[gone]"}}) {
        SCOPED_TRACE(next);
        output.clear();
        startConnected(From::Terminal);
        silence();
        server.send("Goodbye.");
        server.closeWhenSent();
        settle();
        EXPECT_EQ(output, "") << "the game's words wait for a silence";
        if (*next)
            type(next);
        else
            silence();
        settle();
        EXPECT_EQ(output, expected);
    }
    EXPECT_THAT(exitCodes, ElementsAre(0)) << "of the one that was told to quit";
    EXPECT_EQ(outputAtExit, "Goodbye.[gone]");
    receive(" Welcome back.");
    EXPECT_THAT(output, EndsWith("Goodbye. Welcome back."));
}

TEST_F(ZNTConsoleClientTest, LinesThatCannotBeSentMakeTheExitCodeOne)
{
    start();
    type("look");
    endInput();
    settle();
    EXPECT_THAT(exitCodes, ElementsAre(1));
}

TEST_F(ZNTConsoleClientTest, TheDemoGameIsStartedBeforeAScriptIsReadAndTheClientEndsWithoutIt)
{
    ZNTConsoleOptions demo;
    demo.demo = true;
    machine.home.write("demo", "#!/bin/sh\necho listening on 127.0.0.1 4000\nread end\n");
    ASSERT_EQ(::chmod(machine.home.path("demo").c_str(), 0700), 0);
    start(From::Script, demo);
    type("look");
    const auto isOver = [this] { return client->session().isConnected() || !exitCodes.empty(); };
    machine.loop.runUntil(isOver);
    receive("> ");
    EXPECT_EQ(received(), "look\r\n");

    machine.home.write("demo", "");
    start(From::Script, demo);
    type("look");
    machine.loop.runUntil(isOver);
    EXPECT_THAT(exitCodes, ElementsAre(1));
    EXPECT_THAT(machine.log.lines.back(), HasSubstr("The demo game could not be started"));
}

TEST_F(ZNTConsoleClientTest, AScriptEndsWithTheGameThatEnds)
{
    startConnected();
    type("look");
    type("north");
    receive("Bye.");
    server.closeWhenSent();
    silence();
    EXPECT_THAT(machine.log.lines.back(), EndsWith("Not connected, so this was not sent: north"));
    EXPECT_THAT(exitCodes, IsEmpty()) << "more lines may come";
    endInput();
    settle();
    EXPECT_THAT(exitCodes, ElementsAre(1));
}

TEST_F(ZNTConsoleClientTest, AScriptWaitsForThePromptAlsoIfLinesAreShownAtOnce)
{
    start();
    type("/set standard-telnet on");
    type("/connect 127.0.0.1 4000");
    type("Ash");
    waitForConnection();
    const auto come = [this](const char* text) {
        server.send(text);
        settle();
        return server.received().find("Ash") != std::string::npos;
    };
    EXPECT_FALSE(come("Welcome.\r\n"));
    EXPECT_TRUE(come("Name: \xff\xf9"));
    type("look");
    come("You see nothing.\r\n");
    EXPECT_THAT(server.received(), testing::Not(HasSubstr("look")));
    machine.loop.advance(1);
    EXPECT_THAT(server.received(), HasSubstr("look")) << "no prompt came";
}

TEST_F(ZNTConsoleClientTest, AScriptMayGoFromOneGameToTheNext)
{
    startConnected();
    for (const char* line : {"/disconnect", "/connect 127.0.0.1 4000", "look"})
        type(line);
    endInput();
    machine.loop.advance(1);
    EXPECT_EQ(server.clientsAccepted(), 2);
    EXPECT_EQ(server.received(), "look\r\n");
    silence();
    EXPECT_THAT(exitCodes, ElementsAre(0));
}

TEST_F(ZNTConsoleClientTest, ThePlayerEndsAttemptsWalksAndSounds)
{
    start(From::Terminal);
    type("/connect 127.0.0.1 4000");
    EXPECT_THAT(answerTo("/disconnect"), ElementsAre("The attempt to connect is given up."));
    silence();
    EXPECT_EQ(client->session().state(), ZNTSessionState::Idle);

    type("/connect");
    waitForConnection();
    type("!2n");
    type("/stop");
    sounds.soundFromUrl("a sound")->play();
    EXPECT_THAT(answerTo("/quiet"), IsEmpty());
    EXPECT_FALSE(sounds.isPlaying());
    machine.loop.advance(4);
    EXPECT_EQ(server.received(), "");
}

TEST_F(ZNTConsoleClientTest, TheRecorderShowsItsLinesAlsoWithoutAConnectionAndNamesThem)
{
    startConnected(From::Terminal);
    type("look");
    EXPECT_THAT(answerTo("/record"), ElementsAre("Recording."));
    type("/disconnect");
    EXPECT_THAT(answerTo("/resend"), ElementsAre("look", "! Not connected"));
    EXPECT_THAT(answerTo("/record"), ElementsAre("Recording is paused.", "! Not connected"));
    EXPECT_THAT(answerTo("/record done ways 2"),
                ElementsAre("  look", testing::ContainsRegex("! OBJ: .*ways"), "! Not connected"));
}

TEST_F(ZNTConsoleClientTest, AnEndlessScriptIsReadNoFasterThanItIsSent)
{
    startConnected();
    for (std::size_t line = 0; line < ZNTConsoleScript::mostWaitingLines; ++line)
        type("look");
    EXPECT_TRUE(input.isPaused);
    receive("> ");
    EXPECT_FALSE(input.isPaused);
}

TEST_F(ZNTConsoleClientTest, TheManualIsWhereTheClientSaysItIs)
{
    start(From::Terminal);
    EXPECT_THAT(answerTo("/manual"), ElementsAre(testing::StartsWith("The manual is /")));
}

TEST_F(ZNTConsoleClientTest, WrongCommandsAreAnsweredWithASentence)
{
    start(From::Terminal);
    const std::pair<const char*, const char*> cases[] = {
        {"/xyzzy", "! There is no command /xyzzy"},
        {"/re", "! /re could be /replay, /reload, /resend or /record."},
        {"/mu", "! /mu could be /mute, /mud or /muds."},
        {"/dis", "! There is no connection."},
        {"/stop", "! There is no walk"},
        {"/quiet", "! There is no sound"},
        {"/help qu", "! There is no command /qu"},
        {"/connect", "! Name a game"},
        {"/connect mud.example 65536", "! Name a host and a port"},
        {"/msp maybe", "! Say on or off"},
        {"/volume 101", "! Say how loud"},
        {"/say x", "! Say how many lines"},
        {"/history", "! The channel history is off. The setting channel-history"},
    };
    for (const auto& [command, answer] : cases)
        EXPECT_THAT(answerTo(command), ElementsAre(testing::StartsWith(answer))) << command;
    EXPECT_THAT(answerTo("/volume 0"), IsEmpty());
    const auto settings = answerTo("/set");
    EXPECT_THAT(settings.front(), testing::StartsWith("encoding = "));
    EXPECT_THAT(settings.back(), testing::StartsWith("remember = "));
    EXPECT_EQ(sounds.masterVolume(), 0);
}

TEST_F(ZNTConsoleClientTest, TheLastLinesOfAChannelAreShownWithTheirAge)
{
    startConnected(From::Terminal);
    type("/set channel-history on");
    type("/set channels a b: b:; tells: tells you; 7: never");
    receive("Bob tells you, one\r\nBob tells you, b: two\r\n");
    const auto one = "tells, just now: Bob tells you, one", two = "tells, just now: Bob tells you, b: two";
    EXPECT_THAT(answerTo("/history Tells 5"), ElementsAre(one, two));
    EXPECT_THAT(answerTo("/history tells 1"), ElementsAre(two));
    EXPECT_THAT(answerTo("/history a b"), ElementsAre("a b, just now: Bob tells you, b: two"));
    EXPECT_THAT(answerTo("/history 2"), ElementsAre(one, "a b, just now: Bob tells you, b: two"));
    EXPECT_THAT(answerTo("/history 7"), ElementsAre(HasSubstr("no line yet")));
    EXPECT_THAT(answerTo("/history tells 0"),
                ElementsAre("! There is no channel tells 0. The setting channels lists them."));
    EXPECT_THAT(answerTo("/set urgent-lines"), ElementsAre(testing::StartsWith("urgent-lines = (nothing)")));
}

TEST_F(ZNTConsoleClientTest, WhatWasSaidIsSaidAgain)
{
    startConnected(From::Terminal);
    type("/speech on");
    type("look");
    receive("A goblin comes.\r\nA goblin waves.\r\nA troll leaves.\r\n");
    ASSERT_TRUE(machine.loop.runUntil([this] { // the text is handed over on a thread of its own
        machine.loop.advance(10);
        return !speech.said.empty() && speech.said.back().ends_with("A troll leaves.");
    }));
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"/say 2", {"A troll leaves.", "A goblin waves."}},
        {"/say", {"A troll leaves."}},
        {"/say find goblin", {"2 of 2, A goblin waves."}},
        {"/say find goblin", {"1 of 2, A goblin comes."}},
        {"/say find Troll", {"1 of 1, A troll leaves."}},
        {"/say command", {"look"}},
        {"/speech off", {}},
    };
    for (const auto& [command, said] : rows) {
        speech.said.clear();
        type(command);
        machine.loop.advance(1);
        EXPECT_EQ(speech.said, said) << command;
    }
}

TEST_F(ZNTConsoleClientTest, TabOffersTheGamesLastWordsAndTheMacros)
{
    startConnected(From::Terminal);
    type("/group add mine");
    type("/macro add wanton kick");
    receive("A wandering wanderer.\r\n" + std::string(1'000'000, '-') + "A wander.\r\n> ");
    const auto after = [this](std::string_view typed) { return input.handlers.complete(typed).value_or(""); };
    EXPECT_EQ(after("say \xC3\xA9 wan"), "say \xC3\xA9 wander");
    EXPECT_EQ(after("say \xC3\xA9 wander"), "say \xC3\xA9 wanton");
    EXPECT_EQ(after("say \xC3\xA9 wanton"), "say \xC3\xA9 wan") << "what was typed";
    EXPECT_EQ(after("zz"), "");
}

TEST_F(ZNTConsoleClientTest, CompressionAndSoundAreAskedFor)
{
    start(From::Terminal);
    type("/mccp on"); // before there is anybody to ask
    type("/connect 127.0.0.1 4000");
    waitForConnection();
    receive("Hello\r\n\xFF\xFB\x56");
    type("/msp on");
    type("/mccp off");
    EXPECT_EQ(received(), "\xFF\xFD\x56\xFF\xFD\x5A\xFF\x19\x56");
    for (const bool isStandard : {false, true}) { // a tag as servers of today send it
        type(isStandard ? "/set standard-sounds on" : "/set standard-sounds off");
        receive("You hit the ground. !!SOUND(splat.wav V=50 P=62 U=http://mud.example:27744/sounds/) \n\r");
        ASSERT_EQ(sounds.made.size(), isStandard ? 1U : 0U);
    }
    EXPECT_EQ(sounds.made[0]->source, "http://mud.example:27744/sounds/splat.wav");
}

} // namespace
