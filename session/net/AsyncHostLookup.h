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
/// (AsyncHostLookupThreads); an answer that nobody wants any more is dropped.
class AsyncHostLookup
{
public:
    using Answered = std::function<void(const ZNTResult<std::vector<AsyncSocketAddress>>& addresses)>;

    /// `answered` is called once, on a later turn of the loop, with one address at least or with an error. An
    /// error here: there is no thread to be had.
    [[nodiscard]] static ZNTResult<std::unique_ptr<AsyncHostLookup>>
    start(RunLoop& runLoop, std::string host, std::uint16_t port, Answered answered);

    /// From now on nobody is answered.
    ~AsyncHostLookup();
    AsyncHostLookup(const AsyncHostLookup&) = delete;
    AsyncHostLookup& operator=(const AsyncHostLookup&) = delete;

private:
    struct Request;
    explicit AsyncHostLookup(std::shared_ptr<Request> request);

    std::shared_ptr<Request> request; // its thread holds it, too
};
