#include "ZNTRecordingSpeechService.h"

#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace
{
constexpr auto lineEnd = "\r\n";
}

ZNTRecordingSpeechService::ZNTRecordingSpeechService()
{
    setenv("SPEECHD_ADDRESS", ("unix_socket:" + folder.path("speech.sock")).c_str(), 1);
}

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
    dropClient();
    unlink(folder.path("speech.sock").c_str());
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

std::vector<std::string> ZNTRecordingSpeechService::complaints() const
{
    const std::lock_guard lock(mutex);
    return misunderstood;
}

void ZNTRecordingSpeechService::serve()
{
    for (;;) {
        // poll passes over a descriptor of -1.
        pollfd watched[] = {
            {wakeUp[0], POLLIN, 0}, {client < 0 ? listener : -1, POLLIN, 0}, {client, POLLIN, 0}};
        poll(watched, std::size(watched), isSpeaking ? 1 : 1'000);
        const std::lock_guard lock(mutex);
        if (watched[0].revents != 0)
            return;
        if (watched[1].revents != 0)
            client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (watched[2].revents != 0 && !readFromClient())
            dropClient();
        speakOn();
    }
}

bool ZNTRecordingSpeechService::readFromClient()
{
    char bytes[4096];
    const auto count = read(client, bytes, sizeof bytes);
    if (count <= 0)
        return false;
    received.append(bytes, static_cast<std::size_t>(count));
    for (auto end = received.find(lineEnd); end != std::string::npos; end = received.find(lineEnd)) {
        const auto line = received.substr(0, end);
        received.erase(0, end + 2);
        if (isInText)
            takeText(line);
        else
            obey(line);
    }
    return true;
}

void ZNTRecordingSpeechService::obey(const std::string& line)
{
    ++commandsHeard;
    if (line == "SPEAK") {
        isInText = true;
        text.clear();
        send("230 OK RECEIVING DATA\r\n");
    } else if (line == "CANCEL SELF") {
        send("213 OK CANCELED\r\n");
        cancel();
    } else if (line.starts_with("SET SELF ")) {
        send("200 OK SET\r\n");
    } else {
        misunderstood.push_back(line);
        send("500 ERR INVALID COMMAND\r\n");
    }
}

void ZNTRecordingSpeechService::takeText(const std::string& line)
{
    if (line != ".") {
        text += (text.empty() ? "" : lineEnd) + line.substr(line.starts_with("..") ? 1 : 0);
        return;
    }
    isInText = false;
    queue.push_back({std::to_string(++numbersGiven), text});
    send("225-" + queue.back().number + "\r\n225 OK MESSAGE QUEUED\r\n");
}

void ZNTRecordingSpeechService::send(const std::string& reply) const
{
    if (answers)
        ::send(client, reply.data(), reply.size(), MSG_NOSIGNAL);
}

void ZNTRecordingSpeechService::sendEvent(const Message& message, const std::string& code) const
{
    send(code + "-" + message.number + lineEnd + code + "-1" + lineEnd + code + " EVENT" + lineEnd);
}

void ZNTRecordingSpeechService::speakOn()
{
    const auto now = Clock::now();
    while (!queue.empty()) {
        if (!isSpeaking) {
            isSpeaking = true;
            record.push_back({queue.front().text, now, {}, false});
            // Begin, and then two events (index mark, resumed) that are no end.
            for (const auto* code : {"701", "700", "705"})
                sendEvent(queue.front(), code);
        }
        if (now < record.back().begin + speakingTime.load())
            return;
        isSpeaking = false;
        record.back().end = now;
        sendEvent(queue.front(), "702");
        queue.pop_front();
    }
}

void ZNTRecordingSpeechService::cancel()
{
    if (isSpeaking.exchange(false)) {
        record.back().end = Clock::now();
        record.back().wasCancelled = true;
    }
    for (const auto& message : std::exchange(queue, {}))
        sendEvent(message, "703");
}

void ZNTRecordingSpeechService::cancelAll()
{
    const std::lock_guard lock(mutex);
    cancel();
}

void ZNTRecordingSpeechService::dropClient()
{
    if (client >= 0)
        close(std::exchange(client, -1));
    isSpeaking = isInText = false;
    queue.clear();
    received.clear();
}
