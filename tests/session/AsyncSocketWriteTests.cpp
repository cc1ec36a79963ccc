#include "AsyncSocketTestSupport.h"

using AsyncSocketWriteTest = AsyncSocketTest;

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
    std::string more; // than the network takes from a peer that does not read
    for (int at = 0; at < 16'000'000; ++at)
        more += static_cast<char>(at * 17 >> 4);
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
