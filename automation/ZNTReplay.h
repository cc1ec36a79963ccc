#pragma once

#include "RunLoop.h"
#include "ZNTKeptRecording.h"
#include "ZNTLineSender.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

/// Runs a kept recording: sends its commands one at a time, the first one at once, with its seconds between
/// them. One recording runs at a time.
///
/// While too much waits to leave, the next command waits, too, and is tried again after the seconds.
class ZNTReplay
{
public:
    /// Both outlive this.
    ZNTReplay(RunLoop& runLoop, ZNTLineSender& sender) : runLoop(runLoop), sender(sender) {}

    enum class Times { Once, AgainAndAgain };
    /// Ends the one that runs. The recording is within its limits, so it has a command.
    void start(ZNTKeptRecording recording, Times times);
    void stop();
    [[nodiscard]] bool isRunning() const { return timer != nullptr; }
    /// Of the recording that runs; empty while none does.
    [[nodiscard]] std::u16string_view name() const
    {
        return isRunning() ? std::u16string_view(recording.name) : std::u16string_view();
    }
    /// Called after a recording has begun or ended. Optional.
    std::function<void()> runningChanged;

private:
    void sendNext();
    void tellOfChange() const;

    RunLoop& runLoop;
    ZNTLineSender& sender;
    ZNTKeptRecording recording;
    Times times = Times::Once;
    std::size_t next = 0;     ///< the command that is sent next
    std::uint64_t starts = 0; ///< a command may start another recording
    std::unique_ptr<RunLoopTimer> timer;
};
