#pragma once

#include <chrono>

/// The time of day, and pauses that hold up the whole thread. Tests own both.
class ZNTClock
{
public:
    virtual ~ZNTClock() = default;
    [[nodiscard]] virtual std::chrono::system_clock::time_point timeOfDay() const = 0;
    virtual void sleepFor(double seconds) = 0;
};

/// The machine's own clock.
class ZNTSystemClock final : public ZNTClock
{
public:
    [[nodiscard]] std::chrono::system_clock::time_point timeOfDay() const override;
    void sleepFor(double seconds) override;
};
