#include "VirtualRunLoop.h"

#include <algorithm>
#include <cmath>
#include <poll.h>
#include <stdexcept>
#include <sys/stat.h>
#include <thread>
#include <utility>

struct VirtualRunLoop::State {
    struct ScheduledTimer {
        double due;
        double interval; ///< infinite if it fires once
        Task task;
    };
    struct Watched {
        int descriptor;
        RunLoopInterest interest;
        ReadyHandler handler;
    };

    std::mutex guard; // of `posted` only
    std::deque<Task> posted;
    std::map<std::uint64_t, ScheduledTimer> timers; // by key, that is in order of creation
    std::map<std::uint64_t, Watched> watches;
    std::uint64_t lastKey = 0;
};

/// A timer or a watch: it takes its entry out of the loop's state.
template <typename Base>
class VirtualRunLoop::Entry final : public Base
{
public:
    Entry(std::shared_ptr<State> state, std::uint64_t key) : state(std::move(state)), key(key) {}
    ~Entry() override
    {
        state->timers.erase(key);
        state->watches.erase(key);
    }
    void setInterest(RunLoopInterest interest)
    {
        if (const auto found = state->watches.find(key); found != state->watches.end())
            found->second.interest = interest;
    }

private:
    std::shared_ptr<State> state;
    std::uint64_t key;
};

VirtualRunLoop::VirtualRunLoop() : state(std::make_shared<State>()) {}

VirtualRunLoop::~VirtualRunLoop()
{
    // The tasks go now, though timers may outlive the loop: a task may hold the last of what holds this
    // state.
    const auto posted = std::exchange(state->posted, {});
    const auto timers = std::exchange(state->timers, {});
    const auto watches = std::exchange(state->watches, {});
}

void VirtualRunLoop::advance(double seconds, int mostTurns)
{
    constexpr int turnsWhenStuck = 100'000; // at one moment
    const double until = time + seconds;
    do {
        runPosted();
        for (int turns = 0; turns < mostTurns && pollWatches(0); ++turns) {
            if (turns == turnsWhenStuck)
                throw std::runtime_error("a watched descriptor stays ready whatever its handler does");
            runPosted();
        }
    } while (fireDueTimer(until));
    time = until;
    runPosted();
}

void VirtualRunLoop::runPosted()
{
    for (;;) {
        Task task;
        {
            const std::lock_guard hold(state->guard);
            if (state->posted.empty())
                return;
            task = std::move(state->posted.front());
            state->posted.pop_front();
        }
        task();
    }
}

bool VirtualRunLoop::runUntil(const std::function<bool()>& condition, double seconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    for (;;) {
        runPosted();
        if (condition())
            return true;
        if (std::chrono::steady_clock::now() > end)
            return false;
        if (!pollWatches(2) && state->watches.empty())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        fireDueTimer(time);
    }
}

std::size_t VirtualRunLoop::pendingTimers() const
{
    return static_cast<std::size_t>(std::ranges::count_if(
        state->timers, [](const auto& timer) { return std::isfinite(timer.second.due); }));
}

void VirtualRunLoop::post(Task task)
{
    const std::lock_guard hold(state->guard);
    state->posted.push_back(std::move(task));
}

std::unique_ptr<RunLoopTimer> VirtualRunLoop::startTimer(double seconds, RunLoopRepeat repeat, Task task)
{
    const auto key = ++state->lastKey;
    constexpr double smallestInterval = 0.001, never = std::numeric_limits<double>::infinity();
    const bool repeats = repeat == RunLoopRepeat::Forever;
    const double wait = std::isfinite(seconds) ? std::max(seconds, repeats ? smallestInterval : 0) : never;
    state->timers.emplace(key, State::ScheduledTimer{time + wait, repeats ? wait : never, std::move(task)});
    return std::make_unique<Entry<RunLoopTimer>>(state, key);
}

std::unique_ptr<RunLoopWatch> VirtualRunLoop::watchDescriptor(int descriptor, RunLoopInterest interest,
                                                              ReadyHandler handler)
{
    struct stat about {
    };
    if (::fstat(descriptor, &about) != 0 || S_ISREG(about.st_mode))
        return nullptr; // as epoll has it
    const auto key = ++state->lastKey;
    state->watches.emplace(key, State::Watched{descriptor, interest, std::move(handler)});
    return std::make_unique<Entry<RunLoopWatch>>(state, key);
}

std::chrono::system_clock::time_point VirtualRunLoop::timeOfDay() const
{
    return startOfTime + std::chrono::duration_cast<std::chrono::system_clock::duration>(
                             std::chrono::duration<double>(time));
}

bool VirtualRunLoop::fireDueTimer(double until)
{
    const auto next =
        std::ranges::min_element(state->timers, {}, [](const auto& timer) { return timer.second.due; });
    if (next == state->timers.end() || next->second.due > until + 1e-9)
        return false;
    time = std::max(time, next->second.due);
    const auto task = next->second.task;
    next->second.due = time + next->second.interval;
    task();
    return true;
}

bool VirtualRunLoop::pollWatches(int milliseconds)
{
    std::vector<pollfd> polled;
    std::vector<std::uint64_t> keys;
    for (const auto& [key, watched] : state->watches) {
        if (watched.interest == RunLoopInterest::None)
            continue;
        short events = 0;
        if (includes(watched.interest, RunLoopInterest::Readable))
            events |= POLLIN;
        if (includes(watched.interest, RunLoopInterest::Writable))
            events |= POLLOUT;
        polled.push_back({watched.descriptor, events, 0});
        keys.push_back(key);
    }
    if (polled.empty() || ::poll(polled.data(), polled.size(), milliseconds) <= 0)
        return false;
    for (std::size_t at = 0; at < polled.size(); ++at) {
        const auto found = state->watches.find(keys[at]);
        if (polled[at].revents == 0 || found == state->watches.end())
            continue;
        auto ready = found->second.interest;
        if (!(polled[at].revents & (POLLERR | POLLHUP | POLLNVAL))) {
            ready = RunLoopInterest::None;
            if (polled[at].revents & POLLIN)
                ready = ready | RunLoopInterest::Readable;
            if (polled[at].revents & POLLOUT)
                ready = ready | RunLoopInterest::Writable;
        }
        const auto handler = found->second.handler;
        handler(ready);
    }
    return true;
}
