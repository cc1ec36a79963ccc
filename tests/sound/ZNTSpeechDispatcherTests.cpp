#include "VirtualRunLoop.h"
#include "ZNTRecordingSpeechService.h"
#include "ZNTSoundServer.h"
#include "ZNTSpeechConnection.h"
#include "ZNTSpeechDispatcher.h"
#include "ZNTSpeechMessages.h"
#include "ZNTTestPlatform.h"

#include <optional>

using testing::ElementsAre;
using namespace std::chrono_literals;

namespace
{

struct SpeechService : testing::Test {
    using Clock = std::chrono::steady_clock;

    VirtualRunLoop loop;
    ZNTRecordingSpeechService service;
    ZNTRecordedLog log;
    std::optional<ZNTSpeechDispatcher> engine;

    SpeechService()
    {
        service.start();
        engine.emplace(loop, log, ZNTSpeechServiceStart::Never);
    }

    /// Real time passes until all is said.
    bool fallsSilent()
    {
        return loop.runUntil([this] { return !engine->isSpeaking(); }, 10);
    }
    /// Hands a text over that takes its time, and waits for the service to begin it.
    void sayLong()
    {
        const auto before = service.said().size();
        service.staysSpeaking = true;
        engine->startSpeaking(u"long");
        ASSERT_TRUE(loop.runUntil([&] { return service.said().size() > before; }));
    }
};

TEST_F(SpeechService, TextArrivesAsItWasAndNothingIsNeverHandedOver)
{
    for (const auto* text : {u"", u"  \t\r\n", u".", u"..", u".\r\n.",
                             u"caf\u00e9 \u4f60\u597d \U0001F600 %s \"x\"", u"QUIT", u"after"})
        engine->startSpeaking(text);
    ASSERT_TRUE(fallsSilent());
    EXPECT_THAT(service.finishedTexts(),
                ElementsAre(".", "..", ".\r\n.",
                            "caf\xc3\xa9 \xe4\xbd\xa0\xe5\xa5\xbd \xf0\x9f\x98\x80 %s \"x\"", "QUIT",
                            "after"));
}

TEST_F(SpeechService, AStopSilencesWithinFiftyMillisecondsAlsoIfTheServiceOwesAnAnswer)
{
    constexpr int noAnswer = 0, receivingData = 230, messageQueued = 225;
    for (const int heldBack : {receivingData, messageQueued, noAnswer}) {
        SCOPED_TRACE(heldBack);
        engine.emplace(loop, log, ZNTSpeechServiceStart::Never);
        sayLong();
        service.heldBackCode = heldBack;
        const std::size_t commandsBefore = service.commandsHeard;
        engine->startSpeaking(u"on its way");
        ASSERT_TRUE(loop.runUntil([&] { return service.commandsHeard > commandsBefore; }));
        engine->startSpeaking(u"never");
        const auto stopped = Clock::now();
        engine->stopSpeaking();
        EXPECT_FALSE(engine->isSpeaking());
        ASSERT_TRUE(loop.runUntil([this] { return service.said().back().wasCancelled; }));
        EXPECT_LT(Clock::now() - stopped, 50ms);
        service.heldBackCode = noAnswer;
    }
    const std::size_t commandsBefore = service.commandsHeard;
    for (int chunk = 0; chunk < 100; ++chunk)
        engine->stopSpeaking();
    service.staysSpeaking = false;
    engine->startSpeaking(u"next");
    ASSERT_TRUE(fallsSilent());
    EXPECT_EQ(service.commandsHeard, commandsBefore + 1) << "silence was asked of a silent service";
    EXPECT_EQ(service.said().size(), 4u);
}

TEST_F(SpeechService, TheEndIsReportedOnceAfterAllIsSaidOrLostAndNeverAfterAStop)
{
    int ends = 0;
    engine->setEndListener([&] { ++ends; });
    sayLong();
    engine->startSpeaking(u"two");
    loop.turn(20);
    EXPECT_EQ(ends, 0);
    service.staysSpeaking = false;
    ASSERT_TRUE(loop.runUntil([&] { return ends > 0; }));
    EXPECT_EQ(service.finishedTexts().size(), 2u);
    sayLong();
    engine->stopSpeaking();
    ASSERT_TRUE(loop.runUntil([this] { return service.said().back().wasCancelled; }));
    loop.turn(20);
    EXPECT_EQ(ends, 1);
}

TEST_F(SpeechService, ATextThatTheDesktopSilencesCountsAsEndedAndTheEndOfTheEngineSilencesIt)
{
    sayLong();
    service.cancelAll();
    EXPECT_TRUE(fallsSilent());
    sayLong();
    engine.reset();
    EXPECT_TRUE(service.said()[1].wasCancelled);
}

TEST(SpeechMessages, OneWhoseEndIsLostIsGivenUpAndOneThatWaitedIsGivenItsTimeAfresh)
{
    ZNTSpeechMessages messages;
    const ZNTSpeechMessages::Time start{};
    messages.add(7, {"lost"}, start);
    messages.add(9, {"long after others"}, start);
    messages.noteBegin(9, start + 30s);
    messages.forgetOverdue(start + 60s);
    const auto owed = messages.takeAll();
    ASSERT_EQ(owed.size(), 1u);
    EXPECT_EQ(owed[0].utf8, "long after others");
}

TEST_F(SpeechService, AStopReachesEvenATextThatIsJustOnItsWay)
{
    service.staysSpeaking = true;
    for (int round = 0; round < 50; ++round) {
        engine->startSpeaking(u"overtaken");
        std::this_thread::sleep_for(std::chrono::microseconds(round * 20));
        engine->stopSpeaking();
    }
    engine->startSpeaking(u"last");
    ASSERT_TRUE(loop.runUntil([this] {
        const auto said = service.said();
        return !said.empty() && said.back().text == "last";
    })) << "a text of an earlier round is still being said";
    EXPECT_THAT(service.finishedTexts(), testing::IsEmpty());
}

TEST_F(SpeechService, AServiceThatIsKilledAndComesBackSaysWhatItOwes)
{
    sayLong();
    engine->startSpeaking(u"two");
    service.kill();
    engine->startSpeaking(u"three");
    EXPECT_TRUE(engine->isSpeaking());
    service.staysSpeaking = false;
    service.start();
    ASSERT_TRUE(fallsSilent());
    EXPECT_THAT(service.finishedTexts(), ElementsAre("long", "two", "three"));
}

TEST_F(SpeechService, WithoutAServiceSpeechIsUnavailableAndNothingWaits)
{
    service.kill();
    int changes = 0;
    engine->setAvailabilityListener([&] { ++changes; });
    for (const auto* text : {u"one", u"two"}) {
        EXPECT_EQ(engine->isAvailable(), changes == 0);
        engine->startSpeaking(text);
        ASSERT_TRUE(fallsSilent());
        loop.runPosted();
        EXPECT_EQ(changes, 1);
        EXPECT_THAT(log.lines, ElementsAre(testing::HasSubstr("\"speech-dispatcher\"")));
    }
    service.start();
    engine->startSpeaking(u"refused");
    loop.advance(5);
    engine->startSpeaking(u"three");
    ASSERT_TRUE(fallsSilent());
    EXPECT_THAT(service.finishedTexts(), ElementsAre("three"));
    EXPECT_TRUE(engine->isAvailable());
    EXPECT_EQ(changes, 2);
}

TEST(SpeechConnection, AServiceOfAnotherMachineIsReached)
{
    const ZNTSoundServer machine({});
    const auto place = machine.url("", "localhost").substr(std::string_view("http://").size());
    setenv("SPEECHD_ADDRESS", ("inet_socket:" + place).c_str(), /*replace=*/1);
    EXPECT_NE(ZNTSpeechConnection::open({}), nullptr);
}

TEST_F(SpeechService, OneThatStopsAnsweringHoldsUpNeitherTheGameNorItsEnd)
{
    for (const bool answersAtFirst : {true, false}) {
        SCOPED_TRACE(answersAtFirst ? "when spoken to" : "when connected to");
        service.kill();
        service.answers = answersAtFirst;
        service.start();
        engine.emplace(loop, log, ZNTSpeechServiceStart::Never);
        if (answersAtFirst) {
            engine->startSpeaking(u"heard");
            ASSERT_TRUE(fallsSilent());
        }
        service.answers = false;
        const std::size_t heardBefore = service.commandsHeard;
        auto before = Clock::now();
        engine->startSpeaking(u"stuck");
        EXPECT_LT(Clock::now() - before, 50ms);
        ASSERT_TRUE(loop.runUntil([&] { return service.commandsHeard > heardBefore; }));
        before = Clock::now();
        engine->stopSpeaking();
        EXPECT_FALSE(engine->isSpeaking());
        EXPECT_LT(Clock::now() - before, 50ms);
        engine.reset();
        EXPECT_LT(Clock::now() - before, 3s);
    }
}

} // namespace
