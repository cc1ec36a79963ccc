#include "ZNTOldLogs.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <sys/stat.h>

namespace
{

namespace chrono = std::chrono;

constexpr std::string_view logEnding = ".log";
constexpr int century = 2000;

/// The year that the week of that day belongs to: the one of its Thursday (ISO 8601).
int weekYearOf(chrono::sys_days day)
{
    const auto place = static_cast<int>(chrono::weekday(day).iso_encoding());
    return static_cast<int>(chrono::year_month_day(day + chrono::days(4 - place)).year());
}

/// The number of two digits at `at`; -1 if there is none.
int twoDigits(std::string_view text, std::size_t at)
{
    const auto isDigit = [](char unit) { return unit >= '0' && unit <= '9'; };
    return isDigit(text[at]) && isDigit(text[at + 1]) ? (text[at] - '0') * 10 + text[at + 1] - '0' : -1;
}

ZNTLogTime timeLastWritten(const struct stat& facts)
{
    std::tm local{};
    ::localtime_r(&facts.st_mtime, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min};
}

} // namespace

namespace znt
{

std::optional<ZNTLogTime> timeOfLogNamed(std::string_view fileName, const ZNTLogTime& lastWritten)
{
    // The letters stand for two digits each.
    constexpr std::string_view form = "zantor_log_dd.mm.yy_HH.MM.log";
    if (fileName.size() != form.size())
        return std::nullopt;
    for (std::size_t at = 0; at < form.size(); ++at)
        if (const bool isDigit = at >= 11 && at < 25 && form[at] != '.' && form[at] != '_';
            !isDigit && fileName[at] != form[at])
            return std::nullopt;
    const int day = twoDigits(fileName, 11), month = twoDigits(fileName, 14), year = twoDigits(fileName, 17),
              hour = twoDigits(fileName, 20), minute = twoDigits(fileName, 23);
    if (day < 0 || month < 0 || year < 0 || hour < 0 || hour > 23 || minute < 0 || minute > 59)
        return std::nullopt;
    std::optional<ZNTLogTime> started;
    for (const int off : {1, 0, -1}) {
        const chrono::year_month_day date(chrono::year(century + year + off),
                                          chrono::month(static_cast<unsigned>(month)),
                                          chrono::day(static_cast<unsigned>(day)));
        if (!date.ok() || weekYearOf(chrono::sys_days(date)) != century + year)
            continue;
        started = ZNTLogTime{century + year + off, month, day, hour, minute};
        if (*started <= lastWritten)
            break;
    }
    return started;
}

std::vector<ZNTOldLog> oldLogsIn(const std::string& folder)
{
    std::vector<ZNTOldLog> logs;
    std::error_code failure;
    for (std::filesystem::directory_iterator at(folder, failure), end; !failure && at != end;
         at.increment(failure)) {
        const auto name = at->path().filename().string();
        struct stat facts {
        };
        if (!name.ends_with(logEnding) || ::stat(at->path().c_str(), &facts) != 0 || !S_ISREG(facts.st_mode))
            continue;
        const auto written = timeLastWritten(facts);
        logs.push_back({at->path().string(), timeOfLogNamed(name, written).value_or(written),
                        static_cast<std::uintmax_t>(facts.st_size)});
    }
    std::ranges::sort(logs, [](const ZNTOldLog& a, const ZNTOldLog& b) {
        return a.started != b.started ? a.started > b.started : a.path > b.path;
    });
    return logs;
}

} // namespace znt
