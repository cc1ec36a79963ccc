#pragma once

#include "RunLoop.h"
#include "ZNTConsoleOutput.h"
#include "ZNTPlatformLog.h"

#include <string>
#include <thread>

/// The terminal client's log: lines on stderr that do not break into the line being typed. Made on the run
/// loop's thread; lines of other threads are written on the loop's next turn.
class ZNTConsoleLog final : public ZNTPlatformLog
{
public:
    /// Both outlive this.
    ZNTConsoleLog(RunLoop& runLoop, ZNTConsoleOutput& output) : runLoop(runLoop), output(output) {}

    void log(std::string_view text) override
    {
        auto line = ZNTStandardErrorLog::lineOf(text);
        if (std::this_thread::get_id() == loopThread)
            output.writeAside(line);
        else
            runLoop.post([&output = output, line = std::move(line)] { output.writeAside(line); });
    }

private:
    RunLoop& runLoop;
    ZNTConsoleOutput& output;
    std::thread::id loopThread = std::this_thread::get_id();
};
