#include "ZNTBlockDecoder.h"
#include "ZNTDeflated.h"
#include "ZNTInflater.h"
#include "ZNTText.h"

#include <gtest/gtest.h>
#include <random>

namespace
{

std::string withoutZeroTail(std::string block)
{
    block.erase(block.find_last_not_of('\0') + 1);
    return block;
}

std::string gameText()
{
    std::string text;
    for (int line = 0; line < 300; ++line)
        text += "You see goblin number " + std::to_string(line * 7919 % 1000) + " here.\r\n";
    return text;
}

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

TEST(Inflater, ReturnsItsBlockWholeWithAtLeastFourTimesTheInput)
{
    ZNTInflater inflater;
    inflater.startStream();
    const auto stream = deflated("hi", Z_SYNC_FLUSH);
    const auto block = inflater.anotherInflate(stream);
    EXPECT_EQ(block.bytes.size(), 4 * stream.size());
    EXPECT_EQ(withoutZeroTail(block.bytes), "hi");
    EXPECT_TRUE(inflater.anotherInflate("").bytes.empty());
}

TEST(Inflater, EndsWithTheStreamAndStaysEndedUntilTheNextConnection)
{
    ZNTInflater inflater;
    inflater.startStream();
    const auto last = inflater.anotherInflate(deflated("bye") + "lost");
    EXPECT_EQ(last.outcome, ZNTInflater::Outcome::Ended);
    EXPECT_EQ(withoutZeroTail(last.bytes), "bye");
    EXPECT_EQ(inflater.anotherInflate(deflated("again")).outcome, ZNTInflater::Outcome::Failed);
    inflater.startStream();
    EXPECT_EQ(withoutZeroTail(inflater.anotherInflate(deflated("again")).bytes), "again");
}

TEST(Inflater, FailsOnPlainTextOnDamageAndOnABlockThatNeverStopsGrowing)
{
    auto damaged = deflated(gameText());
    damaged[damaged.size() / 2] ^= 0x55;
    const auto bomb = deflated(std::string(std::size_t{40} << 20, 'x'));
    for (const std::string& bad : {std::string("Welcome, stranger!\r\n"), damaged, bomb}) {
        ZNTInflater inflater;
        inflater.startStream();
        const auto block = inflater.anotherInflate(bad);
        EXPECT_EQ(block.outcome, ZNTInflater::Outcome::Failed);
        EXPECT_LE(block.bytes.size(), ZNTInflater::mostInflated + 4 * bad.size());
    }
}

TEST(BlockDecoder, RecoversWhatACutCharacterLeavesReadable)
{
    const auto big5 = [](std::u16string_view text) {
        return znt::encodedText(text, ZNTStringEncoding::Big5Hkscs);
    };
    const auto read = [](std::string_view bytes) {
        return znt::textOfBlock(bytes, ZNTStringEncoding::Big5Hkscs);
    };
    const auto hello = big5(u"你好世界你好世界");

    EXPECT_EQ(read(hello), u"你好世界你好世界");
    EXPECT_EQ(read("north of here" + hello.substr(0, 1)), u"north of her");
    EXPECT_EQ(read(hello + hello.substr(0, 1)), u"世界你好世");
    EXPECT_EQ(read(hello.substr(0, 3)), *znt::decodedText(hello.substr(0, 3), ZNTStringEncoding::Ascii));
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
