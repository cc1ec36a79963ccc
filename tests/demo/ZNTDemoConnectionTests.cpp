#include "ZNTDemoConnection.h"
#include "ZNTDemoSocketPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

const std::string prompt = "> \xFF\xF9";
const std::string doCompress = "\xFF\xFD\x56", dontCompress = "\xFF\xFE\x56";
const std::string startOfCompression = "\xFF\xFA\x56\xFF\xF0";

class DemoConnection : public testing::Test
{
protected:
    /// A pair of sockets with a connection of the game at one end.
    struct Seat {
        explicit Seat(DemoConnection& test) : player(test.loop, -1)
        {
            int ends[2];
            EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends), 0);
            player.descriptor = ends[0];
            connection =
                std::make_unique<ZNTDemoConnection>(test.game, ends[1], [this](auto&) { isOver = true; });
            greeting = player.readUntil(prompt);
        }

        ZNTDemoSocketPlayer player;
        bool isOver = false;
        std::string greeting;
        std::unique_ptr<ZNTDemoConnection> connection;
    };

    std::string answerTo(Seat& seat, const std::string& line)
    {
        seat.player.send(line + "\r\n");
        return seat.player.readUntil(prompt);
    }
    /// Inflates what has come, once it holds a prompt or the stream's end.
    std::string inflatedAnswer(Seat& seat)
    {
        std::string text;
        loop.runUntil([&] {
            seat.player.settle();
            afterStream = seat.player.received;
            text = inflatedFrom(afterStream, streamHasEnded);
            return streamHasEnded || text.ends_with(prompt);
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
    Seat seat(*this);
    EXPECT_THAT(seat.greeting,
                testing::AllOf(StartsWith("\xFF\xFB\x56\xFF\xFB\x5A\r\n"),
                               HasSubstr("Lantern Square\x1b[0m\r\n"), testing::EndsWith(prompt)));
    // A client may take the byte after a go-ahead with it: that byte is never the game's text.
    EXPECT_THAT(answerTo(seat, "look"), StartsWith("\r\n"));
}

TEST_F(DemoConnection, CompressesFromAPieceOfItsOwnAndEndsAsAsked)
{
    Seat seat(*this);
    seat.player.send(doCompress + "look\r\n");
    seat.player.readUntil(startOfCompression);
    loop.advance(0.09);
    seat.player.settle();
    EXPECT_EQ(seat.player.received, "") << "the start of compression travels alone";
    loop.advance(0.02);
    inflatedAnswer(seat);
    seat.player.send("north\r\n");
    loop.advance(0.1);
    EXPECT_THAT(inflatedAnswer(seat), HasSubstr("The Harbour")) << "it is one stream";

    seat.player.send(dontCompress + "look\r\n");
    loop.advance(0.1);
    loop.runUntil([&] { return seat.player.settle(), seat.player.received.ends_with(prompt); });
    inflatedAnswer(seat);
    EXPECT_THAT(afterStream, StartsWith("\r\n\x1b[1;33mThe Harbour"))
        << "plain from the end of the stream on";
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
    EXPECT_THAT(answerTo(seat, "sound"),
                testing::AllOf(HasSubstr("has not asked"), testing::Not(HasSubstr("!!"))));
}

TEST_F(DemoConnection, AFloodWaitsForItsReaderAndComesWhole)
{
    Seat slow(*this), other(*this);
    slow.player.send("flood 100000\r\nsay done\r\n");
    loop.advance(0.5);
    EXPECT_THAT(answerTo(other, "look"), HasSubstr("Lantern Square")) << "others are served meanwhile";
    const auto flood = slow.player.readUntil("You say: done");
    EXPECT_EQ(std::ranges::count(flood, ':'), 100'001) << "one for each line";
}

TEST_F(DemoConnection, QuitSaysFarewellToTheLastByteAndHangsUp)
{
    for (const bool compressed : {false, true}) {
        Seat seat(*this);
        if (compressed) {
            seat.player.send(doCompress);
            seat.player.readUntil(startOfCompression);
            loop.advance(0.2);
        }
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
}
