#pragma once

#include <limits>

class RunLoop;

/// How much time one trigger's pattern is still worth. One that is too slow for three chunks in a row rests:
/// for half a minute it is tried with the least time only, so that it cannot hold up chunk after chunk, and a
/// chunk that it is fast enough for is answered all the same. Then everything is as before.
class ZNTTriggerPatience
{
public:
    /// The rest is measured on the clock of `runLoop`, which outlives this.
    explicit ZNTTriggerPatience(const RunLoop& runLoop) : runLoop(&runLoop) {}

    [[nodiscard]] bool isResting() const;
    void noteSuccess() { failuresRunning = 0; }
    /// True when a rest begins with this failure.
    bool noteFailure();

    static constexpr int mostFailuresRunning = 3;
    static constexpr double lengthOfRest = 30; ///< seconds

private:
    const RunLoop* runLoop;
    int failuresRunning = 0;
    double restEnd = -std::numeric_limits<double>::infinity();
};
