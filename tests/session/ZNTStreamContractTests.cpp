#include "VirtualRunLoop.h"
#include "ZNTMemoryStream.h"
#include "ZNTScriptedPeer.h"
#include "ZNTSocketStream.h"

#include <cerrno>

namespace
{

using Events = std::vector<std::string>;

/// The game at the other end of a real socket, with the names of its twin in memory.
struct LoopbackGame : ZNTScriptedPeer {
    explicit LoopbackGame(RunLoop& loop) : ZNTScriptedPeer(loop), loop(loop) { makeReceiveBufferSmall(); }
    ZNTStreamFactory streams() { return socketStreams(loop); }
    RunLoop& loop;
};

/// What the session relies on, of a socket and of its twin in memory alike.
template <typename Game>
class StreamContract : public testing::Test, protected ZNTStreamDelegate
{
protected:
    void onSocketDidConnectToHost(ZNTStream&, const std::string& host, std::uint16_t) override
    {
        add("connected " + host);
    }
    void onSocketDidReadData(ZNTStream&, std::string_view data, std::int64_t tag) override
    {
        add("read " + std::to_string(tag) + " " + std::string(data));
    }
    double onSocketShouldTimeoutReadWithTag(ZNTStream&, std::int64_t, double elapsed, std::size_t) override
    {
        add("silent for " + std::to_string(elapsed).substr(0, 3));
        return extension;
    }
    void onSocketDidWriteDataWithTag(ZNTStream&, std::int64_t tag) override
    {
        add("wrote " + std::to_string(tag));
    }
    void onSocketWillDisconnectWithError(ZNTStream& ending, const ZNTError* error) override
    {
        const auto unread = ending.unreadData().value_or("");
        add("ending: " + (error ? error->description : "closed") +
            (unread.empty() ? "" : ", unread " + unread));
    }
    void onSocketDidDisconnect(ZNTStream&) override { add("disconnected"); }

    /// Notes the event. The stream is destroyed inside the event that a test names.
    void add(const std::string& event)
    {
        events.push_back(event);
        if (event == lastEvent)
            stream.reset();
    }
    void connect()
    {
        stream = game.streams()(*this);
        ASSERT_TRUE(stream->connectToHost(game.host(), game.port()));
        EXPECT_TRUE(events.empty() && !stream->isDisconnected());
        ASSERT_TRUE(loop.runUntil([this] { return game.hasClient() && !events.empty(); }));
        EXPECT_EQ(std::exchange(events, {}), Events{"connected 127.0.0.1"});
    }
    void read(std::int64_t tag) { stream->readDataWithTimeout(0.5, std::make_shared<std::string>(), 0, tag); }
    /// Turns the loop, in real time within one moment, until as many events have come.
    Events nextEvents(std::size_t count)
    {
        loop.runUntil([&] { return events.size() >= count; });
        loop.advance(0);
        return std::exchange(events, {});
    }
    Events eventsWithin(double seconds)
    {
        loop.advance(seconds);
        return std::exchange(events, {});
    }

    VirtualRunLoop loop;
    Game game{loop};
    Events events;
    std::string lastEvent;
    double extension = 0.5;
    std::unique_ptr<ZNTStream> stream;
};

using Games = testing::Types<LoopbackGame, ZNTMemoryGame>;
TYPED_TEST_SUITE(StreamContract, Games);

} // namespace

TYPED_TEST(StreamContract, SilenceTicksUntilBytesComeAndEachReadTakesWhatIsThere)
{
    this->connect();
    this->read(2);
    EXPECT_EQ(this->eventsWithin(1.25), (Events{"silent for 0.5", "silent for 1.0"}));
    this->game.send("late");
    EXPECT_EQ(this->nextEvents(1), Events{"read 2 late"});
    this->game.send("kept for the next read");
    EXPECT_EQ(this->eventsWithin(1), Events{});
    this->read(3);
    EXPECT_EQ(this->nextEvents(1), Events{"read 3 kept for the next read"});

    this->extension = 0;
    this->read(5);
    EXPECT_EQ(this->eventsWithin(0.5),
              (Events{"silent for 0.5", "ending: Read operation timed out", "disconnected"}));
    EXPECT_EQ(this->loop.pendingTimers(), 0u);
}

