#pragma once

#include <cstdint>

/// Where a trigger's expression matched. Offsets in UTF-16 units; a group that is absent, or took no part in
/// the match, is empty.
struct ZNTTriggerMatch {
    std::int32_t start = 0;
    std::int32_t end = 0;
    std::int32_t groupStart = 0; ///< of group 1
    std::int32_t groupEnd = 0;

    friend bool operator==(const ZNTTriggerMatch&, const ZNTTriggerMatch&) = default;
};
