#include "ZNTFullColourParser.h"

#include <cstdio>

namespace
{

std::u16string textOf(std::u16string text)
{
    return ZNTFullColourParser().attributedText(std::move(text)).text;
}

/// How text behind a sequence is shown: foreground/background, "B" for bold, "U" for underlined, and the bits
/// of ZNTTextStyle.
std::string lookBehind(const std::u16string& sequence)
{
    const auto set = *ZNTFullColourParser().attributedText(u"a" + sequence + u"b").attributesAt(1);
    const auto front = set.shownForeground(), back = set.shownBackground();
    char look[64];
    std::snprintf(look, sizeof look, "%02x%02x%02x/%02x%02x%02x %s%s%02x", front.red, front.green, front.blue,
                  back.red, back.green, back.blue, set.isShownBold() ? "B" : "",
                  set.isShownUnderlined() ? "U" : "", set.styles);
    return look;
}

} // namespace

TEST(FullColourParser, MeansTheSameWhereverTheTextIsCut)
{
    const std::u16string text = u"a\x1b[1;38;5;208mb\x1b[38:2::1:2:3;4:3mc\x1b]0;t\x1b\\d\x1b]8;;\x07"
                                u"e\x1bP\x1b[7mf\x1b[H\x1b[Jg\x1b[2J\x1b[3Jh\r\n\x1b[2Ji\x1b(Bj\x1b[3\nk"
                                u"\x1b[?25l\x1b\x1b[9ml\x1b[;30mm\x1b[0";
    ZNTFullColourParser parser;
    const auto whole = parser.attributedText(text);
    EXPECT_EQ(whole.text, u"abcdef\ng\nh\r\nij\nklm");
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        parser.reset();
        const auto first = parser.attributedText(text.substr(0, cut));
        const auto second = parser.attributedText(text.substr(cut));
        ASSERT_EQ(first.text + second.text, whole.text) << cut;
        for (std::size_t at = 0, behind = first.text.size(); at < whole.text.size(); ++at)
            ASSERT_EQ(*whole.attributesAt(at),
                      *(at < behind ? first.attributesAt(at) : second.attributesAt(at - behind)))
                << cut << ' ' << at;
    }
    parser.reset(); // for another connection
    EXPECT_EQ(parser.attributedText(u"\x1b[2J1mx").text, u"1mx");
}

TEST(FullColourParser, EverySequenceOfColoursAndStylesIsShown)
{
    const std::pair<const char16_t*, const char*> rows[]{
        {u"\x1b[1;2;3;4;5;7;8;9m", "ffffff/000000 BU3f"},
        {u"\x1b[1;2;3;4;6;7;8;9m\x1b[22;23;24;25;27;28;29;21m", "ffffff/000000 U00"},
        {u"\x1b[31;44;3m\x1b[39;49m", "ffffff/000000 01"},
        {u"\x1b[31;3m\x1b[;44m", "ffffff/0000ff 00"},
        {u"\x1b[31m\x1b[m\x1b[96;105m", "80ffff/ff80ff 00"},
        {u"\x1b[38;5;208;48;5;234;3m", "ff8700/1c1c1c 01"},
        {u"\x1b[38;2;1;2;3;48:5:21m", "010203/0000ff 00"},
        {u"\x1b[38:2::1:2:3;3m", "010203/000000 01"},
        {u"\x1b[38:2:1:2:3;48:2:7:4:5:6:0:9:8;4:3;9m", "010203/040506 U02"},
        {u"\x1b[58;5;31;58;2;1;3;4;58:2::7:8:9;4;4:0;9m", "ffffff/000000 02"},
        // Nothing is taken of what is incomplete or out of bounds, and what follows counts.
        {u"\x1b[31;38;5m\x1b[48;2;1;2m\x1b[38:2:1:2;3m", "ff0000/000000 01"},
        {u"\x1b[31;38;5;256;99999999999;4294967297;10;98;3m", "ff0000/000000 01"},
        {u"\x1b[>4;2m\x1b[?1m\x1b[1 m", "ffffff/000000 00"},
        // Nobody could read black on black; pictures are drawn with exact black.
        {u"\x1b[1;30m", "7f7f7f/000000 B00"},
        {u"\x1b[30;47m", "000000/ffffff 00"},
        {u"\x1b[30;38;5;16m", "000000/000000 00"},
    };
    for (const auto& [sequence, look] : rows)
        EXPECT_EQ(lookBehind(sequence), look) << testing::PrintToString(std::u16string(sequence));
}

TEST(FullColourParser, OtherSequencesAreTakenOutAndAClearedScreenIsALineBreak)
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
        // Only a line that is not empty needs a break.
        {u"\x1b[2Jr\x1b[2Js\r\n\x1b[2Jt", u"r\ns\r\nt"},
        {u"r\x1b[H\x1b[2J\x1b[3Js\x1b[1;1f\x1b[0m\x1b[0Jt", u"r\ns\nt"},
        {u"r\x1b[Js\x1b[Ht\x1b[Ju\x1b[5;1H\x1b[Jv\x1b[1;5H\x1b[Jw\x1b[1Jx\x1b[?2Jy", u"rstuvwxy"},
    };
    for (const auto& [text, shown] : rows)
        EXPECT_EQ(textOf(text), shown) << testing::PrintToString(text);
}

TEST(FullColourParser, ASequenceWithoutAnEndTakesNoMoreThanItsBound)
{
    for (const std::u16string begin : {u"\x1b]", u"\x1b[;;"}) {
        const auto text = begin + std::u16string(1'000'000, u'1');
        ZNTFullColourParser parser;
        std::size_t shown = 0;
        for (std::size_t at = 0; at < text.size(); at += 1000)
            shown += parser.attributedText(text.substr(at, 1000)).text.size();
        EXPECT_EQ(shown, text.size() - znt::longestSequence);
    }
    EXPECT_EQ(textOf(u"\x1b[" + std::u16string(2000, u';') + u"mx"), u"x");
}
