#include "AsyncSocketPackets.h"
#include "AsyncSocketTestSupport.h"

#include <cerrno>
#include <cmath>

using AsyncSocketReadTest = AsyncSocketTest;

TEST_F(AsyncSocketReadTest, ABurstComesInOneDeliveryAndAFloodInBoundedOnesBetweenWhichALineLeaves)
{
    connect();
    const std::string burst(10'000, 'b');
    peer.send(burst);
    ASSERT_TRUE(loop.runUntil([this] { return peer.hasSentAll(); }));
    socket->readDataWithTimeout(0.5, 0);
    ASSERT_TRUE(awaitReads(1));
    EXPECT_EQ(heard.reads, std::vector{burst});

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
    for (const std::string term : {"\r\n", "<->", "!"}) {
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
            EXPECT_EQ(kept.view(), "next" + term);
        }
    }
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

TEST_F(AsyncSocketReadTest, ManyLinesReadAheadAreDealtOutInOrder)
{
    connect();
    std::string lines;
    for (int at = 0; at < 20000; ++at) {
        lines += std::to_string(at) + "\r\n";
        socket->readDataToData(AsyncSocket::CRLFData, -1, at);
    }
    peer.send(lines);
    ASSERT_TRUE(loop.runUntil([this] { return heard.reads.size() == 20000; }));
    std::string joined;
    for (const auto& read : heard.reads)
        joined += read;
    EXPECT_TRUE(joined == lines);
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

TEST_F(AsyncSocketReadTest, AReadOfALengthReportsItsProgress)
{
    connect();
    std::int64_t tag = 9;
    std::size_t done = 9, total = 9;
    EXPECT_TRUE(std::isnan(socket->progressOfReadReturningTag(&tag, &done, &total)));
    EXPECT_EQ(tag + static_cast<std::int64_t>(done + total), 0);

    socket->readDataToLength(8, -1, 5);
    peer.send("ab");
    ASSERT_TRUE(loop.runUntil([this] { return heard.events.size() == 1; }));
    peer.send("cdef");
    ASSERT_TRUE(loop.runUntil([&] {
        const float fraction = socket->progressOfReadReturningTag(&tag, &done, &total);
        return fraction == 0.75F;
    }));
    EXPECT_EQ(tag, 5);
    EXPECT_EQ(done, 6u);
    EXPECT_EQ(total, 8u);
    EXPECT_EQ(heard.events, (Events{"partial read 5 of 2", "partial read 5 of 4"}));
    peer.send("ghi");
    ASSERT_TRUE(awaitReads(1));
    EXPECT_EQ(heard.reads[0], "abcdefgh");
    socket->readDataToData("!", -1, 6);
    loop.advance(0);
    EXPECT_EQ(socket->progressOfReadReturningTag(&tag, &done, nullptr), 1.0F) << "no known end";
}

TEST_F(AsyncSocketReadTest, ACallersBufferIsFilledFromItsOffsetAndKeepsTheRest)
{
    connect();
    const auto roomy = std::make_shared<std::string>("0123456789");
    const auto tight = std::make_shared<std::string>("0123");
    socket->readDataToLength(3, -1, roomy, 2, 1);
    socket->readDataToLength(6, -1, tight, 4, 2);
    socket->readDataToData("\n", -1, roomy, 1, 3);
    EXPECT_FALSE(socket->canSafelySetDelegate());
    peer.send("abcdefghixy\n");
    ASSERT_TRUE(awaitReads(3));
    EXPECT_EQ(heard.reads, (std::vector<std::string>{"abc", "defghi", "xy\n"}));
    EXPECT_EQ(*roomy, "0xy\nc56789");
    EXPECT_EQ(*tight, "0123defghi");
}

TEST_F(AsyncSocketReadTest, RequestsThatMakeNoSenseAreDroppedInSilence)
{
    connect();
    const auto buffer = std::make_shared<std::string>("abc");
    socket->readDataWithTimeout(0.1, buffer, 4, 1);
    socket->readDataToLength(0, 0.1, 2);
    socket->readDataToData("", 0.1, 3);
    socket->readDataToData("\r\n", 0.1, 1, 4);
    socket->writeData("", 0.1, 5);
    EXPECT_TRUE(socket->canSafelySetDelegate());
    loop.advance(1);
    EXPECT_TRUE(heard.events.empty());
    EXPECT_TRUE(socket->isConnected());
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

    socket->readDataToLength(3, 0.5, 2); // which one byte does not complete
    loop.advance(0.1);
    advancePast(0.4, [&] {
        server.send("a");
        elsewhere.advance(0);
    });
    EXPECT_EQ(heard.elapsedReads, std::vector<double>{0.5});
    heard.whenEnding = [&](AsyncSocket&) { socket.reset(); };
    advancePast(0.5, [&] {
        server.reset();
        elsewhere.advance(0);
    });
    EXPECT_EQ(heard.lastError, posixError(ECONNRESET));
    EXPECT_EQ(heard.elapsedReads, std::vector<double>{0.5}) << "a connection that broke is not silent";
}
