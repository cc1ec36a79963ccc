#include "AsyncSocketTimer.h"

#include <utility>

void AsyncSocketTimer::start(RunLoop& runLoop, double seconds, RunLoop::Task newTask)
{
    task = std::move(newTask);
    schedule(runLoop, seconds);
}

void AsyncSocketTimer::stop()
{
    timer.reset();
    task = nullptr;
}

void AsyncSocketTimer::move(const RunLoop& from, RunLoop& to)
{
    if (task)
        schedule(to, due - from.now());
}

void AsyncSocketTimer::schedule(RunLoop& runLoop, double seconds)
{
    due = runLoop.now() + seconds;
    timer = runLoop.startTimer(seconds, RunLoopRepeat::Once, [this] {
        const auto call = std::exchange(task, nullptr); // the call may start the timer anew, or destroy it
        call();
    });
}
