#include "ZNTDatabaseHelper.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"

#include <filesystem>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* file = "Library/Zantor/settings.plist";

class ZNTSettingsTest : public testing::Test
{
protected:
    /// A start of the program.
    ZNTSettingsKeeper started(const ZNTSettingValues& ofCommandLine = {})
    {
        return {machine.platform.places, machine.log, ofCommandLine};
    }
    static std::string value(const ZNTSettingsKeeper& keeper, std::string_view name)
    {
        return znt::settingText(keeper.settings(), *znt::settingNamed(name));
    }
    static void choose(ZNTSettingsKeeper& keeper, std::string_view name, std::string_view text)
    {
        EXPECT_TRUE(keeper.choose(name, text)) << name;
    }

    ZNTTestPlatform machine;
};

TEST_F(ZNTSettingsTest, WithoutTheTickNothingIsStoredAndAfterwardsEverything)
{
    auto first = started();
    choose(first, "encoding", "big5");
    EXPECT_FALSE(machine.home.has("Library"));

    first.setRemembering(true);
    choose(first, "rate", "200");
    choose(first, "pacing", "off");
    EXPECT_EQ(std::filesystem::status(machine.home.path(file)).permissions(), std::filesystem::perms(0600));
    auto second = started();
    EXPECT_EQ(second.settings(), first.settings());
    EXPECT_EQ(second.settings().encoding, ZNTStringEncoding::Big5Hkscs) << "chosen before the tick";
    auto ofSession = second.settings();
    ofSession.sounds = ofSession.speech = true;
    second.noteChoices(ofSession);
    EXPECT_EQ(started().settings(), ofSession);

    second.setRemembering(false);
    choose(first, "speech", "on"); // another window that knows of nothing
    EXPECT_FALSE(machine.home.has(file));
    EXPECT_THAT(machine.log.lines, IsEmpty());
}

TEST_F(ZNTSettingsTest, TheCommandLineWinsUntilThePlayerChoosesAndIsNotStored)
{
    auto keeper = started();
    keeper.setRemembering(true);
    keeper.beginGame("mud.example", "4000");
    choose(keeper, "encoding", "big5");
    choose(keeper, "speech", "on");
    const auto before = machine.home.read(file);
    auto commanded = started({{"encoding", "ascii"}, {"speech", "off"}});
    commanded.beginGame("mud.example", "4000");
    EXPECT_EQ(value(commanded, "encoding"), "ascii");
    commanded.noteChoices(commanded.settings());
    EXPECT_EQ(machine.home.read(file), before) << "what the command line says is not stored";
    choose(commanded, "encoding", "euc-cn");
    EXPECT_EQ(value(commanded, "encoding"), "euc-cn") << "the player's later word counts";
    EXPECT_EQ(value(commanded, "speech"), "off");
}

TEST_F(ZNTSettingsTest, AChoiceForOneGameHoldsUntilTheProgramEndsOrIsRemembered)
{
    const std::string here = "mud.example 4000";
    const auto played = [](ZNTSettingsKeeper& keeper, const char* port) {
        keeper.beginGame("MUD.example.", port);
        auto encoding = value(keeper, "encoding");
        keeper.endGame();
        return encoding;
    };
    auto keeper = started({{"encoding", "euc-cn"}});
    EXPECT_FALSE(keeper.chooseForGame(here, "encoding", "latin"));
    EXPECT_TRUE(keeper.chooseForGame(here, "encoding", "big5"));
    EXPECT_EQ(played(keeper, "4000"), "big5") << "more than the command line";
    EXPECT_EQ(played(keeper, "4001"), "euc-cn");
    EXPECT_EQ(znt::settingText(keeper.usualSettingsOf(here), *znt::settingNamed("encoding")), "euc-cn");
    EXPECT_FALSE(machine.home.has("Library"));
    keeper.setRemembering(true);

    auto next = started();
    EXPECT_EQ(next.chosenForGame(here, "encoding"), "big5");
    EXPECT_EQ(played(next, "4000"), "big5");
    EXPECT_TRUE(next.chooseForGame(here, "encoding", "utf-8"));
    next.beginGame("mud.example", "4000");
    EXPECT_TRUE(next.hasSettingsForGame());
    choose(next, "encoding", "euc-cn");
    EXPECT_EQ(value(next, "encoding"), "euc-cn") << "the later word counts";
    EXPECT_TRUE(next.chooseForGame(here, "encoding", "utf-8"));
    EXPECT_EQ(value(next, "encoding"), "utf-8") << "also this way round";

    auto last = started();
    EXPECT_TRUE(last.chooseForGame(here, "encoding", ""));
    EXPECT_EQ(last.chosenForGame(here, "encoding") + played(last, "4000"), "ascii");
    EXPECT_EQ(started().chosenForGame(here, "encoding"), "");
}

