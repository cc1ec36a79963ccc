#pragma once

#include "RunLoop.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

/// The other end of a connection, on loopback: a server that sends what the test gives it and keeps what it
/// receives. It lives on the test's run loop and does nothing while that stands still.
///
/// It talks to one client at a time, the one that connected last. What is sent before a client is there
/// waits.
class ZNTScriptedPeer
{
public:
    /// Listens on a free port of `host`, a numeric address. The loop outlives the peer.
    explicit ZNTScriptedPeer(RunLoop& runLoop, std::string host = "127.0.0.1")
        : runLoop(runLoop),
          address(std::move(host))
    {
        addrinfo hints{};
        hints.ai_flags = AI_NUMERICHOST;
        hints.ai_socktype = SOCK_STREAM;
        addrinfo* found = nullptr;
        sockaddr_in6 bound{}; // the port stands at the same place in both families
        socklen_t length = sizeof bound;
        if (::getaddrinfo(address.c_str(), "0", &hints, &found) == 0)
            listening = ::socket(found->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (listening < 0 || ::bind(listening, found->ai_addr, found->ai_addrlen) != 0 ||
            ::listen(listening, 8) != 0 ||
            ::getsockname(listening, reinterpret_cast<sockaddr*>(&bound), &length) != 0)
            throw std::system_error(errno, std::generic_category(), "listening on " + address);
        ::freeaddrinfo(found);
        listeningPort = ntohs(bound.sin6_port);
        listeningWatch = runLoop.watchDescriptor(listening, RunLoopInterest::Readable,
                                                 [this](RunLoopInterest) { acceptClient(); });
    }
    ~ZNTScriptedPeer()
    {
        dropClient();
        stopListening();
    }

    [[nodiscard]] const std::string& host() const { return address; }
    [[nodiscard]] std::uint16_t port() const { return listeningPort; }

    /// After all that was to be sent before.
    void send(std::string bytes)
    {
        outgoing += bytes;
        updateInterest();
    }
    /// Says that nothing more will come when all has been sent (FIN); goes on reading.
    void closeWhenSent()
    {
        closesWhenSent = true;
        updateInterest();
    }
    /// Breaks the connection off at once (RST); the client meets an error.
    void reset()
    {
        const linger breakOff{1, 0};
        ::setsockopt(client, SOL_SOCKET, SO_LINGER, &breakOff, sizeof breakOff);
        dropClient();
    }
    /// Closes the port. The connection that stands is kept.
    void stopListening()
    {
        listeningWatch.reset();
        if (listening >= 0)
            ::close(std::exchange(listening, -1));
    }

    /// Leaves what the client sends in the network, so that its writes come to a halt.
    void stopReading()
    {
        isReading = false;
        updateInterest();
    }
    /// Reads a piece of what has arrived at this moment, without a turn of the loop.
    void takeWhatArrived() { serve(RunLoopInterest::Readable); }
    /// Keeps little room for what is not read yet. For connections accepted from now on.
    void makeReceiveBufferSmall()
    {
        ::setsockopt(listening, SOL_SOCKET, SO_RCVBUF, &smallBuffer, sizeof smallBuffer);
    }

    /// Everything the present client, or the last one, sent.
    [[nodiscard]] const std::string& received() const { return receivedBytes; }
    [[nodiscard]] bool hasClient() const { return client >= 0; }
    /// Whether the client closed its end.
    [[nodiscard]] bool clientHasClosed() const { return clientClosed; }
    [[nodiscard]] int clientsAccepted() const { return accepted; }
    [[nodiscard]] bool hasSentAll() const { return outgoing.empty(); }

private:
    static constexpr int smallBuffer = 4096, on = 1;

    void acceptClient()
    {
        const int descriptor = ::accept4(listening, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (descriptor < 0)
            return;
        dropClient();
        client = descriptor;
        ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        ++accepted;
        clientClosed = false;
        receivedBytes.clear();
        clientWatch = runLoop.watchDescriptor(client, RunLoopInterest::None,
                                              [this](RunLoopInterest ready) { serve(ready); });
        updateInterest();
    }
    void dropClient()
    {
        clientWatch.reset();
        if (client >= 0)
            ::close(std::exchange(client, -1));
    }
    void serve(RunLoopInterest ready)
    {
        if (includes(ready, RunLoopInterest::Readable) && isReading && !clientClosed) {
            std::array<char, 1 << 16> piece;
            const ssize_t count = ::recv(client, piece.data(), piece.size(), 0);
            receivedBytes.append(piece.data(), static_cast<std::size_t>(count > 0 ? count : 0));
            clientClosed = count == 0 || (count < 0 && errno != EAGAIN);
        }
        if (includes(ready, RunLoopInterest::Writable)) {
            const ssize_t count = ::send(client, outgoing.data(), outgoing.size(), MSG_NOSIGNAL);
            if (count < 0 && errno != EAGAIN)
                outgoing.clear(); // the client is gone
            outgoing.erase(0, static_cast<std::size_t>(count > 0 ? count : 0));
            if (outgoing.empty() && std::exchange(closesWhenSent, false))
                ::shutdown(client, SHUT_WR); // a close with bytes still unread would break the connection off
        }
        updateInterest();
    }
    void updateInterest()
    {
        if (!clientWatch)
            return;
        auto interest = RunLoopInterest::None;
        if (isReading && !clientClosed)
            interest = interest | RunLoopInterest::Readable;
        if (!outgoing.empty() || closesWhenSent)
            interest = interest | RunLoopInterest::Writable;
        clientWatch->setInterest(interest);
    }

    RunLoop& runLoop;
    std::string address;
    int listening = -1, client = -1;
    std::uint16_t listeningPort = 0;
    int accepted = 0;
    bool clientClosed = false, isReading = true, closesWhenSent = false;
    std::string receivedBytes, outgoing;
    std::unique_ptr<RunLoopWatch> listeningWatch, clientWatch;
};
