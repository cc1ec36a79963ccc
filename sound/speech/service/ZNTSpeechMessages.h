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

/// The messages that the speech service has queued and not ended, by their growing numbers. Not thread-safe.
///
/// A message whose end never comes counts as said after some time; otherwise a service that loses one end
/// would silence the game for ever. The time is longer than any voice needs.
class ZNTSpeechMessages
{
public:
    using Time = std::chrono::steady_clock::time_point;

    void add(std::size_t number, ZNTSpeechMessage message, Time now);
    /// Restarts the time of a message, because it may have waited for others. Unknown numbers change nothing.
    void noteBegin(std::size_t number, Time now);
    /// False if there is no such message.
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