TYPED_TEST(StreamContract, WritesAreReportedInOrderFromTheLoopAndFlushedOnesLeaveAtOnce)
{
    this->connect();
    this->stream->writeData("look\r\n", -1, 1);
    this->stream->writeData("", -1, 2);
    this->stream->writeData("north\r\n", 0.1, 3);
    this->stream->flushQueuedWrites();
    EXPECT_EQ(this->events, Events{});
    EXPECT_EQ(this->nextEvents(2), (Events{"wrote 1", "wrote 3"}));
    ASSERT_TRUE(this->loop.runUntil([this] { return this->game.received() == "look\r\nnorth\r\n"; }));

    this->game.stopReading();
    this->stream->writeData(std::string(16'000'000, 'w'), 0.1, 4);
    this->stream->writeData("never sent", 0.1, 5);
    EXPECT_EQ(this->eventsWithin(0.05), Events{});
    EXPECT_EQ(this->eventsWithin(0.05), (Events{"ending: Write operation timed out", "disconnected"}));
    EXPECT_EQ(this->loop.pendingTimers(), 0u);
}

TYPED_TEST(StreamContract, AHeldReadKeepsItsTicksAndSeesNeitherBytesNorTheEnd)
{
    this->connect();
    this->read(1);
    this->stream->holdReading(true);
    this->game.send("last words");
    this->game.closeWhenSent();
    EXPECT_EQ(this->eventsWithin(1), (Events{"silent for 0.5", "silent for 1.0"}));
    this->stream->holdReading(false);
    EXPECT_EQ(this->nextEvents(3), (Events{"read 1 last words", "ending: closed", "disconnected"}));

    this->connect();
    EXPECT_FALSE(this->stream->isReadingHeld()) << "the hold ended with its connection";
    this->read(1);
    this->stream->holdReading(true);
    this->game.send("last words");
    this->loop.turn(10);
    this->game.reset();
    this->stream->writeData("anyone?", -1, 2);
    auto ended = this->nextEvents(2);
    EXPECT_EQ(ended.back(), "disconnected");
    EXPECT_TRUE(ended.front().ends_with(", unread last words")) << ended.front();
}

TYPED_TEST(StreamContract, EveryEndIsReportedOnce)
{
    this->connect();
    this->read(1);
    this->game.reset();
    EXPECT_EQ(this->nextEvents(2), (Events{"ending: " + posixError(ECONNRESET).description, "disconnected"}));

    this->connect();
    this->read(1);
    this->stream->writeData("never sent", -1, 2);
    this->stream->disconnect();
    EXPECT_EQ(std::exchange(this->events, {}), Events{"disconnected"});
    this->stream->disconnect();
    this->game.send("too late");
    EXPECT_EQ(this->eventsWithin(1), Events{});

    this->game.stopListening();
    ASSERT_TRUE(this->stream->connectToHost(this->game.host(), this->game.port()));
    EXPECT_EQ(this->nextEvents(2),
              (Events{"ending: " + posixError(ECONNREFUSED).description, "disconnected"}));
}

TYPED_TEST(StreamContract, AStreamServesWhatWasAskedWhileConnectingAndMayBeDestroyedInAnyCallback)
{
    for (const auto* event : {"connected 127.0.0.1", "wrote 1", "read 2 hello", "silent for 0.5",
                              "ending: closed", "disconnected"}) {
        SCOPED_TRACE(event);
        this->stream = this->game.streams()(*this);
        this->lastEvent = event;
        ASSERT_TRUE(this->stream->connectToHost(this->game.host(), this->game.port()));
        this->stream->writeData("x", -1, 1); // served once the connection stands, as is the read
        this->read(2);
        this->loop.runUntil([this] { return !this->stream || this->game.received() == "x"; });
        this->loop.advance(1);
        if (this->stream) {
            this->game.send("hello");
            this->game.closeWhenSent();
        }
        this->loop.runUntil([this] { return !this->stream; });
        EXPECT_EQ(this->events.back(), event);
        EXPECT_EQ(this->eventsWithin(1).back(), event);
        EXPECT_EQ(this->loop.pendingTimers(), 0u);
    }
}
