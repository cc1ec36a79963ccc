#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

/// Process-wide announcements by name ("MACRO_ADDED"), delivered at once and in the order of registration.
/// Belongs to the run loop's thread. Observers may come and go while a notification is being delivered.
class ZNTNotificationCenter
{
public:
    /// Destroying it ends the observation. It must not outlive the center.
    class Observation
    {
    public:
        Observation(ZNTNotificationCenter& center, std::string name, std::size_t key)
            : center(center),
              name(std::move(name)),
              key(key)
        {
        }
        ~Observation();
        Observation(const Observation&) = delete;
        Observation& operator=(const Observation&) = delete;

    private:
        ZNTNotificationCenter& center;
        std::string name;
        std::size_t key;
    };

    /// `sender` is the object that posted, to be compared and not used; it may be null.
    using Handler = std::function<void(std::string_view name, const void* sender)>;

    [[nodiscard]] std::unique_ptr<Observation> observe(std::string name, Handler handler);
    void post(std::string_view name, const void* sender);

private:
    std::map<std::string, std::map<std::size_t, Handler>, std::less<>> handlers;
    std::size_t lastKey = 0;
};
