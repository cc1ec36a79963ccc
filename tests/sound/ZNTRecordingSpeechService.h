#pragma once

#include "ZNTTemporaryFolder.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <utility>

/// A speech service without sound: it answers SSIP (the Speech Synthesis Interface Protocol) on a Unix
/// socket, "says" one message after the other for as long as the test wants, and remembers. One client at a
/// time.
class ZNTRecordingSpeechService
{
public:
    struct Said {
        std::string text;
        bool isFinished = false, wasCancelled = false;
    };

    /// Sets SPEECHD_ADDRESS for this process. Does not start yet.
    ZNTRecordingSpeechService() { setenv("SPEECHD_ADDRESS", ("unix_socket:" + path).c_str(), 1); }
    ~ZNTRecordingSpeechService() { kill(); }

    void start()
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        EXPECT_TRUE(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                    listen(listener, 8) == 0);
        thread = std::jthread([this](const std::stop_token& end) { serve(end); });
    }
    /// Ends like a killed service: the connection breaks, and the message that is being said is never
    /// finished.
    void kill()
    {
        if (!thread.joinable())
            return;
        thread.request_stop();
        thread.join();
        close(listener);
        dropClient();
        unlink(path.c_str());
    }
    /// Silences the client, as another program or a key of the desktop may.
    void cancelAll()
    {
        const std::lock_guard lock(mutex);
        cancel();
    }

    /// While true, the message that is being said does not end.
    std::atomic<bool> staysSpeaking = false;
    /// If false, it takes connections and commands but answers nothing.
    std::atomic<bool> answers = true;
    /// Answers with this code are held back.
    std::atomic<int> heldBackCode = 0;
    /// Commands that came in, answered or not.
    std::atomic<std::size_t> commandsHeard = 0;

    /// Every message that began, in order, over all starts.
    [[nodiscard]] std::vector<Said> said() const
    {
        const std::lock_guard lock(mutex);
        return record;
    }
    /// The texts of those that were said to the end.
    [[nodiscard]] std::vector<std::string> finishedTexts() const
    {
        std::vector<std::string> texts;
        for (const auto& one : said())
            if (one.isFinished)
                texts.push_back(one.text);
        return texts;
    }

private:
    struct Message {
        std::string number, text;
    };

    void serve(const std::stop_token& end)
    {
        while (!end.stop_requested()) {
            // poll passes over a descriptor of -1.
            pollfd watched[] = {{client < 0 ? listener : -1, POLLIN, 0}, {client, POLLIN, 0}};
            poll(watched, std::size(watched), 1);
            const std::lock_guard lock(mutex);
            if (watched[0].revents != 0)
                client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            if (watched[1].revents != 0 && !readFromClient())
                dropClient();
            speakOn();
        }
    }
    bool readFromClient()
    {
        char bytes[4096];
        const auto count = read(client, bytes, sizeof bytes);
        if (count <= 0)
            return false;
        received.append(bytes, static_cast<std::size_t>(count));
        for (auto end = received.find("\r\n"); end != received.npos; end = received.find("\r\n")) {
            takeLine(received.substr(0, end));
            received.erase(0, end + 2);
        }
        return true;
    }
    void takeLine(const std::string& line)
    {
        if (isInText && line != ".") {
            text += (text.empty() ? "" : "\r\n") + line.substr(line.starts_with("..") ? 1 : 0);
        } else if (isInText) {
            isInText = false;
            queue.push_back({std::to_string(++numbersGiven), std::exchange(text, {})});
            send("225-" + queue.back().number + "\r\n225 OK MESSAGE QUEUED\r\n");
        } else {
            ++commandsHeard;
            isInText = line == "SPEAK";
            send(isInText ? "230 OK RECEIVING DATA\r\n" : "200 OK SET\r\n");
            if (line == "CANCEL SELF")
                cancel();
        }
    }
    void send(const std::string& reply) const
    {
        if (answers && !reply.starts_with(std::to_string(heldBackCode)))
            ::send(client, reply.data(), reply.size(), MSG_NOSIGNAL);
    }
    void sendEvent(const Message& message, const std::string& code) const
    {
        send(code + "-" + message.number + "\r\n" + code + "-1\r\n" + code + " EVENT\r\n");
    }
    void speakOn()
    {
        while (!queue.empty()) {
            if (!isSpeaking) {
                isSpeaking = true;
                record.push_back({queue.front().text});
                // Begin, and then two events (index mark, resumed) that are no end.
                for (const auto* code : {"701", "700", "705"})
                    sendEvent(queue.front(), code);
            }
            if (staysSpeaking)
                return;
            isSpeaking = false;
            record.back().isFinished = true;
            sendEvent(queue.front(), "702");
            queue.pop_front();
        }
    }
    void cancel()
    {
        if (std::exchange(isSpeaking, false))
            record.back().wasCancelled = true;
        for (const auto& message : std::exchange(queue, {}))
            sendEvent(message, "703");
    }
    void dropClient()
    {
        if (client >= 0)
            close(std::exchange(client, -1));
        isSpeaking = isInText = false;
        queue.clear();
        received.clear();
    }

    ZNTTemporaryFolder folder;
    const std::string path = folder.path("speech.sock");
    mutable std::mutex mutex;
    std::jthread thread;
    int listener = -1, client = -1;
    bool isSpeaking = false, isInText = false;
    std::size_t numbersGiven = 0;
    std::string received, text;
    std::deque<Message> queue;
    std::vector<Said> record;
};
