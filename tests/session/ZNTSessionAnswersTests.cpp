#include "ZNTDeflated.h"
#include "ZNTSessionFixture.h"

#include <algorithm>
#include <utility>

namespace
{

/// A session whose triggers have so much to answer in one chunk that it takes many turns of the loop.
class Answers : public ZNTSessionFixture
{
protected:
    static constexpr int matches = 3 * ZNTChunkInHand::mostAnswersInATurn;

    static std::string manyMatches() { return std::string(matches, 'a') + "end" + goAhead; }
    static std::string repeated(const std::string& text, int times)
    {
        std::string all;
        for (int count = 0; count < times; ++count)
            all += text;
        return all;
    }
    /// Sends them, and takes the first turn of the answers.
    void startAnswering()
    {
        server.send(manyMatches());
        machine.loop.runPosted();
        ASSERT_TRUE(session().hasTextHeldBack() && !server.received().empty());
    }
    /// The same, with answers that the network does not take until the server reads.
    void startAnsweringInVain()
    {
        addTrigger(u"a", std::u16string(1'000, u'x'));
        connect();
        server.stopReading();
        receive(manyMatches());
        ASSERT_TRUE(session().hasTextHeldBack());
    }
    static std::u16string chunk() { return std::u16string(matches, u'a') + u"end"; }
};

} // namespace

TEST_F(Answers, LeaveInOrderOverSeveralTurnsWithATypedLineBetweenThem)
{
    addTrigger(u"a", u"x");
    addTrigger(u"end", u"last", /*gag=*/true);
    connect();
    startAnswering();
    type(u"look");
    session().reloadTriggers();
    session().setSpeechOnOffBindingState(1);
    session().setSpeechInterruptOnOffBindingState(1);
    server.send("next" + goAhead);
    EXPECT_EQ(shown().find(u"end"), std::u16string::npos);
    settle();

    auto received = server.received();
    const auto typed = received.find("look\r\n");
    EXPECT_LT(typed, 3U * matches / 2);
    received.erase(typed, 6);
    EXPECT_EQ(received, repeated("x\r\n", matches) + "last\r\n");
    EXPECT_TRUE(shown().ends_with(u"last\r" + chunk() + u"next"));
    EXPECT_TRUE(logged().ends_with("last\r" + std::string(matches, 'a') + "endnext"));
    EXPECT_EQ(spoken(2), (std::vector<std::string>{"last", "next"})) << "the last match gags it";
}

TEST_F(Answers, WaitForAServerThatDoesNotTakeThemAndSoDoesItsFurtherText)
{
    startAnsweringInVain();
    receive("\xFF\xFA\x56\xFF\xF0");
    EXPECT_FALSE(session()._mccp()) << "the next chunk is not looked at";
    machine.loop.advance(2);
    EXPECT_EQ(silences, 0) << "reading is held, so this is no silence";
    type(u"look");
    EXPECT_TRUE(shown().ends_with(u"look\r"));

    server.resumeReading();
    settle();
    EXPECT_TRUE(session()._mccp());
    receive(deflated("\nHello." + goAhead, Z_SYNC_FLUSH));
    EXPECT_TRUE(shownWithoutNuls().ends_with(u"aendHello."));
    auto received = server.received();
    received.erase(received.find("look\r\n"), 6);
    EXPECT_TRUE(received == repeated(std::string(1'000, 'x') + "\r\n", matches));
    machine.loop.advance(0.5);
    EXPECT_EQ(silences, 1);
}

TEST_F(Answers, AreDroppedAtTheEndOfTheirConnectionAndItsTextIsShown)
{
    addTrigger(u"a", u"x");
    connect();
    startAnswering();
    session().connectToServer();
    connect();
    EXPECT_EQ(server.received(), "") << "the next game gets none of them";
    EXPECT_TRUE(shown().ends_with(u"x\r" + chunk()));

    const auto echoes = [this] { return std::ranges::count(shown(), u'x'); };
    const auto echoesBefore = echoes();
    startAnswering();
    server.send("So long.");
    server.reset();
    silence();
    EXPECT_LT(echoes() - echoesBefore, matches) << "nobody is left to answer";
    EXPECT_TRUE(shown().ends_with(chunk() + u"So long.")) << "what came before the end is not lost";
}

TEST_F(Answers, AreGivenUpAtTheEndOfTheProgramButNoTextIsLost)
{
    startAnsweringInVain();
    session().showAllThatCame();
    EXPECT_FALSE(session().hasTextHeldBack());
    EXPECT_TRUE(shown().ends_with(chunk()));

    server.resumeReading();
    settle();
    startAnswering();
    session().showAllThatCame();
    settle(); // the turn that was to go on finds nothing to do
    server.send(manyMatches());
    machine.loop.runPosted();
    ASSERT_TRUE(session().hasTextHeldBack());
    controller.reset();
    EXPECT_TRUE(logged().ends_with(std::string(matches, 'a') + "end"));
}

TEST_F(Answers, InterruptSpeechOnceATurnAndChunkAndTypedLinesEachTime)
{
    addTrigger(u"ring", u"answer");
    addTrigger(u"a", u"x");
    connect();
    session().setSpeechInterruptOnOffBindingState(1);
    auto& slept = machine.loop.slept;
    receive(repeated("ring ", 500) + goAhead);
    EXPECT_EQ(server.received(), repeated("answer\r\n", 500));
    EXPECT_EQ(slept, std::vector<double>{0.3});
    receive("ring" + goAhead);
    EXPECT_EQ(slept.size(), 2U) << "on the next turn";
    receive(manyMatches());
    EXPECT_EQ(slept.size(), 3U) << "the turns in which one chunk is answered count as one";

    slept.clear();
    type(u"look");
    EXPECT_EQ(slept, (std::vector<double>{0.2, 0.3}));
}

TEST_F(Answers, MayCallTheSessionAgainAndPauseOnceAndTheInnerTextComesAfter)
{
    addTrigger(u"ring", u"!n");
    addTrigger(u"rin", u"answer");
    connect();
    session().setSpeechInterruptOnOffBindingState(1);
    bool isFirst = true;
    whenSessionChanges = [&] { // the walk begins
        if (std::exchange(isFirst, false)) {
            session().processMessage(u"a rin in between\u00FF\u00F9");
            session().showAllThatCame(); // in its turn
        }
    };
    receive("ring ring rin" + goAhead);
    EXPECT_EQ(shown(), u"answer\ranswer\ranswer\rring ring rinanswer\ra rin in between");
    EXPECT_EQ(machine.loop.slept, std::vector<double>{0.3});
}

TEST_F(Answers, LeaveBeforeAPauseAsRepliesDo)
{
    addTrigger(u"ring", u"answer");
    connect();
    session().setSpeechInterruptOnOffBindingState(1);
    std::string atPause;
    machine.loop.whenSlept = [&] { atPause = server.received(); };
    session().sendMessageToServer(u"one", false);
    EXPECT_EQ(atPause, "");
    session().sendMessageToServer(u"two", false);
    EXPECT_EQ(atPause, "one\r\n");
    settle();
    receive("\xFF\xFB\x03 ring" + goAhead);
    EXPECT_EQ(atPause, "one\r\ntwo\r\n\xFF\x19\x03");
    EXPECT_EQ(server.received(), atPause + "answer\r\n");
}
