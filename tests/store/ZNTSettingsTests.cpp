#include "ZNTSettingsKeeper.h"
#include "ZNTTestPlatform.h"

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

    second.setRemembering(false);
    choose(first, "speech", "on"); // another window that knows of nothing
    EXPECT_FALSE(machine.home.has(file));
    EXPECT_THAT(machine.log.lines, IsEmpty());
}

TEST_F(ZNTSettingsTest, AGameHasItsOwnValuesAndTheCommandLineWins)
{
    auto keeper = started();
    keeper.setRemembering(true);
    choose(keeper, "encoding", "euc-cn");
    keeper.beginGame("mud.example", "4000");
    choose(keeper, "encoding", "big5");
    choose(keeper, "speech", "on");

    auto next = started();
    EXPECT_EQ(value(next, "speech"), "on") << "speech is the player's";
    next.beginGame("mud.example", "4000");
    EXPECT_EQ(value(next, "encoding"), "big5");
    next.beginGame("mud.example", "4001");
    EXPECT_EQ(value(next, "encoding"), "euc-cn");

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

TEST_F(ZNTSettingsTest, SwitchesOfTheSessionAreRememberedOnceTheyDiffer)
{
    auto keeper = started();
    keeper.setRemembering(true);
    auto ofSession = keeper.settings();
    const auto before = machine.home.read(file);
    keeper.noteChoices(ofSession);
    EXPECT_EQ(machine.home.read(file), before);
    ofSession.sounds = ofSession.speech = true;
    ofSession.rate = 90;
    keeper.noteChoices(ofSession);
    EXPECT_EQ(started().settings(), ofSession);
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
    };
    for (const auto& [assignment, complaint] : cases)
        EXPECT_EQ(znt::complaintAboutAssignment(assignment), complaint);
}

} // namespace
