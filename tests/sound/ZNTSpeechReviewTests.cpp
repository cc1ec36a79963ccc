#include "VirtualRunLoop.h"
#include "ZNTLetterNames.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTSpeechReview.h"
#include "ZNTSpeechSynth.h"

#include <utility>

using testing::ElementsAre;
using Unit = ZNTLineCursor::Unit;
using Way = ZNTLineCursor::Way;

namespace
{

struct SpeechReview : testing::Test {
    VirtualRunLoop loop;
    ZNTRecordedSpeech engine;
    ZNTRecordedReader reader;
    ZNTSpeechSynth synth{loop, engine, reader};
    ZNTSpeechReview review{synth};

    std::vector<std::string> said() { return std::exchange(engine.said, {}); }
    /// "w" and "l" for the next word and letter, "W" and "L" for the previous ones.
    void step(std::string_view steps)
    {
        for (const char unit : steps)
            review.speakPart(unit == 'w' || unit == 'W' ? Unit::Word : Unit::Letter,
                             unit == 'w' || unit == 'l' ? Way::Next : Way::Previous);
    }
};

TEST_F(SpeechReview, SpeaksTheLastLinesNewestFirstAlsoWhileSpeechIsOff)
{
    review.previousLine();
    EXPECT_THAT(said(), testing::IsEmpty());
    review.addReceivedText(u"one\r\n\r\n two\r\n");
    review.addReceivedText(u"three\n   \nHP:10> ");
    review.previousLine();
    review.previousLine();
    EXPECT_THAT(said(), ElementsAre("HP:10>", "three"));
    review.addReceivedText(u"four\r\n");
    for (int time = 0; time < 3; ++time)
        review.previousLine();
    EXPECT_THAT(said(), ElementsAre("two", "one", "one")) << "new text moved the player's place";
    review.nextLine();
    review.startOver();
    review.nextLine();
    EXPECT_THAT(said(), ElementsAre("two", "four"));
    engine.staysSpeaking = true;
    review.lineFromEnd(3);
    review.lastLines(3);
    EXPECT_THAT(said(), ElementsAre("three", "(stop)", "four", "HP:10>", "three"));
}

TEST_F(SpeechReview, WordsAndLettersOfALineAreSpokenFromWhereThePlayerIs)
{
    step("wL");
    EXPECT_THAT(said(), testing::IsEmpty()) << "nothing has come yet";
    struct {
        const char16_t* line;
        std::string_view steps;
        std::vector<std::string> said;
    } const rows[] = {
        {u"<12hp> Ann's ox", "wwww", {"12hp", "Ann's", "ox", "ox"}},
        {u"<12hp> Ann's ox", "WWlLl", {"ox", "Ann's", "cap a", "space", "cap a"}},
        {u"Go, ox", "wlllll", {"Go", "cap g", "o", "comma", "space", "o"}},
        {u"ox", "lllL", {"o", "x", "x", "o"}},
        {u"look at", "wllwWW", {"look", "l", "o", "at", "look", "look"}},
        {u"look", "wlllW", {"look", "l", "o", "o", "look"}},
        {u"--->", "wlL", {"No words", "dash", "dash"}},
        {u"\u4F60\u597D e\u0301\U0001F600", "llwwl", {"\u4F60", "\u597D", "e\u0301", "e\u0301", "e\u0301"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.steps) + " in " + znt::utf8FromText(row.line));
        review.startOver();
        review.addReceivedText(row.line);
        step(row.steps);
        EXPECT_EQ(said(), row.said);
    }
    review.startOver();
    review.addReceivedText(u"one two\r\nthree");
    review.previousLine();
    review.previousLine();
    step("w");
    review.addReceivedText(u"newer");
    step("w");
    review.nextLine();
    step("w");
    EXPECT_THAT(said(), ElementsAre("three", "one two", "one", "two", "three", "three"));
}

TEST_F(SpeechReview, ALetterThatAVoiceWouldPassOverHasAName)
{
    const std::pair<const char16_t*, const char*> rows[] = {
        {u" ", "space"},
        {u".", "dot"},
        {u"A", "cap a"},
        {u"\u00C9", "cap \u00E9"},
        {u"\u0416", "cap \u0436"},
        {u"7", "7"},
        {u"\u00A7", "section sign"},
        {u"\U0001F600", "grinning face"},
        {u"\u2028", "line separator"},
        {u"\xD83D", "<lead surrogate-d83d>"},
    };
    for (const auto& [letter, name] : rows)
        EXPECT_EQ(znt::utf8FromText(znt::spokenLetter(letter)), name);
}

TEST_F(SpeechReview, LinesAreFoundByWhatWasSaidInThem)
{
    review.addReceivedText(u"The FOX runs\r\nA dog\r\nStra\u00DFe\r\nfox and dog");
    review.find(u"Fox");
    review.findOlder();
    review.findOlder();
    EXPECT_THAT(said(), ElementsAre("2 of 2, fox and dog", "1 of 2, The FOX runs", "Not found: Fox"));
    review.nextLine();
    review.findNewer();
    review.findNewer();
    EXPECT_THAT(said(), ElementsAre("A dog", "2 of 2, fox and dog", "Not found: Fox"));
    for (const auto* text : {u"STRASSE", u"cat", u""})
        review.find(text);
    EXPECT_THAT(said(), ElementsAre("1 of 1, Stra\u00DFe", "Not found: cat", "Not found: "));
    review.startOver();
    review.find(u"dog");
    review.addReceivedText(u"dog once more");
    review.findNewer();
    EXPECT_THAT(said(), ElementsAre("2 of 2, fox and dog", "3 of 3, dog once more"));
}

TEST_F(SpeechReview, TheLastCommandStandsBetweenWhatCameBeforeItAndAfterIt)
{
    review.goToLastCommand();
    review.addReceivedText(u"before");
    review.noteCommand(u"look at me");
    review.goToLastCommand();
    review.nextLine();
    EXPECT_THAT(said(), ElementsAre("No command yet", "look at me", "No answer yet"));
    step("w");
    review.addReceivedText(u"one\r\ntwo");
    review.nextLine();
    review.goToLastCommand();
    review.previousLine();
    EXPECT_THAT(said(), ElementsAre("look", "one", "look at me", "before"));
    for (std::size_t line = 0; line < ZNTSpeechReview::mostLines; ++line)
        review.addReceivedText(u"flood");
    review.goToLastCommand();
    review.nextLine();
    review.previousLine();
    EXPECT_THAT(said(), ElementsAre("look at me", "flood", "flood"));
}

} // namespace
