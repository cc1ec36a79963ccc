#include "ZNTConsoleFixture.h"

using testing::ElementsAre;
using testing::StartsWith;

namespace
{

using ZNTConsoleRecordingsTest = ZNTConsoleFixture;

TEST_F(ZNTConsoleRecordingsTest, WhatWasRecordedIsKeptListedEditedAndRun)
{
    confirmsChanges = true;
    startConnected(From::Terminal);
    for (const auto* line : {"/record", "look", "north", "/record"})
        type(line);
    const struct {
        const char* command;
        std::vector<std::string> answer;
    } steps[] = {
        {"/kept", {"No recordings are kept yet; /record records, and /keep NAME keeps what was recorded."}},
        {"/keep rat hunt 0,5", {"Kept rat hunt: 2 commands, 0.5 seconds between them."}},
        {"/keep walk again", {"Kept walk again: 2 commands, 1 second between them."}},
        {"/kept add 1 say a b", {"Kept rat hunt: 3 commands, 0.5 seconds between them."}},
        {"/kept change 1 1 ~greet", {"Kept rat hunt: 3 commands, 0.5 seconds between them."}},
        {"/kept delete 1 2", {"Kept rat hunt: 2 commands, 0.5 seconds between them."}},
        {"/kept show rat hunt",
         {"rat hunt: 2 commands, 0.5 seconds between them", "1. ~greet", "2. say a b"}},
        {"/kept rename 1 the hunt", {"Kept the hunt: 2 commands, 0.5 seconds between them."}},
        {"/kept change 1 1 dance", {"Kept the hunt: 2 commands, 0.5 seconds between them."}},
        {"/kept seconds 1 2", {"Kept the hunt: 2 commands, 2 seconds between them."}},
        {"/kept list",
         {"1. the hunt: 2 commands, 2 seconds between them",
          "2. walk again: 2 commands, 1 second between them"}},
        {"/kept remove 2", {"The recording walk again is removed."}}};
    for (const auto& [command, answer] : steps)
        EXPECT_EQ(answerTo(command), answer) << command;

    const auto before = received().size();
    EXPECT_THAT(answerTo("/run the hunt again"),
                testing::Contains("Running the hunt: 2 commands, 2 seconds between them, again and again; "
                                  "/stop ends it."));
    machine.loop.advance(5);
    EXPECT_EQ(received().substr(before), "dance\r\nsay a b\r\ndance\r\n");
    EXPECT_THAT(answerTo("/stop"), ElementsAre("The recording the hunt is stopped."));
    EXPECT_THAT(answerTo("/stop"), ElementsAre(StartsWith("! There is no walk")));
}

TEST_F(ZNTConsoleRecordingsTest, BadInputIsRefusedWithASentenceAndChangesNothing)
{
    start(From::Terminal);
    EXPECT_THAT(answerTo("/keep hunt"), ElementsAre("! A recording needs at least one command."));
    ASSERT_TRUE(client->keptRecordings().keep({u"hunt", 1, {u"look"}}));
    const auto before = client->keptRecordings().all();
    for (const auto* line :
         {"/keep", "/keep hunt 0", "/run", "/run again", "/run hunt", "/run gone", "/kept remove",
          "/kept show 2", "/kept burn 1", "/kept rename 1", "/kept seconds 1 4000", "/kept seconds 1 x",
          "/kept change 1 2 x", "/kept delete 1 0", "/kept delete 1 1"}) {
        EXPECT_THAT(answerTo(line), ElementsAre(StartsWith("! "))) << line;
        EXPECT_EQ(client->keptRecordings().all(), before) << line;
    }
}

} // namespace
