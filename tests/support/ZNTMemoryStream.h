#pragma once

#include "RunLoop.h"
#include "ZNTStream.h"

#include <deque>
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
    /// What a client may connect to.
    [[nodiscard]] static std::string host() { return "127.0.0.1"; }
    [[nodiscard]] static std::uint16_t port() { return 4000; }

    /// Arrives as one block, or as several of 256 KiB.
    void send(std::string bytes);
    /// Says that nothing more comes after what was sent; goes on taking bytes.
    void closeWhenSent() { setEnd(End::Closed); }
    /// Breaks the connection off: the client meets an error after what was sent, or when it writes.
    void reset() { setEnd(End::Broken); }
    /// From now on, attempts to connect are refused.
    void stopListening() { isListening = false; }
    /// From now on, an attempt cannot even begin, as if no thread were left to look its host up.
    void refuseAttempts() { mayBegin = false; }

    /// From now on the network takes nothing from the client.
    void stopReading() { isReading = false; }
    void resumeReading();

    /// What the present client, or the last one, sent.
    [[nodiscard]] const std::string& received() const { return receivedBytes; }
    [[nodiscard]] bool hasClient() const { return client != nullptr; }
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
    bool mayBegin = true, isListening = true, isReading = true;
    int accepted = 0;
    std::deque<std::string> blocks; ///< sent and not read
    End end = End::None;            ///< what comes after them
    std::string receivedBytes;
};
