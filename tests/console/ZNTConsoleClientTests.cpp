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
    type("look");
    type("north");
    type("//slash");
    endInput();
    EXPECT_EQ(received(), "") << "the greeting is read first";
    receive("Welcome\r\n> ");
    EXPECT_EQ(server.received(), "look\r\n");
    machine.loop.advance(0.3);
    EXPECT_EQ(server.received(), "look\r\n") << "not answered yet";
    receive("A square\r\n> ");
    EXPECT_EQ(server.received(), "look\r\nnorth\r\n");
    silence(); // the game has nothing to say to it
    EXPECT_EQ(server.received(), "look\r\nnorth\r\n/slash\r\n");
    EXPECT_THAT(exitCodes, IsEmpty());
    server.send("The end");
    settle();
    EXPECT_THAT(output, testing::Not(HasSubstr("The end"))) << "held back until a silence";
    silence();
    EXPECT_THAT(exitCodes, ElementsAre(0));
    EXPECT_EQ(output, "Welcome\n> look\nA square\n> north\n/slash\nThe end");
    EXPECT_FALSE(client->session().isConnected());
}

TEST_F(ZNTConsoleClientTest, LinesToTheGameLeaveBeforeAnythingIsShownOfThem)
{
    startConnected(From::Terminal);
    type("/trigger add Kick: A %1 kicks you => kick %1");
    consoleOutput.catchUp();

    const std::string answers = "kick goblin\r\nkick troll\r\n";
    sink.beforeWriting = [&](std::string_view) { EXPECT_EQ(server.received(), answers); };
    receive("A goblin kicks you. A troll kicks you.");
    EXPECT_THAT(output, EndsWith("A troll kicks you."));
    sink.beforeWriting = [&](std::string_view) { EXPECT_EQ(server.received(), answers + "look\r\n"); };
    type("look");
    consoleOutput.catchUp();
    EXPECT_THAT(output, EndsWith("look\n"));
}

TEST_F(ZNTConsoleClientTest, WhileTheTerminalIsFullTheGameWaitsAndTypedLinesLeave)
{
    startConnected(From::Terminal);
    sink.isFullNow = true;
    receive("One.");
    EXPECT_THAT(output, EndsWith("One."));
    receive("Two.");
    silence();
    EXPECT_THAT(output, EndsWith("One.")) << "left to the network";
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
    for (int half = 0; half < 5; ++half)
        silence();
    EXPECT_EQ(server.received(), "n\r\nn\r\n");
    for (int half = 0; half < 3; ++half)
        silence();
    EXPECT_THAT(exitCodes, ElementsAre(0));
}

TEST_F(ZNTConsoleClientTest, LinesOnATerminalGoOutAtOnceAndCommandsDoNotWaitForTheConnection)
{
    start(From::Terminal);
    type("look");
    EXPECT_THAT(machine.log.lines.back(), EndsWith("Not connected, so this was not sent: look"));
    type("/connect 127.0.0.1 " + std::to_string(server.port()));
    type("look");
    type("/encoding big5");
    EXPECT_EQ(client->session().cfStringEncoding(), ZNTStringEncoding::Big5Hkscs);
    waitForConnection();
    type("north");
    EXPECT_EQ(received(), "look\r\nnorth\r\n");
    EXPECT_THAT(answerTo("/connect mud.example 4000"),
                ElementsAre("! There is a connection already; /disconnect ends it."));
    type("/disconnect");
    settle();
    type("/connect"); // the same game again, not the one that was refused
    waitForConnection();
    endInput();
    silence();
    EXPECT_THAT(exitCodes, ElementsAre(0));
}

TEST_F(ZNTConsoleClientTest, AConnectionThatBreaksEndsAScriptWithOne)
{
    startConnected();
    server.reset();
    settle();
    EXPECT_THAT(exitCodes, ElementsAre(1));
}

TEST_F(ZNTConsoleClientTest, TheGamesLastWordsComeBeforeTheAlertThatItIsGone)
{
    const auto endGame = [this] {
        startConnected(From::Terminal);
        silence();
        server.send("Goodbye.");
        server.closeWhenSent();
        settle();
        EXPECT_EQ(transcript, "") << "the game's words wait for a silence";
    };
    for (const bool quits : {false, true}) {
        SCOPED_TRACE(quits);
        endGame();
        quits ? type("/quit") : silence();
        settle();
        EXPECT_EQ(std::exchange(transcript, ""), "Goodbye.[MUD Not Responding]");
        EXPECT_EQ(exitCodes, quits ? std::vector{0} : std::vector<int>{});
        client.reset();
    }
    endGame();
    type("/connect");
    waitForConnection();
    EXPECT_EQ(transcript, "[MUD Not Responding]") << "of the connection before";
    receive(" Welcome back.");
    EXPECT_THAT(transcript, EndsWith("Goodbye. Welcome back."));
}

TEST_F(ZNTConsoleClientTest, LinesThatCannotBeSentAreNamedAndMakeTheExitCodeOne)
{
    start();
    type("look");
    type("/help quit");
    endInput();
    settle();
    EXPECT_THAT(machine.log.lines.back(), EndsWith("this was not sent: look"));
    EXPECT_THAT(exitCodes, ElementsAre(1));
}

TEST_F(ZNTConsoleClientTest, AScriptMayGoFromOneGameToTheNext)
{
    startConnected();
    type("/disconnect");
    type("/connect 127.0.0.1 " + std::to_string(server.port()));
    type("look");
    endInput();
    silence();
    silence();
    EXPECT_EQ(server.clientsAccepted(), 2);
    EXPECT_EQ(server.received(), "look\r\n");
    silence();
    EXPECT_THAT(exitCodes, ElementsAre(0));
}

