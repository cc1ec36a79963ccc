#include "AsyncSocketTestSupport.h"

using AsyncSocketWriteTest = AsyncSocketTest;

namespace
{
/// More than the network takes from a peer that does not read.
const std::string more = [] {
    std::string bytes(16'000'000, '\0');
    for (std::size_t at = 0; at < bytes.size(); ++at)
        bytes[at] = static_cast<char>(at * 17 >> 4);
    return bytes;
}();
} // namespace

TEST_F(AsyncSocketWriteTest, WritesThatComeFasterThanTheLoopTurnsDoNotPileUp)
{
    connect();
    for (int write = 0; write < 200; ++write)
        socket->writeData("n\r\n", -1, write);
    int turns = 0;
    std::function<void()> countTurn = [&] {
        ++turns;
        if (heard.events.size() < 200)
            loop.post(countTurn);
    };
    loop.post(countTurn);
    EXPECT_TRUE(loop.runUntil([&] { return heard.events.size() == 200; }));
    EXPECT_EQ(heard.events.back(), "wrote 199");
    EXPECT_LE(turns, 10);
}

TEST_F(AsyncSocketWriteTest, AWriteForWhichThePeerMadeRoomWhileTheLoopWasHeldUpIsNotGivenUp)
{
    VirtualRunLoop elsewhere;
    ZNTScriptedPeer server(elsewhere);
    server.makeReceiveBufferSmall();
    server.stopReading();
    const auto fill = [&](std::string data) {
        heard.partlyWritten = 0;
        socket = std::make_unique<AsyncSocket>(loop, &heard);
        ASSERT_TRUE(socket->connectToHost(server.host(), server.port()));
        ASSERT_TRUE(loop.runUntil([&] { return socket->isConnected(); }));
        elsewhere.advance(0);
        socket->writeData(std::move(data), 0.1, 1);
        loop.advance(0.05);
        ASSERT_GT(heard.partlyWritten, 0u);
    };
    fill(more);
    fill(more.substr(0, heard.partlyWritten * 3 / 2)); // what is left fits where the first part was
    heard.events.clear();
    advancePast(0.05, [&] {
        server.resumeReading();
        elsewhere.advance(0);
    });
    EXPECT_EQ(heard.events, (Events{"wrote 1"}));
    EXPECT_EQ(loop.pendingTimers(), 0u);
}

TEST_F(AsyncSocketWriteTest, WritingToAPeerThatIsGoneEndsInAnErrorAndNotInASignal)
{
    connect();
    peer.send("never read, so that the end after it is not met either");
    peer.closeWhenSent();
    ASSERT_TRUE(loop.runUntil([this] { return peer.hasSentAll(); }));
    loop.advance(1);
    peer.reset(); // after its FIN: Linux answers the next write with SIGPIPE, unless asked not to
    socket->writeData("anyone?\r\n", -1, 1);
    ASSERT_TRUE(awaitEnd());
    EXPECT_EQ(heard.lastError, posixError(EPIPE));
}

TEST_F(AsyncSocketWriteTest, DisconnectAfterWritingSendsEverythingInOrderFirstAndTakesNothingMore)
{
    connect();
    socket->disconnectAfterWriting();
    EXPECT_TRUE(socket->isConnected()) << "with nothing to send the end comes on a later turn";
    ASSERT_TRUE(awaitEnd());

    connect();
    socket->writeData("look\r\n", -1, 1);
    socket->writeData(more, -1, 2);
    socket->writeData("quit\r\n", -1, 3);
    socket->flushQueuedWrites();
    EXPECT_TRUE(heard.events.empty());
    peer.takeWhatArrived();
    EXPECT_TRUE(peer.received().starts_with("look\r\n")) << "before the loop turns";
    socket->readDataWithTimeout(-1, 4); // a read that waits keeps nothing open
    socket->disconnectAfterWriting();
    socket->writeData("too late\r\n", -1, 5);
    ASSERT_TRUE(awaitEnd());
    ASSERT_TRUE(loop.runUntil([this] { return peer.clientHasClosed(); }));
    EXPECT_TRUE(peer.received() == "look\r\n" + more + "quit\r\n");
    EXPECT_EQ(heard.events, (Events{"wrote 1", "wrote 2", "wrote 3", "disconnected"}));
}
