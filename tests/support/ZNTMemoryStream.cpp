#include "ZNTMemoryStream.h"

#include "AsyncSocketErrors.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace
{
constexpr std::size_t mostInOneBlock = 256 * 1024;
} // namespace

ZNTStreamFactory ZNTMemoryGame::streams()
{
    return [this](ZNTStreamDelegate& delegate) { return std::make_unique<ZNTMemoryStream>(*this, delegate); };
}

void ZNTMemoryGame::send(std::string bytes)
{
    for (std::size_t at = 0; at < bytes.size(); at += mostInOneBlock)
        blocks.push_back(bytes.substr(at, mostInOneBlock));
    tellClient();
}

void ZNTMemoryGame::closeWhenSent() { setEnd(End::Closed); }
void ZNTMemoryGame::reset() { setEnd(End::Broken); }

void ZNTMemoryGame::setEnd(End newEnd)
{
    end = newEnd;
    tellClient();
}

void ZNTMemoryGame::resumeReading()
{
    room = std::numeric_limits<std::size_t>::max();
    if (client)
        client->later(&ZNTMemoryStream::writeOn);
}

void ZNTMemoryGame::tellClient()
{
    if (client)
        client->later(&ZNTMemoryStream::readOn);
}

// The client's end

ZNTResult<void> ZNTMemoryStream::connectToHost(const std::string&, std::uint16_t port)
{
    portAskedFor = port;
    state = State::Connecting;
    later(&ZNTMemoryStream::open);
    return {};
}

void ZNTMemoryStream::open()
{
    if (!game.isListening || portAskedFor != game.port()) {
        const auto refused = posixError(ECONNREFUSED);
        return closeWithError(&refused);
    }
    state = State::Connected;
    game.client = this;
    game.clientClosed = false;
    game.receivedBytes.clear();
    ++game.accepted;
    if (!tellDelegate([this] { delegate.onSocketDidConnectToHost(*this, game.host(), game.port()); }))
        return;
    later(&ZNTMemoryStream::readOn);
    later(&ZNTMemoryStream::writeOn);
}

void ZNTMemoryStream::later(void (ZNTMemoryStream::*step)())
{
    game.runLoop.post([this, step, wanted = std::weak_ptr<char>(connection)] {
        if (!wanted.expired())
            (this->*step)();
    });
}

/// False if the delegate ended the connection or destroyed the stream.
template <typename Call>
bool ZNTMemoryStream::tellDelegate(Call call)
{
    const std::weak_ptr<char> alive = connection;
    call();
    return !alive.expired();
}

void ZNTMemoryStream::disconnect()
{
    if (isDisconnected())
        return;
    tearDown();
    delegate.onSocketDidDisconnect(*this);
}

void ZNTMemoryStream::tearDown()
{
    if (game.client == this) {
        game.client = nullptr;
        game.clientClosed = true;
        game.end = ZNTMemoryGame::End::None;
        game.blocks.clear();
    }
    state = State::Idle;
    isHeld = isEnding = false;
    queuedReads.clear();
    currentRead.reset();
    writes.clear();
    readTimer.reset();
    writeTimer.reset();
    connection = std::make_shared<char>();
}

void ZNTMemoryStream::closeWithError(const ZNTError* error)
{
    readTimer.reset();
    writeTimer.reset();
    currentRead.reset();
    queuedReads.clear();
    writes.clear();
    isEnding = true;
    if (tellDelegate([&] { delegate.onSocketWillDisconnectWithError(*this, error); }))
        disconnect();
}

std::optional<std::string> ZNTMemoryStream::unreadData()
{
    if (!isEnding || state != State::Connected)
        return std::nullopt;
    std::string all;
    for (const auto& block : std::exchange(game.blocks, {}))
        all += block;
    return all;
}

// Reading

void ZNTMemoryStream::readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer,
                                          std::size_t bufferOffset, std::int64_t tag)
{
    queuedReads.push_back({timeout, std::move(buffer), bufferOffset, tag});
    later(&ZNTMemoryStream::readOn);
}

