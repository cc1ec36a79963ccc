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
/// steps: an optional count and one character, or a text in square brackets ("!2~4s[open door]w"). If a walk
/// starts while another goes on, both tick, and they share one set of counters. A walk that was stopped
/// leaves its place in the path behind, and the next walk begins to read its own path there.
///
/// While too much waits to leave, a tick does nothing, and its step is sent at the next one.
///
/// A game's text can start any number of walks through a trigger, so there are limits: a walk past
/// `mostWalks`, or past `mostPathText` of paths, is refused. The platform log gets a line about that, at most
/// one a minute.
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
    /// Ends the walk that was started last. If it has ended already, the others go on.
    void stop();
    /// Ends every walk. The place is left behind as by `stop`.
    void stopAll();
    [[nodiscard]] bool isWalking() const { return !walks.empty(); }
    /// Called after a walk has begun or ended. Optional.
    std::function<void()> walkingChanged;
    /// Called when the last walk has ended by itself and has sent nothing, as "!2" does. Optional.
    std::function<void()> endedWithoutStep;

    /// Whether every character is a decimal digit; true of the empty text.
    [[nodiscard]] static bool isNumeric(std::u16string_view text);

    /// Walks that may tick at once.
    static constexpr std::size_t mostWalks = 100;
    /// UTF-16 units in the paths of those walks together; a path that several share counts once. A walk that
    /// is alone may have a longer one.
    static constexpr std::size_t mostPathText = std::size_t{1} << 20;
    /// Seconds of the run loop between two lines in the log.
    static constexpr double refusalInterval = 60;

private:
    struct Walk {
        std::shared_ptr<const Route> route;
        std::unique_ptr<RunLoopTimer> timer;
        bool hasStepped = false;
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
    /// Reads the next step and its count. False if the path ends in the middle of a step.
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
