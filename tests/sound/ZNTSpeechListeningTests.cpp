// Speech that follows the voice, catches up and leaves out what is no text.
#include "VirtualRunLoop.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTSpeechFilters.h"
#include "ZNTSpeechHandOver.h"
#include "ZNTSpeechSynth.h"
#include "ZNTTimedSpeech.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

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
    void say(const std::string& line, int times = 1)
    {
        for (; times > 0; --times)
            synth.speakLine(znt::textFromUtf8(line));
    }
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
    const auto start = loop.now();
    ZNTSpeechHandOver(synth).speakOnNewThread(u"one two three");
    loop.runPosted();
    for (const auto* line : {"four five six seven", "\x07", "eight"})
        say(line);
    loop.advance(10);
    ASSERT_THAT(texts(), ElementsAre("one two three", "four five six seven", "eight"));
    EXPECT_EQ(engine.said[0].begin, start);
    EXPECT_LT(engine.said[1].begin - engine.said[0].end, 0.05);
    EXPECT_LT(engine.said[2].begin - engine.said[1].end, 0.05);

    synth.setFollowsVoice(false);
    say("in the settled pace");
    loop.advance(0.5);
    synth.speakBeforeWaiting(u"urgent");
    loop.advance(10);
    EXPECT_EQ(engine.said[4].begin, engine.said[3].end);
}

TEST_F(ListeningSpeech, TheReaderIsGivenEachLineAsItComesAndPacedOnlyIfLinesMayBeSkipped)
{
    reader.runs = true;
    synth.setSpeechRate(240); // four words a second
    const std::string first = "one two three four five six seven eight", next = "nine";
    for (const bool catchesUp : {true, false}) {
        SCOPED_TRACE(catchesUp);
        synth.setCatchesUp(catchesUp);
        say(first);
        say(next);
        loop.advance(0.5);
        synth.speakBeforeWaiting(u"urgent");
        loop.advance(1.65);
        EXPECT_EQ(reader.said.back(), "urgent");
        loop.advance(0.2);
        EXPECT_EQ(std::exchange(reader.said, {}).back(), catchesUp ? next : "urgent");
    }
}

TEST_F(ListeningSpeech, NoLineIsLateAndAllThatAreSkippedAreCounted)
{
    struct Scene {
        const char* what;
        int chunks, linesOfAChunk;
        double interval, wordsPerMinute;
    };
    const Scene scenes[] = {{"a fight", 30, 4, 2, 200},
                            {"a slow voice", 30, 4, 2, 90},
                            {"a burst", 1, 500, 1, 200},
                            {"a flood", 200, 5, 0.01, 450},
                            {"a talk", 20, 1, 5, 200}};
    synth.setCatchesUp(true);
    for (const auto& scene : scenes) {
        SCOPED_TRACE(scene.what);
        engine.said.clear();
        engine.wordsPerMinute = scene.wordsPerMinute;
        const auto start = loop.now();
        for (int chunk = 0; chunk < scene.chunks; ++chunk) {
            std::u16string text;
            for (int line = 0; line < scene.linesOfAChunk; ++line)
                text += znt::decimalText(chunk) + u"\t goblins hit you with their swords.\r\n\r\n";
            synth.speakLine(text);
            loop.advance(scene.interval);
        }
        synth.speakBeforeWaiting(u"urgent");
        loop.advance(100);

        int lines = 0, skipped = 0;
        bool wasNotice = false;
        for (const auto& [text, begin, end] : engine.said) {
            const int number = std::atoi(text.c_str());
            const bool isNotice = text.ends_with(" skipped.");
            EXPECT_FALSE(std::exchange(wasNotice, isNotice) && isNotice) << "two notices for one gap";
            skipped += isNotice ? number : 0;
            if (isNotice || text == "urgent")
                continue;
            ++lines;
            EXPECT_LT(begin - start - number * scene.interval, 6);
        }
        EXPECT_EQ(lines + skipped, scene.chunks * scene.linesOfAChunk);
        EXPECT_EQ(skipped > 0, scene.interval < 5);
        EXPECT_THAT(texts(), testing::Contains("urgent").Times(1));
    }
}

