#include "AsyncSocketPackets.h"
#include "AsyncSocketTestSupport.h"

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

TEST(AsyncReadPacket, WithoutPreBufferingNoByteBehindATerminatorIsAskedFor)
{
    for (const std::string line : {"one\r\r\n", "\r\n", "<-<->"}) {
        AsyncSocketPreBuffer ahead;
        AsyncReadPacket read;
        read.buffer = std::make_shared<std::string>();
        read.term = line.back() == '\n' ? "\r\n" : "<->";
        auto state = AsyncReadState::Unfinished;
        while (state == AsyncReadState::Unfinished) {
            const auto count = read.bytesToAskFor(100, false);
            ASSERT_LE(read.bytesDone + count, line.size());
            line.copy(read.roomFor(count), count, read.bytesDone);
            state = read.tookFromNetwork(count, ahead, false);
        }
        EXPECT_EQ(read.data(), line);
    }
}

TEST_F(AsyncSocketReadTest, WhatWasReadAheadGoesToTheNextReadOfEveryKind)
{
    connect();
    peer.send("line\nabcdefgh");
    socket->readDataToData(AsyncSocket::LFData, -1, 1);
    ASSERT_TRUE(awaitReads(1));
    socket->readDataToLength(3, -1, 2);
    socket->readDataWithTimeout(-1, nullptr, 0, 2, 3);
    socket->readDataToData("g", -1, 4);
    socket->readDataWithTimeout(-1, 5);
    ASSERT_TRUE(awaitReads(5));
    EXPECT_EQ(heard.reads, (std::vector<std::string>{"line\n", "abc", "de", "fg", "h"}));
}

TEST_F(AsyncSocketReadTest, ALineLongerThanAllowedEndsTheConnection)
{
    for (const bool preBuffers : {true, false}) {
        socket = std::make_unique<AsyncSocket>(loop, &heard);
        heard.reads.clear();
        if (!preBuffers)
            socket->disablePreBuffering();
        connect();
        std::optional<std::string> unread;
        heard.whenEnding = [&](AsyncSocket& ending) { unread = ending.unreadData(); };
        peer.send("12345678\r\n");
        socket->readDataToData(AsyncSocket::CRLFData, -1, 10, 1); // just long enough
        socket->readDataToData(AsyncSocket::CRLFData, -1, 9, 2);
        ASSERT_TRUE(awaitReads(1));
        peer.send("12345678\r\nmore");
        ASSERT_TRUE(awaitEnd());
        EXPECT_EQ(heard.reads, std::vector<std::string>{"12345678\r\n"});
        EXPECT_EQ(heard.lastError,
                  (ZNTError{"AsyncSocketErrorDomain", 3, "Read operation reached set maximum length"}));
        EXPECT_EQ(unread, "12345678\r\nmore") << "nothing that came is lost";
        EXPECT_FALSE(socket->unreadData()) << "only while it ends";
    }
}

TEST_F(AsyncSocketReadTest, ACallersBufferIsFilledFromItsOffsetAndKeepsTheRest)
{
    connect();
    const auto roomy = std::make_shared<std::string>("0123456789");
    const auto tight = std::make_shared<std::string>("0123");
    socket->readDataToLength(3, -1, roomy, 2, 1);
    socket->readDataToLength(6, -1, tight, 4, 2);
    socket->readDataToData("\n", -1, roomy, 1, 3);
    peer.send("abcdefghixy\n");
    ASSERT_TRUE(awaitReads(3));
    EXPECT_EQ(heard.reads, (std::vector<std::string>{"abc", "defghi", "xy\n"}));
    EXPECT_EQ(*roomy, "0xy\nc56789");
    EXPECT_EQ(*tight, "0123defghi");
}

TEST_F(AsyncSocketReadTest, BytesThatCameWhileTheLoopWasHeldUpAreNoSilence)
{
    VirtualRunLoop elsewhere;
    ZNTScriptedPeer server(elsewhere);
    heard.readExtension = 0.5;
    ASSERT_TRUE(socket->connectToHost(server.host(), server.port()));
    ASSERT_TRUE(loop.runUntil([&] { return socket->isConnected(); }));
    elsewhere.advance(0);
    socket->readDataWithTimeout(0.5, 1);
    loop.advance(0.1);
    advancePast(0.4, [&] {
        server.send("late");
        elsewhere.advance(0);
    });
    EXPECT_EQ(heard.reads, std::vector<std::string>{"late"});
    EXPECT_TRUE(heard.elapsedReads.empty());
    EXPECT_EQ(loop.pendingTimers(), 0u);
}
