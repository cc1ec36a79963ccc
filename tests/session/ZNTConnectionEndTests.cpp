#include "AsyncSocketErrors.h"
#include "ZNTConnectionEnd.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <netdb.h>

TEST(ConnectionEnd, EachErrorOfASocketHasItsWordsAndOnlyAConnectionItsTime)
{
    using namespace std::chrono_literals;
    ::setenv("TZ", "UTC-2", 1);
    ::tzset();
    const std::chrono::system_clock::time_point when(13h + 14min + 59s);
    const std::pair<ZNTError, std::u16string_view> rows[] = {
        {nameResolutionError(EAI_NONAME, 0), u"no such host"},
        {nameResolutionError(EAI_AGAIN, 0), u"the address could not be looked up"},
        {nameResolutionError(EAI_SYSTEM, ENETUNREACH), u"the game cannot be reached"},
        {posixError(ECONNREFUSED), u"connection refused"},
        {posixError(ETIMEDOUT), u"timed out"},
        {asyncSocketError(AsyncSocketConnectTimeoutError), u"timed out"},
        {posixError(EPIPE), u"connection reset"},
        {{"another domain", ECONNREFUSED, ""}, u"the connection failed"},
    };
    for (const auto& [error, words] : rows) {
        const auto reason = znt::endReasonOf(error);
        EXPECT_EQ(znt::inWords({reason, false, when}), words);
        EXPECT_EQ(znt::inWords({reason, true, when}), std::u16string(words) + u" at 15:14");
    }
    EXPECT_EQ(znt::inWords({ZNTEndReason::ByPlayer, true, when}), u"");
    ::unsetenv("TZ");
    ::tzset();
}
