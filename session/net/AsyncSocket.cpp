#include "AsyncSocket.h"

#include "AsyncSocketConnector.h"
#include "AsyncSocketPackets.h"
#include "AsyncSocketStream.h"
#include "AsyncSocketTelling.h"

#include <algorithm>
#include <cerrno>
#include <utility>

AsyncSocket::AsyncSocket(RunLoop& runLoop, AsyncSocketDelegate* delegate, std::int64_t userData)
    : theDelegate(delegate),
      theUserData(userData),
      theRunLoop(&runLoop)
{
}

AsyncSocket::~AsyncSocket()
{
    theDelegate = nullptr;
    close();
}

bool AsyncSocket::canSafelySetDelegate() const { return !isReading() && !isWriting(); }

void AsyncSocket::enablePreBuffering() { set(PreBufferingEnabled); }
void AsyncSocket::disablePreBuffering() { clear(PreBufferingEnabled); }

bool AsyncSocket::setRunLoopModes(std::vector<std::string> modes)
{
    if (modes.empty())
        return false;
    theRunLoopModes = std::move(modes);
    return true;
}

bool AsyncSocket::addRunLoopMode(const std::string& mode)
{
    if (std::find(theRunLoopModes.begin(), theRunLoopModes.end(), mode) == theRunLoopModes.end())
        theRunLoopModes.push_back(mode);
    return true;
}

bool AsyncSocket::removeRunLoopMode(const std::string& mode)
{
    const auto found = std::find(theRunLoopModes.begin(), theRunLoopModes.end(), mode);
    if (found == theRunLoopModes.end() || theRunLoopModes.size() == 1)
        return false;
    theRunLoopModes.erase(found);
    return true;
}

bool AsyncSocket::moveToRunLoop(RunLoop& runLoop)
{
    if (theConnector)
        return false;
    if (&runLoop == theRunLoop)
        return true;
    if (theStream && !watchStream(runLoop))
        return false;
    auto& former = *std::exchange(theRunLoop, &runLoop);
    for (auto* timer : {&theConnectTimer, &theReadTimer, &theWriteTimer})
        timer->move(former, runLoop);
    deferred = std::make_shared<char>();
    runScheduled();
    return true;
}

/// Posts to the loop again the steps whose flags say that they are due.
void AsyncSocket::runScheduled()
{
    if (has(DequeueReadScheduled))
        runLater(&AsyncSocket::maybeDequeueRead);
    if (has(DequeueWriteScheduled))
        runLater(&AsyncSocket::maybeDequeueWrite);
    if (disconnectScheduled)
        runLater(&AsyncSocket::maybeDisconnect);
}

void AsyncSocket::runLater(void (AsyncSocket::*step)())
{
    theRunLoop->post([this, step, wanted = std::weak_ptr<char>(deferred)] {
        if (!wanted.expired())
            (this->*step)();
    });
}

ZNTResult<void> AsyncSocket::connectToHost(const std::string& host, std::uint16_t port, double timeout)
{
    if (!theDelegate)
        throw AsyncSocketException("Attempting to connect without a delegate. Set a delegate first.");
    if (!isDisconnected())
        throw AsyncSocketException(
            "Attempting to connect while connected or accepting connections. Disconnect first.");
    emptyQueues();

    theConnector = std::make_unique<AsyncSocketConnector>(
        *theRunLoop, [this](ZNTResult<AsyncSocketDescriptor> connected) { didOpen(std::move(connected)); });
    bool isWelcome = true;
    if (!tellDelegate([&](auto& delegate) { isWelcome = delegate.onSocketWillConnect(*this); }))
        return asyncSocketError(AsyncSocketCanceledError);
    if (!isWelcome) {
        close();
        return asyncSocketError(AsyncSocketCanceledError);
    }
    if (const auto started = theConnector->start(host, port); !started) {
        close();
        return started.error();
    }
    if (timeout >= 0)
        theConnectTimer.start(*theRunLoop, timeout, [this] {
            const auto error = asyncSocketError(AsyncSocketConnectTimeoutError);
            closeWithError(&error);
        });
    set(DelegateStarted);
    return {};
}

void AsyncSocket::didOpen(ZNTResult<AsyncSocketDescriptor> connected)
{
    if (!connected)
        return closeWithError(&connected.error());
    theConnector.reset();
    theConnectTimer.stop();
    theStream = std::make_unique<AsyncSocketStream>(std::move(connected).value());
    AsyncSocketEndpoint peer;
    if (!theStream->readPeer(peer)) {
        const auto error = posixError(errno);
        return closeWithError(&error);
    }
    set(ReadStreamOpened);
    set(WriteStreamOpened);
    set(SocketCanAcceptBytes);
    if (!watchStream(*theRunLoop)) {
        const auto error = asyncSocketError(AsyncSocketCFSocketError);
        return closeWithError(&error);
    }
    if (tellDelegate(
            [&](auto& delegate) { delegate.onSocketDidConnectToHost(*this, peer.host, peer.port); }) &&
        outlives([this] { maybeDequeueRead(); }))
        maybeDequeueWrite();
}

