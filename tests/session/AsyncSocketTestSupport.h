#pragma once

#include "AsyncSocket.h"
#include "VirtualRunLoop.h"
#include "ZNTScriptedPeer.h"

/// Notes every callback, and does inside it what the test has asked for.
struct RecordingSocketDelegate final : AsyncSocketDelegate {
    std::vector<std::string> events;
    std::vector<std::string> reads; ///< the data of every finished read
    ZNTError lastError;
    std::function<void(AsyncSocket&)> whenRead, whenWritten;

    void onSocketDidConnectToHost(AsyncSocket&, const std::string& host, std::uint16_t) override
    {
        events.push_back("connected " + host);
    }
    void onSocketDidReadData(AsyncSocket& socket, std::string_view data, std::int64_t tag) override
    {
        events.push_back("read " + std::to_string(tag));
        reads.emplace_back(data);
        if (whenRead)
            whenRead(socket);
    }
    void onSocketDidWriteDataWithTag(AsyncSocket& socket, std::int64_t tag) override
    {
        events.push_back("wrote " + std::to_string(tag));
        if (whenWritten)
            whenWritten(socket);
    }
    void onSocketWillDisconnectWithError(AsyncSocket&, const ZNTError* error) override
    {
        events.push_back(error ? "ending: " + error->description : "ending");
        lastError = error ? *error : ZNTError{};
    }
    void onSocketDidDisconnect(AsyncSocket&) override { events.emplace_back("disconnected"); }
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
    using Events = std::vector<std::string>;
};
