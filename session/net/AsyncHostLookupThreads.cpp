#include "AsyncHostLookupThreads.h"

#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

struct AsyncHostLookupThreads::State {
    std::mutex guard; // of all below
    std::deque<std::weak_ptr<Job>> waiting;
    std::size_t running = 0;

    /// Null if no job waits; the thread that asks must then end. Count it out under the same lock as the
    /// empty check; otherwise a job added in between gets no thread.
    std::shared_ptr<Job> nextJobOrEnd()
    {
        const std::lock_guard hold(guard);
        while (!waiting.empty()) {
            auto job = waiting.front().lock();
            waiting.pop_front();
            if (job)
                return job;
        }
        --running;
        return nullptr;
    }
};

AsyncHostLookupThreads::AsyncHostLookupThreads() : state(std::make_shared<State>()) {}

AsyncHostLookupThreads& AsyncHostLookupThreads::ofThisProcess()
{
    static AsyncHostLookupThreads threads;
    return threads;
}

ZNTResult<void> AsyncHostLookupThreads::add(const std::shared_ptr<Job>& job)
{
    const std::lock_guard hold(state->guard);
    std::erase_if(state->waiting, [](const auto& each) { return each.expired(); });
    state->waiting.push_back(job);
    if (state->running == mostThreads)
        return {};
    try {
        std::thread([state = state] {
            while (const auto next = state->nextJobOrEnd())
                next->run();
        }).detach();
        ++state->running;
    } catch (const std::system_error& refused) {
        if (state->running == 0) {
            state->waiting.pop_back();
            return posixError(refused.code().value());
        }
    }
    return {};
}

std::size_t AsyncHostLookupThreads::running() const
{
    const std::lock_guard hold(state->guard);
    return state->running;
}