TEST_F(ZNTSettingsTest, UnknownNamesStayAndBadValuesCountForNothing)
{
    machine.home.write(file, R"(<plist version="1.0"><dict>
        <key>player</key><dict><key>colour</key><string>red</string><key>rate</key><integer>5000</integer>
        <key>encoding</key><true/><key>speech</key><true/><key>pacing</key><array/></dict>
        <key>later</key><array><integer>7</integer></array><key>games</key><string>none</string></dict></plist>)");
    auto keeper = started();
    EXPECT_EQ(value(keeper, "speech"), "on");
    choose(keeper, "speech", "off");
    EXPECT_EQ(keeper.settings(), ZNTSettings());
    keeper.beginGame("mud.example", "23");
    choose(keeper, "sounds", "on");
    EXPECT_THAT(machine.home.read(file), testing::AllOf(HasSubstr("colour"), HasSubstr("<integer>7"),
                                                        HasSubstr("5000"), HasSubstr("mud.example 23")));
}

TEST_F(ZNTSettingsTest, AChoiceThatWasOnOrOffIsStillReadAsWhatItMeant)
{
    for (const auto& [kept, now] :
         {std::pair{"<true/>", "every"}, {"<false/>", "none"}, {"<string>first</string>", "first"}}) {
        machine.home.write(file,
                           "<plist version=\"1.0\"><dict><key>player</key><dict><key>finish-texts</key>" +
                               std::string(kept) + "</dict></dict></plist>");
        EXPECT_EQ(value(started(), "finish-texts"), now);
    }
    EXPECT_EQ(value(started({{"finish-texts", "on"}}), "finish-texts"), "every");
}

TEST_F(ZNTSettingsTest, ADamagedFileIsPutAsideAndThePlayersWishStays)
{
    for (const auto* damaged : {"", "<plist><dict><key>player", "<plist><array/></plist>"}) {
        SCOPED_TRACE(damaged);
        machine.log.lines.clear();
        machine.home.write(file, damaged);
        auto keeper = started();
        EXPECT_EQ(keeper.settings(), ZNTSettings());
        EXPECT_THAT(machine.log.lines, ElementsAre(HasSubstr("put aside")));
        choose(keeper, "rate", "300");
        EXPECT_EQ(value(started(), "rate"), "300");
    }
    EXPECT_TRUE(machine.home.has(file + std::string(".broken-3")));
    EXPECT_EQ(machine.home.read(file + std::string(".broken-2")), "<plist><dict><key>player");
}

TEST_F(ZNTSettingsTest, WhatIsWrongWithANameOrAValueIsSaidInASentence)
{
    const std::vector<std::pair<std::string, std::string>> cases{
        {"speech", "Say NAME=VALUE, as in speech=on."},
        {"speech=yes", "The setting speech is on or off, not \"yes\"."},
        {"rate=601", "The setting rate is a number from 10 to 600, not \"601\"."},
        {"rate=20x", "The setting rate is a number from 10 to 600, not \"20x\"."},
        {"rate=600", ""},
        {"finish-texts=", "The setting finish-texts is none, first or every, not \"\"."},
        {"listening=", "The setting listening is on or off, not \"\"."},
        {"silence-key=on", "The setting silence-key is none, any, return or control, not \"on\"."},
        {"quiet-lines=\xff",
         "The setting quiet-lines is up to 1000 texts with \";\" between them, each of up to "
         "1000 bytes, not \"\xff\"."},
    };
    for (const auto& [assignment, complaint] : cases)
        EXPECT_EQ(znt::complaintAboutAssignment(assignment), complaint);
}

