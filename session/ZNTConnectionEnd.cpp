#include "ZNTConnectionEnd.h"

#include "AsyncSocketErrors.h"
#include "ZNTText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <netdb.h>
#include <string_view>

namespace
{

struct ErrorRow {
    std::string_view domain;
    long code;
    ZNTEndReason reason;
};

constexpr auto errorRows = std::to_array<ErrorRow>({
    {AsyncSocketNameErrorDomain, EAI_NONAME, ZNTEndReason::NoSuchHost},
    {AsyncSocketNameErrorDomain, EAI_NODATA, ZNTEndReason::NoSuchHost}, // the name has no address
    {AsyncSocketNameErrorDomain, EAI_AGAIN, ZNTEndReason::NameNotLookedUp},
    {AsyncSocketNameErrorDomain, EAI_FAIL, ZNTEndReason::NameNotLookedUp},
    {AsyncSocketErrorDomain, AsyncSocketConnectTimeoutError, ZNTEndReason::TimedOut},
    {AsyncSocketErrorDomain, AsyncSocketReadTimeoutError, ZNTEndReason::TimedOut},
    {AsyncSocketErrorDomain, AsyncSocketWriteTimeoutError, ZNTEndReason::TimedOut},
    {ZNTPOSIXErrorDomain, ETIMEDOUT, ZNTEndReason::TimedOut},
    {ZNTPOSIXErrorDomain, ECONNREFUSED, ZNTEndReason::Refused},
    {ZNTPOSIXErrorDomain, ECONNRESET, ZNTEndReason::Reset},
    {ZNTPOSIXErrorDomain, ECONNABORTED, ZNTEndReason::Reset},
    {ZNTPOSIXErrorDomain, EPIPE, ZNTEndReason::Reset}, // the far end was gone when we wrote
    {ZNTPOSIXErrorDomain, ENETUNREACH, ZNTEndReason::Unreachable},
    {ZNTPOSIXErrorDomain, EHOSTUNREACH, ZNTEndReason::Unreachable},
    {ZNTPOSIXErrorDomain, ENETDOWN, ZNTEndReason::Unreachable},
    {ZNTPOSIXErrorDomain, EHOSTDOWN, ZNTEndReason::Unreachable},
});

struct ReasonRow {
    ZNTEndReason reason;
    std::u16string_view words;
};

constexpr auto reasonRows = std::to_array<ReasonRow>({
    {ZNTEndReason::ClosedByGame, u"closed by the game"},
    {ZNTEndReason::NoSuchHost, u"no such host"},
    {ZNTEndReason::NameNotLookedUp, u"the address could not be looked up"},
    {ZNTEndReason::Refused, u"connection refused"},
    {ZNTEndReason::Reset, u"connection reset"},
    {ZNTEndReason::TimedOut, u"timed out"},
    {ZNTEndReason::Unreachable, u"the game cannot be reached"},
    {ZNTEndReason::Unreadable, u"the game sent what cannot be read"},
    {ZNTEndReason::Unknown, u"the connection failed"},
});

/// "15:14"
std::u16string clockTime(std::chrono::system_clock::time_point when)
{
    const std::time_t seconds = std::chrono::system_clock::to_time_t(when);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    char text[sizeof "15:14"] = "";
    return znt::textFromUtf8({text, std::strftime(text, sizeof text, "%H:%M", &local)});
}

} // namespace

ZNTEndReason znt::endReasonOf(const ZNTError& error)
{
    const auto row = std::ranges::find_if(errorRows, [&error](const ErrorRow& each) {
        return each.code == error.code && each.domain == error.domain;
    });
    return row == errorRows.end() ? ZNTEndReason::Unknown : row->reason;
}

std::u16string znt::inWords(const ZNTConnectionEnd& end)
{
    const auto* row = std::ranges::find(reasonRows, end.reason, &ReasonRow::reason);
    if (row == reasonRows.end())
        return {};
    std::u16string words(row->words);
    if (end.hadConnection)
        words += u" at " + clockTime(end.when);
    return words;
}
