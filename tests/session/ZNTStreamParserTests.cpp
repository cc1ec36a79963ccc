#include "ZNTIcuReference.h"
#include "ZNTParserUtility.h"
#include "ZNTRandomText.h"
#include "ZNTServerConnectController.h"
#include "ZNTSoundTagScanner.h"
#include "ZNTTelnetScanner.h"
#include "ZNTText.h"

#include <tuple>

namespace
{

using Text = std::u16string;

class StreamParser : public testing::Test
{
protected:
    ZNTParserUtility parser;

    Text repliesTo(const Text& text)
    {
        return znt::decodedText(parser.processServerCommands(text).replies, ZNTStringEncoding::Ascii).value();
    }
};

} // namespace

TEST_F(StreamParser, AnswersEveryOfferByTheTable)
{
    const std::map<char16_t, char16_t> refusedBy = {{3, 25},  {24, 252},  {31, 25},  {42, 252}, {69, 25},
                                                    {70, 25}, {85, 25},   {86, 25},  {90, 25},  {91, 25},
                                                    {93, 25}, {102, 252}, {200, 25}, {201, 25}, {25, 253}};
    for (char16_t option = 0; option < 256; ++option) {
        SCOPED_TRACE(int{option});
        const auto answer = refusedBy.find(option);
        const auto expected = answer == refusedBy.end() ? Text() : Text{255, answer->second, option};
        EXPECT_EQ(repliesTo({255, 251, option}), expected);
        for (const char16_t other : {250, 252, 253, 254})
            EXPECT_TRUE(repliesTo({255, other, option}).empty());
    }
    parser.set_isMccpOnOff(true);
    parser.set_isMspOnOff(true);
    EXPECT_EQ(repliesTo({255, 251, 90, 'a', 255, 251, 85, 255, 251, 86}),
              (Text{255, 253, 90, 255, 25, 85, 255, 253, 86}));
}

TEST_F(StreamParser, NotesGoAheadsReleasesAndTheEndOfNegotiations)
{
    const std::tuple<Text, bool, bool, bool> rows[] = {
        {{255, 249}, true, true, false},       {{255, 239, 'x'}, true, false, false},
        {{255, 251, 25}, true, false, false},  {{'a', 255, 252, 1}, false, true, false},
        {{255, 255, 249}, false, true, false}, {{255, 250, 86, 255, 240}, false, false, true},
        {{'a', 249, 255}, false, false, false}};
    for (const auto& [text, isGoAhead, isRelease, isEnd] : rows) {
        SCOPED_TRACE(znt::utf8FromText(text));
        const auto answers = parser.processServerCommands(text);
        EXPECT_EQ(answers.isGoAhead, isGoAhead);
        EXPECT_EQ(answers.isRelease, isRelease);
        EXPECT_EQ(answers.isEndOfNegotiations, isEnd);
    }
}

TEST_F(StreamParser, IgnoresCommandsThatTheBlockCutsOff)
{
    EXPECT_TRUE(repliesTo({'a', 255, 251}).empty());
    EXPECT_TRUE(repliesTo({'a', 255}).empty());
    EXPECT_TRUE(repliesTo({255, 251, 0x156}).empty()); // no byte: its low half is MCCP2's
    EXPECT_EQ(parser.processIncomingStream(Text{255, 251, 3}).text, u"");
}

TEST_F(StreamParser, PassesTheFirstSoundTagOnAndTakesOutAll)
{
    const std::u16string text = u"Rain. !!SOUND(w/rain.wav V=50) \n!!MUSIC(a/b L=1)\nThunder!!";
    EXPECT_FALSE(parser.soundTag(text));
    parser.set_isMspOnOff(true);
    EXPECT_EQ(parser.processIncomingStream(text).text, u"Rain.  \n\nThunder!!");
    EXPECT_EQ(parser.soundTag(text), u"!!SOUND(w/rain.wav V=50)");
}

TEST(StreamScanners, AnswerAsIcuDoesOnRandomText)
{
    auto texts = ZNTRandomText::ofPieces(u"\u00FF¦\u00FB¦\u00F9¦!¦!!¦SOUND¦(¦)¦ ¦\n¦\r¦a.wav¦é¦\u0301¦\u203F¦"
                                         u"\u200D¦萬¦\xD83D\xDDE1¦\xD83D¦\xD835\xDC00¦\u2028¦V=50¦"
                                         u"!!MUSIC(x y)¦\u0085");
    // Its dots match every character, one each: ICU's own option would take CR LF for one.
    const auto telnet =
        znt::replacedAll(ZNTServerConnectController::_specialMudProtocolsRegex, u".", u"[\\s\\S]");
    const auto* tag = uR"(!!\w*\([^ ]+.*\))";
    for (int round = 0; round < 30'000; ++round) {
        const auto text = texts.next(20);
        SCOPED_TRACE(znt::utf8FromText(text));

        std::vector<std::u16string> commands, expectedCommands;
        znt::telnet::forEachCommand(text, [&](auto found) { commands.emplace_back(found); });
        for (const auto& match : znt::icu::matches(text, telnet.c_str()))
            expectedCommands.push_back(match.whole);
        ASSERT_EQ(commands, expectedCommands);
        auto stripped = text;
        znt::telnet::stripCommands(stripped);
        ASSERT_EQ(stripped, znt::icu::replacedAll(text, telnet.c_str(), u""));
        ASSERT_EQ(znt::telnet::holdsOnlyCommands(text), stripped.empty());

        auto withoutTags = text;
        znt::stripSoundTags(withoutTags);
        ASSERT_EQ(withoutTags, znt::icu::replacedAll(text, tag, u""));
    }
}
