#include "ZNTConsoleFixture.h"

using testing::ElementsAre;
using testing::EndsWith;

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
        start(From::Terminal);
        return allLists();
    }
    void type(std::initializer_list<const char*> lines)
    {
        for (const char* line : lines)
            ZNTConsoleFixture::type(line);
    }
    /// What `isRefusal` describes is all that each of the lines comes to, now and in the store.
    void expectRefused(const testing::Matcher<std::string>& isRefusal, std::vector<const char*> lines)
    {
        const auto before = allLists();
        for (const char* line : lines) {
            EXPECT_THAT(answerTo(line), ElementsAre(isRefusal)) << line;
            EXPECT_EQ(allLists(), before) << line;
        }
        EXPECT_EQ(allListsAfterRestart(), before);
    }
};

TEST_F(ZNTConsoleEditingTest, BadInputIsRefusedWithASentenceAndChangesNothing)
{
    start(From::Terminal);
    EXPECT_THAT(answerTo("/macro add greet say hi"),
                ElementsAre(testing::StartsWith("! There is no macro group")));
    type({"/trigger add twin: a => b", "/trigger add twin: c => d", "/group add mine",
          "/macro add greet say hi %1"});
    expectRefused(testing::StartsWith("! "),
                  {"/trigger", "/trigger add name: => kick", "/trigger add : x => y",
                   "/trigger add --loud n: x => y", "/trigger add bad: ([ => y", "/trigger add bad: x => %1",
                   "/trigger remove", "/trigger off 9999", "/trigger remove twin", "/group use yours",
                   "/macro add greet", "/macro remove wave", "/mud add Name mud.example 65536",
                   "/mud add Name mud.example 99999999999", "/mud remove -1"});
}

TEST_F(ZNTConsoleEditingTest, WhatIsAddedIsListedStoredAndRemovedAgain)
{
    start(From::Terminal);
    const auto original = allLists();
    EXPECT_THAT(answerTo("/trigger add slip: a -> b"),
                ElementsAre("Trigger slip is on, without a command; => stands before one."));
    EXPECT_THAT(answerTo("/trigger remove slip"), ElementsAre("Trigger slip is removed."));
    EXPECT_THAT(answerTo("/trigger add hit: a => b"), ElementsAre("Trigger hit is on."));
    type({"/trigger remove hit", "/group add"});
    EXPECT_EQ(machine.alert.shown.size(), 1U) << "a group needs a name";
    type({"/trigger add --gag --sound bell.wav Bell: The * rings: %1 => say => loud", "/trigger off Bell",
          "/group add fights", "/group add talk", "/macro add greet say hi %1", "/group use 1",
          "/macro add hit kick %1;bash %1", "/mud add Two Words mud.example 4000", "/mud default Two Words"});
    const auto changed = allLists();
    for (const auto* line :
         {"Bell: The * rings: %1 => say => loud (gag) (sound bell.wav) (off)", "~greet (talk): say hi %1",
          "~hit (fights): kick %1;bash %1", "Two Words: mud.example 4000 (default)"})
        EXPECT_THAT(changed, testing::Contains(EndsWith(line)));
    EXPECT_THAT(answerTo("/group list"), ElementsAre("1. fights (in use)", "2. talk"));
    EXPECT_EQ(allListsAfterRestart(), changed);
    EXPECT_THAT(answerTo("/trigger remove Bell"), ElementsAre("Trigger Bell is removed."));
    type({"/macro remove greet", "/group remove fights", "/group remove talk", "/mud remove Two Words"});
    EXPECT_EQ(allLists(), original);
    EXPECT_EQ(allListsAfterRestart(), original);
    EXPECT_THAT(answerTo("/mud restore"), ElementsAre("Every game is listed again."));
    EXPECT_THAT(allLists(), testing::Contains(testing::HasSubstr("Two Words: mud.example 4000")));
}

TEST_F(ZNTConsoleEditingTest, AChangeThatTheStoreRefusesIsReportedAsNotStored)
{
    start(From::Terminal);
    type({"/trigger add Kick: A %1 kicks you => kick %1", "/group add mine", "/macro add greet hi",
          "/mud add Here mud.example 4000", "/mud add Gone mud.example 4000", "/mud remove Gone"});
    for (const std::string table : {"ZNTTrigger", "ZNTMacro", "ZNTMacroGroup", "ZNTMudList"})
        for (const std::string change : {"insert", "update", "delete"})
            client->database().runSQL("create trigger refuse_" + change + table + " before " + change +
                                      " on " + table + " begin select raise(abort, 'refused'); end");
    expectRefused(testing::ContainsRegex("^! .*could not be (stored|written)"),
                  {"/trigger add Bite: A %1 bites => bite", "/trigger remove Kick", "/trigger off Kick",
                   "/trigger on Kick", "/group add yours", "/group remove mine", "/macro add hit kick",
                   "/macro remove greet", "/mud add There mud.example 4000", "/mud remove Here",
                   "/mud default Here", "/mud restore"});
}

TEST_F(ZNTConsoleEditingTest, WhatIsExportedCanBeImportedAtAnotherPlayers)
{
    start(From::Terminal);
    type({"/group add fight", "/macro add k kick orc", "/trigger add hit: hit => duck"});
    EXPECT_THAT(answerTo("/export ~/my records.txt"), ElementsAre(EndsWith("my records.txt.")));
    const auto before = allLists();
    type({"/trigger remove 1", "/macro remove k", "/group remove fight", "/mud restore"});
    EXPECT_THAT(answerTo("/import ~/my records.txt"),
                ElementsAre(testing::AllOf(
                    testing::StartsWith("1 trigger and 1 macro in 1 group imported. Already there: "),
                    EndsWith(" games. The triggers take effect after /reload."))));
    EXPECT_EQ(allLists(), before);
    EXPECT_THAT(answerTo("/import"), ElementsAre("! Name a file: /import FILE"));
    EXPECT_THAT(answerTo("/import /nowhere"),
                ElementsAre("! /nowhere could not be read: No such file or directory"));
    EXPECT_THAT(answerTo("/logs"), ElementsAre(machine.home.path("Library/Zantor/logs")));
}

} // namespace
