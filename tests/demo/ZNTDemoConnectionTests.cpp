#include "ZNTDemoConnection.h"
#include "ZNTDemoSocketPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

const std::string prompt = "> \xFF\xF9", recordPrompt = "> \xFF\xEF";
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

TEST_F(DemoConnection, MakesItsRequestsAndOffersThenGreetsAndEndsThePromptWithGoAhead)
{
    Seat seat(*this);
    EXPECT_THAT(seat.greeting,
                testing::AllOf(StartsWith("\xFF\xFD\x1F\xFF\xFD\x18\xFF\xFB\x56\xFF\xFB\x5A\r\n"),
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

TEST_F(DemoConnection, AClientWithOddRefusalsIsAnsweredByNothingAndGetsItsSounds)
{
    Seat seat(*this);
    seat.player.send("\xFF\x19\x56\xFF\x19\x5A\xFF\xFC\x2A\xFF\x19\x46");
    EXPECT_THAT(answerTo(seat, "say \xFF\xFFhi"), StartsWith("\r\n\x1b[0;33mYou say: hi\x1b"));
    EXPECT_THAT(answerTo(seat, "name Oak"), HasSubstr("You are called Oak"))
        << "nothing could hide a password";
    seat.player.send("\xFF\xFD\x5A");
    EXPECT_THAT(answerTo(seat, "sound"), HasSubstr("crypt. !!SOUND(/dying_groan.wav V=80 P=50)\r\n"));
    seat.player.send("\xFF\x19\x5A");
    EXPECT_THAT(answerTo(seat, "sound"),
                testing::AllOf(HasSubstr("has not asked"), testing::Not(HasSubstr("!!"))));
}

TEST_F(DemoConnection, AClientThatAnswersRequestsGetsTheFirstCompressedBytesWithTheStart)
{
    Seat seat(*this);
    seat.player.send("\xFF\xFC\x1F\xFF\xFC\x18" + doCompress + "\xFF\xFD\x19");
    EXPECT_EQ(seat.player.readUntil(startOfCompression), "\xFF\xFB\x19\xFF\xFB\x2A" + startOfCompression);
    EXPECT_THAT(seat.player.received, StartsWith("\x78\x9C")) << "zlib's first bytes, in the same piece";
    seat.player.send("look\r\ncompress end\r\nlook\r\n");
    const auto plain = seat.player.readUntil(recordPrompt);
    auto bytes = plain;
    EXPECT_THAT(inflatedFrom(bytes, streamHasEnded),
                testing::AllOf(HasSubstr(recordPrompt), testing::EndsWith("\xFF\xFC\x56")))
        << "the game says that it ends the compression before it does";
    EXPECT_TRUE(streamHasEnded);
    EXPECT_THAT(bytes, testing::AllOf(StartsWith("\r\n\x1b[1;33mLantern"), testing::EndsWith(recordPrompt)));
}

TEST_F(DemoConnection, APasswordIsHiddenFromItsTyperAndEverybodyElse)
{
    Seat seat(*this), other(*this);
    seat.player.send("\xFF\xFB\x18");
    seat.player.readUntil("\xFF\xFA\x18\x01\xFF\xF0\xFF\xFB\x19\xFF\xFB\x2A");
    EXPECT_THAT(answerTo(seat, "name Oak"),
                testing::AllOf(StartsWith("\xFF\xFB\x01\r\n"), HasSubstr("Choose")));
    seat.player.send("\xFF\xFD\x01");
    const auto answer = answerTo(seat, "sesame");
    EXPECT_THAT(answer, testing::AllOf(StartsWith("\xFF\xFC\x01\r\n"), HasSubstr("You are called Oak")));
    EXPECT_THAT(answerTo(seat, "say hi") + answer, testing::Not(HasSubstr("sesame")));
    EXPECT_THAT(other.player.readUntil("says: hi"),
                testing::AllOf(HasSubstr("is called Oak"), testing::Not(HasSubstr("sesame"))));
    answerTo(seat, "name Elm");
    EXPECT_THAT(answerTo(seat, std::string(2000, 'x')), HasSubstr("still called Oak"));
    EXPECT_THAT(seat.player.readUntil(prompt), HasSubstr("too long"));
    EXPECT_THAT(answerTo(seat, "who"), HasSubstr("In the village")) << "the question is over";
}

TEST_F(DemoConnection, TextTravelsInUtf8FromTheAgreementOn)
{
    Seat seat(*this), other(*this);
    seat.player.send("\xFF\xFB\x18\xFF\xFD\x2A");
    seat.player.readUntil("\xFF\xFA\x2A\x01;UTF-8\xFF\xF0");
    EXPECT_THAT(answerTo(seat, "say \xE9\xFF\xFF"), HasSubstr("say: \xE9\xFF\xFF\x1b"));
    seat.player.send("\xFF\xFA\x2A\x02UTF-8\xFF\xF0");
    EXPECT_THAT(answerTo(seat, "say é ÿ 海"), HasSubstr("You say: é ÿ 海\x1b"));
    EXPECT_THAT(other.player.readUntil("\xE9  ?"), HasSubstr("says: \xE9\x1b"))
        << "others get what they can read";
}

TEST_F(DemoConnection, AFloodWaitsForItsReaderAndComesWhole)
{
    Seat slow(*this), other(*this);
    slow.player.send("flood 30000\r\nsay done\r\n");
    loop.advance(0.5);
    EXPECT_THAT(answerTo(other, "look"), HasSubstr("Lantern Square")) << "others are served meanwhile";
    const auto flood = slow.player.readUntil("You say: done");
    EXPECT_EQ(std::ranges::count(flood, ':'), 30'001) << "one for each line";
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
