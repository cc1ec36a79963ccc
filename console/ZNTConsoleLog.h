#pragma once

#include "RunLoop.h"
#include "ZNTConsoleInput.h"
#include "ZNTPlatformLog.h"

#include <string>
#include <thread>

/// The terminal client's log: lines on stderr that do not break into the line being typed. Made on the run
/// loop's thread; lines of other threads are written on the loop's next turn.
class ZNTConsoleLog final : public ZNTPlatformLog
{
public:
    /// Both outlive this.
    ZNTConsoleLog(RunLoop& runLoop, ZNTConsoleInput& input) : runLoop(runLoop), input(input) {}

    void log(std::string_view text) override
    {
        auto line = ZNTStandardErrorLog::lineOf(text);
        if (std::this_thread::get_id() == loopThread)
            input.writeAside(line);
        else
            runLoop.post([&input = input, line = std::move(line)] { input.writeAside(line); });
    }

private:
    RunLoop& runLoop;
    ZNTConsoleInput& input;
    std::thread::id loopThread = std::this_thread::get_id();
};
