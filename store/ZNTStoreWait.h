#pragma once

#include "ZNTClock.h"
#include "ZNTPlatformLog.h"

#include <chrono>
#include <functional>
#include <limits>
#include <string>

/// Lets an operation of the store wait while another program has locked the database. After a second it
/// reports the wait, once in the platform log and repeatedly to the front end.
class ZNTStoreWait
{
public:
    static constexpr double secondsBeforeNotice = 1.0;

    /// The front end's callbacks. Both are called from within the operation that waits. So neither may call
    /// the store, nor run anything that could call it.
    struct Notice {
        /// Called when a wait has lasted a second, and every 50 ms from then on.
        std::function<void()> waiting;
        /// Called once when such a wait is over.
        std::function<void()> over;
    };

    /// Both outlive this.
    ZNTStoreWait(ZNTClock& clock, ZNTPlatformLog& log) : clock(clock), log(log) {}

    /// Replaces the notice before. May be called while nothing waits.
    void setNotice(Notice newNotice) { notice = std::move(newNotice); }
    /// How long a wait may last; without a limit unless set.
    void setPatience(double seconds) { patience = seconds; }

    /// Lets the thread sleep between two tries. False if the patience is at its end; then stop trying.
    [[nodiscard]] bool pause(double seconds);
    /// Call this when the operation goes on or is given up.
    void end();

private:
    void sayWaiting();

    ZNTClock& clock;
    ZNTPlatformLog& log;
    Notice notice;
    double patience = std::numeric_limits<double>::infinity();
    double waited = 0; ///< seconds of the present wait
    double nextNotice = secondsBeforeNotice;
    std::chrono::system_clock::time_point lastPause;
};