TEST_F(ZNTConsoleClientTest, ThePlayerEndsAttemptsWalksAndSounds)
{
    start(From::Terminal);
    EXPECT_THAT(answerTo("/disconnect"), ElementsAre("! There is no connection."));
    EXPECT_THAT(answerTo("/stop"), ElementsAre("! There is no walk to end."));
    EXPECT_THAT(answerTo("/quiet"), ElementsAre("! There is no sound to end."));

    type("/connect 127.0.0.1 " + std::to_string(server.port()));
    EXPECT_THAT(answerTo("/disconnect"), ElementsAre("The attempt to connect is given up."));
    silence();
    EXPECT_EQ(client->session().state(), ZNTSessionState::Idle);

    type("/connect");
    waitForConnection();
    type("!2n");
    type("!3~2s");
    type("/stop");
    for (int half = 0; half < 8; ++half)
        silence();
    EXPECT_EQ(server.received(), "");

    sounds.soundFromUrl("a sound")->play();
    EXPECT_THAT(answerTo("/quiet"), IsEmpty());
    EXPECT_FALSE(sounds.isPlaying());
}

TEST_F(ZNTConsoleClientTest, CommandsThatNeedNoConnectionRunAndSayThatThereIsNone)
{
    startConnected(From::Terminal);
    type("look");
    EXPECT_THAT(answerTo("/record"), ElementsAre("Recording."));
    type("/disconnect");
    EXPECT_THAT(answerTo("/resend"), ElementsAre("look", "! Not connected"));
    EXPECT_THAT(answerTo("/record"), ElementsAre("Recording is paused.", "! Not connected"));
    EXPECT_THAT(answerTo("/record done"), ElementsAre("  look", "! Not connected"));
}

TEST_F(ZNTConsoleClientTest, AnEndlessScriptIsReadNoFasterThanItIsSent)
{
    startConnected();
    for (std::size_t line = 0; line < ZNTConsoleScript::mostWaitingLines; ++line) {
        EXPECT_FALSE(input.isPaused);
        type("look");
    }
    EXPECT_TRUE(input.isPaused);
    receive("> ");
    EXPECT_FALSE(input.isPaused);
}

TEST_F(ZNTConsoleClientTest, WrongCommandsAreAnsweredWithASentence)
{
    start(From::Terminal);
    const struct {
        const char *command, *answer;
    } cases[] = {
        {"/xyzzy", "! There is no command /xyzzy; /help lists them. A line for the game that starts with a "
                   "slash is typed with two."},
        {"/re", "! /re could be /replay or /reload."},
        {"/dis", "! There is no connection."},
        {"/help qu", "! There is no command /qu; /help lists them."},
        {"/help quit", "/quit  Ends the connection and the program."},
        {"/connect", "! Name a game: /connect HOST PORT, or make one of /muds the default."},
        {"/connect mud.example", "! Name a host and a port from 1 to 65535: /connect HOST PORT"},
        {"/connect mud.example 65536", "! Name a host and a port from 1 to 65535: /connect HOST PORT"},
        {"/msp maybe", "! Say on or off: /msp on|off"},
        {"/volume 101", "! Say how loud, from 0 to 100: /volume 50"},
        {"/volume", "! Say how loud, from 0 to 100: /volume 50"},
        {"/say x", "! Say how many lines: /say N"},
    };
    for (const auto& [command, answer] : cases)
        EXPECT_THAT(answerTo(command), ElementsAre(answer)) << command;
    type("/mute on");
    type("/volume 0");
    EXPECT_TRUE(sounds.isMuted());
    EXPECT_EQ(sounds.masterVolume(), 0);
    type("/quit");
    settle();
    EXPECT_THAT(exitCodes, ElementsAre(0));
}

TEST_F(ZNTConsoleClientTest, CompressionAndSoundAreAskedFor)
{
    start(From::Terminal);
    type("/mccp on"); // before there is anybody to ask
    type("/connect 127.0.0.1 " + std::to_string(server.port()));
    waitForConnection();
    receive("Hello\r\n\xFF\xFB\x56");
    type("/msp on");
    type("/mccp off");
    EXPECT_EQ(received(), "\xFF\xFD\x56\xFF\xFD\x5A\xFF\x19\x56");
    EXPECT_THAT(output, EndsWith("Hello\n")) << "what is not compressed is read as it is";
}

TEST_F(ZNTConsoleClientTest, ColoursAreForTerminalsUnlessThePlayerSaysOtherwise)
{
    using Colour = ZNTConsoleOptions::Colour;
    const struct {
        Colour colour;
        bool isTerminal, isColoured;
    } cases[] = {{Colour::Auto, true, true}, {Colour::Auto, false, false}, {Colour::Never, true, false}};
    for (const auto& [colour, isTerminal, isColoured] : cases) {
        outputIsTerminal = isTerminal;
        output.clear();
        ZNTConsoleOptions options;
        options.colour = colour;
        start(From::Terminal, options);
        client->session().insertTextIntoTheWindow(u"look"); // in cyan, as each line sent
        consoleOutput.catchUp();
        EXPECT_EQ(output.find("\x1b[0;1;36m") != output.npos, isColoured);
        client.reset();
    }
}

TEST_F(ZNTConsoleClientTest, TheRecorderShowsItsLinesAndNamesThem)
{
    startConnected(From::Terminal);
    type("/record");
    type("look");
    type("north");
    EXPECT_THAT(answerTo("/record done ways 2"), ElementsAre("  look", "  north", HasSubstr("! OBJ: ")));
    EXPECT_THAT(machine.log.lines.back(), HasSubstr("ways"));
}

} // namespace
