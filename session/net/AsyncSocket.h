#pragma once

#include "AsyncSocketDelegate.h"
#include "AsyncSocketErrors.h"
#include "AsyncSocketPreBuffer.h"
#include "AsyncSocketTimer.h"
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
class AsyncSocketDescriptor;
class AsyncSocketStream;
struct AsyncReadPacket;
struct AsyncWritePacket;
enum class AsyncReadState;

/// A TCP client connection that serves an ordered queue of reads and one of writes.
///
/// It lives on one run loop and never blocks. A host name is looked up on another thread; the socket does not
/// wait for that thread when it is destroyed. Requests made while it connects are served afterwards. The
/// object may connect again once it is disconnected. Times are seconds; a negative timeout means none.
///
/// The program uses it through ZNTSocketStream. The operations marked as kept are complete and tested, and no
/// part of the program calls them.
///
/// It is one thing, in three sources: the two queues share the descriptor, the flags and the end of the
/// connection, so a class for each would need all of the other's state.
class AsyncSocket
{
public:
    // Kept as part of the interface: common terminators for readDataToData.
    static constexpr std::string_view ZeroData{"\0", 1}, LFData{"\n"}, CRData{"\r"}, CRLFData{"\r\n"};
    /// The run-loop mode a new socket is scheduled in.
    static constexpr std::string_view DefaultRunLoopMode{"kCFRunLoopDefaultMode"};

    /// The loop and the delegate outlive the socket, or are replaced first.
    explicit AsyncSocket(RunLoop& runLoop, AsyncSocketDelegate* delegate = nullptr,
                         std::int64_t userData = 0);
    /// Closes without a callback.
    ~AsyncSocket();
    AsyncSocket(const AsyncSocket&) = delete;
    AsyncSocket& operator=(const AsyncSocket&) = delete;

    // Kept as part of the interface: the delegate, and a number of the owner's, may change after
    // construction.
    [[nodiscard]] AsyncSocketDelegate* delegate() const { return theDelegate; }
    void setDelegate(AsyncSocketDelegate* delegate) { theDelegate = delegate; }
    /// True if no read and no write is queued or being served.
    [[nodiscard]] bool canSafelySetDelegate() const;
    [[nodiscard]] std::int64_t userData() const { return theUserData; }
    void setUserData(std::int64_t userData) { theUserData = userData; }
    /// Whether what arrives is compressed. The socket itself does not look at it.
    /// Kept as part of the interface: the session keeps a flag of its own.
    [[nodiscard]] bool _mccp() const { return _mccp_; }
    void set_mccp(bool mccp) { _mccp_ = mccp; }

    /// Lets a read up to a terminator take more from the network than it needs and keep the rest for the next
    /// read. On from the start.
    /// Kept as part of the interface: for protocols that are read line by line.
    void enablePreBuffering();
    /// Such a read then takes a few bytes at a time. What is kept already is still used first.
    /// Kept as part of the interface: the counterpart.
    void disablePreBuffering();

    /// The names of the run-loop modes it is scheduled in. Our loops run in one mode only, so the names are
    /// kept and nothing depends on them. The changes answer false, and change nothing, if no mode would be
    /// left. Kept as part of the interface: so that the scheduling can be read and named.
    [[nodiscard]] const std::vector<std::string>& runLoopModes() const { return theRunLoopModes; }
    bool setRunLoopModes(std::vector<std::string> modes);
    bool addRunLoopMode(const std::string& mode);
    bool removeRunLoopMode(const std::string& mode);
    /// Everything scheduled moves along, running timers with the time they have left. Both loops belong to
    /// this thread. Answers false, and moves nothing, while a connection is being made, or if `runLoop`
    /// cannot watch the socket. Kept as part of the interface: for an owner whose window has a loop of its
    /// own.
    bool moveToRunLoop(RunLoop& runLoop);

    /// Begins to connect. `host` is a name or a numeric address; every address it has is tried. Fails only if
    /// the delegate refuses or the attempt cannot begin; the delegate learns of every other failure. Throws
    /// AsyncSocketException if there is no delegate or if the socket is not disconnected.
    [[nodiscard]] ZNTResult<void> connectToHost(const std::string& host, std::uint16_t port,
                                                double timeout = -1);

