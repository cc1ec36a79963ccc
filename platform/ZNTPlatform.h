#pragma once

#include "RunLoop.h"
#include "ZNTAlert.h"
#include "ZNTClock.h"
#include "ZNTFilePlaces.h"
#include "ZNTNotificationCenter.h"
#include "ZNTPlatformLog.h"

/// What the machine offers the logic, made once at start-up and handed to constructors. Everything named
/// here outlives every object that was given it.
struct ZNTPlatform {
    RunLoop& runLoop;
    ZNTClock& clock;
    ZNTPlatformLog& log;
    ZNTNotificationCenter& notifications;
    ZNTAlert& alert;
    ZNTFilePlaces places;
};
