#pragma once

#include <functional>
#include <memory>

/// Which directions of a descriptor a watch cares about, or which became ready.
enum class RunLoopInterest : unsigned { None = 0, Readable = 1, Writable = 2, ReadableAndWritable = 3 };

constexpr RunLoopInterest operator|(RunLoopInterest a, RunLoopInterest b)
{
    return static_cast<RunLoopInterest>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr bool includes(RunLoopInterest all, RunLoopInterest part)
{
    return (static_cast<unsigned>(all) & static_cast<unsigned>(part)) == static_cast<unsigned>(part);
}

/// A scheduled timer. Destroying it cancels it, also from inside its own task.
class RunLoopTimer
{
public:
    virtual ~RunLoopTimer() = default;
    RunLoopTimer() = default;
    RunLoopTimer(const RunLoopTimer&) = delete;
    RunLoopTimer& operator=(const RunLoopTimer&) = delete;
};

/// A watched descriptor. Destroying it ends the watch, also from inside its own handler; the descriptor
/// stays open and is the caller's to close afterwards.
class RunLoopWatch
{
public:
    virtual ~RunLoopWatch() = default;
    RunLoopWatch() = default;
    RunLoopWatch(const RunLoopWatch&) = delete;
    RunLoopWatch& operator=(const RunLoopWatch&) = delete;
    /// Takes effect before the loop next waits.
    virtual void setInterest(RunLoopInterest interest) = 0;
};

enum class RunLoopRepeat { Once, Forever };

/// The one event loop that a program runs on. Everything but `post` belongs to the loop's own thread, and
/// every task and handler runs there, one at a time, never from inside the call that scheduled it.
///
/// A turn looks at the descriptors before it fires timers. So a loop that was held up, and finds a timer due
/// and a descriptor ready, has the descriptor's handler run first, and that handler may cancel the timer.
///
/// Times are seconds. An interval of 0 or less is the smallest one there is (a millisecond or less); one
/// that is not finite never fires. A repeating timer that fell behind fires once, not once per missed turn.
class RunLoop
{
public:
    using Task = std::function<void()>;
    using ReadyHandler = std::function<void(RunLoopInterest ready)>;

    virtual ~RunLoop() = default;

    /// Runs `task` on a later turn of the loop, after everything posted before it. Any thread may call.
    virtual void post(Task task) = 0;

    /// The caller keeps the timer as long as it is to run. A one-shot timer may be kept after it has fired.
    [[nodiscard]] virtual std::unique_ptr<RunLoopTimer> startTimer(double seconds, RunLoopRepeat repeat,
                                                                   Task task) = 0;

    /// Level-triggered: `handler` is called in each turn in which a direction of interest is ready. An error
    /// or hang-up counts as ready in every direction of interest. Sockets, pipes and terminals can be
    /// watched. Null for a regular file, and if the system has no room for the watch.
    [[nodiscard]] virtual std::unique_ptr<RunLoopWatch>
    watchDescriptor(int descriptor, RunLoopInterest interest, ReadyHandler handler) = 0;

    /// Seconds on a clock that only moves forward; its zero means nothing.
    [[nodiscard]] virtual double now() const = 0;
};
