#include "AsyncHostLookup.h"

#include "AsyncHostLookupThreads.h"
#include "AsyncSocketErrors.h"

#include <cerrno>
#include <cstring>
#include <mutex>
#include <netdb.h>
#include <netinet/in.h>
#include <optional>
#include <utility>

namespace
{

using Addresses = std::vector<AsyncSocketAddress>;

ZNTResult<Addresses> lookedUp(const std::string& host, std::uint16_t port, int flags)
{
    if (host.find('\0') != std::string::npos)
        return nameResolutionError(EAI_NONAME, 0);
    addrinfo hints{};
    hints.ai_flags = flags;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int result = ::getaddrinfo(host.c_str(), nullptr, &hints, &found);
    if (result != 0)
        return nameResolutionError(result, errno);
    Addresses addresses;
    for (const auto* each = found; each; each = each->ai_next) {
        AsyncSocketAddress address;
        std::memcpy(&address.storage, each->ai_addr, each->ai_addrlen);
        address.length = each->ai_addrlen;
        // The port stands at the same place in both families.
        reinterpret_cast<sockaddr_in*>(&address.storage)->sin_port = htons(port);
        addresses.push_back(address);
    }
    ::freeaddrinfo(found);
    return addresses;
}

} // namespace

struct AsyncHostLookup::Request final : AsyncHostLookupThreads::Job,
                                        std::enable_shared_from_this<AsyncHostLookup::Request> {
    Request(RunLoop& runLoop, std::string host, std::uint16_t port, Answered answered)
        : host(std::move(host)),
          port(port),
          runLoop(&runLoop),
          answered(std::move(answered))
    {
    }

    const std::string host;
    const std::uint16_t port;
    std::mutex guard;
    RunLoop* runLoop; // null once the look-up is called off; under the guard, so that it lives while it is
                      // posted to
    Answered answered;

    void run() override { post(lookedUp(host, port, 0)); }

    void post(ZNTResult<Addresses> addresses)
    {
        const std::lock_guard hold(guard);
        if (!runLoop)
            return;
        runLoop->post([request = shared_from_this(), addresses = std::move(addresses)] {
            // Only this thread, the loop's, calls the look-up off, so it may look without the lock.
            if (!request->runLoop)
                return;
            const auto answered = request->answered; // the call may end the look-up
            answered(addresses);
        });
    }
};

ZNTResult<std::unique_ptr<AsyncHostLookup>> AsyncHostLookup::start(RunLoop& runLoop, std::string host,
                                                                   std::uint16_t port, Answered answered)
{
    const auto request = std::make_shared<Request>(runLoop, std::move(host), port, std::move(answered));
    std::unique_ptr<AsyncHostLookup> lookup(new AsyncHostLookup(request));
    if (auto numeric = lookedUp(request->host, port, AI_NUMERICHOST); numeric.succeeded())
        request->post(std::move(numeric));
    else if (const auto added = AsyncHostLookupThreads::ofThisProcess().add(request); !added)
        return added.error();
    return lookup;
}

AsyncHostLookup::AsyncHostLookup(std::shared_ptr<Request> request) : request(std::move(request)) {}

AsyncHostLookup::~AsyncHostLookup()
{
    const std::lock_guard hold(request->guard);
    request->runLoop = nullptr;
    request->answered = nullptr;
}
