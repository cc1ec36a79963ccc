#pragma once

#include "ZNTResult.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class ZNTStream;

/// Receives the events of a stream, always on the run loop's thread and never from inside a request to read
/// or write. Every callback may queue requests, disconnect, or destroy the stream.
class ZNTStreamDelegate
{
public:
    virtual ~ZNTStreamDelegate() = default;

    /// Called during the connect call. False cancels the attempt.
    virtual bool onSocketWillConnect(ZNTStream&) { return true; }
    /// The connection stands. `host` is the numeric address of the peer.
    virtual void onSocketDidConnectToHost(ZNTStream&, const std::string& host, std::uint16_t port) = 0;
    /// A read finished. `data` is valid during the callback only.
    virtual void onSocketDidReadData(ZNTStream&, std::string_view data, std::int64_t tag) = 0;
    /// The read is out of time. An answer above 0 grants it that many seconds; otherwise the stream closes.
    /// `elapsed` is the sum of all seconds granted so far.
    virtual double onSocketShouldTimeoutReadWithTag(ZNTStream&, std::int64_t tag, double elapsed,
                                                    std::size_t bytesDone) = 0;
    /// The network took the whole of the oldest unfinished write.
    virtual void onSocketDidWriteDataWithTag(ZNTStream&, std::int64_t tag) = 0;
    /// The peer or the network ends the connection, or an attempt failed. `error` is null if the peer closed
    /// in good order. This is the one place where `unreadData` answers.
    virtual void onSocketWillDisconnectWithError(ZNTStream&, const ZNTError* error) = 0;
    /// The connection, or the attempt at one, is over. Called once for each, also after `disconnect`.
    virtual void onSocketDidDisconnect(ZNTStream&) = 0;

    // Kept as part of the interface: a read of whatever is there has no parts, and a client's stream neither
    // accepts connections nor secures them.
    virtual void onSocketDidReadPartialDataOfLength(ZNTStream&, std::size_t, std::int64_t) {}
    virtual void onSocketDidAcceptNewSocket(ZNTStream&, ZNTStream&) {}
    virtual void onSocketDidSecure(ZNTStream&) {}
};

/// A connection to a game, as the session needs it: bytes in, bytes out, and one end.
///
/// ZNTSocketStream is the real one. Tests use one in memory. Times are seconds; a negative timeout means
/// none. Destroying a stream closes it without a callback.
class ZNTStream
{
public:
    virtual ~ZNTStream() = default;

    /// Begins to connect. A failure here has no callback; any later one has.
    [[nodiscard]] virtual ZNTResult<void> connectToHost(const std::string& host, std::uint16_t port) = 0;
    /// Closes at once. The delegate receives onSocketDidDisconnect, and no error, before this returns.
    virtual void disconnect() = 0;
    /// Neither connected nor connecting.
    [[nodiscard]] virtual bool isDisconnected() const = 0;

    /// Asks for whatever is there, at least one byte. It goes into `buffer` from `bufferOffset` on; the
    /// caller leaves the buffer alone until the read ends.
    virtual void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer,
                                     std::size_t bufferOffset, std::int64_t tag) = 0;
    /// While held, nothing is taken from the network, and its end is not seen. The pending read stays, with
    /// its timer. Ends with the connection.
    virtual void holdReading(bool isHeld) = 0;
    [[nodiscard]] virtual bool isReadingHeld() const = 0;
    /// What came but was given to no read. Answers inside onSocketWillDisconnectWithError only.
    [[nodiscard]] virtual std::optional<std::string> unreadData() = 0;

    /// Queues a write. Empty data is ignored.
    virtual void writeData(std::string data, double timeout, std::int64_t tag) = 0;
    /// Hands to the network at once as much of the queued writes as it takes. The callbacks for them come on
    /// a later turn of the loop.
    virtual void flushQueuedWrites() = 0;
};

/// Makes a stream for the delegate, which outlives it.
using ZNTStreamFactory = std::function<std::unique_ptr<ZNTStream>(ZNTStreamDelegate&)>;
