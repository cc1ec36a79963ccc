#include "VirtualRunLoop.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTSpeechSynth.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

struct SpeechSynth : testing::Test {
    VirtualRunLoop loop;
    ZNTRecordedSpeech engine;
    ZNTRecordedReader reader;
    ZNTSpeechSynth synth{loop, engine, reader};

    std::vector<std::string> saidSince() { return std::exchange(engine.said, {}); }
    /// One line every half second.
    void speakWithoutPacing()
    {
        synth.setUseTimer(false);
        synth.speechOn();
    }
    void speakAtOnce(const std::u16string& line)
    {
        synth.speakLine(line);
        loop.advance(0.5);
    }
};

TEST_F(SpeechSynth, ALineIsSpokenAtTheNextPollAndTheNextOneAfterItsWordsWorth)
{
    synth.speechOn();
    for (const auto* line :
         {u"\r\n\r\n", u"***", u"\r\none two three four five six seven eight nine ten\r\n", u"second"})
        synth.speakLine(line);
    loop.advance(0.49);
    EXPECT_THAT(engine.said, IsEmpty());
    loop.advance(0.02);
    EXPECT_THAT(saidSince(), ElementsAre("", "***", "one two three four five six seven eight nine ten"));
    loop.advance(4.98);
    EXPECT_THAT(engine.said, IsEmpty());
    loop.advance(0.02);
    EXPECT_THAT(saidSince(), ElementsAre("second"));
}

TEST_F(SpeechSynth, WithoutARateOneLineIsSpokenAndTheRateIsCorrectedForTheNext)
{
    synth.setSpeechRate(0);
    synth.speechOn();
    speakAtOnce(u"only this one");
    synth.speakLine(u"never");
    loop.advance(100'000);
    EXPECT_THAT(saidSince(), ElementsAre("only this one"));
    EXPECT_EQ(synth.speechRate(), 0.5);
    synth.stopIt();
    synth.speechOn();
    synth.speakLine(u"two minutes");
    synth.speakLine(u"later");
    loop.advance(239);
    EXPECT_THAT(saidSince(), ElementsAre("two minutes"));
    loop.advance(2);
    EXPECT_THAT(saidSince(), ElementsAre("later"));
}

TEST_F(SpeechSynth, AStopSilencesAtOnceAndForgetsEvenWhatWasOnItsWay)
{
    engine.staysSpeaking = true;
    synth.speechOn();
    synth.speakLine(u"current");
    synth.speakLine(u"queued");
    loop.advance(0.5);
    const auto before = synth.stopCount();
    synth.stopIt();
    EXPECT_THAT(saidSince(), ElementsAre("current", "(stop)"));
    EXPECT_EQ(loop.pendingTimers(), 0u);
    synth.speechOn();
    synth.speakLine(u"overtaken by the stop", before);
    speakAtOnce(u"new");
    EXPECT_THAT(saidSince(), ElementsAre("new"));
}

TEST_F(SpeechSynth, UrgentTextsComeBeforeWhatWaitsInTheirOrderAndNeverCutOffALine)
{
    synth.speakBeforeWaiting(u"speech is off");
    engine.staysSpeaking = true;
    synth.speechOn();
    synth.speakBeforeWaiting(u"at once");
    EXPECT_THAT(saidSince(), ElementsAre("at once"));
    synth.speakLine(u"waiting");
    synth.speakBeforeWaiting(u"first");
    synth.speakBeforeWaiting(u"second");
    loop.advance(60);
    EXPECT_THAT(saidSince(), IsEmpty());
    for (const auto* next : {"first", "second", "waiting"}) {
        engine.speaks = false;
        loop.advance(0.5);
        EXPECT_THAT(saidSince(), ElementsAre(next));
    }
    synth.speakBeforeWaiting(u"stopped");
    synth.stopIt();
    synth.speechOn();
    loop.advance(60);
    EXPECT_THAT(saidSince(), ElementsAre("(stop)"));
}

TEST_F(SpeechSynth, TheReaderSpeaksWhileItRunsAndTheEngineWhereItFindsNoWay)
{
    reader.runs = true;
    speakWithoutPacing();
    speakAtOnce(u"reader");
    reader.findsWay = false;
    speakAtOnce(u"no way");
    reader.findsWay = true;
    synth.setUseSystemVoiceNotVO(true);
    speakAtOnce(u"own voice");
    EXPECT_THAT(reader.said, ElementsAre("reader"));
    EXPECT_THAT(engine.said, ElementsAre("no way", "own voice"));
}

TEST_F(SpeechSynth, NeitherEngineNorReaderIsHandedControlsOrPrivateUse)
{
    speakWithoutPacing();
    for (const bool runs : {false, true}) {
        reader.runs = runs;
        speakAtOnce(u"a\x1b[1m\u0007b\tc\r\nd\u009b\ue000e\xD83Dx\U000F0000\uFFFF\u00e9\U0001F600");
        EXPECT_THAT(runs ? reader.said : engine.said, ElementsAre("a[1mb c dex\xc3\xa9\xf0\x9f\x98\x80"));
    }
}

TEST_F(SpeechSynth, AllThatComesIsSpokenUntilMemoryRunsOutAndThenTheOlderHalfIsCountedInLines)
{
    constexpr int most = (8 << 20) / 128;
    const auto speakChunk = [&](int number) { // 128 units: two lines and a blank one, as a game sends them
        const auto chunk = znt::decimalText(1'000'000 + number) + u" a\r\n\r\nb";
        synth.speakLine(chunk + std::u16string(126 - chunk.size(), u'.') + u"\r\n");
    };
    speakWithoutPacing();
    for (int number = 0; number < most; ++number)
        speakChunk(number);
    loop.advance(0.5);
    ASSERT_EQ(saidSince().front().substr(0, 7), "1000000");

    speakChunk(most);
    speakChunk(most + 1);
    loop.advance(1);
    ASSERT_EQ(engine.said.size(), 2u);
    EXPECT_EQ(engine.said[0], std::to_string(most + 2) + " lines were not spoken.");
    EXPECT_EQ(engine.said[1].substr(0, 7), std::to_string(1'000'000 + most / 2 + 2));
}

TEST_F(SpeechSynth, AHandedOverFloodKeepsItsOrder)
{
    speakWithoutPacing();
    {
        ZNTSpeechHandOver handOver(synth);
        for (int number = 0; number < 20'000; ++number)
            handOver.speakOnNewThread(znt::decimalText(number));
    }
    loop.advance(10'001);
    ASSERT_EQ(engine.said.size(), 20'000u);
    for (std::size_t at = 0; at < engine.said.size(); ++at)
        ASSERT_EQ(engine.said[at], std::to_string(at));
}

TEST_F(SpeechSynth, NothingHandedOverBeforeAStopIsSpokenAfterIt)
{
    speakWithoutPacing();
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
