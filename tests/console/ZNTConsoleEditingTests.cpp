#include "ZNTConsoleFixture.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class ZNTConsoleEditingTest : public ZNTConsoleFixture
{
protected:
    /// Everything the lists of all four commands show but its order and the group in use, which are not
    /// stored.
    std::vector<std::string> allLists()
    {
        std::vector<std::string> all;
        for (const auto* command : {"/trigger list", "/group list", "/macro list", "/mud list"})
            for (auto& line : answerTo(command))
                all.push_back(line.substr(line.find(". ") + 1, line.find(" (in use)") - line.find(". ") - 1));
        std::sort(all.begin(), all.end());
        return all;
    }
    /// What is stored, read by another client of the same home.
    std::vector<std::string> allListsAfterRestart()
    {
        client.reset();
        start(From::Terminal);
        return allLists();
    }
};

TEST_F(ZNTConsoleEditingTest, BadInputIsRefusedWithASentenceAndChangesNothing)
{
    start(From::Terminal);
    EXPECT_THAT(answerTo("/macro add greet say hi"),
                ElementsAre("! There is no macro group yet; /group add NAME makes one."));
    for (const auto* line : {"/trigger add twin: a => b", "/trigger add twin: c => d", "/group add mine",
                             "/macro add greet say hi %1"})
        type(line);
    const auto before = allLists();
    const std::string trigger =
        "! Say what to look for and what to send: /trigger add NAME: PATTERN => COMMAND";
    const std::string game = "! Say its name, its host and a port from 1 to 65535: /mud add NAME HOST PORT";
    const std::pair<const char*, std::string> cases[] = {
        {"/trigger", "! Say what to do: /trigger add|list|remove|on|off; /help trigger tells more."},
        {"/trigger add name: => kick", trigger},
        {"/trigger add --loud n: x => y", "! There is no option --loud; there are --gag and --sound FILE."},
        {"/trigger remove", "! Say which trigger: its number or its name."},
        {"/trigger off 9999", "! There is no trigger 9999."},
        {"/trigger remove twin", "! Several triggers are called twin; say its number."},
        {"/group add mine", "Macro Name taken: You can not name 2 macro groups with the same name."},
        {"/group use yours", "! There is no group yours."},
        {"/macro add greet", "! Say its name and what it sends: /macro add NAME TEXT"},
        {"/macro remove wave", "! There is no macro wave."},
        {"/mud add Name mud.example 65536", game},
        {"/mud add Name mud.example 99999999999", game},
        {"/mud remove -1", "! There is no game -1."},
    };
    for (const auto& [command, refusal] : cases) {
        EXPECT_THAT(answerTo(command), ElementsAre(refusal)) << command;
        EXPECT_EQ(allLists(), before) << command;
    }
    EXPECT_EQ(allListsAfterRestart(), before) << "nor is anything else stored";
}

TEST_F(ZNTConsoleEditingTest, WhatIsAddedIsListedStoredAndRemovedAgain)
{
    start(From::Terminal);
    const auto original = allLists();
    type("/trigger add --gag --sound bell.wav Bell: The * rings: %1 => say => loud");
    type("/group add fights");
    type("/group add talk");
    type("/macro add greet say hi %1");
    type("/group use 1");
    type("/macro add hit kick %1;bash %1");
    type("/mud add Two Words mud.example 4000");
    type("/mud default Two Words");
    const auto changed = allLists();
    for (const auto* line :
         {"Bell: The * rings: %1 => say => loud (gag) (sound bell.wav)", "~greet (talk): say hi %1",
          "~hit (fights): kick %1;bash %1", "Two Words: mud.example 4000 (default)"})
        EXPECT_THAT(changed, testing::Contains(EndsWith(line)));
    EXPECT_THAT(answerTo("/group list"), ElementsAre("1. fights (in use)", "2. talk"));
    EXPECT_EQ(allListsAfterRestart(), changed);
    EXPECT_THAT(answerTo("/trigger remove Bell"), ElementsAre("Trigger Bell is removed."));
    type("/macro remove greet");
    type("/group remove fights");
    type("/group remove talk");
    type("/mud remove Two Words");
    EXPECT_EQ(allLists(), original);
    EXPECT_EQ(allListsAfterRestart(), original);
    type("/mud restore");
    EXPECT_THAT(answerTo("/mud list"), testing::Contains(HasSubstr("Two Words: mud.example 4000")));
}

TEST_F(ZNTConsoleEditingTest, AChangeThatTheStoreRefusesIsReportedAsNotStored)
{
    start(From::Terminal);
    for (const auto* line :
         {"/trigger add Kick: A %1 kicks you => kick %1", "/group add mine", "/macro add greet hi",
          "/mud add Here mud.example 4000", "/mud add Gone mud.example 4000", "/mud remove Gone"})
        type(line);
    const auto before = allLists();
    for (const std::string table : {"ZNTTrigger", "ZNTMacro", "ZNTMacroGroup", "ZNTMudList"})
        for (const std::string change : {"insert", "update", "delete"})
            client->database().runSQL("create trigger refuse_" + change + table + " before " + change +
                                      " on " + table + " begin select raise(abort, 'refused'); end");
    for (const auto* line :
         {"/trigger add Bite: A %1 bites => bite", "/trigger remove Kick", "/trigger off Kick",
          "/trigger on Kick", "/group add yours", "/group remove mine", "/macro add hit kick",
          "/macro remove greet", "/mud add There mud.example 4000", "/mud remove Here", "/mud default Here",
          "/mud restore"}) {
        EXPECT_THAT(answerTo(line), ElementsAre(testing::ContainsRegex("^! .*could not be (stored|written)")))
            << line;
        EXPECT_EQ(allLists(), before) << line;
    }
    EXPECT_EQ(allListsAfterRestart(), before);
}

TEST_F(ZNTConsoleEditingTest, ATriggerAnswersTheGameUntilItIsSwitchedOff)
{
    startConnected(From::Terminal);
    type("/trigger add Kick: A %1 kicks you hard! => kick %1");
    receive("A goblin kicks you hard!\r\n");
    EXPECT_EQ(server.received(), "kick goblin\r\n");
    type("/trigger off Kick");
    receive("A troll kicks you hard!\r\n");
    EXPECT_EQ(server.received(), "kick goblin\r\n");
    EXPECT_THAT(answerTo("/trigger list"), testing::Contains(EndsWith("(off)")));
    type("/trigger on Kick");
    receive("An orc and A bat kicks you hard!\r\n");
    EXPECT_EQ(server.received(), "kick goblin\r\nkick bat\r\n");
}

} // namespace