TEST_F(ListeningSpeech, ATextThatCameLastIsSpokenWholeAndAFloodIsNot)
{
    synth.setCatchesUp(true);
    synth.setFinishedTexts(ZNTSpeechQueue::Finished::Every);
    engine.wordsPerMinute = 60;
    const auto sayText = [this](const char* name, int lines) {
        say(name + std::string(" has another line of it"), lines);
        loop.advance(8);
    };
    const auto saidOf = [this](const char* name) {
        loop.advance(300);
        return std::ranges::count_if(texts(), [&](const auto& text) { return text.starts_with(name); });
    };
    sayText("old", 12);
    sayText("new", 30);
    EXPECT_EQ(saidOf("new"), 30);
    EXPECT_LT(saidOf("old"), 4);
    sayText("flood", 31);
    EXPECT_LT(saidOf("flood"), 4);
}

TEST_F(ListeningSpeech, AReplayIsSpokenWholeAlsoIfNewerTextComesMeanwhile)
{
    synth.setCatchesUp(true);
    engine.wordsPerMinute = 180;
    std::u16string replay;
    for (int line = 0; line < 60; ++line)
        replay += u"again a line of the text\r\n";
    say("what waits before it");
    ZNTSpeechHandOver(synth).speakOnNewThread(replay, ZNTSpeechQueue::Source::Replay);
    say("newer", 20);
    loop.advance(600);
    EXPECT_EQ(std::ranges::count(texts(), "again a line of the text"), 60);
    EXPECT_EQ(texts()[61], "20 lines skipped.");
}

TEST_F(ListeningSpeech, ASentenceOfTheClientIsNotSkippedAndSkipsNoLineOfTheTextBeforeIt)
{
    using Finished = ZNTSpeechQueue::Finished;
    synth.setCatchesUp(true);
    engine.wordsPerMinute = 60;
    for (const auto finished : {Finished::None, Finished::Every}) {
        synth.setFinishedTexts(finished);
        engine.said.clear();
        say("a question of five words", 8);
        loop.advance(2);
        synth.speakLine(u"hidden", synth.stopCount(), synth.now(), ZNTSpeechQueue::Source::Client);
        loop.advance(100);
        EXPECT_EQ(std::ranges::count(texts(), "a question of five words") == 8, finished == Finished::Every);
        EXPECT_EQ(texts().back(), "hidden");
    }
}

TEST_F(ListeningSpeech, TheFirstTextOfAConnectionIsSpokenWholeUntilNewerTextComes)
{
    using Finished = ZNTSpeechQueue::Finished;
    struct Row {
        const char* what;
        Finished finished;
        int lines;
        bool typesLine, isNewerText, isSaidWhole;
    };
    constexpr Row rows[] = {{"a welcome", Finished::First, 100, false, false, true},
                            {"with all texts", Finished::Every, 40, false, false, true},
                            {"not asked for", Finished::None, 40, false, false, false},
                            {"a line is typed", Finished::First, 40, true, false, true},
                            {"newer text", Finished::First, 40, true, true, false},
                            {"more text before a line", Finished::First, 40, false, true, true},
                            {"a flood", Finished::First, 101, false, false, false}};
    synth.setCatchesUp(true);
    engine.wordsPerMinute = 180;
    for (const auto& row : rows) {
        for (const bool isReader : {false, true}) {
            SCOPED_TRACE(std::string(row.what) + (isReader ? " to a reader" : ""));
            reader.runs = isReader;
            synth.setFinishedTexts(row.finished);
            say("of the game before");
            synth.firstTextBegins();
            for (int line = 0; line < row.lines; ++line) {
                say("welcome with a few more words of it");
                loop.advance(line % 10 == 0 ? 0.3 : 0);
            }
            loop.advance(7);
            if (row.typesLine)
                synth.firstTextEnds();
            if (row.isNewerText)
                say("newer");
            loop.advance(600);
            const auto said = isReader ? std::exchange(reader.said, {}) : texts();
            engine.said.clear();
            const auto welcome = std::ranges::count(said, "welcome with a few more words of it");
            EXPECT_EQ(welcome == row.lines, row.isSaidWhole) << welcome;
            EXPECT_EQ(std::ranges::any_of(said, [](const auto& text) { return text.ends_with("skipped."); }),
                      !row.isSaidWhole);
            EXPECT_EQ(said.back() == "newer", row.isNewerText);
        }
    }
    synth.setFinishedTexts(Finished::First);
    synth.firstTextEnds();
    say("a later text", 20);
    loop.advance(600);
    EXPECT_LT(reader.said.size(), 20u) << "only the first text is kept";

    // A game that closes at once, and the next one's first text.
    synth.firstTextBegins();
    say("closed");
    for (const auto text : {"welcome of a game that closes at once", "welcome of the next game"}) {
        synth.firstTextBegins();
        say(text, 9);
    }
    loop.advance(600);
    EXPECT_EQ(std::ranges::count(reader.said, "welcome of the next game"), 9)
        << "only the newest game's text is finished";
    EXPECT_LT(std::ranges::count(reader.said, "welcome of a game that closes at once"), 9);
}

