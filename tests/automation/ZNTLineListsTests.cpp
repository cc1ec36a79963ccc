#include "ZNTChannelHistory.h"
#include "ZNTSpokenLines.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"
#include "ZNTTriggerPatience.h"

#include <algorithm>
#include <ctime>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

double processorTime() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

TEST(ZNTSpokenLinesTest, EachLineIsSpokenAtOnceInItsTurnOrNotAtAll)
{
    const struct {
        std::vector<std::string> urgent, quiet;
        std::u16string chunk;
        std::vector<std::u16string> atOnce;
        std::u16string inTurn;
    } rows[] = {
        {{}, {}, u"\r\nA\n\rB", {}, u"\r\nA\n\rB"},
        {{"tells"}, {"Sun"}, u"A\r\nBob tells\r\n\r\nSun\n\rB", {u"Bob tells"}, u"A\r\n\r\nB"},
        {{"Bob"}, {"Bob"}, u"Bob\rBob\r\n", {u"Bob", u"Bob"}, u""}, // urgent wins
        {{"^B", "y$"}, {}, u"A\nB\nxy\r\nAB\nya", {u"B", u"xy"}, u"A\nAB\nya"},
        {{}, {"Bob * you"}, u"Bob\r\nsees you\r\nBob sees you", {}, u"Bob\r\nsees you\r\n"},
        {{"%1 hits you"},
         {},
         u"a\U0001F409hits\n\U0001F409 orc hits you",
         {u"\U0001F409 orc hits you"},
         u"a\U0001F409hits\n"},
        {{"([", "Bob", "(?=x)"}, {}, u"Bob\nax\n", {u"Bob", u"ax"}, u""},
        {{}, {"A"}, u"A", {}, u""},
    };
    VirtualRunLoop loop;
    ZNTRecordedLog log;
    ZNTSpokenLines lines(loop, log);
    for (const auto& row : rows) {
        SCOPED_TRACE(znt::utf8FromText(row.chunk));
        const auto problems = lines.setPatterns(row.urgent, row.quiet);
        EXPECT_THAT(problems, SizeIs(row.urgent.size() == 3 ? 1 : 0));
        EXPECT_THAT(lines.setPatterns(row.urgent, row.quiet), IsEmpty()) << "the list is as before";
        for (int time = 0; time < 2; ++time) {
            const auto parts = lines.parted(row.chunk);
            EXPECT_EQ(parts.atOnce, row.atOnce);
            EXPECT_EQ(parts.inTurn, row.inTurn);
        }
    }
}

TEST(ZNTSpokenLinesTest, AHostileFloodTakesAMomentAndTheOtherPatternsGoOnMatching)
{
    VirtualRunLoop loop;
    ZNTRecordedLog log;
    ZNTSpokenLines lines(loop, log);
    lines.setPatterns({"(a+)+[0-9]", "* tells you"}, {"says[,:]"});
    std::u16string flood;
    for (int line = 0; line < 5'000; ++line)
        flood += std::u16string(60, u'a') + u"c says, ([\n";
    flood += u"Bob tells you\n";
    for (int chunk = 0; chunk < 4; ++chunk) {
        const auto start = processorTime();
        const auto parts = lines.parted(flood);
        EXPECT_THAT(parts.atOnce, ElementsAre(u"Bob tells you"));
        EXPECT_LT(processorTime() - start, 3);
    }
    EXPECT_THAT(log.lines, SizeIs(ZNTTriggerPatience::mostFailuresRunning)) << "then it rests";
}

class ZNTChannelHistoryTest : public testing::Test
{
protected:
    ZNTChannelHistoryTest() { loop.startOfTime += 24h; }

    VirtualRunLoop loop;
    ZNTRecordedLog log;
    ZNTChannelHistory history{loop, loop, log};
};

TEST_F(ZNTChannelHistoryTest, TheKeysGoThroughTheLinesOfOneChannelAndStayOnTheirs)
{
    EXPECT_EQ(history.newest(), u"The channel history is off. The setting channel-history turns it on.");
    EXPECT_EQ(history.nextChannel(), history.older());
    history.setChannels({{"tells: tells you", "Says: says", "tells:You tell", "x: "}});
    EXPECT_EQ(history.older(), u"The channel tells has no line yet.");
    history.addText(u"\x1b Bob tells you,\tone\x07\r\nA room\r\nYou tell Bob, two (who says no)\r\n");
    loop.advance(61);
    EXPECT_EQ(history.older(), u"1 minute ago: You tell Bob, two (who says no)");
    history.addText(u"Bob tells you, three");
    EXPECT_EQ(history.older(), u"1 minute ago: Bob tells you, one");
    EXPECT_EQ(history.older(), u"1 minute ago: Bob tells you, one");
    EXPECT_EQ(history.newer(), u"1 minute ago: You tell Bob, two (who says no)");
    EXPECT_EQ(history.newer(), u"just now: Bob tells you, three");
    EXPECT_EQ(history.newer(), u"just now: Bob tells you, three");
    EXPECT_EQ(history.nextChannel(), u"Says, 1 line. 1 minute ago: You tell Bob, two (who says no)");
    EXPECT_EQ(history.nextChannel(), u"tells, 3 lines. just now: Bob tells you, three");
}

TEST_F(ZNTChannelHistoryTest, TheLastHundredLinesOfEachChannelAreKeptUntilItIsNoLongerListed)
{
    history.setChannels({{"a: x", "b: y", "(?:z)|q: p"}});
    EXPECT_THAT(history.channelNames(), ElementsAre(u"a", u"b", u"lines"));
    for (int line = 0; line < 150; ++line) {
        history.addText(u"x " + znt::decimalText(line) + (line % 50 == 0 ? u" y\n" : u"\n"));
        if (line == 0) {
            EXPECT_EQ(history.newest(), u"just now: x 0 y");
        }
    }
    EXPECT_TRUE(history.newer().ends_with(u"x 51")) << "the line that was said last is gone";
    EXPECT_THAT(history.lines(u"A"), SizeIs(100));
    EXPECT_THAT(history.lines(u"b"), SizeIs(3));
    const auto all = history.lines(u"");
    ASSERT_THAT(all, SizeIs(101));
    EXPECT_TRUE(std::ranges::is_sorted(all, {}, &ZNTChannelLine::number));
    history.setChannels({{"b: never", "c: q: p"}});
    EXPECT_THAT(history.lines(u""), SizeIs(3));
    EXPECT_EQ(history.nextChannel(), u"The channel c has no line yet.");
    history.addText(u"q: p 1\nq: p 2\n");
    EXPECT_EQ(history.older(), u"just now: q: p 2") << "the channel had no line whose place could be kept";
    history.setChannels(std::nullopt);
    history.setChannels({{"b: y"}});
    EXPECT_THAT(history.lines(u""), IsEmpty());
}

TEST(ZNTTimeAgoTest, AnAgeIsSaidInItsLargestUnit)
{
    const std::pair<std::chrono::seconds, std::u16string_view> rows[] = {
        {-1h, u"just now"},       {9s, u"just now"},          {10s, u"10 seconds ago"},
        {59s, u"59 seconds ago"}, {60s, u"1 minute ago"},     {3'599s, u"59 minutes ago"},
        {3'600s, u"1 hour ago"},  {86'399s, u"23 hours ago"}, {172'800s, u"2 days ago"},
    };
    for (const auto& [age, words] : rows)
        EXPECT_EQ(znt::timeAgo(age), words);
}

} // namespace
