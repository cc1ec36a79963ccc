#pragma once

#include "RunLoop.h"
#include "ZNTResult.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <vector>

struct AsyncSocketAddress {
    sockaddr_storage storage{};
    socklen_t length = 0;
};

/// Finds the addresses of a host. The C library's look-up waits, possibly for long, so it runs on a thread
/// (AsyncHostLookupThreads). An answer that comes after the look-up was destroyed is dropped.
class AsyncHostLookup
{
public:
    using Answered = std::function<void(const ZNTResult<std::vector<AsyncSocketAddress>>& addresses)>;

    /// `answered` is called once, on a later turn of the loop, with one address at least or with an error.
    /// Fails at once if the system has no thread to spare.
    [[nodiscard]] static ZNTResult<std::unique_ptr<AsyncHostLookup>>
    start(RunLoop& runLoop, std::string host, std::uint16_t port, Answered answered);

    /// `answered` is not called any more.
    ~AsyncHostLookup();
    AsyncHostLookup(const AsyncHostLookup&) = delete;
    AsyncHostLookup& operator=(const AsyncHostLookup&) = delete;

private:
    struct Request;
    explicit AsyncHostLookup(std::shared_ptr<Request> request);

    std::shared_ptr<Request> request; // its thread holds it, too
};
