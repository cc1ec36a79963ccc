#pragma once

#include "RunLoop.h"

#include <memory>

class QObject;

/// The run loop of the window, on Qt's own. It turns whenever Qt's loop turns, in a nested loop, too.
///
/// It is made on the thread of the application object, after it, and destroyed there. A timer or a watch that
/// outlives it does nothing.
class QtRunLoop final : public RunLoop
{
public:
    QtRunLoop();
    ~QtRunLoop() override;

    void post(Task task) override;
    [[nodiscard]] std::unique_ptr<RunLoopTimer> startTimer(double seconds, RunLoopRepeat repeat,
                                                           Task task) override;
    [[nodiscard]] std::unique_ptr<RunLoopWatch> watchDescriptor(int descriptor, RunLoopInterest interest,
                                                                ReadyHandler handler) override;
    [[nodiscard]] double now() const override;

private:
    std::unique_ptr<QObject> context; // receives what is posted, and is the parent of what is scheduled
};
