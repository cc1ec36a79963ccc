#include "AsyncSocket.h"
#include "AsyncSocketPackets.h"
#include "AsyncSocketStream.h"
#include "AsyncSocketTelling.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <limits>
#include <utility>

namespace
{

/// The most bytes that one pass takes before the loop turns, so that a typed line leaves during a flood.
constexpr std::size_t mostInOnePass = 256 * 1024;
/// Bytes to ask for if it is not known how many are there.
constexpr std::size_t smallestStep = 256;
/// The most bytes that unreadData takes from the network.
constexpr std::size_t mostUnread = 16 * 1024 * 1024;

std::shared_ptr<AsyncReadPacket> readInto(std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                                          double timeout, std::int64_t tag)
{
    auto packet = std::make_shared<AsyncReadPacket>();
    packet->bufferOwner = !buffer;
    packet->buffer = buffer ? std::move(buffer) : std::make_shared<std::string>();
    packet->startOffset = packet->bufferOwner ? 0 : bufferOffset;
    packet->originalBufferLength = packet->buffer->size();
    packet->timeout = timeout;
    packet->tag = tag;
    return packet;
}

} // namespace

void AsyncSocket::readDataWithTimeout(double timeout, std::int64_t tag)
{
    readDataWithTimeout(timeout, nullptr, 0, 0, tag);
}

void AsyncSocket::readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer,
                                      std::size_t bufferOffset, std::int64_t tag)
{
    readDataWithTimeout(timeout, std::move(buffer), bufferOffset, 0, tag);
}

void AsyncSocket::readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer,
                                      std::size_t bufferOffset, std::size_t maxLength, std::int64_t tag)
{
    auto packet = readInto(std::move(buffer), bufferOffset, timeout, tag);
    packet->maxLength = maxLength;
    queueRead(std::move(packet));
}

void AsyncSocket::readDataToLength(std::size_t length, double timeout, std::int64_t tag)
{
    readDataToLength(length, timeout, nullptr, 0, tag);
}

void AsyncSocket::readDataToLength(std::size_t length, double timeout, std::shared_ptr<std::string> buffer,
                                   std::size_t bufferOffset, std::int64_t tag)
{
    if (length == 0)
        return;
    auto packet = readInto(std::move(buffer), bufferOffset, timeout, tag);
    packet->readLength = length;
    if (packet->bufferOwner)
        packet->buffer->resize(length);
    queueRead(std::move(packet));
}

void AsyncSocket::readDataToData(std::string_view data, double timeout, std::int64_t tag)
{
    readDataToData(data, timeout, nullptr, 0, 0, tag);
}

void AsyncSocket::readDataToData(std::string_view data, double timeout, std::size_t maxLength,
                                 std::int64_t tag)
{
    readDataToData(data, timeout, nullptr, 0, maxLength, tag);
}

void AsyncSocket::readDataToData(std::string_view data, double timeout, std::shared_ptr<std::string> buffer,
                                 std::size_t bufferOffset, std::int64_t tag)
{
    readDataToData(data, timeout, std::move(buffer), bufferOffset, 0, tag);
}

void AsyncSocket::readDataToData(std::string_view data, double timeout, std::shared_ptr<std::string> buffer,
                                 std::size_t bufferOffset, std::size_t maxLength, std::int64_t tag)
{
    if (data.empty() || (maxLength != 0 && maxLength < data.size()))
        return;
    auto packet = readInto(std::move(buffer), bufferOffset, timeout, tag);
    packet->term = data;
    packet->maxLength = maxLength;
    queueRead(std::move(packet));
}

void AsyncSocket::queueRead(std::shared_ptr<AsyncReadPacket> packet)
{
    const bool isPastEnd = !packet->bufferOwner && packet->startOffset > packet->buffer->size();
    if (isPastEnd || has(ReadsAndWritesForbidden))
        return;
    theReadQueue.push_back(std::move(packet));
    scheduleDequeueRead();
}

void AsyncSocket::scheduleDequeueRead()
{
    if (has(DequeueReadScheduled))
        return;
    set(DequeueReadScheduled);
    runLater(&AsyncSocket::maybeDequeueRead);
}

void AsyncSocket::maybeDequeueRead()
{
    clear(DequeueReadScheduled);
    if (theCurrentRead || !theStream)
        return;
    if (theReadQueue.empty())
        return maybeDisconnect();
    theCurrentRead = std::move(theReadQueue.front());
    theReadQueue.pop_front();
    if (theCurrentRead->timeout >= 0)
        theReadTimer.start(*theRunLoop, theCurrentRead->timeout, [this] { doReadTimeout(); });
    doBytesAvailable();
}

/// The descriptor is readable and no read is queued. Bytes stay where they are; an end closes at once.
void AsyncSocket::meetBytesWithoutRead()
{
    const auto there = theStream->peek();
    if (there.count > 0)
        return setInterestIn(RunLoopInterest::Readable, false);
    clear(SocketHasBytesAvailable);
    if (there.errorNumber == EAGAIN)
        return;
    const auto error = posixError(there.errorNumber);
    closeWithError(there.errorNumber == 0 ? nullptr : &error);
}

