#pragma once

#include "RunLoop.h"
#include "ZNTLineSender.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

/// Sends a path of movement commands one step at a time, at a fixed interval of whole seconds.
///
/// A walk line is a prefix character, then a path, or an interval, "~" and a path. A path is a sequence of
/// steps: an optional count and one character, or a text in square brackets ("!2~4s[open door]w"). Starting a
/// walk while another goes on leaves both ticking, and they share one set of counters; a walk that was
/// stopped leaves its place behind, where the next walk begins to read its own path.
class ZNTSpeedWalking
{
public:
    /// Both outlive this.
    ZNTSpeedWalking(RunLoop& runLoop, ZNTLineSender& zntServerConnectController)
        : runLoop(runLoop),
          zntServerConnectController(zntServerConnectController)
    {
    }

    /// Starts the walk of a whole typed line, prefix included. The first step goes out one interval later; an
    /// interval of 0 is the run loop's smallest.
    void speedwalk(std::u16string_view line);
    /// Ends the walk that was started last.
    void stop();
    [[nodiscard]] bool isWalking() const { return !walks.empty(); }
    /// Hears, where it is set, that a walk began or came to its end.
    std::function<void()> walkingChanged;

    /// Whether every character is a decimal digit; true of the empty text.
    [[nodiscard]] static bool isNumeric(std::u16string_view text);

private:
    struct Walk {
        std::u16string path;
        std::unique_ptr<RunLoopTimer> timer;
    };

    void takeAStep(std::uint64_t walk);
    void endWalk(std::uint64_t walk);
    void forgetStep();
    void tellOfChange() const;
    /// Reads one character (a surrogate pair is one) and moves on. False at the end of the path.
    bool readCharacter(std::u16string_view path, std::u16string& character);
    /// Reads the next step and its count. False where the path ends in the middle of one.
    bool readStep(std::u16string_view path, std::u16string& step);

    RunLoop& runLoop;
    ZNTLineSender& zntServerConnectController;

    std::size_t counter = 0; ///< index in the path of the next character to read
    std::int32_t stepCount = 0;
    std::int32_t maxSteps = 0;
    std::u16string stepToTakeAgain;

    std::map<std::uint64_t, Walk> walks; ///< those whose timers tick, by the order of their start
    std::uint64_t walksStarted = 0;
    std::uint64_t lastStarted = 0; ///< the walk that `stop` ends; 0 when it was stopped
};
