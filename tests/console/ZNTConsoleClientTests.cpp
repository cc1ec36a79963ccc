#include "ZNTConsoleFixture.h"
#include "ZNTSpeechSynth.h"

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
    EXPECT_EQ(sounds.masterVolume(), 0);
}

TEST_F(ZNTConsoleClientTest, APlayerWhoListensLearnsInOneLineWhatACommandHasChanged)
{
    const std::pair<const char*, const char*> cases[] = {
        {"/volume 50", "The volume is 50."},
        {"/mute on", "mute is on."},
        {"/mute maybe", "! Say on or off: /mute on|off"},
        {"/standard on", "Standard telnet is on from the next connection on."},
        {"/set silent-echo on", "silent-echo is on."},
        {"/set loudness 3", "! There is no setting loudness; there are "},
        {"/set remember off", "The settings end with the program."},
        {"/encoding utf-8", "The encoding is utf-8."},
        {"/quiet", "! There is no sound to end."},
        {"/vitals", "12 hp>"},
        {"/x\x1b[Dyzzy", "! There is no command /x [Dyzzy; "},
    };
    confirmsChanges = true;
    startConnected(From::Terminal);
    receive("12 hp>");
    EXPECT_EQ(output, "Connecting to 127.0.0.1 4000.\nConnected.\n12 hp>");
    for (const auto& [command, answer] : cases)
        EXPECT_THAT(answerTo(command), ElementsAre(testing::StartsWith(answer))) << command;
    type("/disconnect");
    settle();
    EXPECT_THAT(output, EndsWith("Disconnected.\n"));
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

TEST_F(ZNTConsoleClientTest, AShippedGameIsPlayedWithItsSettingsAndTheSwitchIsForTheNextConnection)
{
    start(From::Terminal);
    type("/connect KK.muds.idv.tw 4000");
    waitForConnection();
    EXPECT_THAT(machine.log.lines, testing::Contains("With settings for this game; /set shows them."));
    EXPECT_EQ(client->session().cfStringEncoding(), ZNTStringEncoding::Big5Hkscs);
    EXPECT_THAT(answerTo("/standard off"),
                ElementsAre("Standard telnet is off from the next connection on."));
    EXPECT_THAT(answerTo("/set full-colours"), ElementsAre(testing::StartsWith("full-colours = on  ")));
    server.send("\x1B[38;5;9mGood\x1B[3"); // the rest is held back, and read as the game's text all the same
    server.send("mbye.\r\n");
    settle();
    type("/disconnect");
    settle();
    consoleOutput.catchUp();
    EXPECT_THAT(output, EndsWith("Goodbye.\n"));
    EXPECT_EQ(client->session().settings().encoding, ZNTStringEncoding::Ascii);
    EXPECT_THAT(answerTo("/set full-colours"), ElementsAre(testing::StartsWith("full-colours = off  ")));
    EXPECT_THAT(answerTo("/standard on"), ElementsAre("Standard telnet is on."));
    EXPECT_THAT(answerTo("/standard"), ElementsAre("! Say on or off: /standard on|off"));
}

TEST_F(ZNTConsoleClientTest, KeysSilenceTheVoiceAsFarAsATerminalHasThemOneByOne)
{
    start(From::Terminal);
    EXPECT_THAT(answerTo("/set silence-key x\x7F"),
                ElementsAre("! The setting silence-key is none, any, return or control, not \"x \"."));
    EXPECT_THAT(answerTo("/set listening on"), ElementsAre("Listening is set up.", HasSubstr("any key")));
    EXPECT_THAT(answerTo("/set listening"), ElementsAre(testing::StartsWith("listening = on  ")));
    const struct {
        const char* chosen;
        bool key, line;
    } rows[] = {
        {"none", false, false}, {"return", false, true}, {"any", true, true}, {"control", true, true}};
    for (const auto& row : rows) {
        type(std::string("/set silence-key ") + row.chosen);
        const auto silences = [&](const std::function<void()>& press) {
            const auto before = client->session().zntSpeechSynth().stopCount();
            press();
            return client->session().zntSpeechSynth().stopCount() != before;
        };
        EXPECT_EQ(silences([&] { input.handlers.keyTyped(); }), row.key) << row.chosen;
        EXPECT_EQ(silences([&] { type("/help quit"); }), row.line) << row.chosen;
    }
    EXPECT_THAT(answerTo("/say find"), ElementsAre("! Say which words: /say find WORDS"));
}

TEST_F(ZNTConsoleClientTest, TheHintIsForPeopleWhoHaveMadeNoChoiceAndComesOnce)
{
    struct {
        From from;
        const char *before, *host;
        long hints;
    } const rows[] = {{From::Terminal, "/help quit", "127.0.0.1", 1},
                      {From::Terminal, "/set speech on", "mud.example", 1},
                      {From::Terminal, "/standard off", "127.0.0.1", 0},
                      {From::Terminal, "/standard off", "aardmud.org", 0},
                      {From::Script, "/help quit", "127.0.0.1", 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before);
        machine.log.lines.clear();
        start(row.from);
        type(row.before);
        for (int connections = 0; connections < 2; ++connections) {
            type(std::string("/connect ") + row.host + " 4000");
            waitForConnection();
            receive("\xFF\xFB\x56Who are you? ");
            client->disconnect();
            settle();
        }
        EXPECT_EQ(std::ranges::count(machine.log.lines, "If the game refuses your name, switch on Standard "
                                                        "telnet and connect again."),
                  row.hints);
    }
}

} // namespace
