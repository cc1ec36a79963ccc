#include "ZNTScriptedPeer.h"

#include <array>
#include <cerrno>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace
{
constexpr int smallBuffer = 4096, on = 1;
} // namespace

ZNTScriptedPeer::ZNTScriptedPeer(RunLoop& runLoop, std::string host)
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

ZNTScriptedPeer::~ZNTScriptedPeer()
{
    dropClient();
    stopListening();
}

void ZNTScriptedPeer::send(std::string bytes)
{
    outgoing += bytes;
    updateInterest();
}

void ZNTScriptedPeer::closeWhenSent()
{
    closesWhenSent = true;
    updateInterest();
}

void ZNTScriptedPeer::setReading(bool reading)
{
    isReading = reading;
    updateInterest();
}

void ZNTScriptedPeer::reset()
{
    const linger breakOff{1, 0};
    ::setsockopt(client, SOL_SOCKET, SO_LINGER, &breakOff, sizeof breakOff);
    dropClient();
}

void ZNTScriptedPeer::stopListening()
{
    listeningWatch.reset();
    if (listening >= 0)
        ::close(std::exchange(listening, -1));
}

void ZNTScriptedPeer::makeReceiveBufferSmall()
{
    ::setsockopt(listening, SOL_SOCKET, SO_RCVBUF, &smallBuffer, sizeof smallBuffer);
}

void ZNTScriptedPeer::acceptClient()
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

void ZNTScriptedPeer::dropClient()
{
    clientWatch.reset();
    if (client >= 0)
        ::close(std::exchange(client, -1));
}

void ZNTScriptedPeer::serve(RunLoopInterest ready)
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

void ZNTScriptedPeer::updateInterest()
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
