#pragma once

#include "ZNTClock.h"
#include "ZNTPlatformLog.h"

#include <chrono>
#include <functional>
#include <limits>
#include <string>

/// Holds an operation of the store up while another program keeps the database, for as long as that takes.
/// After a second it says so: once in the platform log, and to the front end.
class ZNTStoreWait
{
public:
    static constexpr double secondsBeforeNotice = 1.0;

    /// What a front end does meanwhile. Both are called from within the operation that waits, so neither may
    /// call the store, nor run anything that could.
    struct Notice {
        /// Called when a wait has lasted a second, and every 50 ms from then on.
        std::function<void()> waiting;
        /// Called once when such a wait is over.
        std::function<void()> over;
    };

    /// Both outlive this.
    ZNTStoreWait(ZNTClock& clock, ZNTPlatformLog& log) : clock(clock), log(log) {}

    /// Takes the place of the notice before. It may be set while nothing waits.
    void setNotice(Notice newNotice) { notice = std::move(newNotice); }
    /// How long a wait may last; without a limit unless set.
    void setPatience(double seconds) { patience = seconds; }

    /// Lets the thread sleep between two tries. False when the patience is at its end: try no more.
    [[nodiscard]] bool pause(double seconds);
    /// The operation goes on, or has been given up.
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
