#pragma once

#include "RunLoop.h"

#include <cstdint>
#include <memory>
#include <string>

/// The other end of a connection, on loopback: a server that sends what the test gives it and keeps what it
/// receives. It lives on the test's run loop and does nothing while that stands still.
///
/// It talks to one client at a time, the one that connected last. What is sent before a client is there
/// waits.
class ZNTScriptedPeer
{
public:
    /// Listens on a free port of `host`, a numeric address. The loop outlives the peer.
    explicit ZNTScriptedPeer(RunLoop& runLoop, std::string host = "127.0.0.1");
    ~ZNTScriptedPeer();
    ZNTScriptedPeer(const ZNTScriptedPeer&) = delete;
    ZNTScriptedPeer& operator=(const ZNTScriptedPeer&) = delete;

    [[nodiscard]] const std::string& host() const { return address; }
    [[nodiscard]] std::uint16_t port() const { return listeningPort; }

    /// After all that was to be sent before.
    void send(std::string bytes);
    /// Says that nothing more will come when all has been sent (FIN); goes on reading.
    void closeWhenSent();
    /// Breaks the connection off at once (RST); the client meets an error.
    void reset();
    /// Closes the port. The connection that stands is kept.
    void stopListening();

    /// Leaves what the client sends in the network, so that its writes come to a halt.
    void stopReading() { setReading(false); }
    void resumeReading() { setReading(true); }
    /// Reads a piece of what has arrived at this moment, without a turn of the loop.
    void takeWhatArrived() { serve(RunLoopInterest::Readable); }
    /// Keeps little room for what is not read yet. For connections accepted from now on.
    void makeReceiveBufferSmall();

    /// Everything the present client, or the last one, sent.
    [[nodiscard]] const std::string& received() const { return receivedBytes; }
    [[nodiscard]] bool hasClient() const { return client >= 0; }
    /// Whether the client closed its end.
    [[nodiscard]] bool clientHasClosed() const { return clientClosed; }
    [[nodiscard]] int clientsAccepted() const { return accepted; }
    [[nodiscard]] bool hasSentAll() const { return outgoing.empty(); }

private:
    void acceptClient();
    void dropClient();
    void setReading(bool reading);
    void serve(RunLoopInterest ready);
    void updateInterest();

    RunLoop& runLoop;
    std::string address;
    int listening = -1, client = -1;
    std::uint16_t listeningPort = 0;
    int accepted = 0;
    bool clientClosed = false, isReading = true, closesWhenSent = false;
    std::string receivedBytes, outgoing;
    std::unique_ptr<RunLoopWatch> listeningWatch, clientWatch;
};
