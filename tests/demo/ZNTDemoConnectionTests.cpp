#include "ZNTDemoConnection.h"
#include "ZNTDemoSocketPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

const std::string prompt = "> \xFF\xF9";
const std::string doCompress = "\xFF\xFD\x56", dontCompress = "\xFF\xFE\x56",
                  oddlyRefuseCompression = "\xFF\x19\x56";
const std::string startOfCompression = "\xFF\xFA\x56\xFF\xF0";

class DemoConnection : public testing::Test
{
protected:
    /// A pair of sockets with a connection of the game at one end.
    struct Seat {
        Seat(DemoConnection& test, const std::pair<int, int>& ends)
            : player(test.loop, ends.first),
              connection(std::make_unique<ZNTDemoConnection>(test.game, ends.second,
                                                             [this](auto&) { isOver = true; }))
        {
        }
        explicit Seat(DemoConnection& test) : Seat(test, socketPair()) { player.readUntil(prompt); }

        ZNTDemoSocketPlayer player;
        bool isOver = false;
        std::unique_ptr<ZNTDemoConnection> connection;
    };

    static std::pair<int, int> socketPair()
    {
        int ends[2];
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends), 0);
        return {ends[0], ends[1]};
    }

    std::string answerTo(Seat& seat, const std::string& line)
    {
        EXPECT_TRUE(seat.player.send(line + "\r\n"));
        return seat.player.readUntil(prompt);
    }
    void startCompression(Seat& seat)
    {
        seat.player.send(doCompress);
        seat.player.readUntil(startOfCompression);
        loop.advance(0.2);
    }
    /// Inflates what has come, once it holds a prompt or the stream's end.
    std::string inflatedAnswer(Seat& seat)
    {
        std::string text;
        loop.runUntil([&] {
            seat.player.settle();
            auto bytes = seat.player.received;
            text = inflatedFrom(bytes, streamHasEnded);
            afterStream = bytes;
            return text.ends_with(prompt);
        });
        return text;
    }

    VirtualRunLoop loop;
    const ZNTDemoTexts& texts = ZNTDemoTexts::forEncoding(ZNTStringEncoding::Ascii);
    ZNTDemoVillage village{loop, texts};
    ZNTDemoCommands commands{village, texts};
    ZNTDemoConnection::Game game{loop, texts, ZNTStringEncoding::Ascii, village, commands};
    bool streamHasEnded = false;
    std::string afterStream;
};

} // namespace

TEST_F(DemoConnection, OffersItsTwoOptionsThenGreetsAndEndsThePromptWithGoAhead)
{
    Seat seat(*this, socketPair());
    const auto greeting = seat.player.readUntil(prompt);
    EXPECT_THAT(greeting, StartsWith("\xFF\xFB\x56\xFF\xFB\x5A\r\n"));
    EXPECT_THAT(greeting, HasSubstr("Lantern Square\x1b[0m\r\n"));
    EXPECT_THAT(greeting, testing::EndsWith(prompt));
    // A client may take the byte after a go-ahead with it: that byte is never the game's text.
    EXPECT_THAT(answerTo(seat, "look"), StartsWith("\r\n"));
}

TEST_F(DemoConnection, CompressesFromAPieceOfItsOwnAndEndsAsAsked)
{
    Seat seat(*this);
    seat.player.send(doCompress + "look\r\n");
    EXPECT_EQ(seat.player.readUntil(startOfCompression), startOfCompression);
    loop.advance(0.09);
    seat.player.settle();
    EXPECT_EQ(seat.player.received, "") << "the start of compression travels alone";
    loop.advance(0.02);
    EXPECT_THAT(inflatedAnswer(seat), HasSubstr("Lantern Square"));
    seat.player.send("north\r\n");
    loop.advance(0.1);
    EXPECT_THAT(inflatedAnswer(seat), HasSubstr("The Harbour")) << "it is one stream";
    EXPECT_FALSE(streamHasEnded);

    seat.player.send(dontCompress + "look\r\n");
    loop.advance(0.1);
    loop.runUntil([&] { return seat.player.settle(), seat.player.received.ends_with(prompt); });
    auto bytes = seat.player.received;
    inflatedFrom(bytes, streamHasEnded);
    EXPECT_TRUE(streamHasEnded);
    EXPECT_THAT(bytes, StartsWith("\r\n\x1b[1;33mThe Harbour")) << "plain from the end of the stream on";
}

TEST_F(DemoConnection, AnswersOffersAndRequestsOnceAndRefusalsNever)
{
    Seat seat(*this);
    seat.player.send(
        "\xFF\xFB\x1F\xFF\xFD\x01\xFF\xFC\x18\xFF\xFE\x19\xFF\x19\x46\xFF\xFA\x1F\x01\x02\xFF\xF0");
    EXPECT_EQ(seat.player.readUntil("\xFF\xFC\x01"), "\xFF\xFE\x1F\xFF\xFC\x01");
    EXPECT_THAT(answerTo(seat, "look"), StartsWith("\r\n"));
    seat.player.send("\xFF\xFD\x5A");
    EXPECT_THAT(answerTo(seat, "sound"), HasSubstr("crypt. !!SOUND(/dying_groan.wav V=80 P=50)\r\n"));
    seat.player.send("\xFF\x19\x5A");
    EXPECT_THAT(answerTo(seat, "sound"), HasSubstr("has not asked"));
}

