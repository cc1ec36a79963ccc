#pragma once

#include "RunLoop.h"
#include "ZNTStream.h"

#include <deque>
#include <limits>
#include <memory>
#include <optional>
#include <string>

class ZNTMemoryStream;

/// The game at the far end of streams in memory: it sends what a test gives it and keeps what it receives,
/// with no port. A stream behaves towards its delegate as a socket does, on turns of the test's run loop.
///
/// It has one client, the stream that connected last. What is sent before a client is there waits.
/// It outlives its streams.
class ZNTMemoryGame
{
public:
    explicit ZNTMemoryGame(RunLoop& runLoop) : runLoop(runLoop) {}

    /// For the session's services.
    ZNTStreamFactory streams();
    /// What a client may connect to, and is told that it is connected to.
    [[nodiscard]] static std::string host() { return "127.0.0.1"; }
    [[nodiscard]] static std::uint16_t port() { return 4000; }

    /// Arrives as one block, or as several of 256 KiB.
    void send(std::string bytes);
    /// Says that nothing more comes after what was sent; goes on taking bytes.
    void closeWhenSent();
    /// Breaks the connection off: the client meets an error after what was sent.
    void reset();
    /// From now on, attempts to connect are refused.
    void stopListening() { isListening = false; }

    /// From now on the network takes `bytes` more from the client, and then none.
    void stopReading(std::size_t bytes = 0) { room = bytes; }
    void resumeReading();

    /// What the present client, or the last one, sent.
    [[nodiscard]] const std::string& received() const { return receivedBytes; }
    [[nodiscard]] bool hasClient() const { return client != nullptr; }
    /// Whether the client ended the connection.
    [[nodiscard]] bool clientHasClosed() const { return clientClosed; }
    [[nodiscard]] int clientsAccepted() const { return accepted; }
    /// Whether the client has read everything.
    [[nodiscard]] bool hasSentAll() const { return blocks.empty(); }

private:
    friend class ZNTMemoryStream;
    enum class End { None, Closed, Broken };
    void tellClient();
    void setEnd(End newEnd);

    RunLoop& runLoop;
    ZNTMemoryStream* client = nullptr;
    bool isListening = true;
    bool clientClosed = false;
    int accepted = 0;
    std::deque<std::string> blocks; ///< sent and not read
    End end = End::None;            ///< what comes after them
    std::size_t room = std::numeric_limits<std::size_t>::max();
    std::string receivedBytes;
};

/// The client's end.
class ZNTMemoryStream final : public ZNTStream
{
public:
    ZNTMemoryStream(ZNTMemoryGame& game, ZNTStreamDelegate& delegate) : game(game), delegate(delegate) {}
    ~ZNTMemoryStream() override { tearDown(); }

    ZNTResult<void> connectToHost(const std::string& host, std::uint16_t port) override;
    void disconnect() override;
    [[nodiscard]] bool isDisconnected() const override { return state == State::Idle; }
    void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                             std::int64_t tag) override;
    void holdReading(bool isHeld) override;
    [[nodiscard]] bool isReadingHeld() const override { return isHeld; }
    [[nodiscard]] std::optional<std::string> unreadData() override;
    void writeData(std::string data, double timeout, std::int64_t tag) override;
    void flushQueuedWrites() override;

private:
    friend class ZNTMemoryGame;
    enum class State { Idle, Connecting, Connected };
    struct Read {
        double timeout;
        std::shared_ptr<std::string> buffer;
        std::size_t bufferOffset;
        std::int64_t tag;
    };
    struct Write {
        std::string data;
        double timeout;
        std::int64_t tag;
        std::size_t done = 0;
    };

    void later(void (ZNTMemoryStream::*step)());
    template <typename Call>
    bool tellDelegate(Call call);
    void open();
    void readOn();
    void beginRead();
    void takeBlock();
    void readTimedOut();
    void writeOn();
    void writeTimedOut();
    void moveBytesOf(Write& write);
    void closeWithError(const ZNTError* error);
    void tearDown();

    ZNTMemoryGame& game;
    ZNTStreamDelegate& delegate;
    State state = State::Idle;
    bool isHeld = false, isEnding = false;
    std::deque<Read> queuedReads;
    std::optional<Read> currentRead;
    double grantedSeconds = 0;
    std::uint16_t portAskedFor = 0;
    std::deque<Write> writes;
    std::unique_ptr<RunLoopTimer> readTimer, writeTimer;
    /// Renewed at each end, so that what was posted for a connection, or waits for a callback, sees its end.
    std::shared_ptr<char> connection = std::make_shared<char>();
};