bool AsyncSocket::watchStream(RunLoop& runLoop)
{
    return theStream->schedule(runLoop, [this](RunLoopInterest ready) { streamIsReady(ready); });
}

void AsyncSocket::streamIsReady(RunLoopInterest ready)
{
    const bool goesOn = outlives([this, ready] {
        if (!includes(ready, RunLoopInterest::Readable))
            return;
        set(SocketHasBytesAvailable);
        // A descriptor that stays ready and is not read would keep the loop from sleeping.
        if (readingIsHeld)
            setInterestIn(RunLoopInterest::Readable, false);
        else if (theCurrentRead)
            doBytesAvailable();
        else
            meetBytesWithoutRead();
    });
    if (goesOn && includes(ready, RunLoopInterest::Writable)) {
        set(SocketCanAcceptBytes);
        setInterestIn(RunLoopInterest::Writable, false);
        doSendBytes();
    }
}

void AsyncSocket::setInterestIn(RunLoopInterest direction, bool isInterested)
{
    auto interest = static_cast<unsigned>(theStream->interest());
    const auto bit = static_cast<unsigned>(direction);
    theStream->setInterest(static_cast<RunLoopInterest>(isInterested ? interest | bit : interest & ~bit));
}

void AsyncSocket::disconnect() { close(); }

void AsyncSocket::disconnectAfterReading() { scheduleDisconnect(DisconnectAfterReads); }
void AsyncSocket::disconnectAfterWriting() { scheduleDisconnect(DisconnectAfterWrites); }
void AsyncSocket::disconnectAfterReadingAndWriting()
{
    if (isDisconnected())
        return;
    set(DisconnectAfterWrites);
    scheduleDisconnect(DisconnectAfterReads);
}

void AsyncSocket::scheduleDisconnect(Flag when)
{
    if (isDisconnected())
        return;
    set(ReadsAndWritesForbidden);
    set(when);
    if (!std::exchange(disconnectScheduled, true))
        runLater(&AsyncSocket::maybeDisconnect);
}

/// Closes if the queues that were to be served first are idle. Otherwise the next dequeue asks again.
void AsyncSocket::maybeDisconnect()
{
    disconnectScheduled = false;
    const bool waits =
        (has(DisconnectAfterReads) && isReading()) || (has(DisconnectAfterWrites) && isWriting());
    if (!waits && (has(DisconnectAfterReads) || has(DisconnectAfterWrites)))
        disconnect();
}

void AsyncSocket::closeWithError(const ZNTError* error)
{
    set(ClosingWithError);
    if (has(DelegateStarted)) {
        recoverUnreadData();
        if (!tellDelegate([&](auto& delegate) { delegate.onSocketWillDisconnectWithError(*this, error); }))
            return; // the delegate disconnected, and may have connected again
    }
    close();
}

/// Puts what the unfinished read has got so far back to where unreadData finds it.
void AsyncSocket::recoverUnreadData()
{
    if (theCurrentRead)
        partialReadBuffer.prepend(theCurrentRead->data());
    emptyQueues();
}

void AsyncSocket::emptyQueues()
{
    endCurrentRead();
    endCurrentWrite();
    theReadQueue.clear();
    theWriteQueue.clear();
    deferred = std::make_shared<char>(); // steps that were posted for this connection do nothing any more
    clear(DequeueReadScheduled);
    clear(DequeueWriteScheduled);
}

void AsyncSocket::close()
{
    disconnectScheduled = false;
    readingIsHeld = false;
    emptyQueues();
    partialReadBuffer.clear();
    theConnectTimer.stop();
    theConnector.reset();
    theStream.reset();
    ++theConnection;
    // All state is as new before the delegate is called: it may connect again, or destroy the socket.
    const bool wasStarted = has(DelegateStarted);
    theFlags = static_cast<std::uint16_t>(theFlags & PreBufferingEnabled);
    if (wasStarted)
        tellDelegate([this](auto& delegate) { delegate.onSocketDidDisconnect(*this); });
}

bool AsyncSocket::isConnected() const { return theStream != nullptr; }
bool AsyncSocket::isDisconnected() const { return !theStream && !theConnector; }

std::string AsyncSocket::connectedHost() const
{
    AsyncSocketEndpoint peer;
    return theStream && theStream->readPeer(peer) ? peer.host : std::string();
}

std::uint16_t AsyncSocket::connectedPort() const
{
    AsyncSocketEndpoint peer;
    return theStream && theStream->readPeer(peer) ? peer.port : std::uint16_t{0};
}

std::string AsyncSocket::localHost() const
{
    AsyncSocketEndpoint local;
    return theStream && theStream->readLocal(local) ? local.host : std::string();
}

std::uint16_t AsyncSocket::localPort() const
{
    AsyncSocketEndpoint local;
    return theStream && theStream->readLocal(local) ? local.port : std::uint16_t{0};
}

bool AsyncSocket::isIPv4() const
{
    AsyncSocketEndpoint local;
    return theStream && theStream->readLocal(local) && local.isIPv4;
}

bool AsyncSocket::isIPv6() const { return theStream && !isIPv4(); }
