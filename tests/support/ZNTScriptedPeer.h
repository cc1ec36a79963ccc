#pragma once

#include "RunLoop.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The other end of a connection, on loopback: a server that says what the test tells it to and remembers
/// what it is told. It lives on the test's run loop and does nothing while that stands still.
///
/// It talks to one client at a time, the one that connected last. What is sent before a client is there
/// waits.
class ZNTScriptedPeer
{
public:
    enum class Family { IPv4, IPv6 };

    /// Listens on a free port of 127.0.0.1 or ::1. The loop outlives the peer.
    explicit ZNTScriptedPeer(RunLoop& runLoop, Family family = Family::IPv4);
    ~ZNTScriptedPeer();
    ZNTScriptedPeer(const ZNTScriptedPeer&) = delete;
    ZNTScriptedPeer& operator=(const ZNTScriptedPeer&) = delete;

    [[nodiscard]] std::string host() const { return family == Family::IPv4 ? "127.0.0.1" : "::1"; }
    [[nodiscard]] std::uint16_t port() const { return listeningPort; }

    /// Each in one piece as far as the network takes it, after all that was to be sent before.
    void send(std::string bytes);
    /// Each slice on a turn of its own with a turn of rest before it, so that a client which reads on every
    /// turn receives them one by one.
    void sendInSlices(std::vector<std::string> slices);
    void sendInSlices(std::string_view bytes, std::size_t sliceLength);
    /// Says that nothing more will come when all has been sent (FIN); goes on reading.
    void closeWhenSent();
    /// Breaks the connection off at once (RST); the client meets an error.
    void reset();
    /// From now on nobody listens on the port; the connection that stands is kept.
    void stopListening();

    /// Leaves what the client sends in the network, so that its writes come to a halt.
    void stopReading();
    void resumeReading();
    /// Reads what has arrived at this moment, without a turn of the loop.
    void takeWhatArrived() { receive(); }
    /// Keeps little room for what is not read yet. For connections accepted from now on.
    void makeReceiveBufferSmall();

    /// Everything the present client, or the last one, sent.
    [[nodiscard]] const std::string& received() const { return receivedBytes; }
    [[nodiscard]] bool hasClient() const { return client >= 0; }
    /// Whether the client closed its end.
    [[nodiscard]] bool clientHasClosed() const { return clientClosed; }
    [[nodiscard]] int clientsAccepted() const { return accepted; }
    [[nodiscard]] bool hasSentAll() const { return outgoing.empty(); }

    /// Called with each piece that arrives, after it was added to `received`; may send.
    std::function<void(std::string_view piece)> pieceReceived;

private:
    struct Outgoing {
        std::string bytes;
        std::size_t sent;
        int restTurns;
    };

    void acceptClient();
    void dropClient();
    void serve(RunLoopInterest ready);
    void receive();
    void sendMore();
    void updateInterest();

    RunLoop& runLoop;
    Family family;
    int listening = -1;
    int client = -1;
    std::uint16_t listeningPort = 0;
    int accepted = 0;
    bool clientClosed = false;
    bool isReading = true;
    bool closesWhenSent = false;
    std::string receivedBytes;
    std::deque<Outgoing> outgoing;
    std::unique_ptr<RunLoopWatch> listeningWatch, clientWatch;
};
