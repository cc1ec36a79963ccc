#include "VirtualRunLoop.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTThreadCount.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{

struct SpeechHandOver : testing::Test {
    VirtualRunLoop loop;
    ZNTRecordedSpeech engine;
    ZNTRecordedReader reader;
    ZNTSpeechSynth synth{loop, engine, reader};

    SpeechHandOver()
    {
        synth.setUseTimer(false);
        synth.speechOn();
    }
};

TEST_F(SpeechHandOver, AFloodKeepsItsOrderAndStartsFewThreadsAndNoneStays)
{
    const auto threadsBefore = threadsOfThisProcess();
    std::size_t mostThreads = 0;
    {
        ZNTSpeechHandOver handOver(synth);
        for (int number = 0; number < 20'000; ++number) {
            handOver.speakOnNewThread(znt::decimalText(number));
            if (number % 100 == 0)
                mostThreads = std::max(mostThreads, threadsOfThisProcess() - threadsBefore);
        }
    }
    // The kernel lists a thread for a moment after it was joined.
    EXPECT_LE(mostThreads, 2 * ZNTSpeechHandOver::mostThreads);
    EXPECT_TRUE(loop.runUntil([&] { return threadsOfThisProcess() <= threadsBefore; }));
    loop.advance(10'001);
    ASSERT_EQ(engine.said.size(), 20'000u);
    for (std::size_t at = 0; at < engine.said.size(); ++at)
        ASSERT_EQ(engine.said[at], std::to_string(at));
}

TEST_F(SpeechHandOver, NothingHandedOverBeforeAStopIsSpokenAfterIt)
{
    for (int round = 0; round < 200; ++round) {
        ZNTSpeechHandOver handOver(synth);
        for (int chunk = 0; chunk < 5; ++chunk)
            handOver.speakOnNewThread(u"before");
        synth.stopIt();
        synth.speechOn();
        handOver.speakOnNewThread(u"after");
    }
    loop.advance(1'000);
    EXPECT_THAT(engine.said, ElementsAre("after"));
}

} // namespace
