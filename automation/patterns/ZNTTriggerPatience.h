#pragma once

#include <limits>

class RunLoop;

/// Seconds of processor time that ICU may take for one text. A backtracking matcher can need longer than any
/// player waits, for a pattern that looks harmless.
namespace znt::patience
{

inline constexpr double allowance = 0.05; ///< for one pattern
inline constexpr double leastAllowance = 0.001;
/// For all patterns together that exceed theirs. When it is used up, each of the others gets the least.
inline constexpr double allowanceOfAll = 0.2;

} // namespace znt::patience

/// Counts how often one trigger's pattern was too slow. After three slow chunks in a row it rests: for half a
/// minute it gets the least time only, so that it cannot hold up chunk after chunk. Chunks for which it is
/// fast enough are still answered. Then everything is as before.
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
