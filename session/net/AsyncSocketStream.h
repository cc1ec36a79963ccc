#pragma once

#include "RunLoop.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

/// Owns an open descriptor; -1 means none.
class AsyncSocketDescriptor
{
public:
    AsyncSocketDescriptor() = default;
    explicit AsyncSocketDescriptor(int number) : number(number) {}
    AsyncSocketDescriptor(AsyncSocketDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    AsyncSocketDescriptor& operator=(AsyncSocketDescriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~AsyncSocketDescriptor();

    [[nodiscard]] int get() const { return number; }
    [[nodiscard]] bool isOpen() const { return number >= 0; }

private:
    int number = -1;
};

/// A numeric address and a port.
struct AsyncSocketEndpoint {
    std::string host;
    std::uint16_t port = 0;
    bool isIPv4 = false;
};

/// The connected TCP socket: moves bytes without waiting, and watches for when it can again.
class AsyncSocketStream
{
public:
    /// Takes a non-blocking connected socket and turns Nagle's algorithm off, so that a line leaves at once.
    explicit AsyncSocketStream(AsyncSocketDescriptor connected);

    /// The result of a read or a write: `count` bytes; or if that is 0, `errorNumber`, where 0 says that the
    /// peer has closed. EAGAIN means that the network has no bytes, or no room, now.
    struct Moved {
        std::size_t count = 0;
        int errorNumber = 0;
    };
    Moved read(char* into, std::size_t count);
    Moved write(const char* from, std::size_t count);
    /// The result that `read` would have, for one byte that is left where it is.
    Moved peek();
    [[nodiscard]] std::size_t bytesAvailable() const;

    /// Begins to watch, or watches on another loop. The handler is given the directions that are ready. False
    /// if the loop cannot watch the socket; an earlier watch then goes on.
    [[nodiscard]] bool schedule(RunLoop& runLoop, RunLoop::ReadyHandler handler);
    void setInterest(RunLoopInterest interest);
    [[nodiscard]] RunLoopInterest interest() const { return wanted; }

    /// False, with errno, if the other end is gone already.
    bool readPeer(AsyncSocketEndpoint& peer) const;
    bool readLocal(AsyncSocketEndpoint& local) const;

private:
    AsyncSocketDescriptor descriptor;
    std::unique_ptr<RunLoopWatch> watch; // ends before the descriptor closes
    RunLoopInterest wanted = RunLoopInterest::Readable;
};
