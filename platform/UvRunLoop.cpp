#include "UvRunLoop.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <mutex>
#include <utility>
#include <uv.h>
#include <vector>

namespace
{

constexpr double longestTimer = 1e12; // milliseconds; some thirty years
}

/// Shared by the loop and by whatever was scheduled on it, so that a timer or a watch that is destroyed after
/// the loop finds it closed instead of gone.
struct UvRunLoop::Loop {
    uv_loop_t loop{};
    uv_async_t wakeUp{};
    bool isClosed = false;

    std::mutex postedGuard;
    std::vector<Task> posted;

    static void onWakeUp(uv_async_t* handle) { static_cast<Loop*>(handle->data)->runPosted(); }

    void runPosted()
    {
        std::vector<Task> due;
        {
            const std::lock_guard hold(postedGuard);
            due.swap(posted);
        }
        for (const auto& task : due)
            task();
    }
};

namespace
{

/// A libuv handle must stay in memory until its close callback has run: each is a heap object that its
/// owner lets go of with `release`, and that frees itself when the loop has closed it.
struct TimerHandle {
    uv_timer_t timer{};
    RunLoop::Task task;

    static void onFired(uv_timer_t* handle)
    {
        const auto task = static_cast<TimerHandle*>(handle->data)->task; // survives the owner's cancelling
        task();
    }
    static void onClosed(uv_handle_t* handle) { delete static_cast<TimerHandle*>(handle->data); }
};

struct WatchHandle {
    uv_poll_t poll{};
    RunLoop::ReadyHandler handler;
    RunLoopInterest interest = RunLoopInterest::None;

    static void onReady(uv_poll_t* handle, int status, int events)
    {
        auto* self = static_cast<WatchHandle*>(handle->data);
        auto ready = self->interest;
        if (status < 0) {
            self->start(); // libuv ends a poll that met an error; a watch goes on
        } else {
            ready = RunLoopInterest::None;
            if (events & UV_READABLE)
                ready = ready | RunLoopInterest::Readable;
            if (events & UV_WRITABLE)
                ready = ready | RunLoopInterest::Writable;
        }
        const auto handler = self->handler;
        handler(ready);
    }
    static void onClosed(uv_handle_t* handle) { delete static_cast<WatchHandle*>(handle->data); }

    void start()
    {
        int events = 0;
        if (includes(interest, RunLoopInterest::Readable))
            events |= UV_READABLE;
        if (includes(interest, RunLoopInterest::Writable))
            events |= UV_WRITABLE;
        if (events == 0)
            uv_poll_stop(&poll);
        else
            uv_poll_start(&poll, events, &WatchHandle::onReady);
    }
};

template <typename LoopState>
class Timer final : public RunLoopTimer
{
public:
    Timer(std::shared_ptr<LoopState> state, TimerHandle* handle) : state(std::move(state)), handle(handle) {}
    ~Timer() override
    {
        if (!state->isClosed)
            uv_close(reinterpret_cast<uv_handle_t*>(&handle->timer), &TimerHandle::onClosed);
    }

private:
    std::shared_ptr<LoopState> state;
    TimerHandle* handle;
};

template <typename LoopState>
class Watch final : public RunLoopWatch
{
public:
    Watch(std::shared_ptr<LoopState> state, WatchHandle* handle) : state(std::move(state)), handle(handle) {}
    ~Watch() override
    {
        if (!state->isClosed)
            uv_close(reinterpret_cast<uv_handle_t*>(&handle->poll), &WatchHandle::onClosed);
    }
    void setInterest(RunLoopInterest interest) override
    {
        if (state->isClosed || interest == handle->interest)
            return;
        handle->interest = interest;
        handle->start();
    }

private:
    std::shared_ptr<LoopState> state;
    WatchHandle* handle;
};

void closeOne(uv_handle_t* handle, void*)
{
    if (uv_is_closing(handle))
        return;
    switch (handle->type) {
    case UV_TIMER:
        uv_close(handle, &TimerHandle::onClosed);
        break;
    case UV_POLL:
        uv_close(handle, &WatchHandle::onClosed);
        break;
    default:
        uv_close(handle, nullptr);
        break;
    }
}

} // namespace

UvRunLoop::UvRunLoop() : loop(std::make_shared<Loop>())
{
    uv_loop_init(&loop->loop);
    uv_async_init(&loop->loop, &loop->wakeUp, &Loop::onWakeUp);
    loop->wakeUp.data = loop.get();
}

UvRunLoop::~UvRunLoop()
{
    loop->isClosed = true; // first: a task that is let go of below may hold other timers
    uv_walk(&loop->loop, &closeOne, nullptr);
    while (uv_run(&loop->loop, UV_RUN_DEFAULT) != 0) // a stop that nobody heeded ends it at once
        continue;
    uv_loop_close(&loop->loop);
    loop->posted.clear();
}

void UvRunLoop::run() { uv_run(&loop->loop, UV_RUN_DEFAULT); }

void UvRunLoop::stop() { uv_stop(&loop->loop); }

void UvRunLoop::post(Task task)
{
    {
        const std::lock_guard hold(loop->postedGuard);
        loop->posted.push_back(std::move(task));
    }
    uv_async_send(&loop->wakeUp);
}

std::unique_ptr<RunLoopTimer> UvRunLoop::startTimer(double seconds, RunLoopRepeat repeat, Task task)
{
    auto* handle = new TimerHandle;
    handle->task = std::move(task);
    uv_timer_init(&loop->loop, &handle->timer);
    handle->timer.data = handle;
    if (std::isfinite(seconds)) {
        const double asked = std::ceil(std::clamp(seconds * 1000, 0.0, longestTimer));
        const auto milliseconds = static_cast<std::uint64_t>(asked);
        const auto interval = std::max<std::uint64_t>(milliseconds, 1); // 0 would mean "once" to libuv
        uv_update_time(&loop->loop);
        uv_timer_start(&handle->timer, &TimerHandle::onFired,
                       repeat == RunLoopRepeat::Forever ? interval : milliseconds,
                       repeat == RunLoopRepeat::Forever ? interval : 0);
    }
    return std::make_unique<Timer<Loop>>(loop, handle);
}

std::unique_ptr<RunLoopWatch> UvRunLoop::watchDescriptor(int descriptor, RunLoopInterest interest,
                                                         ReadyHandler handler)
{
    auto* handle = new WatchHandle;
    if (uv_poll_init(&loop->loop, &handle->poll, descriptor) != 0) { // a regular file: EPERM
        delete handle;
        return nullptr;
    }
    handle->poll.data = handle;
    handle->handler = std::move(handler);
    handle->interest = interest;
    handle->start();
    return std::make_unique<Watch<Loop>>(loop, handle);
}

double UvRunLoop::now() const { return static_cast<double>(uv_hrtime()) / 1e9; }
