#include "AsyncSocketStream.h"

#include <array>
#include <cerrno>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

AsyncSocketStream::Moved movedBy(ssize_t result)
{
    if (result > 0)
        return {static_cast<std::size_t>(result), 0};
    return {0, result == 0 ? 0 : errno == EINTR ? EAGAIN : errno};
}

using AddressQuery = int (*)(int, sockaddr*, socklen_t*);

bool readEndpoint(AddressQuery query, int descriptor, AsyncSocketEndpoint& endpoint)
{
    sockaddr_storage storage{};
    socklen_t length = sizeof storage;
    auto* address = reinterpret_cast<sockaddr*>(&storage);
    if (query(descriptor, address, &length) != 0)
        return false;
    std::array<char, NI_MAXHOST> host{};
    ::getnameinfo(address, length, host.data(), host.size(), nullptr, 0, NI_NUMERICHOST);
    endpoint.host = host.data();
    endpoint.isIPv4 = storage.ss_family == AF_INET;
    // The port stands at the same place in both families.
    endpoint.port = ntohs(reinterpret_cast<const sockaddr_in*>(&storage)->sin_port);
    return true;
}

} // namespace

AsyncSocketDescriptor::~AsyncSocketDescriptor()
{
    if (isOpen())
        ::close(number);
}

AsyncSocketStream::AsyncSocketStream(AsyncSocketDescriptor connected) : descriptor(std::move(connected))
{
    const int on = 1;
    ::setsockopt(descriptor.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

AsyncSocketStream::Moved AsyncSocketStream::read(char* into, std::size_t count)
{
    return movedBy(::recv(descriptor.get(), into, count, 0));
}

AsyncSocketStream::Moved AsyncSocketStream::write(const char* from, std::size_t count)
{
    return movedBy(::send(descriptor.get(), from, count, MSG_NOSIGNAL));
}

AsyncSocketStream::Moved AsyncSocketStream::peek()
{
    char first = 0;
    return movedBy(::recv(descriptor.get(), &first, 1, MSG_PEEK));
}

std::size_t AsyncSocketStream::bytesAvailable() const
{
    int count = 0;
    return ::ioctl(descriptor.get(), FIONREAD, &count) == 0 && count > 0 ? static_cast<std::size_t>(count)
                                                                         : 0;
}

bool AsyncSocketStream::schedule(RunLoop& runLoop, RunLoop::ReadyHandler handler)
{
    auto newWatch = runLoop.watchDescriptor(descriptor.get(), wanted, std::move(handler));
    if (!newWatch)
        return false;
    watch = std::move(newWatch);
    return true;
}

void AsyncSocketStream::setInterest(RunLoopInterest interest)
{
    if (interest == wanted)
        return;
    wanted = interest;
    if (watch)
        watch->setInterest(wanted);
}

bool AsyncSocketStream::readPeer(AsyncSocketEndpoint& peer) const
{
    return readEndpoint(&::getpeername, descriptor.get(), peer);
}

bool AsyncSocketStream::readLocal(AsyncSocketEndpoint& local) const
{
    return readEndpoint(&::getsockname, descriptor.get(), local);
}
