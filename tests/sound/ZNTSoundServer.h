#pragma once

#include <arpa/inet.h>
#include <atomic>
#include <netinet/in.h>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

struct ZNTSoundAnswer {
    std::string bytes;
    bool waits = false; ///< for `release`, or until the client goes
};

inline ZNTSoundAnswer soundAnswer(const std::string& content, bool waits = false)
{
    return {"HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content,
            waits};
}

inline ZNTSoundAnswer redirection(const std::string& url)
{
    return {"HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + url + "\r\n\r\n"};
}

/// A web server on loopback, on threads of its own, each request a connection. At most some dozens of them.
class ZNTSoundServer
{
public:
    /// Answers by path ("/rain.wav"); every other path is not found. `host` is an address of loopback.
    explicit ZNTSoundServer(std::map<std::string, ZNTSoundAnswer> answers, std::string host = "127.0.0.1")
        : answers(std::move(answers)),
          host(std::move(host)),
          listening(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        inet_pton(AF_INET, this->host.c_str(), &address.sin_addr);
        socklen_t length = sizeof address;
        auto* plain = reinterpret_cast<sockaddr*>(&address);
        EXPECT_TRUE(bind(listening, plain, length) == 0 && listen(listening, 64) == 0 &&
                    getsockname(listening, plain, &length) == 0);
        port = ntohs(address.sin_port);
        accepting = std::thread([this] { acceptClients(); });
    }
    ~ZNTSoundServer()
    {
        isReleased = true;
        shutdown(listening, SHUT_RDWR);
        accepting.join();
        close(listening);
    }

    [[nodiscard]] std::string url(const std::string& path, const std::string& otherHost = "") const
    {
        return "http://" + (otherHost.empty() ? host : otherHost) + ":" + std::to_string(port) + path;
    }
    void release() { isReleased = true; }

    std::atomic<int> requests = 0, connections = 0;
    std::atomic<std::size_t> bytesSent = 0;

private:
    void acceptClients()
    {
        std::vector<std::jthread> clients;
        for (int client = 0; (client = accept4(listening, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
            ++connections;
            clients.emplace_back([this, client] { serve(client); });
        }
    }
    void serve(int client)
    {
        std::string request(1'024, '\0'); // it comes in one piece
        if (recv(client, request.data(), request.size(), 0) > 0) {
            ++requests;
            const auto start = request.find(' ') + 1;
            const auto found = answers.find(request.substr(start, request.find(' ', start) - start));
            answer(client, found != answers.end()
                               ? found->second
                               : ZNTSoundAnswer{"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n"});
        }
        close(client);
    }
    void answer(int client, const ZNTSoundAnswer& given)
    {
        for (pollfd watched{client, POLLIN, 0}; given.waits && !isReleased;)
            if (poll(&watched, 1, 5) > 0)
                return; // it has gone: a client sends nothing more
        for (std::string_view rest = given.bytes; !rest.empty();) {
            const auto sent = send(client, rest.data(), rest.size(), MSG_NOSIGNAL);
            if (sent <= 0)
                return;
            bytesSent += static_cast<std::size_t>(sent);
            rest.remove_prefix(static_cast<std::size_t>(sent));
        }
    }

    const std::map<std::string, ZNTSoundAnswer> answers;
    const std::string host;
    const int listening;
    std::uint16_t port = 0;
    std::atomic<bool> isReleased = false;
    std::thread accepting;
};
