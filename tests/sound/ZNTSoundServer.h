#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// A web server on loopback, on threads of its own, each request a connection. At most some dozens of them.
class ZNTSoundServer
{
public:
    /// One answer being given.
    class Reply
    {
    public:
        Reply(ZNTSoundServer& server, int client) : server(server), client(client) {}
        /// False once the client has gone.
        bool send(std::string_view bytes);
        void sendContent(std::string_view content);
        void redirectTo(const std::string& url);
        /// Until `release`, or until the client goes.
        void waitForRelease();

    private:
        ZNTSoundServer& server;
        int client;
    };
    using Answer = std::function<void(Reply& reply)>;

    /// Answers by path ("/rain.wav"); every other path is not found. `host` is an address of loopback.
    explicit ZNTSoundServer(std::map<std::string, Answer> answers, std::string host = "127.0.0.1");
    ~ZNTSoundServer();
    ZNTSoundServer(const ZNTSoundServer&) = delete;
    ZNTSoundServer& operator=(const ZNTSoundServer&) = delete;

    [[nodiscard]] std::string url(const std::string& path) const { return url(path, host); }
    [[nodiscard]] std::string url(const std::string& path, const std::string& otherHost) const;
    [[nodiscard]] int requests() const { return requestCount; }
    [[nodiscard]] int connections() const { return connectionCount; }
    [[nodiscard]] int mostAtOnce() const { return mostOpen; }
    [[nodiscard]] int openNow() const { return openCount; }
    [[nodiscard]] std::size_t bytesSent() const { return sentBytes; }
    void release() { isReleased = true; }

private:
    void acceptClients();
    void serve(int client);

    const std::map<std::string, Answer> answers;
    const std::string host;
    int listening = -1;
    std::uint16_t port = 0;
    std::atomic<bool> isEnding = false, isReleased = false;
    std::atomic<int> requestCount = 0, connectionCount = 0, openCount = 0, mostOpen = 0;
    std::atomic<std::size_t> sentBytes = 0;
    std::vector<std::thread> clients; // of the accepting thread only
    std::thread accepting;
};
