#include "ZNTFullColourParser.h"

#include <gtest/gtest.h>

namespace
{

/// A text and the attributes of each of its units, as pieces add to it.
struct Shown {
    std::u16string text;
    std::vector<ZNTAttributeSet> attributes;

    Shown& operator+=(const ZNTAttributedText& piece)
    {
        for (std::size_t at = 0; at < piece.text.size(); ++at)
            attributes.push_back(*piece.attributesAt(at));
        text += piece.text;
        return *this;
    }
};

std::u16string textOf(std::u16string text)
{
    return ZNTFullColourParser().attributedText(std::move(text)).text;
}

/// How a text behind the sequence is shown: its foreground, its background, and a letter for each style.
std::string lookBehind(const std::u16string& sequence)
{
    const auto text = ZNTFullColourParser().attributedText(u"a" + sequence + u"b");
    EXPECT_EQ(text.text, u"ab");
    const auto& set = *text.attributesAt(1);
    const auto numbers = [](ZNTColour colour) {
        return std::to_string(colour.red) + "," + std::to_string(colour.green) + "," +
               std::to_string(colour.blue);
    };
    auto look = numbers(set.shownForeground()) + " on " + numbers(set.shownBackground()) + " ";
    look += set.isShownBold() ? "B" : "";
    look += set.isShownUnderlined() ? "U" : "";
    for (std::size_t bit = 0; bit < 6; ++bit)
        if ((set.styles & 1U << bit) != 0)
            look += "ISRFCK"[bit]; // as ZNTTextStyle has them
    return look;
}

} // namespace

TEST(FullColourParser, MeansTheSameWhereverTheTextIsCut)
{
    const std::u16string text = u"a\x1b[1;38;5;208mb\x1b[38:2::1:2:3;4:3mc\x1b]0;t\x1b\\d\x1b]8;;\x07"
                                u"e\x1bP\x1b[7mf\x1b[H\x1b[Jg\x1b[2J\x1b[3Jh\r\n\x1b[2Ji\x1b(Bj\x1b[3\nk"
                                u"\x1b[?25l\x1b\x1b[9ml\x1b[;30mm\x1b[0";
    ZNTFullColourParser wholeParser;
    Shown whole;
    whole += wholeParser.attributedText(text);
    EXPECT_EQ(whole.text, u"abcdef\ng\nh\r\ni"
                          u"j\nklm");
    for (std::size_t first = 0; first <= text.size(); ++first)
        for (const std::size_t length : {std::size_t{1}, text.size()}) { // also a unit at a time from there
            ZNTFullColourParser parser;
            Shown cut;
            cut += parser.attributedText(text.substr(0, first));
            for (std::size_t at = first; at < text.size(); at += length)
                cut += parser.attributedText(text.substr(at, length));
            ASSERT_EQ(cut.text, whole.text) << first << ' ' << length;
            ASSERT_EQ(cut.attributes, whole.attributes) << first << ' ' << length;
        }
    wholeParser.reset();
    const auto fresh = wholeParser.attributedText(u"\x1b[2J1mx");
    EXPECT_EQ(fresh.text, u"1mx") << "a new connection knows nothing of an unfinished sequence or line";
    EXPECT_EQ(fresh.sets.size(), 1U);
    EXPECT_EQ(fresh.sets[0].shownForeground(), znt::colours::white);
}

TEST(FullColourParser, EverySequenceOfColoursAndStylesIsShown)
{
    const std::pair<const char16_t*, const char*> rows[]{
        {u"\x1b[1;2;3;4;5;7;8;9m", "255,255,255 on 0,0,0 BUISRFCK"},
        {u"\x1b[1;2;3;4;6;7;8;9m\x1b[22;23;25;28m", "255,255,255 on 0,0,0 USR"},
        {u"\x1b[1;3;21;7;9m\x1b[24;27;29m", "255,255,255 on 0,0,0 BI"},
        {u"\x1b[31;1;44m", "255,0,0 on 0,0,255 B"},
        {u"\x1b[31;44;3m\x1b[39;49m", "255,255,255 on 0,0,0 I"},
        {u"\x1b[31;3m\x1b[;44m", "255,255,255 on 0,0,255 "},
        {u"\x1b[2;37;0m", "255,255,255 on 0,0,0 "},
        {u"\x1b[31m\x1b[m", "255,255,255 on 0,0,0 "},
        {u"\x1b[96;105m", "128,255,255 on 255,128,255 "},
        {u"\x1b[38;5;208;48;5;234;3m", "255,135,0 on 28,28,28 I"},
        {u"\x1b[38;2;1;2;3;48;2;4;5;6m", "1,2,3 on 4,5,6 "},
        {u"\x1b[38:2:1:2:3;48:2::4:5:6;9m", "1,2,3 on 4,5,6 S"},
        {u"\x1b[38:5:196;48:5:21m", "255,0,0 on 0,0,255 "},
        {u"\x1b[38:2:7:1:2:3:0:9:8:7;1m", "1,2,3 on 0,0,0 B"},
        {u"\x1b[58;5;31;58;2;1;3;4;58:2::7:8:9;9m", "255,255,255 on 0,0,0 S"},
        {u"\x1b[4:3m", "255,255,255 on 0,0,0 U"},
        {u"\x1b[4;4:0m", "255,255,255 on 0,0,0 "},
        // Nothing is taken of what is incomplete or out of bounds, and what follows counts.
        {u"\x1b[31;38;5m", "255,0,0 on 0,0,0 "},
        {u"\x1b[31;38;2;1;2m", "255,0,0 on 0,0,0 "},
        {u"\x1b[31;38;5;256;3m", "255,0,0 on 0,0,0 I"},
        {u"\x1b[31;38:2:1:2;3m", "255,0,0 on 0,0,0 I"},
        {u"\x1b[31;99999999999;4294967297;10;98;3m", "255,0,0 on 0,0,0 I"},
        {u"\x1b[>4;2m\x1b[?1m\x1b[1 m", "255,255,255 on 0,0,0 "},
        // Nobody could read black on black; pictures are drawn with exact black.
        {u"\x1b[1;30m", "127,127,127 on 0,0,0 B"},
        {u"\x1b[30;47m", "0,0,0 on 255,255,255 "},
        {u"\x1b[30;38;5;16m", "0,0,0 on 0,0,0 "},
    };
    for (const auto& [sequence, look] : rows)
        EXPECT_EQ(lookBehind(sequence), look) << testing::PrintToString(std::u16string(sequence));

    ZNTFullColourParser parser;
    parser.setFont(ZNTFont{u"Hack", 20});
    EXPECT_EQ(std::get<ZNTFont>(parser.attributedText(u"\x1b[1mx").sets[0].font),
              (ZNTFont{u"Hack-Bold", 20}));
}

