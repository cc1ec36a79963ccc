#include "ZNTRecordedLines.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class ZNTSpeedWalk : public testing::Test, protected ZNTWalkMachine
{
protected:
    ~ZNTSpeedWalk() override { EXPECT_FALSE(sent.isAnyMeantLiterally); }
    std::vector<std::u16string> linesAfter(double seconds)
    {
        loop.advance(seconds);
        return std::exchange(sent.lines, {});
    }
};

TEST_F(ZNTSpeedWalk, SendsTheStepsOfAPathOneAnIntervalAndStops)
{
    const std::tuple<std::u16string, double, std::vector<std::u16string>> table[] = {
        {u"!3n2e", 1, {u"n", u"n", u"n", u"e", u"e"}},
        {u"!2~s[open door]w", 2, {u"s", u"open door", u"w"}},
        {u"! 2.5 ~n", 2, {u"n"}},
        {u"!0~nsew", 0.001, {u"n", u"s", u"e", u"w"}},
        {u"!x~n", 0.001, {u"n"}},
        {u"!n2e~s~w", 1, {u"n", u"e", u"e"}},
        {u"!-3~n", 0.001, {u"n"}},
        {u"!2[]w", 1, {u"", u"", u"w"}},
        {u"!2\u00FC\U0001F409n", 1, {u"\u00FC", u"\u00FC", u"\U0001F409", u"n"}},
        {u"!\u00B2n", 1, {u"\u00B2", u"n"}}, // not a digit
        {u"!\U0001D7D8n", 1, {u"n"}},
        {u"!\u0663n", 1, {u"n"}}, // a digit of another script, but not one of a number
        {u"", 1, {}},
        {u"!2", 1, {}},
        {u"!n12", 1, {u"n"}}, // the path ends inside a step, which is not sent
        {u"!n[open door", 1, {u"n"}},
        {u"!]2[3n]", 1, {u"]", u"3n", u"3n"}}};
    int endsWithoutStep = 0;
    walker.endedWithoutStep = [&] { ++endsWithoutStep; };
    for (const auto& [line, interval, steps] : table) {
        SCOPED_TRACE(testing::PrintToString(line));
        walker.speedwalk(line);
        EXPECT_THAT(linesAfter(interval * 0.99), IsEmpty()) << "the first step goes out after an interval";
        EXPECT_EQ(linesAfter(interval * static_cast<double>(steps.size())), steps);
        EXPECT_TRUE(walker.isWalking()) << "a walk ends an interval after its last step";
        EXPECT_THAT(linesAfter(interval), IsEmpty());
        EXPECT_EQ(loop.pendingTimers(), 0u);
        EXPECT_EQ(std::exchange(endsWithoutStep, 0), steps.empty() ? 1 : 0);
    }
}

TEST_F(ZNTSpeedWalk, AStopKeepsThePlaceForTheNextWalkAndForgetsOwedRepeats)
{
    walker.speedwalk(u"!abcdef");
    EXPECT_THAT(linesAfter(3), ElementsAre(u"a", u"b", u"c"));
    walker.stop();
    EXPECT_FALSE(walker.isWalking());
    EXPECT_THAT(linesAfter(10), IsEmpty());

    walker.speedwalk(u"!12345xyz");
    EXPECT_THAT(linesAfter(1), ElementsAre(u"x")) << "reading begins at the fourth character";
    walker.stop();
    walker.speedwalk(u"!short");
    EXPECT_THAT(linesAfter(10), IsEmpty()) << "the place is past this path's end";
    walker.speedwalk(u"!9ne");
    EXPECT_THAT(linesAfter(2), ElementsAre(u"n", u"n")) << "which put it back to the start";
    walker.stop();
    walker.speedwalk(u"!9nw");
    EXPECT_THAT(linesAfter(3), ElementsAre(u"w"));
}

TEST_F(ZNTSpeedWalk, TwoWalksShareOneSetOfCounters)
{
    walker.speedwalk(u"!2~abcd");
    loop.advance(0.5);
    walker.speedwalk(u"!2~ABCDEF");
    // Each tick, of either walk, moves the one place on, through the path of the walk that ticks.
    EXPECT_THAT(linesAfter(5), ElementsAre(u"a", u"B", u"c", u"D"));
    EXPECT_THAT(linesAfter(0.75), IsEmpty()) << "the first walk met its end, which put the place back";
    EXPECT_THAT(linesAfter(0.25), ElementsAre(u"A")) << "so the second begins anew";

    walker.speedwalk(u"!vwxyz");
    walker.stop();
    EXPECT_THAT(linesAfter(12), ElementsAre(u"B", u"C", u"D", u"E", u"F"))
        << "the last one alone was stopped";
}

TEST_F(ZNTSpeedWalk, FurtherWalksAreRefusedAtAFixedNumberAndAllEndAtOnce)
{
    const auto route = ZNTSpeedWalking::routeOfLine(u"!" + std::u16string(1'000'000, u'n'));
    for (int walk = 0; walk < 10'000; ++walk)
        walker.speedwalk(route);
    EXPECT_EQ(loop.pendingTimers(), 100u);
    EXPECT_THAT(log.lines, ElementsAre("Speed walk refused: 100 walks go on already"));
    EXPECT_EQ(route.use_count(), 101) << "they share the path";
    EXPECT_EQ(linesAfter(1).size(), 100u);

    walker.stop();
    walker.stop();
    EXPECT_EQ(loop.pendingTimers(), 99u) << "a second stop ends nothing";
    walker.stopAll();
    EXPECT_EQ(loop.pendingTimers(), 0u);
    for (int line = 0; line < 3; ++line) // long paths of their own
        walker.speedwalk(std::u16string(ZNTSpeedWalking::mostPathText / 2 + 1, u'n'));
    EXPECT_EQ(loop.pendingTimers(), 2u);
    EXPECT_EQ(log.lines.size(), 1u) << "at most one line a minute";
}

TEST_F(ZNTSpeedWalk, AStepWaitsWhileTheServerTakesNothing)
{
    walker.speedwalk(u"!2ns");
    EXPECT_THAT(linesAfter(1), ElementsAre(u"n"));
    sent.isRoom = false;
    EXPECT_THAT(linesAfter(60), IsEmpty());
    sent.isRoom = true;
    EXPECT_THAT(linesAfter(2), ElementsAre(u"n", u"s")) << "no step is lost";
    sent.isRoom = false;
    loop.advance(5);
    EXPECT_TRUE(walker.isWalking()) << "the end waits as a step does";
}

TEST_F(ZNTSpeedWalk, AStepMayStopTheWalkOrStartAnother)
{
    sent.onLine = [this](std::u16string_view line) {
        if (line == u"!stop")
            walker.stop();
        else if (line == u"!x")
            walker.speedwalk(line);
    };
    walker.speedwalk(u"!a[!stop]b");
    EXPECT_THAT(linesAfter(5), ElementsAre(u"a", u"!stop"));
    EXPECT_FALSE(walker.isWalking());
    walker.speedwalk(u"!ab"); // the place is past this path's end
    loop.advance(1);
    walker.speedwalk(u"!0~[!x]");
    EXPECT_THAT(linesAfter(5), ElementsAre(u"!x", u"x"));
}

} // namespace
