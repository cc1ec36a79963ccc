#pragma once

#include "RunLoop.h"

/// The run loop of the programs without a window, on libuv.
class UvRunLoop final : public RunLoop
{
public:
    UvRunLoop();
    ~UvRunLoop() override;

    /// Runs until `stop`. May be called again after it returned.
    void run();
    /// Ends `run` after the current turn. The loop's thread only; another thread posts a task that stops.
    void stop();

    void post(Task task) override;
    [[nodiscard]] std::unique_ptr<RunLoopTimer> startTimer(double seconds, RunLoopRepeat repeat,
                                                           Task task) override;
    [[nodiscard]] std::unique_ptr<RunLoopWatch> watchDescriptor(int descriptor, RunLoopInterest interest,
                                                                ReadyHandler handler) override;
    [[nodiscard]] double now() const override;

private:
    struct Loop;
    std::shared_ptr<Loop> loop;
};