TEST(FullColourParser, OtherSequencesAreTakenOutExactly)
{
    using namespace std::literals;
    const std::pair<std::u16string, std::u16string> rows[]{
        {u"w\x1b[?25l\x1b[10;20r\x1b[1 q\x1b[!p\x1b[ 1zx", u"wx"},
        {u"w\x1b]0;title\x07x\x1b]2;t\x9C\x1b\\y", u"wxy"},
        {u"w\x1bPq#0;2\x07\x1b\\x\x1bXx\x1b\\y\x1b^x\x1b\\z\x1b_x\x1b\\.", u"wxyz."},
        {u"w\x1b(Bx\x1b#8y\x1b=z\x1bM.\x1b$)C,", u"wxyz.,"},
        // What interrupts a sequence stays.
        {u"w\x1b[31\r\nx\x1b]0;t\ny\x1b\rz", u"w\r\nx\ny\rz"},
        {u"w\x1b[3\u4E2Dx\x1b\u4E2Dy\x1b]\u4E2D\x07z", u"w\u4E2Dx\u4E2Dyz"},
        {u"w\x1b]t\x1b[31mx\x1b\x1b[31my", u"wxy"},
        {u"w\x1b\0[3\0001mx\x1b(\0By"s, u"wxy"}, // some servers put NULs anywhere
        {u"\x9Bw\x9Dx", u"\x9Bw\x9Dx"},          // C1 characters begin nothing
    };
    for (const auto& [text, shown] : rows)
        EXPECT_EQ(textOf(text), shown) << testing::PrintToString(text);
}

TEST(FullColourParser, AClearedScreenIsALineBreakUnlessTheLineIsEmpty)
{
    const std::pair<const char16_t*, const char16_t*> rows[]{
        {u"\x1b[2Ja\x1b[2Jb\r\n\x1b[2Jc", u"a\nb\r\nc"},
        {u"a\x1b[H\x1b[2J\x1b[3Jb", u"a\nb"},
        {u"a\x1b[H\x1b[Jb\x1b[1;1f\x1b[0m\x1b[0Jc", u"a\nb\nc"},
        {u"r\x1b[Js\x1b[Ht\x1b[Ju\x1b[5;1H\x1b[Jv\x1b[1;5H\x1b[Jw\x1b[1Jx\x1b[?2Jy", u"rstuvwxy"},
    };
    for (const auto& [text, shown] : rows)
        EXPECT_EQ(textOf(text), shown) << testing::PrintToString(std::u16string(text));
}

TEST(FullColourParser, ASequenceWithoutAnEndTakesNoMoreThanItsBound)
{
    constexpr std::size_t million = 1'000'000;
    const auto parameters = [](std::size_t count) {
        std::u16string text = u"\x1b[";
        while (count-- > 0)
            text += u"1;";
        return text + u"mx";
    };
    for (const auto& [name, text] : {std::pair("string", u"\x1b]" + std::u16string(million, u'x')),
                                     std::pair("parameters", parameters(million))}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(textOf(text).size(), text.size() - znt::longestSequence);
        ZNTFullColourParser parser;
        std::size_t shown = 0;
        for (std::size_t at = 0; at < text.size(); at += 1000)
            shown += parser.attributedText(text.substr(at, 1000)).text.size();
        EXPECT_EQ(shown, text.size() - znt::longestSequence);
    }
    EXPECT_EQ(textOf(parameters(2000)), u"x");
}
