#pragma once

#include "ZNTTemporaryFolder.h"

#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A speech service without sound: it answers SSIP (the Speech Synthesis Interface Protocol) on a Unix
/// socket, "says" one message after the other for as long as the test wants, and remembers. One client at a
/// time.
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
    ~ZNTRecordingSpeechService() { kill(); }

    void start();
    /// Ends like a killed service: the connection breaks, and the message that is being said is never
    /// finished.
    void kill();
    /// Silences the client, as another program or a key of the desktop may.
    void cancelAll();

    /// How long every message takes that begins from now on.
    std::atomic<std::chrono::milliseconds> speakingTime{};
    /// If false, it takes connections and commands but answers nothing.
    std::atomic<bool> answers = true;
    /// Commands that came in, answered or not.
    std::atomic<std::size_t> commandsHeard = 0;

    /// Every message that began, in order, over all starts.
    [[nodiscard]] std::vector<Said> said() const;
    /// The texts of those that were said to the end.
    [[nodiscard]] std::vector<std::string> finishedTexts() const;
    /// SSIP lines that were neither understood nor text.
    [[nodiscard]] std::vector<std::string> complaints() const;

private:
    struct Message {
        std::string number, text;
    };

    void serve();
    bool readFromClient();
    void obey(const std::string& line);
    void takeText(const std::string& line);
    void send(const std::string& text) const;
    void sendEvent(const Message& message, const std::string& code) const;
    void speakOn();
    void cancel();
    void dropClient();

    ZNTTemporaryFolder folder;
    mutable std::mutex mutex;
    std::thread thread;
    int listener = -1, client = -1;
    int wakeUp[2] = {-1, -1};
    std::atomic<bool> isSpeaking = false; ///< the serving thread reads it without the mutex
    bool isInText = false;
    std::size_t numbersGiven = 0;
    std::string received, text;
    std::deque<Message> queue;
    std::vector<Said> record;
    std::vector<std::string> misunderstood;
};
