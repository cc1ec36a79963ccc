#include "ZNTMemoryStream.h"

#include "AsyncSocketErrors.h"

#include <cerrno>
#include <utility>

/// The client's end. It keeps the socket's order of events; a test holds both to the same contract.
class ZNTMemoryStream final : public ZNTStream
{
public:
    ZNTMemoryStream(ZNTMemoryGame& game, ZNTStreamDelegate& delegate) : game(game), delegate(delegate) {}
    ~ZNTMemoryStream() override { tearDown(); }

    ZNTResult<void> connectToHost(const std::string&, std::uint16_t port) override
    {
        if (!game.mayBegin)
            return posixError(EAGAIN);
        state = State::Connecting;
        isPortRight = port == game.port();
        later(&ZNTMemoryStream::open);
        return {};
    }
    void disconnect() override
    {
        if (isDisconnected())
            return;
        tearDown();
        delegate.onSocketDidDisconnect(*this);
    }
    [[nodiscard]] bool isDisconnected() const override { return state == State::Idle; }

    void readDataWithTimeout(double timeout, std::shared_ptr<std::string> buffer, std::size_t bufferOffset,
                             std::int64_t tag) override
    {
        queuedReads.push_back({timeout, std::move(buffer), bufferOffset, tag});
        later(&ZNTMemoryStream::readOn);
    }
    void holdReading(bool isToBeHeld) override
    {
        if (state == State::Connected && std::exchange(isHeld, isToBeHeld) != isToBeHeld)
            later(&ZNTMemoryStream::readOn);
    }
    [[nodiscard]] bool isReadingHeld() const override { return isHeld; }
    [[nodiscard]] std::optional<std::string> unreadData() override
    {
        if (state != State::Ending)
            return std::nullopt;
        std::string all;
        for (const auto& block : std::exchange(game.blocks, {}))
            all += block;
        return all;
    }

    void writeData(std::string data, double timeout, std::int64_t tag) override
    {
        if (data.empty())
            return;
        writes.push_back({std::move(data), timeout, tag});
        later(&ZNTMemoryStream::writeOn);
    }
    void flushQueuedWrites() override
    {
        for (auto& write : writes)
            give(write);
    }

    /// Runs `step` on a turn of the loop, unless the connection ends before.
    void later(void (ZNTMemoryStream::*step)())
    {
        game.runLoop.post([this, step, wanted = std::weak_ptr<char>(connection)] {
            if (!wanted.expired())
                (this->*step)();
        });
    }
    void readOn()
    {
        if (state != State::Connected)
            return;
        if (!currentRead && !queuedReads.empty()) {
            currentRead = std::move(queuedReads.front());
            queuedReads.pop_front();
            startTimer(readTimer, currentRead->secondsGranted, &ZNTMemoryStream::readTimedOut);
        }
        if (isHeld)
            return;
        if (!game.blocks.empty())
            takeBlock();
        else if (game.end == ZNTMemoryGame::End::Broken)
            closeWithError(posixError(ECONNRESET));
        else if (game.end == ZNTMemoryGame::End::Closed)
            close(nullptr);
    }
    /// The timeout of the oldest write runs until the network has taken all of it.
    void writeOn()
    {
        while (state == State::Connected && !writes.empty()) {
            if (game.end == ZNTMemoryGame::End::Broken)
                return closeWithError(posixError(EPIPE));
            give(writes.front());
            if (!writes.front().data.empty()) {
                if (!writeTimer)
                    startTimer(writeTimer, writes.front().timeout, &ZNTMemoryStream::writeTimedOut);
                return;
            }
            const auto tag = writes.front().tag;
            writes.pop_front();
            writeTimer.reset();
            if (!tellDelegate([&] { delegate.onSocketDidWriteDataWithTag(*this, tag); }))
                return;
        }
    }

private:
    enum class State { Idle, Connecting, Connected, Ending };
    struct Read {
        double secondsGranted; ///< negative: no limit
        std::shared_ptr<std::string> buffer;
        std::size_t bufferOffset;
        std::int64_t tag;
    };
    struct Write {
        std::string data; ///< what the network has not taken
        double timeout;
        std::int64_t tag;
    };

