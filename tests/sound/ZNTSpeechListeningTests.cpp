// Speech that follows the voice, catches up and leaves out what is no text.
#include "VirtualRunLoop.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTSpeechFilters.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTSpeechSynth.h"
#include "ZNTTimedSpeech.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

using testing::ElementsAre;

namespace
{

struct ListeningSpeech : testing::Test {
    VirtualRunLoop loop;
    ZNTTimedSpeech engine{loop};
    ZNTRecordedReader reader;
    ZNTSpeechSynth synth{loop, engine, reader};

    ListeningSpeech()
    {
        synth.setFollowsVoice(true);
        synth.speechOn();
        loop.advance(60);
    }
    void say(const std::string& line) { synth.speakLine(znt::textFromUtf8(line)); }
    [[nodiscard]] std::vector<std::string> texts() const
    {
        std::vector<std::string> all;
        for (const auto& one : engine.said)
            all.push_back(one.text);
        return all;
    }
};

TEST_F(ListeningSpeech, ALineBeginsWhenItComesOrWhenTheLastOneEnds)
{
    for (const bool usesTimer : {true, false}) {
        SCOPED_TRACE(usesTimer ? "paced" : "polled");
        synth.setUseTimer(usesTimer);
        engine.said.clear();
        const auto start = loop.now();
        ZNTSpeechHandOver(synth).speakOnNewThread(u"one two three");
        loop.runPosted();
        say("four five six seven");
        say("\x07");
        say("eight");
        loop.advance(10);
        ASSERT_THAT(texts(), ElementsAre("one two three", "four five six seven", "eight"));
        EXPECT_EQ(engine.said[0].begin, start);
        EXPECT_LT(engine.said[1].begin - engine.said[0].end, 0.05);
        EXPECT_LT(engine.said[2].begin - engine.said[1].end, 0.05);
    }
}

TEST_F(ListeningSpeech, AnUrgentTextFollowsTheLineThatSoundsAlsoInTheSettledPace)
{
    synth.setFollowsVoice(false);
    say("one two three");
    loop.advance(0.5);
    synth.speakBeforeWaiting(u"urgent");
    loop.advance(10);
    ASSERT_THAT(texts(), ElementsAre("one two three", "urgent"));
    EXPECT_EQ(engine.said[1].begin, engine.said[0].end);
}

TEST_F(ListeningSpeech, TheReaderIsGivenEachLineAsItComesAndPacedOnlyIfLinesMayBeSkipped)
{
    reader.runs = true;
    for (const bool catchesUp : {false, true}) {
        SCOPED_TRACE(catchesUp);
        reader.said.clear();
        synth.setCatchesUp(catchesUp);
        synth.setSpeechRate(60); // a second a word
        for (const auto* line : {"one two", "three four", "five"})
            say(line);
        loop.advance(0.5);
        EXPECT_EQ(reader.said.size(), catchesUp ? 1u : 3u);
        synth.speakBeforeWaiting(u"urgent");
        EXPECT_EQ(reader.said.back(), "urgent");
        loop.advance(2.4);
        EXPECT_EQ(reader.said.size(), catchesUp ? 2u : 4u);
        loop.advance(0.2);
        EXPECT_EQ(reader.said.size(), catchesUp ? 3u : 4u);
        loop.advance(60);
        EXPECT_EQ(reader.said.size(), 4u);
        EXPECT_EQ(reader.said.back(), catchesUp ? "five" : "urgent");
    }
}

/// How long each spoken line had waited, and what the notices say.
struct Heard {
    double oldest = 0;
    long lines = 0, skipped = 0;
    bool saysTwoNoticesTogether = false;
};

TEST_F(ListeningSpeech, NoLineIsLateAndAllThatAreSkippedAreCounted)
{
    struct Scene {
        const char* what;
        int chunks, linesOfAChunk;
        double interval, wordsPerMinute;
    };
    const Scene scenes[] = {{"a fight", 30, 4, 2, 200},     {"a fight, a quick voice", 30, 4, 2, 450},
                            {"a slow voice", 30, 4, 2, 90}, {"a burst", 1, 500, 1, 200},
                            {"a flood", 200, 5, 0.01, 200}, {"a walk that is never late", 20, 1, 5, 200}};
    synth.setCatchesUp(true);
    for (const auto& scene : scenes) {
        SCOPED_TRACE(scene.what);
        engine.said.clear();
        engine.wordsPerMinute = scene.wordsPerMinute;
        std::map<std::string, double> arrivals;
        for (int chunk = 0, number = 1'000; chunk < scene.chunks; ++chunk) {
            std::u16string text;
            for (int line = 0; line < scene.linesOfAChunk; ++line) {
                const auto words = znt::decimalText(++number) + u" goblins hit you with their rusty swords.";
                arrivals[znt::utf8FromText(words)] = loop.now();
                text += words + u"\r\n\r\n";
            }
            synth.speakLine(text);
            loop.advance(scene.interval);
        }
        synth.speakBeforeWaiting(u"urgent");
        loop.advance(100);

        Heard heard;
        long urgent = 0;
        bool wasNotice = false;
        for (const auto& one : engine.said) {
            const auto arrival = arrivals.find(one.text);
            const bool isNotice = one.text.ends_with(" skipped.");
            heard.saysTwoNoticesTogether |= isNotice && wasNotice;
            wasNotice = isNotice;
            if (arrival != arrivals.end()) {
                ++heard.lines;
                heard.oldest = std::max(heard.oldest, one.begin - arrival->second);
            }
            heard.skipped += isNotice ? std::stol(one.text) : 0;
            urgent += one.text == "urgent" ? 1 : 0;
        }
        EXPECT_LT(heard.oldest, 6);
        EXPECT_EQ(heard.lines + heard.skipped, static_cast<long>(arrivals.size()));
        EXPECT_FALSE(heard.saysTwoNoticesTogether);
        EXPECT_EQ(urgent, 1);
        EXPECT_EQ(heard.skipped > 0, scene.interval < 5);
    }
}

TEST_F(ListeningSpeech, ALongLineThatHasBegunIsSaidToItsEnd)
{
    synth.setCatchesUp(true);
    std::string line;
    for (int number = 100; number < 200; ++number)
        line += "The goblin number " + std::to_string(number) + " hits you. ";
    say(line);
    say("late");
    loop.advance(600);
    ASSERT_EQ(texts().back(), "1 line skipped.");
    std::string all;
    for (const auto& text : texts())
        all += text;
    EXPECT_EQ(all, line + "1 line skipped.");
}

TEST(SpeechFilters, EachTakesOutWhatIsNoTextAndNothingElse)
{
    struct Row {
        const char* what;
        ZNTSpeechFilters filters;
        std::u16string_view text, spoken;
    };
    constexpr ZNTSpeechFilters none, decoration{true, false, false}, runs{false, true, false},
        sequences{false, false, true}, all{true, true, true};
    const Row rows[] = {
        {"nothing is switched on", none, u"---\r\n\x1b[2J", u"---\r\n\x1b[2J"},
        {"rules and frames", decoration, u"+--+\r\n\r\n|<> |\r\nHP: 3\r\n====", u"HP: 3\r\n"},
        {"letters and digits of any script", decoration, u"\u4f60\n\u0663\n\U00010400\n\u2502\n\u2003",
         u"\u4f60\n\u0663\n\U00010400\n"},
        {"only decoration", decoration, u"***\r\n", u""},
        {"runs of three", runs, u"--- Inn --- .. aaa 1000 !!!?!", u"- Inn - .. aaa 1000 !?!"},
        {"a run at each end, and of pairs", runs, u"\U0001F525\U0001F525\U0001F525 hot    ...",
         u"\U0001F525 hot ."},
        {"a run of half a pair", runs, u"\xD83D\xD83D\xD83D", u"\xD83D"},
        {"cursor, colour and title", sequences, u"\x1b[2J\x1b[38;5;196mred\x1b]0;title\x07 end", u"red end"},
        {"cut off", sequences, u"text\x1b[1", u"text"},
        {"interrupted by a line end", sequences, u"a\x1b[1\r\nb", u"a\r\nb"},
        {"what a sequence hides", all, u"\x1b[2J-\x1b[m-\x1b[m-\r\nok", u"ok"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(row.filters.applied(std::u16string(row.text)), row.spoken);
    }
}

TEST_F(ListeningSpeech, DecorationIsSilentUnlessThePlayerAsksForThatLine)
{
    synth.setFilters({.skipsDecoration = true, .shortensRuns = true});
    say("*****\r\n");
    say("a ----- b");
    loop.advance(10);
    synth.speakAtOnce(u"*****");
    EXPECT_THAT(texts(), ElementsAre("a - b", "*"));
}

} // namespace
