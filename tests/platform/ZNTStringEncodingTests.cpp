#include "ZNTStringEncoding.h"

#include <set>

using namespace znt;
using enum ZNTStringEncoding;

namespace
{

struct Sample {
    ZNTStringEncoding encoding;
    std::string bytes;
    std::u16string text;
};

/// "North gate" with colours, in the bytes that the games send.
const Sample samples[] = {{EucCn, "\x1b[1m\xB1\xB1\xC3\xC5\x1b[m\r\n", u"\x1b[1m北门\x1b[m\r\n"},
                          {Big5Hkscs, "\x1b[1m\xA5\x5F\xAA\xF9\x1b[m\r\n", u"\x1b[1m北門\x1b[m\r\n"}};

} // namespace

TEST(StringEncoding, AsciiCarriesEveryByteBothWays)
{
    std::string bytes;
    std::u16string text;
    for (int each = 0; each < 256; ++each) {
        bytes += static_cast<char>(each);
        text += static_cast<char16_t>(each);
    }
    EXPECT_EQ(decodedText(bytes, Ascii), text);
    EXPECT_EQ(encodedText(text, Ascii), bytes);
}

TEST(StringEncoding, ACharacterThatTheEncodingLacksGoesOutAsOneQuestionMark)
{
    EXPECT_EQ(encodedText(u"\U0001F5E1門a\U0001F5E1b\xD800", Ascii), "??a?b?");
    EXPECT_EQ(encodedText(u"a\u0E01\U0001F5E1\u200Bb\xD800", EucCn), "a???b?");
    EXPECT_EQ(encodedText(u"a\u0E01\U0001F5E1\u200Bb\xD800", Big5Hkscs), "a???b?");
    EXPECT_EQ(encodedText(u"門", EucCn), "?") << "the traditional character";
}

TEST(StringEncoding, EverySampleIsReadAndWrittenAndACharacterCutOffFails)
{
    EXPECT_EQ(decodedText("\x87\x45\x87\x45", Big5Hkscs), u"\U00027267\U00027267") << "of two units";
    EXPECT_EQ(encodedText(u"\U00027267\U00027267", Big5Hkscs), "\x87\x45\x87\x45");
    for (const auto& sample : samples) {
        EXPECT_EQ(encodedText(sample.text, sample.encoding), sample.bytes);
        std::set<std::size_t> seams; // where its characters begin, and where the last one ends
        for (std::size_t units = 0; units <= sample.text.size(); ++units)
            seams.insert(encodedText(sample.text.substr(0, units), sample.encoding).size());
        for (std::size_t cut = 0; cut <= sample.bytes.size(); ++cut) {
            SCOPED_TRACE(cut);
            const auto head = decodedText(std::string_view(sample.bytes).substr(0, cut), sample.encoding);
            ASSERT_EQ(head.has_value(), seams.contains(cut));
            const auto tail = decodedText(std::string_view(sample.bytes).substr(cut), sample.encoding);
            EXPECT_TRUE(!head || *head + tail.value() == sample.text);
        }
    }
}

TEST(StringEncoding, SignsOfChineseTextHaveTheNamesThatAreTypedAndDrawn)
{
    // A dash and a middle dot as an input method writes them; a bracket of vertical writing and a small Roman
    // numeral, which GBK added, as the maps and banners of games use them.
    const std::string bytes = "\xA1\xAA\xA1\xAA \xD5\xC5\xA1\xA4\xC8\xFD \xA6\xE5\xA2\xA1";
    const std::u16string text = u"—— 张·三 ﹀ⅰ";
    EXPECT_EQ(decodedText(bytes, EucCn), text);
    EXPECT_EQ(encodedText(text, EucCn), bytes);
    EXPECT_EQ(encodedText(u"\u2015\u30FB", EucCn), "\xA1\xAA\xA1\xA4") << "the other names still serve";
    EXPECT_EQ(decodedText("\xFF\xFB\xB4", EucCn), u"\u00FF\u00FB\u00B4") << "an option is no character";
}

TEST(StringEncoding, TelnetCommandsPassThroughChineseText)
{
    for (const auto& [encoding, bytes, text] : samples) {
        // Without the FF, FB 56 would be a Big5-HKSCS character. Behind the go-ahead come a literal FF and a
        // subnegotiation.
        const auto decoded = decodedText("\xFF\xFB\x56" + bytes + "\xFF\xF9" + bytes +
                                             "\xFF\xFF\xFF\xFA\x56\xFF\xF0" + bytes + "\xFF",
                                         encoding);
        EXPECT_EQ(decoded, u"\u00FF\u00FB\u0056" + text + u"\u00FF\u00F9" + text +
                               u"\u00FF\u00FF\u00FF\u00FA\u0056\u00FF\u00F0" + text + u"\u00FF");
    }
    EXPECT_EQ(decodedText("\xFF\xFD", EucCn), u"\u00FF\u00FD") << "the option byte is still to come";
}

TEST(StringEncoding, ATelnetCommandEndsACharacterAndOnlyItsOwnBytesAreExempt)
{
    EXPECT_FALSE(decodedText("\xB1\xFF\xF9\xB1", EucCn)) << "IAC inside a character";
    EXPECT_FALSE(decodedText("\xA5\xFF\xF9\x5F", Big5Hkscs));
    for (int command = 240; command < 256; ++command) {
        SCOPED_TRACE(command);
        const bool hasOption = command >= 250 && command <= 254; // SB, WILL, WONT, DO, DONT
        const auto bytes = std::string("\xFF") + static_cast<char>(command) + "\xB1";
        EXPECT_EQ(decodedText(bytes, EucCn).has_value(), hasOption);
        EXPECT_EQ(decodedText(bytes, Big5Hkscs).has_value(), hasOption);
    }
    EXPECT_FALSE(decodedText("\xFB\x56", EucCn));
    EXPECT_TRUE(decodedText("\xFB\x56", Big5Hkscs));
    EXPECT_FALSE(decodedText("ab\x80\x80", Big5Hkscs));
}
