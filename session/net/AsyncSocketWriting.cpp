#include "AsyncSocket.h"
#include "AsyncSocketPackets.h"
#include "AsyncSocketStream.h"
#include "AsyncSocketTelling.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <limits>

namespace
{

constexpr std::size_t longestSlice = 4096;
/// Timers that are due can queue a hundred writes in one turn of the loop. With one write a turn the queue
/// would grow, and a typed line would wait behind all of it.
constexpr int mostWritesATurn = 256;

} // namespace

void AsyncSocket::writeData(std::string data, double timeout, std::int64_t tag)
{
    if (data.empty() || has(ReadsAndWritesForbidden))
        return;
    theWriteQueue.push_back(
        std::make_shared<AsyncWritePacket>(AsyncWritePacket{std::move(data), 0, tag, timeout}));
    scheduleDequeueWrite();
}

void AsyncSocket::scheduleDequeueWrite()
{
    if (has(DequeueWriteScheduled))
        return;
    set(DequeueWriteScheduled);
    runLater(&AsyncSocket::maybeDequeueWrite);
}

void AsyncSocket::maybeDequeueWrite()
{
    clear(DequeueWriteScheduled);
    for (int writes = 0; writes < mostWritesATurn; ++writes) {
        if (theCurrentWrite || !theStream)
            return;
        if (theWriteQueue.empty())
            return maybeDisconnect();
        theCurrentWrite = std::move(theWriteQueue.front());
        theWriteQueue.pop_front();
        if (theCurrentWrite->timeout >= 0)
            theWriteTimer.start(*theRunLoop, theCurrentWrite->timeout, [this] { doWriteTimeout(); });
        if (!outlives([this] { doSendBytes(); }))
            return;
    }
}

void AsyncSocket::doSendBytes()
{
    if (!theCurrentWrite || !theStream)
        return;
    const auto write = theCurrentWrite; // a callback may end it
    const auto before = write->bytesDone;
    const int errorNumber = sendBytesOf(*write);
    if (!has(SocketCanAcceptBytes))
        setInterestIn(RunLoopInterest::Writable, true);

    if (write->bytesDone == write->buffer.size()) {
        if (completeCurrentWrite())
            scheduleDequeueWrite();
    } else if (errorNumber != 0) {
        const auto error = posixError(errorNumber);
        closeWithError(&error);
    } else if (const auto length = write->bytesDone - before; length > 0) {
        tellDelegate(
            [&](auto& delegate) { delegate.onSocketDidWritePartialDataOfLength(*this, length, write->tag); });
    }
}

/// Answers the errno that ended the connection, or 0.
int AsyncSocket::sendBytesOf(AsyncWritePacket& write)
{
    while (write.bytesDone < write.buffer.size() && has(SocketCanAcceptBytes)) {
        const auto slice = std::min(write.buffer.size() - write.bytesDone, longestSlice);
        const auto moved = theStream->write(write.buffer.data() + write.bytesDone, slice);
        write.bytesDone += moved.count;
        if (moved.count < slice)
            clear(SocketCanAcceptBytes);
        if (moved.count == 0 && moved.errorNumber != EAGAIN)
            return moved.errorNumber;
    }
    return 0;
}

/// An error here is left alone: the next attempt, on the loop, meets it again and reports it.
void AsyncSocket::flushQueuedWrites()
{
    if (!theStream)
        return;
    set(SocketCanAcceptBytes); // perhaps again since the loop last looked
    if (theCurrentWrite)
        sendBytesOf(*theCurrentWrite);
    for (auto write = theWriteQueue.begin(); write != theWriteQueue.end() && has(SocketCanAcceptBytes);
         ++write)
        sendBytesOf(**write);
}

/// False if the delegate ended the connection.
bool AsyncSocket::completeCurrentWrite()
{
    assert(theCurrentWrite && "Trying to complete current write when there is no current write.");
    const auto tag = theCurrentWrite->tag;
    const bool goesOn =
        tellDelegate([&](auto& delegate) { delegate.onSocketDidWriteDataWithTag(*this, tag); });
    if (goesOn)
        endCurrentWrite();
    return goesOn;
}

void AsyncSocket::endCurrentWrite()
{
    theWriteTimer.stop();
    theCurrentWrite.reset();
}

void AsyncSocket::doWriteTimeout()
{
    const auto write = theCurrentWrite;
    // The peer may have made room since the loop last looked.
    set(SocketCanAcceptBytes);
    if (!outlives([this] { doSendBytes(); }) || theCurrentWrite != write)
        return;
    double extension = 0;
    if (!tellDelegate([&](auto& delegate) {
            extension = delegate.onSocketShouldTimeoutWriteWithTag(*this, write->tag, write->timeout,
                                                                   write->bytesDone);
        }))
        return;
    if (extension > 0) {
        write->timeout += extension;
        theWriteTimer.start(*theRunLoop, extension, [this] { doWriteTimeout(); });
        return;
    }
    const auto error = asyncSocketError(AsyncSocketWriteTimeoutError);
    closeWithError(&error);
}

float AsyncSocket::progressOfWriteReturningTag(std::int64_t* tag, std::size_t* bytesDone,
                                               std::size_t* total) const
{
    const auto* write = theCurrentWrite.get();
    if (tag)
        *tag = write ? write->tag : 0;
    if (bytesDone)
        *bytesDone = write ? write->bytesDone : 0;
    if (total)
        *total = write ? write->buffer.size() : 0;
    return write ? write->progress() : std::numeric_limits<float>::quiet_NaN();
}
