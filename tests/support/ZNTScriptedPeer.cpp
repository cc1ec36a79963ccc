#include "ZNTScriptedPeer.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace
{

constexpr std::size_t longestPiece = 1 << 16;
constexpr int smallBuffer = 4096;

[[noreturn]] void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

template <typename Address>
void bindTo(int descriptor, const Address& address)
{
    if (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        fail("bind");
}

std::uint16_t portOf(int descriptor)
{
    sockaddr_in6 address{}; // the port stands at the same place in both families
    socklen_t length = sizeof address;
    if (::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        fail("getsockname");
    return ntohs(address.sin6_port);
}

} // namespace

ZNTScriptedPeer::ZNTScriptedPeer(RunLoop& runLoop, Family family) : runLoop(runLoop), family(family)
{
    const int domain = family == Family::IPv4 ? AF_INET : AF_INET6;
    listening = ::socket(domain, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (listening < 0)
        fail("socket");
    if (family == Family::IPv4) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bindTo(listening, address);
    } else {
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_addr = in6addr_loopback;
        bindTo(listening, address);
    }
    if (::listen(listening, 8) != 0)
        fail("listen");
    listeningPort = portOf(listening);
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
    outgoing.push_back({std::move(bytes), 0, 0});
    updateInterest();
}

void ZNTScriptedPeer::sendInSlices(std::vector<std::string> slices)
{
    for (auto& slice : slices)
        outgoing.push_back({std::move(slice), 0, 2});
    updateInterest();
}

void ZNTScriptedPeer::sendInSlices(std::string_view bytes, std::size_t sliceLength)
{
    std::vector<std::string> slices;
    for (std::size_t at = 0; at < bytes.size(); at += sliceLength)
        slices.emplace_back(bytes.substr(at, sliceLength));
    sendInSlices(std::move(slices));
}

void ZNTScriptedPeer::closeWhenSent()
{
    closesWhenSent = true;
    updateInterest();
}

void ZNTScriptedPeer::reset()
{
    const linger breakOff{1, 0};
    if (client >= 0)
        ::setsockopt(client, SOL_SOCKET, SO_LINGER, &breakOff, sizeof breakOff);
    dropClient();
}

void ZNTScriptedPeer::stopListening()
{
    listeningWatch.reset();
    if (listening >= 0)
        ::close(std::exchange(listening, -1));
}

void ZNTScriptedPeer::stopReading()
{
    isReading = false;
    updateInterest();
}

void ZNTScriptedPeer::resumeReading()
{
    isReading = true;
    updateInterest();
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
    const int on = 1;
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
    if (includes(ready, RunLoopInterest::Readable) && isReading && !clientClosed)
        receive();
    if (client >= 0 && includes(ready, RunLoopInterest::Writable))
        sendMore();
    updateInterest();
}

void ZNTScriptedPeer::receive()
{
    std::array<char, longestPiece> piece;
    const ssize_t count = ::recv(client, piece.data(), piece.size(), 0);
    if (count > 0) {
        const std::string_view got(piece.data(), static_cast<std::size_t>(count));
        receivedBytes += got;
        if (pieceReceived)
            pieceReceived(got);
    } else if (count == 0 || errno != EAGAIN) {
        clientClosed = true;
    }
}

void ZNTScriptedPeer::sendMore()
{
    while (!outgoing.empty()) {
        auto& next = outgoing.front();
        if (next.restTurns-- > 0)
            return;
        next.restTurns = 0;
        const ssize_t count =
            ::send(client, next.bytes.data() + next.sent, next.bytes.size() - next.sent, MSG_NOSIGNAL);
        if (count < 0) {
            if (errno != EAGAIN)
                outgoing.clear(); // the client is gone, and with it whoever could miss them
            return;
        }
        next.sent += static_cast<std::size_t>(count);
        if (next.sent < next.bytes.size())
            return;
        outgoing.pop_front();
    }
    if (closesWhenSent) {
        closesWhenSent = false;
        ::shutdown(client, SHUT_WR); // a close with bytes still unread would break the connection off
    }
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
