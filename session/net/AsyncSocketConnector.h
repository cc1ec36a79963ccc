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

/// Makes a connected socket of a host and a port (RFC 8305, "Happy Eyeballs"). The addresses of the host are
/// tried in order, IPv6 and IPv4 in alternation. If an address has not answered within a quarter of a second,
/// the next one is tried as well, and the first that answers is taken. So a route that loses every packet
/// costs the player a quarter of a second and not minutes. Destroying the connector ends the attempt.
class AsyncSocketConnector
{
public:
    /// Called once, on a later turn of the loop. If no address could be reached, with the error of the last.
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
