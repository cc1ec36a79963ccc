#include "ZNTSocketStream.h"

#include "AsyncSocket.h"

#include <utility>

namespace
{

/// A socket behind the session's interface. A callback may destroy the stream, so each forwarding operation
/// returns right after its call.
class ZNTSocketStream final : public ZNTStream, private AsyncSocketDelegate
{
public:
    ZNTSocketStream(RunLoop& runLoop, ZNTStreamDelegate& delegate) : delegate(delegate), socket(runLoop, this)
    {
    }

    ZNTResult<void> connectToHost(const std::string& host, std::uint16_t port) override
    {
        return socket.connectToHost(host, port);
    }
    void disconnect() override { socket.disconnect(); }
    [[nodiscard]] bool isDisconnected() const override { return socket.isDisconnected(); }
    void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                             std::int64_t tag) override
    {
        socket.readDataWithTimeout(timeout, std::move(buffer), bufferOffset, tag);
    }
    void holdReading(bool isHeld) override { socket.holdReading(isHeld); }
    [[nodiscard]] bool isReadingHeld() const override { return socket.isReadingHeld(); }
    [[nodiscard]] std::optional<std::string> unreadData() override { return socket.unreadData(); }
    void writeData(std::string data, double timeout, std::int64_t tag) override
    {
        socket.writeData(std::move(data), timeout, tag);
    }
    void flushQueuedWrites() override { socket.flushQueuedWrites(); }

private:
    bool onSocketWillConnect(AsyncSocket&) override { return delegate.onSocketWillConnect(*this); }
    void onSocketDidConnectToHost(AsyncSocket&, const std::string& host, std::uint16_t port) override
    {
        delegate.onSocketDidConnectToHost(*this, host, port);
    }
    void onSocketDidReadData(AsyncSocket&, std::string_view data, std::int64_t tag) override
    {
        delegate.onSocketDidReadData(*this, data, tag);
    }
    void onSocketDidReadPartialDataOfLength(AsyncSocket&, std::size_t length, std::int64_t tag) override
    {
        delegate.onSocketDidReadPartialDataOfLength(*this, length, tag);
    }
    double onSocketShouldTimeoutReadWithTag(AsyncSocket&, std::int64_t tag, double elapsed,
                                            std::size_t bytesDone) override
    {
        return delegate.onSocketShouldTimeoutReadWithTag(*this, tag, elapsed, bytesDone);
    }
    void onSocketDidWriteDataWithTag(AsyncSocket&, std::int64_t tag) override
    {
        delegate.onSocketDidWriteDataWithTag(*this, tag);
    }
    void onSocketWillDisconnectWithError(AsyncSocket&, const ZNTError* error) override
    {
        delegate.onSocketWillDisconnectWithError(*this, error);
    }
    void onSocketDidDisconnect(AsyncSocket&) override { delegate.onSocketDidDisconnect(*this); }

    ZNTStreamDelegate& delegate;
    AsyncSocket socket;
};

} // namespace

ZNTStreamFactory socketStreams(RunLoop& runLoop)
{
    return [&runLoop](ZNTStreamDelegate& delegate) {
        return std::make_unique<ZNTSocketStream>(runLoop, delegate);
    };
}
