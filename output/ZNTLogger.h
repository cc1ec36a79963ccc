#pragma once

#include "ZNTClock.h"
#include "ZNTFilePlaces.h"

#include <string>
#include <string_view>

/// The transcript of one run: a file below home/Library/Zantor/logs named after the minute in which it
/// started, in local time. Only ever appended to, in UTF-8, with nothing added; readable by the player alone.
/// Two runs of the same minute share the file and append in turn.
///
/// Failures are silent: if the folder or file cannot be made or written, texts are not kept.
class ZNTLogger
{
public:
    ZNTLogger(const ZNTFilePlaces& places, const ZNTClock& clock);
    ~ZNTLogger();
    ZNTLogger(const ZNTLogger&) = delete;
    ZNTLogger& operator=(const ZNTLogger&) = delete;

    /// The folder of all logs. It may be missing.
    static std::string folder(const ZNTFilePlaces& places);

    /// A text that is not well-formed UTF-16 writes nothing.
    void loggerText(std::u16string_view text);

    /// "zantor_log_07.03.12_21.05.log". The year is the one of the week-based calendar, so that in the days
    /// around New Year it can differ from the calendar year; weeks are those of ISO 8601.
    static std::string fileName(std::chrono::system_clock::time_point started);

private:
    int output = -1;
};
