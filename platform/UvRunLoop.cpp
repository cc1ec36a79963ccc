#include "UvRunLoop.h"

#include "ZNTDescriptors.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>
#include <uv.h>
#include <vector>

namespace
{

constexpr double longestTimer = 1e12; // milliseconds; some thirty years

struct TimerHandle;

/// The timers that fell due in this turn.
///
/// libuv fires timers before it looks at descriptors. If the loop was held up, a timer that waits for silence
/// would then fire although bytes are there. So a timer that falls due is only noted, and its task runs later
/// in the same turn, after the descriptors.
struct DueTimers {
    uv_idle_t noWait{};            ///< while it runs, libuv does not wait for descriptors
    uv_check_t afterDescriptors{}; ///< libuv calls it when the ready descriptors have been handled
    std::vector<TimerHandle*> noted;

    void init(uv_loop_t& loop)
    {
        uv_idle_init(&loop, &noWait);
        uv_check_init(&loop, &afterDescriptors);
        afterDescriptors.data = this;
    }
    void note(TimerHandle* timer)
    {
        noted.push_back(timer);
        uv_idle_start(&noWait, [](uv_idle_t*) {});
        uv_check_start(&afterDescriptors, &DueTimers::runTasks);
    }
    static void runTasks(uv_check_t* handle);
};

/// libuv ends the program if it lacks these: two pipes, an epoll and an eventfd.
constexpr int descriptorsOfALoop = 6;

} // namespace

/// Shared by the loop and by everything that was scheduled on it. A timer or a watch may be destroyed after
/// the loop; then it finds this marked as closed.
struct UvRunLoop::Loop {
    uv_loop_t loop{};
    uv_async_t wakeUp{};
    DueTimers dueTimers;
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

/// A libuv handle must stay in memory until its close callback has run. So each is a heap object: its owner
/// calls `release`, and the object deletes itself after the loop has closed it.
struct TimerHandle {
    uv_timer_t timer{};
    RunLoop::Task task;
    DueTimers& dueTimers;

    static void onFired(uv_timer_t* handle)
    {
        auto* self = static_cast<TimerHandle*>(handle->data);
        self->dueTimers.note(self);
    }
    static void onClosed(uv_handle_t* handle) { delete static_cast<TimerHandle*>(handle->data); }
};

/// A timer that was cancelled meanwhile is closing. libuv deletes it only at the end of the turn.
void DueTimers::runTasks(uv_check_t* handle)
{
    auto* self = static_cast<DueTimers*>(handle->data);
    uv_idle_stop(&self->noWait);
    uv_check_stop(handle);
    for (auto* each : std::exchange(self->noted, {})) {
        if (uv_is_closing(reinterpret_cast<uv_handle_t*>(&each->timer)))
            continue;
        const auto survivesCancelling = each->task;
        survivesCancelling();
    }
}

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

ZNTResult<std::unique_ptr<UvRunLoop>> UvRunLoop::open()
{
    if (const auto tried = znt::tryDescriptors(descriptorsOfALoop); !tried)
        return tried.error();
    auto loop = std::make_shared<Loop>();
    if (const int error = uv_loop_init(&loop->loop); error != 0)
        return posixError(-error);
    std::unique_ptr<UvRunLoop> runLoop(new UvRunLoop(loop)); // from here on it closes the loop
    if (const int error = uv_async_init(&loop->loop, &loop->wakeUp, &Loop::onWakeUp); error != 0)
        return posixError(-error);
    loop->wakeUp.data = loop.get();
    loop->dueTimers.init(loop->loop);
    return runLoop;
}

UvRunLoop::UvRunLoop(std::shared_ptr<Loop> loop) : loop(std::move(loop)) {}

UvRunLoop::~UvRunLoop()
{
    loop->isClosed = true; // first, because a task that is destroyed below may hold other timers
    uv_walk(&loop->loop, &closeOne, nullptr);
    while (uv_run(&loop->loop, UV_RUN_DEFAULT) != 0) // a pending stop makes it return at once
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
    auto* handle = new TimerHandle{{}, std::move(task), loop->dueTimers};
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
    if (uv_poll_init(&loop->loop, &handle->poll, descriptor) != 0) { // EPERM for a regular file
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
