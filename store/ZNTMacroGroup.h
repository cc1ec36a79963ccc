#pragma once

#include "ZNTMacro.h"

#include <vector>

/// A named group of macros.
struct ZNTMacroGroup {
    std::int64_t oid = 0; ///< row key; 0 until stored
    std::u16string groupName;
    std::vector<ZNTMacro> macrosList; ///< the store leaves it empty
};
