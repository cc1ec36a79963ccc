#pragma once

#include "AsyncHostLookup.h"
#include "AsyncSocketStream.h"
#include "RunLoop.h"
#include "ZNTResult.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

/// Gets from a host and a port to a connected socket (RFC 8305, "Happy Eyeballs"). The addresses of the host
/// are tried in turn, IPv6 and IPv4 by turns; an address that has not answered within a quarter of a second
/// is given company by the next, and the first that answers wins. So a route which swallows everything costs
/// a player no minutes. Destroying it ends the attempt.
class AsyncSocketConnector
{
public:
    /// Called once, on a later turn of the loop; with the last address's error where none could be reached.
    /// May destroy the connector.
    using Finished = std::function<void(ZNTResult<AsyncSocketDescriptor> connected)>;

    AsyncSocketConnector(RunLoop& runLoop, Finished finished);
    ~AsyncSocketConnector();

    [[nodiscard]] ZNTResult<void> start(const std::string& host, std::uint16_t port);
    /// The same for addresses that are known already, the preferred one first. May finish before it returns.
    void connectToOneOf(std::vector<AsyncSocketAddress> known);

private:
    struct Attempt {
        AsyncSocketDescriptor descriptor;
        std::unique_ptr<RunLoopWatch> watch; // ends before the descriptor closes
    };

    void tryNext();
    void concluded(std::list<Attempt>::iterator attempt);
    void finish(ZNTResult<AsyncSocketDescriptor> connected);

    RunLoop& runLoop;
    Finished finished;
    std::unique_ptr<AsyncHostLookup> lookup;
    std::vector<AsyncSocketAddress> addresses;
    std::size_t nextAddress = 0;
    std::list<Attempt> attempts;
    std::unique_ptr<RunLoopTimer> patience;
    ZNTError lastError;
};
