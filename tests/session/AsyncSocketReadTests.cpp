#include "AsyncSocketPackets.h"
#include "AsyncSocketTestSupport.h"

#include <cmath>
#include <tuple>

using AsyncSocketReadTest = AsyncSocketTest;

TEST_F(AsyncSocketReadTest, AFloodComesInBoundedDeliveriesBetweenWhichALineLeaves)
{
    connect();
    std::string flood, got;
    for (int at = 0; at < 10'000'000; ++at)
        flood += static_cast<char>(at * 31 >> 3);
    std::size_t gotWhenSent = 0;
    heard.whenWritten = [&](AsyncSocket&) { gotWhenSent = got.size(); };
    heard.whenRead = [&](AsyncSocket& reading) {
        EXPECT_LE(heard.reads.back().size(), std::size_t{1} << 20);
        got += heard.reads.back();
        heard.reads.clear();
        if (got.size() < 1'000'000)
            reading.writeData("flee\r\n", -1, 3);
        reading.readDataWithTimeout(0.5, 0);
    };
    socket->readDataWithTimeout(0.5, 0);
    peer.send(flood);
    ASSERT_TRUE(loop.runUntil([&] { return got.size() >= flood.size(); }));
    EXPECT_TRUE(got == flood);
    EXPECT_GT(gotWhenSent, 0u);
    EXPECT_LT(gotWhenSent, 3'000'000u);
}

TEST(AsyncReadPacket, ATerminatorCutBetweenWhatWasReadAndWhatIsKeptEndsTheReadRightBehindIt)
{
    for (const std::string term : {"\r\n", "<->"}) {
        const std::string line = "<-\r" + term;
        for (std::size_t cut = 0; cut < line.size(); ++cut) {
            SCOPED_TRACE(term + " cut at " + std::to_string(cut));
            AsyncReadPacket read;
            read.buffer = std::make_shared<std::string>(line.substr(0, cut));
            read.bytesDone = cut;
            read.term = term;
            AsyncSocketPreBuffer kept;
            kept.append(line.substr(cut) + "next" + term);
            EXPECT_EQ(read.takeFromPreBuffer(kept), AsyncReadState::Done);
            EXPECT_EQ(read.data(), line);
        }
    }
}

TEST_F(AsyncSocketReadTest, WhatWasReadAheadGoesToTheNextReadOfEveryKindUpToItsLength)
{
    connect();
    const auto kept = std::make_shared<std::string>("0123456789");
    peer.send("line\nabcdefgh\n");
    socket->readDataToData(AsyncSocket::LFData, -1, 1);
    ASSERT_TRUE(awaitReads(1));
    socket->readDataToLength(3, -1, kept, 2, 2);
    socket->readDataWithTimeout(-1, nullptr, 0, 2, 3);
    socket->readDataToData("g", -1, 4);
    socket->readDataToData(AsyncSocket::LFData, -1, 2, 5); // just long enough
    ASSERT_TRUE(awaitReads(5));
    EXPECT_EQ(heard.reads, (std::vector<std::string>{"line\n", "abc", "de", "fg", "h\n"}));
    EXPECT_EQ(*kept, "01abc56789") << "a caller's buffer is filled from its offset";
    socket->readDataToData(AsyncSocket::LFData, -1, 2, 6);
    peer.send("ij\n");
    ASSERT_TRUE(awaitEnd());
    EXPECT_EQ(heard.lastError,
              (ZNTError{"AsyncSocketErrorDomain", 3, "Read operation reached set maximum length"}));
}

TEST_F(AsyncSocketReadTest, ProgressIsThatOfTheReadWhichGoesOnAndAllOfItIfItHasNoLength)
{
    connect();
    std::int64_t tag = 0;
    std::size_t done = 0, total = 0;
    const auto progress = [&] { return socket->progressOfReadReturningTag(&tag, &done, &total); };
    EXPECT_TRUE(std::isnan(progress()));
    socket->readDataToLength(8, -1, 7);
    peer.send("ab");
    ASSERT_TRUE(loop.runUntil([&] { return progress() > 0; }, 5));
    EXPECT_EQ(progress(), 0.25F);
    EXPECT_EQ(std::tuple(tag, done, total), std::tuple(7, 2u, 8u));
    peer.send("cdefgh");
    ASSERT_TRUE(awaitReads(1));
    socket->readDataWithTimeout(-1, 8);
    ASSERT_TRUE(loop.runUntil([&] { return progress() == 1.0F; }, 5));
    EXPECT_EQ(std::tuple(tag, done, total), std::tuple(8, 0u, 0u));
    EXPECT_TRUE(std::isnan(socket->progressOfWriteReturningTag(&tag, &done, &total)));
    EXPECT_EQ(std::tuple(tag, done, total), std::tuple(0, 0u, 0u));
}

TEST_F(AsyncSocketReadTest, AReadThatMayNotWaitTakesWhatIsThereAndElseTimesOut)
{
    connect();
    socket->readDataToData(AsyncSocket::LFData, -1, 1);
    socket->readDataToData(AsyncSocket::LFData, -1, 1, 4); // room for the terminator alone
    peer.send("line\n\nrest");
    ASSERT_TRUE(awaitReads(2));
    socket->readDataToLength(4, 0, 2);
    socket->readDataWithTimeout(0, 3);
    loop.advance(0);
    EXPECT_EQ(heard.reads.back(), "rest");
    EXPECT_EQ(heard.lastError.description, "Read operation timed out");
}
