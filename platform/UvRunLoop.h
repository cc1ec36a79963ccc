#pragma once

#include "RunLoop.h"
#include "ZNTResult.h"

/// The run loop of the programs without a window, on libuv.
class UvRunLoop final : public RunLoop
{
public:
    /// Fails if the system lacks what a loop needs; six descriptors must be free.
    [[nodiscard]] static ZNTResult<std::unique_ptr<UvRunLoop>> open();
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
    explicit UvRunLoop(std::shared_ptr<Loop> loop);

    std::shared_ptr<Loop> loop;
};
