#pragma once

#include "ZNTTemporaryFolder.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <deque>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A speech service that speaks no sound: it answers SSIP (the Speech Synthesis Interface Protocol) on a Unix
/// socket, "says" one message after the other for as long as the test wants, and remembers.
class ZNTRecordingSpeechService
{
public:
    using Clock = std::chrono::steady_clock;
    struct Said {
        std::string text;
        Clock::time_point begin, end;
        bool wasCancelled = false;
    };

    /// Sets SPEECHD_ADDRESS for this process. Does not start yet.
    ZNTRecordingSpeechService();
    ~ZNTRecordingSpeechService();

    void start();
    /// As a service that is killed: every connection breaks, what it was saying is never finished.
    void kill();

    /// Silences all its clients, as another program or a key of the desktop may.
    void cancelAll();

    /// What every message takes, for those that begin from now on.
    void setSpeakingTime(std::chrono::milliseconds time);
    /// Takes connections and commands but answers nothing.
    void setAnswers(bool answers);
    /// Every message that began, in order, over all starts.
    [[nodiscard]] std::vector<Said> said() const;
    /// Only the texts of those that were said to the end.
    [[nodiscard]] std::vector<std::string> finishedTexts() const;
    /// How many commands came in, answered or not.
    [[nodiscard]] std::size_t commandsHeard() const;
    /// SSIP lines that were neither understood nor text.
    [[nodiscard]] std::vector<std::string> complaints() const;

private:
    struct Client {
        int socket;
        std::string received, text;
        bool isInText = false;
    };
    struct Message {
        Client* client;
        std::size_t number;
        std::string text;
    };

    void serve();
    bool readFrom(Client& client);
    void obey(Client& client, const std::string& line);
    void takeText(Client& client, const std::string& line);
    void send(Client& client, const std::string& text) const;
    void sendEvent(const Message& message, const std::string& code, const std::string& name) const;
    void speakOn();
    void cancel(Client& client);
    void forget(Client& client);

    ZNTTemporaryFolder folder;
    mutable std::mutex mutex;
    std::thread thread;
    int listener = -1;
    int wakeUp[2] = {-1, -1};
    bool answers = true;
    std::atomic<bool> isSpeaking = false; ///< the serving thread looks at it without the mutex
    std::size_t numbersGiven = 0;
    std::size_t commands = 0;
    std::chrono::milliseconds speakingTime{0};
    std::list<Client> clients;
    std::deque<Message> queue;
    std::vector<Said> record;
    std::vector<std::string> misunderstood;
};
