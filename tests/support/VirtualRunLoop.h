#pragma once

#include "RunLoop.h"
#include "ZNTClock.h"

#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <vector>

/// A run loop, and a clock, whose time stands still until a test moves it. Nothing runs outside `advance`,
/// `runPosted` and `runUntil`. Descriptors are really polled, without waiting, on each turn.
class VirtualRunLoop final : public RunLoop, public ZNTClock
{
public:
    VirtualRunLoop();
    ~VirtualRunLoop() override;

    /// Moves the time on by `seconds`, firing what falls due at its own moment and in order; what was posted
    /// runs before the time moves. Throws if a descriptor stays ready after many calls of its handler.
    /// After `mostTurns` at a moment, descriptors that are still ready wait.
    void advance(double seconds, int mostTurns = std::numeric_limits<int>::max());
    /// Runs what was posted, and what that posts, until nothing is left. Time stands still.
    void runPosted();
    /// For a test of real descriptors or threads: turns the loop in real time, its own time standing still,
    /// until `condition` holds. False after `seconds` of real time.
    bool runUntil(const std::function<bool()>& condition, double seconds = 20);
    /// So many of those turns.
    void turn(int times)
    {
        runUntil([&times] { return times-- <= 0; });
    }

    /// Timers that will still fire.
    [[nodiscard]] std::size_t pendingTimers() const;

    void post(Task task) override;
    [[nodiscard]] std::unique_ptr<RunLoopTimer> startTimer(double seconds, RunLoopRepeat repeat,
                                                           Task task) override;
    [[nodiscard]] std::unique_ptr<RunLoopWatch> watchDescriptor(int descriptor, RunLoopInterest interest,
                                                                ReadyHandler handler) override;
    [[nodiscard]] double now() const override { return time; }

    [[nodiscard]] std::chrono::system_clock::time_point timeOfDay() const override;
    /// Only notes the pause: nothing fires during it and the loop's time does not move.
    void sleepFor(double seconds) override
    {
        slept.push_back(seconds);
        if (whenSlept)
            whenSlept();
    }

    /// What `timeOfDay` answers when `now` is 0.
    std::chrono::system_clock::time_point startOfTime{};
    /// Every pause asked for, in seconds.
    std::vector<double> slept;
    /// Called at each.
    std::function<void()> whenSlept;

private:
    struct State;
    template <typename Base>
    class Entry;
    bool fireDueTimer(double until);
    bool pollWatches(int milliseconds);

    std::shared_ptr<State> state;
    double time = 0;
};
