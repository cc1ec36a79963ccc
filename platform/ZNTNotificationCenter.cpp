#include "ZNTNotificationCenter.h"

#include <vector>

ZNTNotificationCenter::Observation::~Observation()
{
    auto named = center.handlers.find(name);
    if (named != center.handlers.end())
        named->second.erase(key);
}

std::unique_ptr<ZNTNotificationCenter::Observation> ZNTNotificationCenter::observe(std::string name,
                                                                                   Handler handler)
{
    const auto key = ++lastKey;
    handlers[name].emplace(key, std::move(handler));
    return std::make_unique<Observation>(*this, std::move(name), key);
}

void ZNTNotificationCenter::post(std::string_view name, const void* sender)
{
    const auto named = handlers.find(name);
    if (named == handlers.end())
        return;
    std::vector<std::size_t> keys;
    for (const auto& [key, handler] : named->second)
        keys.push_back(key);
    for (const auto key : keys) {
        const auto found = named->second.find(key);
        if (found == named->second.end())
            continue;
        const auto handler = found->second; // the observer may end its own observation
        handler(name, sender);
    }
}
