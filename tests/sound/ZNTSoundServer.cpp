#include "ZNTSoundServer.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

bool isReady(int descriptor, short events)
{
    pollfd watched{descriptor, events, 0};
    return poll(&watched, 1, 5) > 0;
}

} // namespace

bool ZNTSoundServer::Reply::send(std::string_view bytes)
{
    while (!bytes.empty() && !server.isEnding) {
        if (!isReady(client, POLLOUT))
            continue;
        const auto sent = ::send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent <= 0)
            return false;
        server.sentBytes += static_cast<std::size_t>(sent);
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return bytes.empty();
}

void ZNTSoundServer::Reply::sendContent(std::string_view content)
{
    send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(content.size()) + "\r\n\r\n");
    send(content);
}

void ZNTSoundServer::Reply::redirectTo(const std::string& url)
{
    send("HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + url + "\r\n\r\n");
}

void ZNTSoundServer::Reply::waitForRelease()
{
    while (!server.isReleased && !server.isEnding)
        if (char byte = 0; isReady(client, POLLIN) && recv(client, &byte, 1, MSG_DONTWAIT) == 0)
            return;
}

ZNTSoundServer::ZNTSoundServer(std::map<std::string, Answer> answers, std::string givenHost)
    : answers(std::move(answers)),
      host(std::move(givenHost))
{
    listening = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    inet_pton(AF_INET, host.c_str(), &address.sin_addr);
    socklen_t length = sizeof address;
    auto* plain = reinterpret_cast<sockaddr*>(&address);
    if (bind(listening, plain, length) != 0 || listen(listening, 64) != 0 ||
        getsockname(listening, plain, &length) != 0)
        throw std::runtime_error("cannot listen on loopback");
    port = ntohs(address.sin_port);
    accepting = std::thread([this] { acceptClients(); });
}

ZNTSoundServer::~ZNTSoundServer()
{
    isEnding = true;
    accepting.join();
    close(listening);
}

std::string ZNTSoundServer::url(const std::string& path, const std::string& otherHost) const
{
    return "http://" + otherHost + ":" + std::to_string(port) + path;
}

void ZNTSoundServer::acceptClients()
{
    while (!isEnding) {
        if (!isReady(listening, POLLIN))
            continue;
        const int client = accept4(listening, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            continue;
        ++connectionCount;
        mostOpen = std::max<int>(mostOpen, ++openCount);
        clients.emplace_back([this, client] { serve(client); });
    }
    for (auto& client : clients)
        client.join();
}

void ZNTSoundServer::serve(int client)
{
    std::string request;
    std::array<char, 1'024> piece;
    while (!isEnding && request.find("\r\n\r\n") == request.npos) {
        if (!isReady(client, POLLIN))
            continue;
        const auto length = recv(client, piece.data(), piece.size(), MSG_DONTWAIT);
        if (length <= 0)
            break;
        request.append(piece.data(), static_cast<std::size_t>(length));
    }
    const auto start = request.find(' ') + 1;
    const auto answer = answers.find(request.substr(start, request.find(' ', start) - start));
    if (!request.empty()) {
        ++requestCount;
        Reply reply(*this, client);
        if (answer != answers.end())
            answer->second(reply);
        else
            reply.send("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
    }
    --openCount;
    close(client);
}