void ZNTMemoryStream::holdReading(bool isToBeHeld)
{
    if (state == State::Connected && std::exchange(isHeld, isToBeHeld) != isToBeHeld)
        later(&ZNTMemoryStream::readOn);
}

void ZNTMemoryStream::readOn()
{
    if (state != State::Connected || isEnding)
        return;
    if (!currentRead && !queuedReads.empty())
        beginRead();
    if (isHeld)
        return;
    if (!game.blocks.empty())
        return takeBlock();
    const auto error = posixError(ECONNRESET);
    if (game.end != ZNTMemoryGame::End::None)
        closeWithError(game.end == ZNTMemoryGame::End::Broken ? &error : nullptr);
}

void ZNTMemoryStream::beginRead()
{
    currentRead = std::move(queuedReads.front());
    queuedReads.pop_front();
    grantedSeconds = currentRead->timeout;
    if (currentRead->timeout >= 0)
        readTimer =
            game.runLoop.startTimer(currentRead->timeout, RunLoopRepeat::Once, [this] { readTimedOut(); });
}

/// One block a turn, so that a flood lets other steps in between.
void ZNTMemoryStream::takeBlock()
{
    if (!currentRead)
        return;
    auto& buffer = *currentRead->buffer;
    buffer.resize(currentRead->bufferOffset);
    buffer += game.blocks.front();
    game.blocks.pop_front();
    const auto read = *currentRead;
    if (!tellDelegate([&] {
            delegate.onSocketDidReadData(*this, std::string_view(buffer).substr(read.bufferOffset), read.tag);
        }))
        return;
    readTimer.reset();
    currentRead.reset();
    later(&ZNTMemoryStream::readOn);
}

void ZNTMemoryStream::readTimedOut()
{
    if (!isHeld && !game.blocks.empty())
        return takeBlock(); // they came since the loop last looked, so this is no silence
    const auto tag = currentRead->tag;
    double extension = 0;
    if (!tellDelegate(
            [&] { extension = delegate.onSocketShouldTimeoutReadWithTag(*this, tag, grantedSeconds, 0); }))
        return;
    if (extension > 0) {
        grantedSeconds += extension;
        readTimer = game.runLoop.startTimer(extension, RunLoopRepeat::Once, [this] { readTimedOut(); });
        return;
    }
    const auto error = asyncSocketError(AsyncSocketReadTimeoutError);
    closeWithError(&error);
}

// Writing

void ZNTMemoryStream::writeData(std::string data, double timeout, std::int64_t tag)
{
    if (data.empty())
        return;
    writes.push_back({std::move(data), timeout, tag});
    later(&ZNTMemoryStream::writeOn);
}

void ZNTMemoryStream::flushQueuedWrites()
{
    for (auto& write : writes)
        moveBytesOf(write);
}

void ZNTMemoryStream::moveBytesOf(Write& write)
{
    if (state != State::Connected || game.end == ZNTMemoryGame::End::Broken)
        return;
    const auto count = std::min(write.data.size() - write.done, game.room);
    game.receivedBytes += write.data.substr(write.done, count);
    game.room -= count;
    write.done += count;
}

void ZNTMemoryStream::writeOn()
{
    while (state == State::Connected && !isEnding && !writes.empty()) {
        auto& write = writes.front();
        if (!writeTimer && write.timeout >= 0)
            writeTimer =
                game.runLoop.startTimer(write.timeout, RunLoopRepeat::Once, [this] { writeTimedOut(); });
        moveBytesOf(write);
        if (game.end == ZNTMemoryGame::End::Broken) {
            const auto error = posixError(EPIPE);
            return closeWithError(&error);
        }
        if (write.done < write.data.size())
            return;
        const auto tag = write.tag;
        writes.pop_front();
        writeTimer.reset();
        if (!tellDelegate([&] { delegate.onSocketDidWriteDataWithTag(*this, tag); }))
            return;
    }
}

void ZNTMemoryStream::writeTimedOut()
{
    const auto error = asyncSocketError(AsyncSocketWriteTimeoutError);
    closeWithError(&error);
}
