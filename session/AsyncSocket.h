#pragma once

#include "AsyncSocketDelegate.h"
#include "AsyncSocketErrors.h"
#include "RunLoop.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class AsyncSocketConnector;
class AsyncSocketStream;
struct AsyncReadPacket;
struct AsyncWritePacket;

/// A TCP client connection that serves an ordered queue of reads and one of writes.
///
/// It lives on one run loop and blocks never; a host name is looked up on a thread of its own that the socket
/// may well not live to see the end of. Requests made before the connection stands wait for it. The object
/// may connect again once it is disconnected. Times are seconds; a negative timeout means none.
class AsyncSocket
{
public:
    static constexpr std::string_view ZeroData{"\0", 1}, LFData{"\n"}, CRData{"\r"}, CRLFData{"\r\n"};
    /// The run-loop mode a new socket is scheduled in, and the only one that our loops run in.
    static constexpr std::string_view DefaultRunLoopMode{"kCFRunLoopDefaultMode"};

    /// The loop and the delegate outlive the socket, or are replaced first.
    explicit AsyncSocket(RunLoop& runLoop, AsyncSocketDelegate* delegate = nullptr,
                         std::int64_t userData = 0);
    /// Closes without a callback.
    ~AsyncSocket();
    AsyncSocket(const AsyncSocket&) = delete;
    AsyncSocket& operator=(const AsyncSocket&) = delete;

    [[nodiscard]] AsyncSocketDelegate* delegate() const { return theDelegate; }
    void setDelegate(AsyncSocketDelegate* delegate) { theDelegate = delegate; }
    /// Whether nobody waits for a read or a write.
    [[nodiscard]] bool canSafelySetDelegate() const;
    [[nodiscard]] std::int64_t userData() const { return theUserData; }
    void setUserData(std::int64_t userData) { theUserData = userData; }
    /// Whether the session wants what arrives inflated; the socket itself does not look at it.
    [[nodiscard]] bool _mccp() const { return _mccp_; }
    void set_mccp(bool mccp) { _mccp_ = mccp; }

    /// Lets a read up to a terminator take more from the network than it needs and keep the rest for the next
    /// read. On from the start.
    void enablePreBuffering();
    /// Such a read then takes a few bytes at a time. What is kept already is still used first.
    void disablePreBuffering();

    /// A socket scheduled in no mode that its loop runs in rests: no callback comes, no timer runs. The calls
    /// return false, and change nothing, where no mode would be left.
    [[nodiscard]] const std::vector<std::string>& runLoopModes() const { return theRunLoopModes; }
    bool setRunLoopModes(std::vector<std::string> modes);
    bool addRunLoopMode(const std::string& mode);
    bool removeRunLoopMode(const std::string& mode);
    /// Everything scheduled moves along; running timers keep the time they have left. False, and nothing
    /// moves, while a connection is being made.
    bool moveToRunLoop(RunLoop& runLoop);

    /// Begins to connect. `host` is a name or a numeric address; every address it has is tried. Fails only if
    /// the delegate refuses or the attempt cannot begin; all else is told to the delegate. Throws
    /// AsyncSocketException without a delegate or when not disconnected.
    [[nodiscard]] ZNTResult<void> connectToHost(const std::string& host, std::uint16_t port,
                                                double timeout = -1);

    /// Reads: a request that makes no sense is dropped without a word (see each). Data goes into `buffer`
    /// from `bufferOffset` on, in place, and the buffer grows as needed; the caller leaves it alone until the
    /// read ends. Without a buffer the socket makes one. An offset past the buffer's end makes no sense.

    /// Whatever is there, at least one byte, at most `maxLength` (0: no limit).
    void readDataWithTimeout(double timeout, std::int64_t tag);
    void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                             std::int64_t tag);
    void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                             std::size_t maxLength, std::int64_t tag);
    /// Exactly `length` bytes; 0 makes no sense.
    void readDataToLength(std::size_t length, double timeout, std::int64_t tag);
    void readDataToLength(std::size_t length, double timeout, std::shared_ptr<std::string> buffer,
                          std::size_t bufferOffset, std::int64_t tag);
    /// Up to and including the terminator `data`; more than `maxLength` bytes without it are an error. An
    /// empty terminator, or a limit shorter than it, makes no sense.
    void readDataToData(std::string_view data, double timeout, std::int64_t tag);
    void readDataToData(std::string_view data, double timeout, std::size_t maxLength, std::int64_t tag);
    void readDataToData(std::string_view data, double timeout, std::shared_ptr<std::string> buffer,
                        std::size_t bufferOffset, std::int64_t tag);
    void readDataToData(std::string_view data, double timeout, std::shared_ptr<std::string> buffer,
                        std::size_t bufferOffset, std::size_t maxLength, std::int64_t tag);

    /// Empty data is dropped without a word.
    void writeData(std::string data, double timeout, std::int64_t tag);

    /// Closes at once; the delegate hears of it before this returns, and of no error.
    void disconnect();
    /// No further requests are taken, and the socket closes when those of the kind named are done.
    void disconnectAfterReading();
    void disconnectAfterWriting();
    void disconnectAfterReadingAndWriting();

    [[nodiscard]] bool isConnected() const;
    /// Neither connected nor connecting.
    [[nodiscard]] bool isDisconnected() const;
    /// Numeric addresses; empty and 0 unless connected.
    [[nodiscard]] std::string connectedHost() const;
    [[nodiscard]] std::uint16_t connectedPort() const;
    [[nodiscard]] std::string localHost() const;
    [[nodiscard]] std::uint16_t localPort() const;
    [[nodiscard]] bool isIPv4() const { return theNativeSocket4 > 0; }
    [[nodiscard]] bool isIPv6() const { return theNativeSocket6 > 0; }

    /// The fraction done of the current read; 1 where its end is not known, NaN and zeros where there is
    /// none. The outputs may be null.
    float progressOfReadReturningTag(std::int64_t* tag, std::size_t* bytesDone, std::size_t* total) const;
    float progressOfWriteReturningTag(std::int64_t* tag, std::size_t* bytesDone, std::size_t* total) const;

    /// What came but was given to no read, taking what the network still holds. Only inside
    /// onSocketWillDisconnectWithError; nothing elsewhere.
    [[nodiscard]] std::optional<std::string> unreadData();

private:
    AsyncSocketDelegate* theDelegate;
    std::int64_t theUserData;
    std::int32_t theNativeSocket4 = 0;
    std::int32_t theNativeSocket6 = 0;
    std::vector<std::string> theRunLoopModes{std::string(DefaultRunLoopMode)};
    RunLoop* theRunLoop;
    bool _mccp_ = false;
};
