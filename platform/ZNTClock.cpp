#include "ZNTClock.h"

#include <thread>

std::chrono::system_clock::time_point ZNTSystemClock::timeOfDay() const
{
    return std::chrono::system_clock::now();
}

void ZNTSystemClock::sleepFor(double seconds)
{
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}
