#pragma once

#include "AsyncSocket.h"
#include "VirtualRunLoop.h"
#include "ZNTScriptedPeer.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Notes every callback, and does inside it what the test has asked for.
struct RecordingSocketDelegate final : AsyncSocketDelegate {
    std::vector<std::string> events;
    std::vector<std::string> reads; ///< the data of every finished read
    std::vector<double> elapsedReads;
    ZNTError lastError;
    bool welcomesConnection = true;
    double readExtension = 0;
    std::function<void(AsyncSocket&)> whenRead, whenWritten, whenEnding;

    bool onSocketWillConnect(AsyncSocket&) override
    {
        events.emplace_back("will connect");
        return welcomesConnection;
    }
    void onSocketDidConnectToHost(AsyncSocket&, const std::string& host, std::uint16_t) override
    {
        events.push_back("connected " + host);
    }
    void onSocketDidReadData(AsyncSocket& socket, std::string_view data, std::int64_t tag) override
    {
        events.push_back("read " + std::to_string(tag));
        reads.emplace_back(data);
        call(whenRead, socket);
    }
    double onSocketShouldTimeoutReadWithTag(AsyncSocket&, std::int64_t, double elapsed, std::size_t) override
    {
        elapsedReads.push_back(elapsed);
        return readExtension;
    }
    void onSocketDidWriteDataWithTag(AsyncSocket& socket, std::int64_t tag) override
    {
        events.push_back("wrote " + std::to_string(tag));
        call(whenWritten, socket);
    }
    void onSocketDidWritePartialDataOfLength(AsyncSocket&, std::size_t length, std::int64_t) override
    {
        partlyWritten += length;
    }
    void onSocketWillDisconnectWithError(AsyncSocket& socket, const ZNTError* error) override
    {
        events.push_back(error ? "ending: " + error->description : "ending");
        lastError = error ? *error : ZNTError{};
        call(whenEnding, socket);
    }
    void onSocketDidDisconnect(AsyncSocket&) override { events.emplace_back("disconnected"); }

    std::size_t partlyWritten = 0;

private:
    /// A copy is called, since what it does may include forgetting it.
    static void call(const std::function<void(AsyncSocket&)>& todo, AsyncSocket& socket)
    {
        if (const auto copy = todo)
            copy(socket);
    }
};

/// A socket and a peer on one loop. The test moves its time.
struct AsyncSocketTest : testing::Test {
    VirtualRunLoop loop;
    ZNTScriptedPeer peer{loop};
    RecordingSocketDelegate heard;
    std::unique_ptr<AsyncSocket> socket = std::make_unique<AsyncSocket>(loop, &heard);

    void connect()
    {
        ASSERT_TRUE(socket->connectToHost(peer.host(), peer.port()));
        ASSERT_TRUE(loop.runUntil([this] { return socket->isConnected() && peer.hasClient(); }));
        heard.events.clear();
    }
    /// Waits, in real time, for as many finished reads.
    [[nodiscard]] bool awaitReads(std::size_t count)
    {
        return loop.runUntil([this, count] { return heard.reads.size() >= count; }, 5);
    }
    [[nodiscard]] bool awaitEnd()
    {
        return loop.runUntil(
            [this] { return !heard.events.empty() && heard.events.back() == "disconnected"; }, 10);
    }
    /// Moves the time on by `seconds`. `happening` comes after the loop has looked at the descriptors and
    /// before it fires the timers that are due, as it may on a loop that was held up.
    void advancePast(double seconds, std::function<void()> happening)
    {
        loop.beforeTimers = std::move(happening);
        loop.advance(seconds);
    }
    using Events = std::vector<std::string>;
};
