#include "ZNTRecordingSpeechService.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
constexpr auto lineEnd = "\r\n";
}

ZNTRecordingSpeechService::ZNTRecordingSpeechService()
{
    setenv("SPEECHD_ADDRESS", ("unix_socket:" + folder.path("speech.sock")).c_str(), 1);
}

ZNTRecordingSpeechService::~ZNTRecordingSpeechService() { kill(); }

void ZNTRecordingSpeechService::start()
{
    const auto path = folder.path("speech.sock");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    unlink(path.c_str());
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, 8) != 0 || pipe(wakeUp) != 0)
        throw std::runtime_error("no recording speech service: " + std::string(std::strerror(errno)));
    thread = std::thread([this] { serve(); });
}

void ZNTRecordingSpeechService::kill()
{
    if (!thread.joinable())
        return;
    close(wakeUp[1]);
    thread.join();
    close(wakeUp[0]);
    close(listener);
    for (const auto& client : clients)
        close(client.socket);
    clients.clear();
    queue.clear();
    isSpeaking = false;
    unlink(folder.path("speech.sock").c_str());
}

void ZNTRecordingSpeechService::setSpeakingTime(std::chrono::milliseconds time)
{
    const std::lock_guard lock(mutex);
    speakingTime = time;
}

void ZNTRecordingSpeechService::setAnswers(bool doesAnswer)
{
    const std::lock_guard lock(mutex);
    answers = doesAnswer;
}

std::vector<ZNTRecordingSpeechService::Said> ZNTRecordingSpeechService::said() const
{
    const std::lock_guard lock(mutex);
    return record;
}

std::vector<std::string> ZNTRecordingSpeechService::finishedTexts() const
{
    std::vector<std::string> texts;
    for (const auto& one : said())
        if (one.end != Clock::time_point{} && !one.wasCancelled)
            texts.push_back(one.text);
    return texts;
}

std::size_t ZNTRecordingSpeechService::commandsHeard() const
{
    const std::lock_guard lock(mutex);
    return commands;
}

std::vector<std::string> ZNTRecordingSpeechService::complaints() const
{
    const std::lock_guard lock(mutex);
    return misunderstood;
}

void ZNTRecordingSpeechService::serve()
{
    for (;;) {
        std::vector<pollfd> watched{{wakeUp[0], POLLIN, 0}, {listener, POLLIN, 0}};
        for (const auto& client : clients)
            watched.push_back({client.socket, POLLIN, 0});
        poll(watched.data(), watched.size(), isSpeaking ? 1 : 1'000);
        const std::lock_guard lock(mutex);
        if (watched[0].revents != 0)
            return;
        auto at = watched.begin() + 2;
        for (auto client = clients.begin(); at != watched.end(); ++at) {
            const auto here = client++;
            if (at->revents != 0 && !readFrom(*here)) {
                forget(*here);
                clients.erase(here);
            }
        }
        if (watched[1].revents != 0)
            clients.push_back({accept4(listener, nullptr, nullptr, SOCK_CLOEXEC), {}, {}, false});
        speakOn();
    }
}

bool ZNTRecordingSpeechService::readFrom(Client& client)
{
    char bytes[4096];
    const auto count = read(client.socket, bytes, sizeof bytes);
    if (count <= 0)
        return false;
    client.received.append(bytes, static_cast<std::size_t>(count));
    for (auto end = client.received.find(lineEnd); end != std::string::npos;
         end = client.received.find(lineEnd)) {
        const auto line = client.received.substr(0, end);
        client.received.erase(0, end + 2);
        if (client.isInText)
            takeText(client, line);
        else
            obey(client, line);
    }
    return true;
}

void ZNTRecordingSpeechService::obey(Client& client, const std::string& line)
{
    ++commands;
    if (line == "SPEAK") {
        client.isInText = true;
        client.text.clear();
        send(client, "230 OK RECEIVING DATA\r\n");
    } else if (line == "CANCEL SELF") {
        send(client, "213 OK CANCELED\r\n");
        cancel(client);
    } else if (line.starts_with("SET SELF ")) {
        send(client, "200 OK SET\r\n");
    } else {
        misunderstood.push_back(line);
        send(client, "500 ERR INVALID COMMAND\r\n");
    }
}

void ZNTRecordingSpeechService::takeText(Client& client, const std::string& line)
{
    if (line != ".") {
        client.text += (client.text.empty() ? "" : lineEnd) + line.substr(line.starts_with("..") ? 1 : 0);
        return;
    }
    client.isInText = false;
    const auto number = ++numbersGiven;
    queue.push_back({&client, number, client.text});
    send(client, "225-" + std::to_string(number) + "\r\n225 OK MESSAGE QUEUED\r\n");
}

void ZNTRecordingSpeechService::send(Client& client, const std::string& text) const
{
    if (answers)
        ::send(client.socket, text.data(), text.size(), MSG_NOSIGNAL);
}

void ZNTRecordingSpeechService::sendEvent(const Message& message, const std::string& code,
                                          const std::string& name) const
{
    send(*message.client, code + "-" + std::to_string(message.number) + lineEnd + code + "-" +
                              std::to_string(message.client->socket) + lineEnd + code + " " + name + lineEnd);
}

void ZNTRecordingSpeechService::speakOn()
{
    const auto now = Clock::now();
    while (!queue.empty()) {
        if (!isSpeaking) {
            isSpeaking = true;
            record.push_back({queue.front().text, now, {}, false});
            sendEvent(queue.front(), "701", "BEGIN");
            // Neither of them is an end.
            sendEvent(queue.front(), "700", "INDEX MARK");
            sendEvent(queue.front(), "705", "RESUMED");
        }
        if (now < record.back().begin + speakingTime)
            return;
        isSpeaking = false;
        record.back().end = now;
        sendEvent(queue.front(), "702", "END");
        queue.pop_front();
    }
}

void ZNTRecordingSpeechService::cancel(Client& client)
{
    if (isSpeaking && queue.front().client == &client) {
        isSpeaking = false;
        record.back().end = Clock::now();
        record.back().wasCancelled = true;
    }
    for (const auto& message : queue)
        if (message.client == &client)
            sendEvent(message, "703", "CANCELED");
    std::erase_if(queue, [&client](const auto& message) { return message.client == &client; });
}

void ZNTRecordingSpeechService::cancelAll()
{
    const std::lock_guard lock(mutex);
    for (auto& client : clients)
        cancel(client);
}

void ZNTRecordingSpeechService::forget(Client& client)
{
    close(client.socket);
    if (isSpeaking && queue.front().client == &client)
        isSpeaking = false;
    std::erase_if(queue, [&client](const auto& message) { return message.client == &client; });
}
