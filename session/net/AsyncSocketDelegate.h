#pragma once

#include "ZNTResult.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class AsyncSocket;

/// Receives the events of a socket, always on the run loop's thread and never from inside a request to read
/// or write. Every callback may queue requests, disconnect, connect again or destroy the socket.
class AsyncSocketDelegate
{
public:
    virtual ~AsyncSocketDelegate() = default;

    /// During the connect call, before anything is opened. False cancels the attempt.
    virtual bool onSocketWillConnect(AsyncSocket&) { return true; }
    /// The connection stands; `host` is the peer's numeric address.
    virtual void onSocketDidConnectToHost(AsyncSocket&, const std::string& /*host*/, std::uint16_t /*port*/)
    {
    }

    /// A read finished. `data` is valid during the callback only; where the request named a buffer, it is the
    /// part of that buffer that was read.
    virtual void onSocketDidReadData(AsyncSocket&, std::string_view /*data*/, std::int64_t /*tag*/) {}
    /// `length` more bytes came, and the read goes on.
    virtual void onSocketDidReadPartialDataOfLength(AsyncSocket&, std::size_t /*length*/,
                                                    std::int64_t /*tag*/)
    {
    }
    /// The read is out of time. More than 0 grants it that many seconds; otherwise the socket closes.
    /// `elapsed` is the sum of all seconds granted so far.
    virtual double onSocketShouldTimeoutReadWithTag(AsyncSocket&, std::int64_t /*tag*/, double /*elapsed*/,
                                                    std::size_t /*bytesDone*/)
    {
        return 0;
    }

    virtual void onSocketDidWriteDataWithTag(AsyncSocket&, std::int64_t /*tag*/) {}
    virtual void onSocketDidWritePartialDataOfLength(AsyncSocket&, std::size_t /*length*/,
                                                     std::int64_t /*tag*/)
    {
    }
    /// As for reads.
    virtual double onSocketShouldTimeoutWriteWithTag(AsyncSocket&, std::int64_t /*tag*/, double /*elapsed*/,
                                                     std::size_t /*bytesDone*/)
    {
        return 0;
    }

    /// The peer or the network ends the connection; nothing is torn down yet. `error` is null if the peer
    /// closed in good order.
    virtual void onSocketWillDisconnectWithError(AsyncSocket&, const ZNTError* /*error*/) {}
    /// The connection, or the attempt at one, is torn down. Called once for each, also after `disconnect`.
    virtual void onSocketDidDisconnect(AsyncSocket&) {}

    /// Kept as part of the interface: for sockets that listen and for secured connections. A client's socket
    /// calls neither.
    virtual void onSocketDidAcceptNewSocket(AsyncSocket&, AsyncSocket& /*newSocket*/) {}
    virtual void onSocketDidSecure(AsyncSocket&) {}
};
