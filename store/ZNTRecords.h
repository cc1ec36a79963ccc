#pragma once

#include "ZNTMacroGroup.h"
#include "ZNTMudList.h"
#include "ZNTTrigger.h"

#include <vector>

/// What a player has stored. Each group holds its macros.
struct ZNTRecords {
    std::vector<ZNTTrigger> triggers;
    std::vector<ZNTMacroGroup> groups;
    std::vector<ZNTMudList> games;
};
