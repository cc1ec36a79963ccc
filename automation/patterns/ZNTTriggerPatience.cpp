#include "ZNTTriggerPatience.h"

#include "RunLoop.h"

bool ZNTTriggerPatience::isResting() const { return runLoop->now() < restEnd; }

bool ZNTTriggerPatience::noteFailure()
{
    if (isResting() || ++failuresRunning < mostFailuresRunning)
        return false;
    failuresRunning = 0;
    restEnd = runLoop->now() + lengthOfRest;
    return true;
}
