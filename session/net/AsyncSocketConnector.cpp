#include "AsyncSocketConnector.h"

#include "AsyncSocketErrors.h"

#include <array>
#include <cerrno>
#include <utility>

namespace
{

constexpr double secondsBeforeNextAddress = 0.25; // RFC 8305, section 5

using Addresses = std::vector<AsyncSocketAddress>;

/// The families in alternation, the preferred address's first (RFC 8305, section 4): if one family has no
/// route, the second address tried is of the other. The order within each family stays.
Addresses interleaved(const Addresses& addresses)
{
    Addresses order;
    std::array<std::size_t, 2> next{}; // of the preferred family, of the other
    const auto takeNext = [&](std::size_t which) {
        auto& at = next[which];
        while (at < addresses.size() &&
               (addresses[at].storage.ss_family == addresses.front().storage.ss_family) != (which == 0))
            ++at;
        if (at < addresses.size())
            order.push_back(addresses[at++]);
    };
    for (std::size_t turn = 0; order.size() < addresses.size(); ++turn)
        takeNext(turn % 2);
    return order;
}

} // namespace

AsyncSocketConnector::AsyncSocketConnector(RunLoop& runLoop, Finished finished)
    : runLoop(runLoop),
      finished(std::move(finished))
{
}

AsyncSocketConnector::~AsyncSocketConnector() = default;

ZNTResult<void> AsyncSocketConnector::start(const std::string& host, std::uint16_t port)
{
    auto started = AsyncHostLookup::start(runLoop, host, port,
                                          [this](const ZNTResult<std::vector<AsyncSocketAddress>>& found) {
                                              if (!found)
                                                  return finish(found.error());
                                              connectToOneOf(found.value());
                                          });
    if (!started)
        return started.error();
    lookup = std::move(started).value();
    return {};
}

void AsyncSocketConnector::connectToOneOf(std::vector<AsyncSocketAddress> known)
{
    addresses = interleaved(known);
    tryNext();
}

void AsyncSocketConnector::tryNext()
{
    patience.reset();
    // An address that fails at once (no route, no descriptor left) makes room for the next in the same turn.
    while (nextAddress < addresses.size()) {
        const auto& address = addresses[nextAddress++];
        AsyncSocketDescriptor descriptor(
            ::socket(address.storage.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        if (!descriptor.isOpen() ||
            (::connect(descriptor.get(), reinterpret_cast<const sockaddr*>(&address.storage),
                       address.length) != 0 &&
             errno != EINPROGRESS && errno != EINTR)) {
            lastError = posixError(errno);
            continue;
        }
        const auto attempt = attempts.insert(attempts.end(), Attempt{std::move(descriptor), nullptr});
        attempt->watch = runLoop.watchDescriptor(attempt->descriptor.get(), RunLoopInterest::Writable,
                                                 [this, attempt](RunLoopInterest) { concluded(attempt); });
        if (!attempt->watch) {
            attempts.erase(attempt);
            lastError = asyncSocketError(AsyncSocketCFSocketError);
            continue;
        }
        if (nextAddress < addresses.size())
            patience =
                runLoop.startTimer(secondsBeforeNextAddress, RunLoopRepeat::Once, [this] { tryNext(); });
        return;
    }
    if (attempts.empty())
        finish(lastError);
}

void AsyncSocketConnector::concluded(std::list<Attempt>::iterator attempt)
{
    int errorNumber = 0;
    socklen_t length = sizeof errorNumber;
    ::getsockopt(attempt->descriptor.get(), SOL_SOCKET, SO_ERROR, &errorNumber, &length);
    attempt->watch.reset();
    auto descriptor = std::move(attempt->descriptor);
    attempts.erase(attempt);
    if (errorNumber == 0)
        return finish(std::move(descriptor));
    lastError = posixError(errorNumber);
    tryNext();
}

void AsyncSocketConnector::finish(ZNTResult<AsyncSocketDescriptor> connected)
{
    const auto call = std::exchange(finished, nullptr); // the call may destroy this
    patience.reset();
    attempts.clear();
    call(std::move(connected));
}
