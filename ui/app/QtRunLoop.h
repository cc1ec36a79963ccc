#pragma once

#include "RunLoop.h"

#include <memory>

class QObject;

/// The run loop of the window, on Qt's own: whatever turns Qt's loop turns this one, a nested loop included.
///
/// Made on the thread of the application object, after it, and destroyed there. A timer or a watch may
/// outlive it, and then does nothing.
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