    /// False if the delegate ended the connection or destroyed the stream.
    template <typename Call>
    bool tellDelegate(Call call)
    {
        const std::weak_ptr<char> alive = connection;
        call();
        return !alive.expired();
    }
    void open()
    {
        if (!game.isListening || !isPortRight)
            return closeWithError(posixError(ECONNREFUSED));
        state = State::Connected;
        game.client = this;
        game.receivedBytes.clear();
        ++game.accepted;
        if (!tellDelegate([this] { delegate.onSocketDidConnectToHost(*this, game.host(), game.port()); }))
            return;
        later(&ZNTMemoryStream::readOn);
        later(&ZNTMemoryStream::writeOn);
    }
    /// One block a turn, so that a flood lets other steps in between.
    void takeBlock()
    {
        if (!currentRead)
            return;
        const auto read = *currentRead; // a callback may end it
        read.buffer->resize(read.bufferOffset);
        *read.buffer += game.blocks.front();
        game.blocks.pop_front();
        const auto data = std::string_view(*read.buffer).substr(read.bufferOffset);
        if (!tellDelegate([&] { delegate.onSocketDidReadData(*this, data, read.tag); }))
            return;
        readTimer.reset();
        currentRead.reset();
        later(&ZNTMemoryStream::readOn);
    }
    void readTimedOut()
    {
        if (!isHeld && !game.blocks.empty())
            return takeBlock(); // bytes came since the loop last looked, so this is no silence
        const auto tag = currentRead->tag;
        const auto elapsed = currentRead->secondsGranted;
        double extension = 0;
        if (!tellDelegate(
                [&] { extension = delegate.onSocketShouldTimeoutReadWithTag(*this, tag, elapsed, 0); }))
            return;
        if (extension <= 0)
            return closeWithError(asyncSocketError(AsyncSocketReadTimeoutError));
        currentRead->secondsGranted += extension;
        startTimer(readTimer, extension, &ZNTMemoryStream::readTimedOut);
    }
    void writeTimedOut() { closeWithError(asyncSocketError(AsyncSocketWriteTimeoutError)); }
    void give(Write& write)
    {
        if (game.client == this && game.isReading && game.end != ZNTMemoryGame::End::Broken)
            game.receivedBytes += std::exchange(write.data, {});
    }
    void startTimer(std::unique_ptr<RunLoopTimer>& timer, double seconds, void (ZNTMemoryStream::*step)())
    {
        if (seconds >= 0)
            timer = game.runLoop.startTimer(seconds, RunLoopRepeat::Once, [this, step] { (this->*step)(); });
    }
    void closeWithError(const ZNTError& error) { close(&error); }
    void close(const ZNTError* error)
    {
        forgetRequests();
        state = state == State::Connected ? State::Ending : state;
        if (tellDelegate([&] { delegate.onSocketWillDisconnectWithError(*this, error); }))
            disconnect();
    }
    void forgetRequests()
    {
        queuedReads.clear();
        currentRead.reset();
        writes.clear();
        readTimer.reset();
        writeTimer.reset();
    }
    void tearDown()
    {
        if (game.client == this) {
            game.client = nullptr;
            game.end = ZNTMemoryGame::End::None;
            game.blocks.clear();
        }
        forgetRequests();
        state = State::Idle;
        isHeld = false;
        connection = std::make_shared<char>();
    }

    ZNTMemoryGame& game;
    ZNTStreamDelegate& delegate;
    State state = State::Idle;
    bool isPortRight = true, isHeld = false;
    std::deque<Read> queuedReads;
    std::optional<Read> currentRead;
    std::deque<Write> writes;
    std::unique_ptr<RunLoopTimer> readTimer, writeTimer;
    /// Renewed at each end, so that what was posted for a connection, or waits for a callback, sees its end.
    std::shared_ptr<char> connection = std::make_shared<char>();
};

ZNTStreamFactory ZNTMemoryGame::streams()
{
    return [this](ZNTStreamDelegate& delegate) { return std::make_unique<ZNTMemoryStream>(*this, delegate); };
}

void ZNTMemoryGame::send(std::string bytes)
{
    constexpr std::size_t mostInOneBlock = 256 * 1024;
    for (std::size_t at = 0; at < bytes.size(); at += mostInOneBlock)
        blocks.push_back(bytes.substr(at, mostInOneBlock));
    tellClient();
}

void ZNTMemoryGame::setEnd(End newEnd)
{
    end = newEnd;
    tellClient();
}

void ZNTMemoryGame::resumeReading()
{
    isReading = true;
    if (client)
        client->later(&ZNTMemoryStream::writeOn);
}

void ZNTMemoryGame::tellClient()
{
    if (client)
        client->later(&ZNTMemoryStream::readOn);
}
