#include "ZNTBlockDecoder.h"
#include "ZNTDeflated.h"
#include "ZNTInflater.h"
#include "ZNTText.h"

#include <random>

namespace
{

/// The recovery as its header describes it: tries one beginning after the other.
std::u16string recoveredOneByOne(std::string_view bytes, ZNTStringEncoding encoding)
{
    if (const auto text = znt::decodedText(bytes, encoding))
        return *text;
    auto ascii = *znt::decodedText(bytes, ZNTStringEncoding::Ascii);
    if (bytes.size() <= 2)
        return ascii;
    if (const auto text = znt::decodedText(bytes.substr(0, bytes.size() - 2), encoding))
        return *text;
    const auto cutFront = [&](std::string_view rest) -> std::u16string {
        while (rest.size() > 4) {
            rest.remove_prefix(4);
            if (const auto text = znt::decodedText(rest, encoding))
                return std::u16string(znt::trimmedOfWhitespace(*text));
        }
        return u"";
    };
    std::u16string text;
    if (bytes.size() >= 9)
        text = cutFront(bytes.substr(0, bytes.size() - 2));
    if (text.empty() && bytes.size() > 14)
        text = cutFront(bytes.substr(0, bytes.size() - 3));
    return text.empty() ? ascii : text;
}

} // namespace

TEST(Inflater, FailsOnABlockThatNeverStopsGrowingAndBehindTheEndOfItsStream)
{
    const auto bomb = deflated(std::string(std::size_t{40} << 20, 'x'));
    ZNTInflater inflater;
    inflater.startStream();
    const auto block = inflater.anotherInflate(bomb);
    EXPECT_EQ(block.outcome, ZNTInflater::Outcome::Failed);
    EXPECT_LE(block.bytes.size(), ZNTInflater::mostInflated + 4 * bomb.size());
    inflater.startStream();
    EXPECT_EQ(inflater.anotherInflate(deflated("bye") + "lost").outcome, ZNTInflater::Outcome::Ended);
    EXPECT_EQ(inflater.anotherInflate(deflated("again")).outcome, ZNTInflater::Outcome::Failed);
}

TEST(BlockDecoder, RecoversTheSameAsTryingEveryBeginning)
{
    std::mt19937 random(7);
    for (const auto encoding : {ZNTStringEncoding::Big5Hkscs, ZNTStringEncoding::EucCn}) {
        const auto sample = znt::encodedText(u"你好，世界 (north)\r\n張三", encoding);
        for (int round = 0; round < 4000; ++round) {
            std::string bytes;
            for (auto pieces = random() % 4 + 1; pieces > 0; --pieces) {
                const auto from = random() % sample.size();
                bytes += sample.substr(from, random() % 12);
                if (random() % 3 == 0)
                    bytes += static_cast<char>(random());
                if (random() % 6 == 0)
                    bytes += "\xFF\xFB\x56";
            }
            ASSERT_EQ(znt::textOfBlock(bytes, encoding), recoveredOneByOne(bytes, encoding)) << round;
        }
    }
}

TEST(BlockDecoder, LetsTelnetThroughUtf8AsThroughTheChineseEncodings)
{
    for (int command = 0; command < 256; ++command) {
        const auto bytes = std::string("a\xFF") + static_cast<char>(command) + "\x56z\xFF";
        for (std::size_t length = 1; length <= bytes.size(); ++length) // a block may end inside a command
            EXPECT_EQ(ZNTBlockDecoder().textOfBlock(bytes.substr(0, length), ZNTStringEncoding::Utf8),
                      znt::textOfBlock(bytes.substr(0, length), ZNTStringEncoding::EucCn))
                << command << ' ' << length;
    }
}

TEST(BlockDecoder, JoinsNothingButTheCharacterOfUtf8ThatBlocksShare)
{
    using enum ZNTStringEncoding;
    using namespace std::string_literals;
    ZNTBlockDecoder decoder;
    for (const auto& [bytes, encoding, text] :
         std::initializer_list<std::tuple<std::string, ZNTStringEncoding, std::u16string>>{
             {"\xFF\xFB\xC8\xEF\xBB", Utf8, u"\u00FF\u00FB\u00C8"}, // the mark comes behind an offer
             {"\xBFone \xE4\xB8", Utf8, u"one "},
             {"\x96\xE4\xB8\0\0"s, Utf8, u"世\0\0"s}, // as the inflater gives it
             {"\x96\xE4\xFF\xF9\xB8", Utf8, u"世\uFFFD\u00FF\u00F9\uFFFD"},
             {"\xC3\xBF\xC3", Utf8, u"y\u0308"},
             {"\xBF\xFF\xF9\xE4", Utf8, u"y\u0308\u00FF\u00F9"},
             {"\xA5\x5F", Big5Hkscs, u"\uFFFD北"}, // what waited is cut off
             {"\xB8\xE4", Utf8, u"\uFFFD"}})
        EXPECT_EQ(decoder.textOfBlock(bytes, encoding), text) << testing::PrintToString(bytes);
    decoder.startStream();
    EXPECT_EQ(decoder.textOfBlock("\xB8", Utf8), u"\uFFFD") << "nothing waits for the next connection";
}