TEST_F(ZNTSettingsTest, AListIsReadBackAsItWasFromItsTextAndFromTheFile)
{
    const std::pair<std::string, ZNTTextList> rows[] = {
        {"", {}},
        {" ; ;\n", {}},
        {R"(\d+; \\b;says[,:] "<&>" 'x')", {R"(\d+)", R"(\b)", R"(says[,:] "<&>" 'x')"}},
        {R"(a\;b; c\\; \\\;)", {"a;b", "c\\", R"(\;)"}},
        {R"(end\)", {R"(end\)"}},
        {"600\r\n on \n600", {"600", "on", "600"}},
        {"\xe8\xaa\xaa", {"\xe8\xaa\xaa"}},
    };
    for (const auto& [text, list] : rows) {
        SCOPED_TRACE(text);
        auto keeper = started();
        keeper.setRemembering(true);
        choose(keeper, "channels", text);
        EXPECT_EQ(keeper.settings().channels, list);
        choose(keeper, "urgent-lines", value(keeper, "channels"));
        EXPECT_EQ(keeper.settings().urgentLines, list);
        EXPECT_EQ(started().settings(), keeper.settings());
    }
    for (const auto& bad : {std::string("a\0b", 3), std::string(1'001, 'x'), "\x1b[0m" + std::string()})
        EXPECT_FALSE(znt::textsIn(bad));
    EXPECT_FALSE(znt::listOfTexts(std::vector<std::string>(1'001, "x")));
    for (const auto* damaged :
         {"<array><dict/></array>", "<array><string>a\nb</string></array>", "<dict/>"}) {
        machine.home.write(file, "<plist version=\"1.0\"><dict><key>player</key><dict><key>channels</key>" +
                                     std::string(damaged) + "</dict></dict></plist>");
        EXPECT_EQ(started().settings(), ZNTSettings()) << damaged;
    }
}

TEST_F(ZNTSettingsTest, SetUpForListeningIsOneChoiceForAllGamesThatCanBeTakenBack)
{
    auto keeper = started({{"silence-key", "any"}});
    keeper.setRemembering(true);
    keeper.beginGame("mud.example", "23");
    choose(keeper, "rate", "200");
    EXPECT_FALSE(keeper.choose("listening", "loud"));
    EXPECT_EQ(value(keeper, "silence-key"), "any");
    choose(keeper, "listening", "on");
    EXPECT_TRUE(znt::isSetUpForListening(keeper.settings())) << "the command line's word is older";

    auto next = started();
    EXPECT_TRUE(znt::isSetUpForListening(next.settings()));
    choose(next, "silence-key", "return");
    EXPECT_FALSE(znt::isSetUpForListening(next.settings()));
    EXPECT_EQ(started().settings(), next.settings());
    choose(next, "listening", "off");
    ZNTSettings expected;
    expected.rate = 200;
    EXPECT_EQ(started().settings(), expected);

    ZNTSettingValues ofCommandLine;
    EXPECT_TRUE(znt::addAssignment(ofCommandLine, "listening=on"));
    EXPECT_TRUE(znt::isSetUpForListening(started(ofCommandLine).settings()));
}

/// A dictionary of a property list, with texts as values.
std::string dictionary(const ZNTSettingValues& values)
{
    std::string xml = "<dict>";
    for (const auto& [name, text] : values)
        xml.append("<key>").append(name).append("</key><string>").append(text).append("</string>");
    return xml + "</dict>";
}

TEST_F(ZNTSettingsTest, TheStrongestWordCountsAndWhatNobodyNamesFollowsStandardTelnet)
{
    // King of Kings, which is known to want standard telnet and Big5, in other letters
    struct {
        std::string_view expected; ///< encoding, standard telnet, colours, sounds; in the game, and after it
        ZNTSettingValues allGames = {}, ofGame = {}, session = {}, commandLine = {};
    } const rows[] = {
        {"big5 on on on; ascii off off off"},
        {"big5 on on on; euc-cn off off off", {{"encoding", "euc-cn"}, {"standard-telnet", "off"}}},
        {"big5 on on off; ascii on on off", {{"standard-telnet", "on"}, {"standard-sounds", "off"}}},
        {"big5 off off off; ascii off off off", {}, {{"standard-telnet", "off"}}},
        {"big5 on off on; ascii off off off", {}, {{"full-colours", "off"}}},
        {"big5 on on on; ascii on on on", {}, {{"standard-telnet", "off"}}, {{"standard-telnet", "on"}}},
        {"big5 on on on; ascii on on on", {}, {}, {{"standard-telnet", "on"}}, {{"standard-telnet", "off"}}},
        {"utf-8 off on off; utf-8 off on off",
         {},
         {},
         {{"full-colours", "on"}},
         {{"standard-telnet", "off"}, {"encoding", "utf-8"}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.expected);
        machine.home.write(file, "<plist version=\"1.0\"><dict><key>player</key>" + dictionary(row.allGames) +
                                     "<key>games</key><dict><key>KK.muds.idv.tw 4000</key>" +
                                     dictionary(row.ofGame) + "</dict></dict></plist>");
        auto keeper = started(row.commandLine);
        for (const auto& [name, text] : row.session)
            choose(keeper, name, text);
        const auto now = [&] {
            return value(keeper, "encoding") + " " + value(keeper, "standard-telnet") + " " +
                   value(keeper, "full-colours") + " " + value(keeper, "standard-sounds");
        };
        keeper.beginGame("kk.muds.idv.TW.", " 4000 ");
        keeper.gameConnected();
        const auto inGame = now();
        EXPECT_EQ(keeper.settings().isEncodingNamed, row.commandLine.contains("encoding"));
        keeper.endGame();
        EXPECT_EQ(inGame + "; " + now(), row.expected);
    }
}

TEST_F(ZNTSettingsTest, TheDemoGameFindsItsSettingsAgainAtAnotherPort)
{
    for (const char* port : {"40001", "40002"}) {
        auto keeper = started();
        keeper.setRemembering(true);
        keeper.noteDemoGame("127.0.0.1", port);
        keeper.beginGame("127.0.0.1", port);
        EXPECT_EQ(keeper.hasSettingsForGame(), std::string_view(port) == "40002");
        choose(keeper, "standard-telnet", "on");
    }
    auto keeper = started();
    keeper.beginGame("127.0.0.1", "40001");
    EXPECT_FALSE(keeper.hasSettingsForGame()) << "another game of this machine";
}

TEST_F(ZNTSettingsTest, OnlyTheTextOfHostAndPortMakesAGameKnownAndHintsAreForOthers)
{
    struct {
        std::string_view host, port, setting, value;
        bool isKnown, mayNeedHint;
    } const rows[] = {
        {"CosmicRage.earth", "7777", "", "", true, false},
        {"nathantech.net.", "07777", "", "", true, false},
        {"cosmicrage.earth", "7778", "", "", false, true},
        {"cosmicrage.earth..", "7777", "", "", false, true},
        {"www.cosmicrage.earth", "7777", "", "", false, true},
        {"203.0.113.7", "7777", "", "", false, true},
        {"cosmicrage.earth 7777", "0", "", "", false, true},
        // What the player has chosen counts, and it alone is played with.
        {"cosmicrage.earth", "7777", "standard-telnet", "off", false, false},
        {"mud.example", "23", "standard-telnet", "off", false, false},
        {"mud.example", "23", "speech", "on", false, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.host) + " " + std::string(row.port));
        auto keeper = started();
        if (!row.setting.empty())
            choose(keeper, row.setting, row.value);
        keeper.beginGame(row.host, row.port);
        EXPECT_EQ(keeper.hasSettingsForGame(), row.isKnown);
        EXPECT_EQ(keeper.mayNeedHint(), row.mayNeedHint);
        keeper.endGame();
        EXPECT_FALSE(keeper.hasSettingsForGame());
        keeper.beginGame("another.example", "23");
        EXPECT_EQ(keeper.mayNeedHint(), row.setting != znt::standardTelnet) << "after the other game";
    }
}

TEST_F(ZNTSettingsTest, AChoiceDuringAConnectionDoesNotChangeWhatFollowsItBeforeTheNext)
{
    auto keeper = started();
    keeper.setRemembering(true);
    keeper.beginGame("mud.example", "23");
    choose(keeper, "standard-telnet", "on"); // still connecting, so it counts for this connection
    keeper.gameConnected();
    choose(keeper, "standard-telnet", "off");
    EXPECT_EQ(value(keeper, "standard-telnet") + value(keeper, "full-colours"), "offon");
    EXPECT_TRUE(keeper.chooseForAllGames("standard-telnet", "on"));
    EXPECT_FALSE(keeper.chooseForAllGames("standard-telnet", "yes"));
    EXPECT_TRUE(keeper.settingsForAllGames().standardTelnet);
    EXPECT_FALSE(keeper.settings().standardTelnet) << "the game's own value is stronger";
    keeper.endGame();
    EXPECT_EQ(value(keeper, "full-colours"), "on");

    auto next = started();
    next.beginGame("other.example", "23");
    EXPECT_TRUE(next.settings().standardTelnet);
    next.beginGame("mud.example", "23");
    EXPECT_FALSE(next.settings().standardTelnet);
    EXPECT_TRUE(next.hasSettingsForGame());
}

TEST_F(ZNTSettingsTest, EveryShippedGameIsKnown)
{
    ZNTDatabaseHelper store(machine.platform.places, machine.log);
    const auto addressBook = store.getAllMudsFromMudList();
    machine.log.lines.clear(); // of the first run
    const auto known = ZNTKnownGames::shipped(machine.platform.places, machine.log);
    std::size_t games = 0;
    for (const auto& game : addressBook) {
        const auto host = znt::utf8FromText(game.telnetURL);
        if (host == "127.0.0.1" || host == "localhost")
            continue;
        ++games;
        ZNTSettingValues expected{{"standard-telnet", "on"}};
        if (game.name.find(u"BIG5") != game.name.npos)
            expected["encoding"] = "big5";
        EXPECT_EQ(known.settingsOf(znt::gameKey(host, std::to_string(game.port))), expected) << host;
    }
    EXPECT_GT(games, 12U);
    EXPECT_THAT(machine.log.lines, IsEmpty());
    machine.platform.places.resources = machine.home.path();
    EXPECT_EQ(started().settings(), ZNTSettings());
    EXPECT_THAT(machine.log.lines, ElementsAre(HasSubstr("are missing")));
}

TEST_F(ZNTSettingsTest, ADamagedLineOfTheKnownGamesIsSkippedWithASentence)
{
    const std::pair<std::string, std::string> rows[] = {
        {"mud.example", "A port from 1 to 65535 follows the host."},
        {"mud.example 65536 sounds=on", "A port from 1 to 65535 follows the host."},
        {"mud.example sounds=on 23", "A port from 1 to 65535 follows the host."},
        {"mud.example 23", "Settings follow the port: NAME=VALUE."},
        {"mud.example 23 sounds", "Say NAME=VALUE, as in speech=on."},
        {"mud.example 23 compression=on sounds=loud", "The setting sounds is on or off, not \"loud\"."},
        {"mud.example 23 speech=on", "The setting speech is for all games, not for one."},
        {"mud.example 23 listening=on", "The setting listening is for all games, not for one."},
        {"Good.example. 23 sounds=off", "The game is in an earlier line."},
    };
    for (const auto& [line, sentence] : rows) {
        machine.log.lines.clear();
        const auto known = ZNTKnownGames::fromText("# a note\r\n\n\tgood.example 23  sounds=on \r\n" + line +
                                                       "\nlast.example 4000 encoding=utf-8",
                                                   machine.log);
        EXPECT_THAT(machine.log.lines, ElementsAre("known-games: line 4 is skipped: " + sentence)) << line;
        EXPECT_TRUE(known.settingsOf("mud.example 23").empty());
        EXPECT_EQ(known.settingsOf("good.example 23"), ZNTSettingValues({{"sounds", "on"}}));
        EXPECT_EQ(known.settingsOf("last.example 4000"), ZNTSettingValues({{"encoding", "utf-8"}}));
    }
}

} // namespace