    /// Reads. A request that makes no sense is ignored (see each). Data goes into `buffer` from
    /// `bufferOffset` on, in place, and the buffer grows as needed; the caller leaves it alone until the read
    /// ends. Without a buffer the socket makes one. An offset past the buffer's end makes no sense.

    /// Whatever is there, at least one byte, at most `maxLength` (0: no limit).
    void readDataWithTimeout(double timeout, std::int64_t tag);
    void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                             std::int64_t tag);
    void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                             std::size_t maxLength, std::int64_t tag);
    /// Exactly `length` bytes; 0 makes no sense.
    /// Kept as part of the interface: for protocols with records of a known length.
    void readDataToLength(std::size_t length, double timeout, std::int64_t tag);
    void readDataToLength(std::size_t length, double timeout, std::shared_ptr<std::string> buffer,
                          std::size_t bufferOffset, std::int64_t tag);
    /// Up to and including the terminator `data`; more than `maxLength` bytes without it are an error. An
    /// empty terminator, or a limit shorter than it, makes no sense.
    /// Kept as part of the interface: for protocols that are read line by line.
    void readDataToData(std::string_view data, double timeout, std::int64_t tag);
    void readDataToData(std::string_view data, double timeout, std::size_t maxLength, std::int64_t tag);
    void readDataToData(std::string_view data, double timeout, std::shared_ptr<std::string> buffer,
                        std::size_t bufferOffset, std::int64_t tag);
    void readDataToData(std::string_view data, double timeout, std::shared_ptr<std::string> buffer,
                        std::size_t bufferOffset, std::size_t maxLength, std::int64_t tag);

    /// While held, nothing is taken from the network, and an end of the stream is not seen. The current read
    /// stays, with its timer. The hold ends with the connection.
    void holdReading(bool isHeld);
    [[nodiscard]] bool isReadingHeld() const { return readingIsHeld; }

    /// Empty data is ignored.
    void writeData(std::string data, double timeout, std::int64_t tag);
    /// Writes at once as much of what is queued as the network takes, for a caller that is about to hold the
    /// loop up. The delegate learns of finished writes, and of an error, on the next turn; it does not learn
    /// of a part written here.
    void flushQueuedWrites();

    /// Closes at once. The delegate receives onSocketDidDisconnect, and no error, before this returns.
    void disconnect();
    /// No further requests are taken, and the socket closes when those of the kind named are done.
    /// Kept as part of the interface: for a farewell that must leave before the socket closes.
    void disconnectAfterReading();
    void disconnectAfterWriting();
    void disconnectAfterReadingAndWriting();

    [[nodiscard]] bool isConnected() const;
    /// Neither connected nor connecting.
    [[nodiscard]] bool isDisconnected() const;
    // Kept as part of the interface, down to the progress of a write: what a front end may show of a
    // connection.
    /// Numeric addresses; empty and 0 unless connected.
    [[nodiscard]] std::string connectedHost() const;
    [[nodiscard]] std::uint16_t connectedPort() const;
    [[nodiscard]] std::string localHost() const;
    [[nodiscard]] std::uint16_t localPort() const;
    [[nodiscard]] bool isIPv4() const;
    [[nodiscard]] bool isIPv6() const;

    /// The fraction done of the current read: 1 if its length is not known. If there is no current read, the
    /// answer is NaN and the outputs are 0. The outputs may be null.
    float progressOfReadReturningTag(std::int64_t* tag, std::size_t* bytesDone, std::size_t* total) const;
    float progressOfWriteReturningTag(std::int64_t* tag, std::size_t* bytesDone, std::size_t* total) const;

    /// What came but was given to no read, with what the network still holds. Answers inside
    /// onSocketWillDisconnectWithError only.
    [[nodiscard]] std::optional<std::string> unreadData();