TEST_F(DemoConnection, SurvivesAnyBytesAndStillAnswers)
{
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        Seat seat(*this);
        std::string junk(1 + random() % 20000, '\0');
        std::generate(junk.begin(), junk.end(), [&] {
            static constexpr unsigned char often[] = {255, 250, 240,  253,  254, 25,
                                                      86,  90,  '\r', '\n', 's', ' '};
            return static_cast<char>(random() % 3 ? often[random() % std::size(often)] : random());
        });
        for (std::size_t at = 0; at < junk.size();) {
            const auto length = std::min<std::size_t>(1 + random() % 3000, junk.size() - at);
            seat.player.send(std::string_view(junk).substr(at, length));
            at += length;
            seat.player.settle();
        }
        // Whatever state that left: a whole subnegotiation and a line's end get out of it.
        seat.player.send("x\xFF\xF0\xFF\xF0\r\n" + oddlyRefuseCompression + "\r\n");
        seat.player.settle();
        seat.player.received.clear();
        seat.player.send("say still here\r\n");
        EXPECT_THAT(seat.player.readUntil("still here"), HasSubstr("You say")) << "round " << round;
        EXPECT_FALSE(seat.isOver);
    }
}

TEST_F(DemoConnection, AFloodWaitsForItsReaderAndComesWhole)
{
    for (const bool compressed : {false, true}) {
        Seat slow(*this);
        Seat other(*this);
        if (compressed)
            startCompression(slow);
        slow.player.received.clear();
        slow.player.send("flood 100000\r\nsay done\r\n");
        for (int i = 0; i < 50; ++i)
            loop.advance(0.01);
        EXPECT_THAT(answerTo(other, "look"), HasSubstr("Lantern Square")) << "others are served meanwhile";
        if (!compressed) {
            const auto flood = slow.player.readUntil("You say: done");
            EXPECT_THAT(flood, HasSubstr("Line 1 of 100000"));
            EXPECT_THAT(flood, HasSubstr("Line 100000 of 100000"));
            std::size_t lines = 0;
            for (std::size_t at = 0; (at = flood.find(" of 100000:", at)) != std::string::npos; ++at)
                ++lines;
            EXPECT_EQ(lines, 100'000U);
        } else {
            slow.connection->hangUp(u"");
            EXPECT_TRUE(slow.player.waitForEnd());
        }
    }
}

TEST_F(DemoConnection, APlayerWhoNeverReadsIsDroppedBeforeHeCostsMuch)
{
    Seat deaf(*this);
    Seat talker(*this);
    const auto words = "say " + std::string(1000, 'x');
    int lines = 0;
    for (; lines < 20000 && !deaf.isOver; ++lines)
        answerTo(talker, words);
    EXPECT_TRUE(deaf.isOver);
    EXPECT_LT(lines, 5000);
    EXPECT_THAT(answerTo(talker, "look"), HasSubstr("Lantern Square"));
}

TEST_F(DemoConnection, QuitSaysFarewellToTheLastByteAndHangsUp)
{
    for (const bool compressed : {false, true}) {
        Seat seat(*this);
        if (compressed)
            startCompression(seat);
        seat.player.send("quit\r\nlook\r\nsay more\r\n");
        ASSERT_TRUE(seat.player.waitForEnd());
        auto bytes = seat.player.received;
        const auto text = compressed ? inflatedFrom(bytes, streamHasEnded) : bytes;
        EXPECT_THAT(text, testing::EndsWith("Farewell!\r\n")) << "nothing is handled after it";
        EXPECT_EQ(streamHasEnded, compressed);
        EXPECT_FALSE(seat.isOver) << "it waits for the client to close";
        seat.player.hangUp();
        EXPECT_TRUE(loop.runUntil([&] { return seat.isOver; }));
    }
    Seat rude(*this);
    rude.player.send("quit\r\n");
    rude.player.waitForEnd();
    loop.advance(2);
    EXPECT_TRUE(rude.isOver) << "but not for ever";
}

TEST_F(DemoConnection, ChineseLinesAreHeardAndDamagedOnesAnswered)
{
    for (const auto encoding : {ZNTStringEncoding::EucCn, ZNTStringEncoding::Big5Hkscs}) {
        const auto& chinese = ZNTDemoTexts::forEncoding(encoding);
        ZNTDemoVillage town(loop, chinese);
        ZNTDemoCommands words(town, chinese);
        const auto ends = socketPair();
        ZNTDemoSocketPlayer player(loop, ends.first);
        const ZNTDemoConnection connection({loop, chinese, encoding, town, words}, ends.second, [](auto&) {});
        player.readUntil(prompt);
        player.send(znt::encodedText(u"say 你好", encoding) + "\r\n");
        EXPECT_THAT(player.readUntil(prompt), HasSubstr(znt::encodedText(u"你好", encoding)));
        player.send("say \xB0\x80\x81 ok\r\n");
        EXPECT_THAT(player.readUntil(prompt), HasSubstr("ok"));
    }
}
