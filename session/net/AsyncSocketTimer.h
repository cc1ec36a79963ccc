#pragma once

#include "RunLoop.h"

#include <memory>

/// A one-shot timer that can move to another loop with the time it has left.
class AsyncSocketTimer
{
public:
    void start(RunLoop& runLoop, double seconds, RunLoop::Task newTask);
    void stop();
    void move(const RunLoop& from, RunLoop& to);

private:
    void schedule(RunLoop& runLoop, double seconds);

    RunLoop::Task task; // empty when stopped
    double due = 0;
    std::unique_ptr<RunLoopTimer> timer;
};