void AsyncSocket::holdReading(bool isHeld)
{
    if (!theStream || std::exchange(readingIsHeld, isHeld) == isHeld)
        return;
    setInterestIn(RunLoopInterest::Readable, !isHeld); // the loop reports again what is there
}

/// One pass of the current read: what was kept from earlier first, then what the network has.
void AsyncSocket::doBytesAvailable()
{
    if (!theCurrentRead || !theStream || readingIsHeld)
        return;
    const auto read = theCurrentRead; // a callback may end it
    const auto before = read->bytesDone;
    auto state = AsyncReadState::Unfinished;
    if (!partialReadBuffer.empty())
        state = read->takeFromPreBuffer(partialReadBuffer);
    const int ending = takeFromNetwork(*read, state);

    const auto length = read->bytesDone - before;
    if (state == AsyncReadState::Unfinished && read->isOpenEnded() && read->bytesDone > 0)
        state = AsyncReadState::Done;
    const bool isOver = ending != EAGAIN;
    if (state == AsyncReadState::Done) {
        if (!completeCurrentRead())
            return;
        if (!isOver)
            scheduleDequeueRead();
    } else if (length > 0) {
        if (!tellDelegate([&](auto& delegate) {
                delegate.onSocketDidReadPartialDataOfLength(*this, length, read->tag);
            }))
            return;
    }
    if (isOver) {
        const auto error = posixError(ending);
        closeWithError(ending == 0 ? nullptr : &error);
    } else if (state == AsyncReadState::Overflow) {
        const auto error = asyncSocketError(AsyncSocketReadMaxedOutError);
        closeWithError(&error);
    }
}

/// Reads for `read` until `state` says that it is finished, a pass is full or nothing more is there. Answers
/// EAGAIN if the stream goes on; otherwise what ended it: an errno, or 0 if the peer closed.
int AsyncSocket::takeFromNetwork(AsyncReadPacket& read, AsyncReadState& state)
{
    int ending = EAGAIN;
    std::size_t total = 0;
    const bool isPreBuffering = has(PreBufferingEnabled);
    while (state == AsyncReadState::Unfinished && has(SocketHasBytesAvailable) && total < mostInOnePass) {
        const auto available = theStream->bytesAvailable();
        if (available == 0 && total > 0)
            break;
        const auto wanted = std::min(std::max(available, smallestStep), mostInOnePass - total);
        const auto asked = read.bytesToAskFor(wanted, isPreBuffering);
        const auto moved = theStream->read(read.roomFor(asked), asked);
        if (moved.count == 0) {
            ending = moved.errorNumber;
            break;
        }
        total += moved.count;
        state = read.tookFromNetwork(moved.count, partialReadBuffer, isPreBuffering);
    }
    // Wait for the loop to report more. Reading on before it turned would let a flood keep it from turning.
    clear(SocketHasBytesAvailable);
    setInterestIn(RunLoopInterest::Readable, true);
    return ending;
}

/// False if the delegate ended the connection.
bool AsyncSocket::completeCurrentRead()
{
    assert(theCurrentRead && "Trying to complete current read when there is no current read.");
    const auto read = theCurrentRead;
    read->cutBuffer();
    const bool goesOn =
        tellDelegate([&](auto& delegate) { delegate.onSocketDidReadData(*this, read->data(), read->tag); });
    if (goesOn)
        endCurrentRead();
    return goesOn;
}

void AsyncSocket::endCurrentRead()
{
    theReadTimer.stop();
    theCurrentRead.reset();
}

void AsyncSocket::doReadTimeout()
{
    const auto read = theCurrentRead;
    // Bytes may have come since the loop last looked. Taking them for silence would cut a text in two.
    set(SocketHasBytesAvailable);
    if (!outlives([this] { doBytesAvailable(); }) || theCurrentRead != read)
        return;
    double extension = 0;
    if (!tellDelegate([&](auto& delegate) {
            extension =
                delegate.onSocketShouldTimeoutReadWithTag(*this, read->tag, read->timeout, read->bytesDone);
        }))
        return;
    if (extension > 0) {
        read->timeout += extension;
        theReadTimer.start(*theRunLoop, extension, [this] { doReadTimeout(); });
        return;
    }
    const auto error = asyncSocketError(AsyncSocketReadTimeoutError);
    closeWithError(&error);
}

float AsyncSocket::progressOfReadReturningTag(std::int64_t* tag, std::size_t* bytesDone,
                                              std::size_t* total) const
{
    const auto* read = theCurrentRead.get();
    if (tag)
        *tag = read ? read->tag : 0;
    if (bytesDone)
        *bytesDone = read ? read->bytesDone : 0;
    if (total)
        *total = read ? read->readLength : 0;
    return read ? read->progress() : std::numeric_limits<float>::quiet_NaN();
}

std::optional<std::string> AsyncSocket::unreadData()
{
    if (!has(ClosingWithError) || !theStream)
        return std::nullopt;
    std::string piece;
    while (partialReadBuffer.view().size() < mostUnread) {
        piece.resize(std::clamp(theStream->bytesAvailable(), smallestStep, mostInOnePass));
        const auto moved = theStream->read(piece.data(), piece.size());
        if (moved.count == 0)
            break;
        partialReadBuffer.append(std::string_view(piece).substr(0, moved.count));
    }
    return std::string(partialReadBuffer.view());
}
