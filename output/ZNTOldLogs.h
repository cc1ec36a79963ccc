#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A moment in local time, to the minute.
struct ZNTLogTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;
    friend auto operator<=>(const ZNTLogTime&, const ZNTLogTime&) = default;
};

/// A transcript that an earlier run, or this one, has written.
struct ZNTOldLog {
    std::string path; ///< UTF-8
    ZNTLogTime started;
    std::uintmax_t size = 0; ///< bytes
};

namespace znt
{

/// The files of a folder whose names end in ".log", the newest first. A name that is not ZNTLogger's stands
/// at the time at which the file was written last. Empty if the folder cannot be read.
std::vector<ZNTOldLog> oldLogsIn(const std::string& folder);

/// When the log of that name was started. The year of ZNTLogger's names is the week-based one; this gives
/// the calendar's. Around New Year two years can have one name; then it is the one that is not after
/// `lastWritten`. None for any other name.
std::optional<ZNTLogTime> timeOfLogNamed(std::string_view fileName, const ZNTLogTime& lastWritten);

} // namespace znt
