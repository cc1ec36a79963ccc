#pragma once

#include "ZNTStream.h"

class RunLoop;

/// Makes streams over TCP sockets that live on `runLoop`, which outlives them and the factory.
ZNTStreamFactory socketStreams(RunLoop& runLoop);