private:
    enum Flag : std::uint16_t {
        PreBufferingEnabled = 1 << 0,
        DelegateStarted = 1 << 1, ///< an attempt was accepted, so the delegate is called at its end
        ReadStreamOpened = 1 << 2,
        WriteStreamOpened = 1 << 3,
        StartingReadTLS = 1 << 4, ///< kept, with the next one, for a secured connection
        StartingWriteTLS = 1 << 5,
        ReadsAndWritesForbidden = 1 << 6,
        DisconnectAfterReads = 1 << 7,
        DisconnectAfterWrites = 1 << 8,
        ClosingWithError = 1 << 9,
        DequeueReadScheduled = 1 << 10,
        DequeueWriteScheduled = 1 << 11,
        SocketCanAcceptBytes = 1 << 12,
        SocketHasBytesAvailable = 1 << 13
    };
    [[nodiscard]] bool has(Flag flag) const { return (theFlags & flag) != 0; }
    void set(Flag flag) { theFlags = static_cast<std::uint16_t>(theFlags | flag); }
    void clear(Flag flag) { theFlags = static_cast<std::uint16_t>(theFlags & ~flag); }

    // The connection
    void didOpen(ZNTResult<AsyncSocketDescriptor> connected);
    void closeWithError(const ZNTError* error);
    void close();
    void recoverUnreadData();
    void emptyQueues();
    template <typename Call>
    bool tellDelegate(Call call);
    template <typename Step>
    bool outlives(Step step);

    // The loop
    [[nodiscard]] bool watchStream(RunLoop& runLoop);
    void runScheduled();
    void runLater(void (AsyncSocket::*step)());
    void streamIsReady(RunLoopInterest ready);
    void setInterestIn(RunLoopInterest direction, bool isInterested);

    // Reading
    void queueRead(std::shared_ptr<AsyncReadPacket> packet);
    void scheduleDequeueRead();
    void maybeDequeueRead();
    void meetBytesWithoutRead();
    void doBytesAvailable();
    int takeFromNetwork(AsyncReadPacket& read, AsyncReadState& state);
    bool completeCurrentRead();
    void endCurrentRead();
    void doReadTimeout();

    // Writing
    void scheduleDequeueWrite();
    void maybeDequeueWrite();
    void doSendBytes();
    int sendBytesOf(AsyncWritePacket& write);
    bool completeCurrentWrite();
    void endCurrentWrite();
    void doWriteTimeout();

    void scheduleDisconnect(Flag when);
    void maybeDisconnect();
    [[nodiscard]] bool isReading() const { return theCurrentRead || !theReadQueue.empty(); }
    [[nodiscard]] bool isWriting() const { return theCurrentWrite || !theWriteQueue.empty(); }

    AsyncSocketDelegate* theDelegate;
    std::int64_t theUserData;
    std::uint16_t theFlags = PreBufferingEnabled;
    bool _mccp_ = false;
    bool disconnectScheduled = false;
    bool readingIsHeld = false;

    RunLoop* theRunLoop;
    std::vector<std::string> theRunLoopModes{std::string(DefaultRunLoopMode)};
    std::unique_ptr<AsyncSocketConnector> theConnector;
    std::unique_ptr<AsyncSocketStream> theStream; ///< both directions, once the connection stands

    AsyncSocketTimer theConnectTimer, theReadTimer, theWriteTimer;

    // A packet being served is shared, so that it outlasts a callback that ends it.
    std::deque<std::shared_ptr<AsyncReadPacket>> theReadQueue;
    std::shared_ptr<AsyncReadPacket> theCurrentRead;
    AsyncSocketPreBuffer partialReadBuffer;
    std::deque<std::shared_ptr<AsyncWritePacket>> theWriteQueue;
    std::shared_ptr<AsyncWritePacket> theCurrentWrite;

    /// Counts connections. After a callback it shows whether the connection is still the same.
    std::uint64_t theConnection = 0;
    /// Held weakly: expires when the socket is destroyed (`life`), or when posted steps are called off
    /// (`deferred`).
    std::shared_ptr<char> life = std::make_shared<char>();
    std::shared_ptr<char> deferred = std::make_shared<char>();
};
