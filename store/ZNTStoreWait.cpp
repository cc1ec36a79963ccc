#include "ZNTStoreWait.h"

#include <algorithm>

namespace
{
constexpr double secondsBetweenNotices = 0.05;
}

bool ZNTStoreWait::pause(double seconds)
{
    if (waited >= patience)
        return false;
    const auto before = waited > 0 ? lastPause : clock.timeOfDay();
    clock.sleepFor(seconds);
    lastPause = clock.timeOfDay();
    // Somebody may set the machine's clock meanwhile. So a pause counts at least as long as was asked for and
    // at most a second.
    waited += std::clamp(std::chrono::duration<double>(lastPause - before).count(), seconds, 1.0);
    if (waited >= nextNotice)
        sayWaiting();
    return true;
}

void ZNTStoreWait::sayWaiting()
{
    if (nextNotice == secondsBeforeNotice)
        log.log("Another program has locked the database; waiting until it is free.");
    nextNotice = waited + secondsBetweenNotices;
    if (notice.waiting)
        notice.waiting();
}

void ZNTStoreWait::end()
{
    const bool hasSaidSo = nextNotice != secondsBeforeNotice;
    waited = 0;
    nextNotice = secondsBeforeNotice;
    if (!hasSaidSo)
        return;
    log.log("The wait for the database is over.");
    if (notice.over)
        notice.over();
}
