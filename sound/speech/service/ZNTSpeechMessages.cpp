#include "ZNTSpeechMessages.h"

#include <utility>

namespace
{

using namespace std::chrono_literals;

ZNTSpeechMessages::Time latestEnd(const ZNTSpeechMessage& message, ZNTSpeechMessages::Time now)
{
    return now + 30s + message.utf8.size() * 400ms;
}

} // namespace

void ZNTSpeechMessages::add(std::size_t number, ZNTSpeechMessage message, Time now)
{
    const auto end = latestEnd(message, now);
    messages[number] = {std::move(message), end};
}

void ZNTSpeechMessages::noteBegin(std::size_t number, Time now)
{
    if (const auto found = messages.find(number); found != messages.end())
        found->second.latestEnd = latestEnd(found->second.message, now);
}

void ZNTSpeechMessages::forgetOverdue(Time now)
{
    std::erase_if(messages, [now](const auto& entry) { return entry.second.latestEnd < now; });
}

std::vector<ZNTSpeechMessage> ZNTSpeechMessages::takeAll()
{
    std::vector<ZNTSpeechMessage> all;
    for (auto& [number, entry] : std::exchange(messages, {}))
        all.push_back(std::move(entry.message));
    return all;
}
