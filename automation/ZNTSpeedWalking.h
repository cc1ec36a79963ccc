#pragma once

#include "RunLoop.h"
#include "ZNTLineSender.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>

class ZNTPlatformLog;

/// Sends a path of movement commands one step at a time, at a fixed interval of whole seconds.
///
/// A walk line is a prefix character, then a path, or an interval, "~" and a path. A path is a sequence of
/// steps: an optional count and one character, or a text in square brackets ("!2~4s[open door]w"). Starting a
/// walk while another goes on leaves both ticking, and they share one set of counters; a walk that was
/// stopped leaves its place behind, where the next walk begins to read its own path.
///
/// While too much waits to leave, a tick does nothing, and its step is sent at the next one.
///
/// A game's text can start walks through a trigger, as many as it has room for, so there are limits: walks
/// past `mostWalks`, or past `mostPathText` of paths, are refused, and the platform log gets a line of it, at
/// most one a minute.
class ZNTSpeedWalking
{
public:
    /// All outlive this.
    ZNTSpeedWalking(RunLoop& runLoop, ZNTLineSender& zntServerConnectController, ZNTPlatformLog& log)
        : runLoop(runLoop),
          zntServerConnectController(zntServerConnectController),
          log(log)
    {
    }

    /// What a walk line says. The walks of one line share it.
    struct Route {
        std::int32_t speed = 0; ///< seconds between two steps
        std::u16string path;
    };
    /// Reads a whole typed line, prefix included.
    [[nodiscard]] static std::shared_ptr<const Route> routeOfLine(std::u16string_view line);

    /// Starts a walk, in a time that does not depend on the length of its path. The first step goes out one
    /// interval later; an interval of 0 is the run loop's smallest.
    void speedwalk(std::shared_ptr<const Route> route);
    void speedwalk(std::u16string_view line) { speedwalk(routeOfLine(line)); }
    /// Ends the walk that was started last. Where that one has ended already, the others go on.
    void stop();
    /// Ends every walk. The place is left behind as by `stop`.
    void stopAll();
    [[nodiscard]] bool isWalking() const { return !walks.empty(); }
    /// Hears, where it is set, that a walk began or came to its end.
    std::function<void()> walkingChanged;

    /// Whether every character is a decimal digit; true of the empty text.
    [[nodiscard]] static bool isNumeric(std::u16string_view text);

    /// Walks that may tick at once.
    static constexpr std::size_t mostWalks = 100;
    /// UTF-16 units in the paths of those walks together, what several share counted once. A single walk may
    /// have a longer one.
    static constexpr std::size_t mostPathText = std::size_t{1} << 20;
    /// Seconds of the run loop between two lines in the log.
    static constexpr double refusalInterval = 60;

private:
    struct Walk {
        std::shared_ptr<const Route> route;
        std::unique_ptr<RunLoopTimer> timer;
    };
    using WalkNumber = std::uint64_t;

    [[nodiscard]] bool hasRoomFor(const std::shared_ptr<const Route>& route) const;
    void logRefusal();
    void takeAStep(WalkNumber walk);
    void endWalk(WalkNumber walk);
    void forgetStep();
    void tellOfChange() const;
    /// Reads one character (a surrogate pair is one) and moves on. False at the end of the path.
    bool readCharacter(std::u16string_view path, std::u16string& character);
    /// Reads the next step and its count. False where the path ends in the middle of one.
    bool readStep(std::u16string_view path, std::u16string& step);

    RunLoop& runLoop;
    ZNTLineSender& zntServerConnectController;
    ZNTPlatformLog& log;

    [[maybe_unused]] bool pause = false; ///< stays false: a walk goes on or is ended
    std::size_t counter = 0;             ///< index in the path of the next character to read
    std::int32_t stepCount = 0;
    std::int32_t maxSteps = 0;
    std::u16string stepToTakeAgain;

    std::map<WalkNumber, Walk> walks; ///< those whose timers tick, by the order of their start
    WalkNumber walksStarted = 0;
    WalkNumber speedTimer = 0; ///< the walk whose timer `stop` ends: the one started last; 0 when stopped
    double nextRefusalLine = -std::numeric_limits<double>::infinity(); ///< on the run loop's clock
};
