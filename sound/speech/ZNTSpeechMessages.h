#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// A text on its way to the speech service.
struct ZNTSpeechMessage {
    std::string utf8;
    int timesLost = 0;
};

/// What the speech service has queued and not ended, by its numbers, which grow. Not thread-safe.
///
/// A message whose end never comes counts as said after some time. No voice is that slow, and messages of
/// other programs may come first; but a service that loses an end must not silence the game for ever.
class ZNTSpeechMessages
{
public:
    using Time = std::chrono::steady_clock::time_point;

    void add(std::size_t number, ZNTSpeechMessage message, Time now);
    /// The time of a message that had to wait for others counts afresh. Other numbers change nothing.
    void noteBegin(std::size_t number, Time now);
    /// False where there is no such message.
    bool noteEnd(std::size_t number) { return messages.erase(number) > 0; }
    void forgetOverdue(Time now);
    /// In order.
    std::vector<ZNTSpeechMessage> takeAll();
    void clear() { messages.clear(); }
    [[nodiscard]] bool isEmpty() const { return messages.empty(); }

private:
    struct Entry {
        ZNTSpeechMessage message;
        Time latestEnd;
    };
    std::map<std::size_t, Entry> messages;
};
