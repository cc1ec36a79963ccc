#include "ZNTDemoServer.h"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr double secondsOfRest = 1;

ZNTResult<int> listeningSocket(std::uint16_t port)
{
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return posixError(errno);
    const int on = 1;
    setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(descriptor, SOMAXCONN) != 0) {
        const int error = errno;
        close(descriptor);
        return posixError(error);
    }
    return descriptor;
}

} // namespace

ZNTResult<std::unique_ptr<ZNTDemoServer>> ZNTDemoServer::onPort(std::uint16_t port,
                                                                ZNTStringEncoding encoding, RunLoop& runLoop)
{
    const auto listener = listeningSocket(port);
    if (!listener)
        return listener.error();
    std::unique_ptr<ZNTDemoServer> server(new ZNTDemoServer(listener.value(), encoding, runLoop));
    if (!server->watch)
        return posixError(ENOSPC); // what epoll answers if it has no room for a further watch
    return server;
}

ZNTDemoServer::ZNTDemoServer(int listener, ZNTStringEncoding encoding, RunLoop& runLoop)
    : listener(listener),
      encoding(encoding),
      runLoop(runLoop),
      texts(ZNTDemoTexts::forEncoding(encoding)),
      village(runLoop, texts),
      commands(village, texts)
{
    watch = runLoop.watchDescriptor(listener, RunLoopInterest::Readable,
                                    [this](RunLoopInterest) { acceptPlayers(); });
}

ZNTDemoServer::~ZNTDemoServer()
{
    watch.reset();
    close(listener);
}

std::uint16_t ZNTDemoServer::port() const
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

void ZNTDemoServer::acceptPlayers()
{
    for (;;) {
        const int descriptor = accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (descriptor >= 0)
            admit(descriptor);
        else if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM)
            return restAwhile();
        else if (errno != EINTR && errno != ECONNABORTED)
            return;
    }
}

/// Without this rest, a connection that cannot be accepted for lack of descriptors would keep the loop busy.
void ZNTDemoServer::restAwhile()
{
    watch->setInterest(RunLoopInterest::None);
    rest = runLoop.startTimer(secondsOfRest, RunLoopRepeat::Once,
                              [this] { watch->setInterest(RunLoopInterest::Readable); });
}

void ZNTDemoServer::admit(int descriptor)
{
    if (connections.size() >= mostPlayers) {
        const auto full = znt::encodedText(texts.phrase(ZNTDemoPhrase::VillageIsFull), encoding) + "\r\n";
        send(descriptor, full.data(), full.size(), MSG_NOSIGNAL);
        close(descriptor);
        return;
    }
    const ZNTDemoConnection::Game game{runLoop, texts, encoding, village, commands};
    connections.emplace_back(game, descriptor,
                             [this, alive = std::weak_ptr(isAlive)](ZNTDemoConnection& over) {
                                 // The connection is in the middle of something: it goes on the next turn.
                                 runLoop.post([this, &over, alive] {
                                     if (!alive.expired())
                                         remove(over);
                                 });
                             });
}

void ZNTDemoServer::remove(const ZNTDemoConnection& over)
{
    connections.remove_if([&](const ZNTDemoConnection& each) { return &each == &over; });
    if (whenPlayerLeft)
        whenPlayerLeft();
}