TEST_F(ListeningSpeech, WhatAReaderWasGivenWhileItEndedIsSaidByTheOwnVoice)
{
    struct Row {
        const char* what;
        double secondsToEnd;
        bool isSilenced, isSaidAgain;
    };
    for (const auto& row : {Row{"at once", 0.1, false, true}, Row{"it has begun", 0.4, false, false},
                            Row{"the player silenced it", 0.1, true, false}}) {
        SCOPED_TRACE(row.what);
        engine.said.clear();
        reader.runs = true;
        say("a line for the reader");
        loop.advance(row.secondsToEnd);
        if (row.isSilenced)
            synth.speakAtOnce(u"");
        reader.runs = false;
        synth.readerIsGone();
        synth.readerIsGone();
        loop.advance(10);
        EXPECT_EQ(texts().size(), row.isSaidAgain ? 1u : 0u);
    }
}

TEST_F(ListeningSpeech, ALongLineThatHasBegunIsSaidToItsEndInUtterancesThatEndWhereSentencesDo)
{
    synth.setCatchesUp(true);
    std::string line;
    for (int number = 100; number < 200; ++number)
        line += "The goblin number " + std::to_string(number) + " hits you. ";
    say(line + "\r\nlate");
    loop.advance(600);
    auto said = texts();
    EXPECT_EQ(said.back(), "1 line skipped.");
    said.pop_back();
    for (const auto& utterance : said)
        EXPECT_TRUE(utterance.size() <= 1'000 && utterance.ends_with("you. ")) << utterance;
    EXPECT_EQ(std::accumulate(said.begin(), said.end(), std::string()), line);
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
        {"runs of three", runs, u"--- Inn --- .. aaa 1000 !!!?!", u"- Inn - .. aaa 1000 !?!"},
        {"a run at each end, and of pairs", runs, u"\U0001F525\U0001F525\U0001F525 hot    ...",
         u"\U0001F525 hot ."},
        {"cursor, colour and title", sequences, u"\x1b[2J\x1b[38;5;196mred\x1b]0;title\x07 end", u"red end"},
        {"interrupted, and cut off", sequences, u"a\x1b[1\r\nb\x1b[1", u"a\r\nb"},
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
    say("*****\r\na ----- b");
    loop.advance(10);
    synth.speakAtOnce(u"*****");
    EXPECT_THAT(texts(), ElementsAre("a - b", "*"));
    EXPECT_TRUE(synth.hasSaidAtOnce());
    synth.stopIt();
    EXPECT_FALSE(synth.hasSaidAtOnce());
}

} // namespace
