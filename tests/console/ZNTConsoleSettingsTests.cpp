#include "ZNTConsoleFixture.h"
#include "ZNTSpeechSynth.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

namespace
{

using ZNTConsoleSettingsTest = ZNTConsoleFixture;

TEST_F(ZNTConsoleSettingsTest, APlayerWhoListensLearnsInOneLineWhatACommandHasChanged)
{
    const std::pair<const char*, const char*> cases[] = {
        {"/volume 50", "The volume is 50."},
        {"/mute on", "mute is on."},
        {"/mute maybe", "! Say on or off: /mute on|off"},
        {"/standard on", "Standard telnet is on from the next connection on."},
        {"/set silent-echo on", "silent-echo is on."},
        {"/set loudness 3", "! There is no setting loudness; there are "},
        {"/set remember off", "The settings end with the program."},
        {"/set remember", "remember = off  "},
        {"/reload", "The triggers are in force."},
        {"/help trigger", "/trigger add"},
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
    EXPECT_FLOAT_EQ(sounds.masterVolume(), 0.5F);
    type("/disconnect");
    settle();
    EXPECT_THAT(output, EndsWith("Disconnected.\n"));
}

TEST(ZNTConsoleOptions, TheShortOptionsAreSettingsAndSetWinsOverThem)
{
    const std::array words{"zantor-console", "--encoding", "big5",       "--mccp",      "--msp",
                           "--speech",       "--set",      "speech=off", "mud.example", "4000"};
    const auto options =
        std::get<ZNTConsoleOptions>(ZNTConsoleOptions::fromArguments(words.size(), words.data()));
    EXPECT_EQ(
        options.settings,
        (ZNTSettingValues{{"encoding", "big5"}, {"compression", "on"}, {"sounds", "on"}, {"speech", "off"}}));
    EXPECT_EQ(options.host, "mud.example");
}

TEST_F(ZNTConsoleSettingsTest, AShippedGameIsPlayedWithItsSettingsAndTheSwitchIsForTheNextConnection)
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

TEST_F(ZNTConsoleSettingsTest, KeysSilenceTheVoiceAsFarAsATerminalHasThemOneByOne)
{
    start(From::Terminal);
    EXPECT_THAT(answerTo("/set silence-key x\x7F\xC2\x9F"),
                ElementsAre("! The setting silence-key is none, any, return or control, not \"x  \"."));
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

TEST_F(ZNTConsoleSettingsTest, APasswordMayBeginWithASlashAndIsNotShown)
{
    start(From::Terminal);
    type("/set standard-telnet on");
    type("/connect 127.0.0.1 4000");
    waitForConnection();
    receive("\xFF\xFB\x01Password: ");
    EXPECT_TRUE(input.isTypingHidden);
    for (const auto* password : {"/secret", "//slash", "/qui"})
        type(password);
    EXPECT_THAT(received(), EndsWith("/secret\r\n//slash\r\n/qui\r\n"));
    consoleOutput.catchUp();
    EXPECT_THAT(output, EndsWith("Password: "));
    EXPECT_THAT(answerTo("/help quit"), testing::Not(testing::IsEmpty())) << "a whole name";
    receive("\xFF\xFC\x01Welcome.\r\n");
    EXPECT_FALSE(input.isTypingHidden);
}

TEST_F(ZNTConsoleSettingsTest, TheHintIsForPeopleWhoHaveMadeNoChoiceAndComesOnce)
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
