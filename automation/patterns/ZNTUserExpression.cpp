#include "ZNTUserExpression.h"

#include <algorithm>
#include <ctime>
#include <unicode/uregex.h>
#include <unicode/utf16.h>

namespace
{

constexpr std::int32_t mostStackBytes = 8'000'000;

double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// ICU's own time limit starts anew at each position of the text and its unit varies with the expression, so
/// the time is taken here: when ICU asks, which is every 10,000 steps of one attempt to match, and between
/// attempts. To ask the system costs as much as a short attempt, so that is done every 64th time.
struct Limits {
    double endOfAllowance, endOfAttempt;
    const std::function<bool()>* hasTimeForMore;
    unsigned attempts = 0;
    std::int64_t stoppedBefore = -1; ///< the place of the next attempt, if there was no time for it
};

UBool mayGoOn(const void* context, std::int32_t)
{
    const auto* limits = static_cast<const Limits*>(context);
    return processorTime() < std::min(limits->endOfAllowance, limits->endOfAttempt) ? 1 : 0;
}

UBool mayAttemptNext(const void* context, std::int64_t place)
{
    auto* limits = static_cast<Limits*>(const_cast<void*>(context)); // ours, handed through ICU as const
    if (++limits->attempts % 64 != 0)
        return 1;
    if (processorTime() >= limits->endOfAllowance)
        return 0;
    if ((*limits->hasTimeForMore)())
        return 1;
    limits->stoppedBefore = place;
    return 0;
}

ZNTError regexError(UErrorCode status)
{
    return {"ICU", status,
            status == U_REGEX_STOPPED_BY_CALLER ? std::string("took too long") : u_errorName(status)};
}

/// Lends ICU's matcher a text and the limits, which do not outlive one call.
class Loan
{
public:
    Loan(URegularExpression* icu, std::u16string_view text, Limits& limits, UErrorCode& status) : icu(icu)
    {
        uregex_setMatchCallback(icu, mayGoOn, &limits, &status);
        uregex_setFindProgressCallback(icu, mayAttemptNext, &limits, &status);
        uregex_setText(icu, text.empty() ? u"" : text.data(), static_cast<std::int32_t>(text.size()),
                       &status);
    }
    ~Loan()
    {
        UErrorCode status = U_ZERO_ERROR;
        uregex_setText(icu, u"", 0, &status);
        uregex_setMatchCallback(icu, nullptr, nullptr, &status);
        uregex_setFindProgressCallback(icu, nullptr, nullptr, &status);
    }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

private:
    URegularExpression* icu;
};

ZNTTriggerMatch presentMatch(URegularExpression* icu, bool hasGroup, UErrorCode& status)
{
    ZNTTriggerMatch match;
    match.start = uregex_start(icu, 0, &status);
    match.end = uregex_end(icu, 0, &status);
    const auto groupStart = hasGroup ? uregex_start(icu, 1, &status) : -1;
    if (groupStart >= 0) {
        match.groupStart = groupStart;
        match.groupEnd = uregex_end(icu, 1, &status);
    }
    return match;
}

} // namespace

void ZNTUserExpression::Closer::operator()(URegularExpression* expression) const { uregex_close(expression); }

ZNTUserExpression::ZNTUserExpression(std::u16string_view pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    UParseError place{};
    expression.reset(
        uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), 0, &place, &status));
    uregex_setStackLimit(expression.get(), mostStackBytes, &status);
    groupCount_ = uregex_groupCount(expression.get(), &status);
    looksAtLastMatch = pattern.find(u"\\G") != pattern.npos;
    if (U_FAILURE(status)) {
        problem_ = std::string(u_errorName(status)) + " at character " + std::to_string(place.offset);
        groupCount_ = 0;
        expression.reset();
    }
}

ZNTResult<void> ZNTUserExpression::collectMatches(Search& search, std::size_t most,
                                                  std::vector<ZNTTriggerMatch>& matches,
                                                  const std::function<bool()>& hasTimeForMore)
{
    if (!expression)
        return ZNTError{"ICU", U_REGEX_RULE_SYNTAX, problem_};
    static const std::function<bool()> always = [] { return true; };
    const auto start = processorTime();
    Limits limits{start + search.allowance, start + longestAttempt,
                  looksAtLastMatch ? &always : &hasTimeForMore};
    auto* const icu = expression.get();
    UErrorCode status = U_ZERO_ERROR;
    const Loan loan(icu, search.text, limits, status);
    bool isFound = uregex_find64(icu, search.from, &status) != 0;
    while (isFound && U_SUCCESS(status)) {
        matches.push_back(presentMatch(icu, groupCount_ > 0, status));
        if (matches.size() >= most && !looksAtLastMatch) {
            search.goOnBehind(matches.back());
            break;
        }
        isFound = uregex_findNext(icu, &status) != 0;
    }
    search.isOver |= !isFound;
    search.allowance -= processorTime() - start;
    if (limits.stoppedBefore >= 0) {
        status = U_ZERO_ERROR;
        search.from = limits.stoppedBefore;
        search.isOver = false;
    }
    if (U_FAILURE(status))
        return regexError(status);
    return {};
}

/// An empty match moves the search on by one character, as ICU's own next step does.
void ZNTUserExpression::Search::goOnBehind(const ZNTTriggerMatch& match)
{
    auto next = static_cast<std::size_t>(match.end);
    isOver = match.start == match.end && next == text.size();
    if (match.start == match.end && !isOver)
        U16_FWD_1(text.data(), next, text.size());
    from = static_cast<std::int64_t>(next);
}
