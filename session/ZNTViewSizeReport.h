#pragma once

#include "RunLoop.h"

#include <functional>
#include <memory>
#include <utility>

/// The output view's size in characters, reported when it changes, but at most twice a second: a window that
/// is dragged larger has hundreds of sizes.
class ZNTViewSizeReport
{
public:
    struct Size {
        int columns = 80, rows = 24;
        friend bool operator==(const Size&, const Size&) = default;
    };
    static constexpr double secondsBetween = 0.5;

    /// `runLoop` outlives this object.
    ZNTViewSizeReport(RunLoop& runLoop, std::function<void(Size)> report)
        : runLoop(runLoop),
          report(std::move(report))
    {
    }

    [[nodiscard]] Size size() const { return current; }

    void setSize(Size wanted)
    {
        if (wanted == std::exchange(current, wanted) || timer)
            return;
        report(current);
        startTimer(current);
    }

private:
    void startTimer(Size reported)
    {
        timer = runLoop.startTimer(secondsBetween, RunLoopRepeat::Once, [this, reported] {
            timer.reset();
            if (current == reported)
                return;
            report(current);
            startTimer(current);
        });
    }

    RunLoop& runLoop;
    std::function<void(Size)> report;
    Size current;
    std::unique_ptr<RunLoopTimer> timer; ///< while it runs, no size is reported
};
