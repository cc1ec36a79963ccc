#include "ZNTUserExpression.h"

#include <ctime>

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
/// the time is taken here: where ICU asks, which is every 10,000 steps of one attempt to match, and between
/// attempts. Asking the system costs as much as a short attempt, hence only every 64th time.
struct Allowance {
    double end;
    unsigned attempts = 0;
    [[nodiscard]] UBool remains() const { return processorTime() < end ? 1 : 0; }
};

UBool mayGoOn(const void* context, std::int32_t) { return static_cast<const Allowance*>(context)->remains(); }

UBool mayAttemptNext(const void* context, std::int64_t)
{
    auto* allowance =
        static_cast<Allowance*>(const_cast<void*>(context)); // ours, handed through ICU as const
    return ++allowance->attempts % 64 != 0 || allowance->remains() != 0 ? 1 : 0;
}

ZNTError regexError(UErrorCode status)
{
    return {"ICU", status,
            status == U_REGEX_STOPPED_BY_CALLER ? std::string("took too long") : u_errorName(status)};
}

} // namespace

ZNTUserExpression::ZNTUserExpression(std::u16string_view pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    UParseError place{};
    expression.reset(
        uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), 0, &place, &status));
    uregex_setStackLimit(expression.get(), mostStackBytes, &status);
    groupCount_ = uregex_groupCount(expression.get(), &status);
    if (U_FAILURE(status)) {
        problem_ = std::string(u_errorName(status)) + " at character " + std::to_string(place.offset);
        groupCount_ = 0;
        expression.reset();
    }
}

ZNTResult<void> ZNTUserExpression::collectMatches(std::u16string_view text, double allowance,
                                                  std::vector<ZNTTriggerMatch>& matches)
{
    if (!expression)
        return ZNTError{"ICU", U_REGEX_RULE_SYNTAX, problem_};
    Allowance limit{processorTime() + allowance};
    auto* const icu = expression.get();
    UErrorCode status = U_ZERO_ERROR;
    uregex_setMatchCallback(icu, mayGoOn, &limit, &status);
    uregex_setFindProgressCallback(icu, mayAttemptNext, &limit, &status);
    uregex_setText(icu, text.empty() ? u"" : text.data(), static_cast<std::int32_t>(text.size()), &status);
    while (uregex_findNext(icu, &status) != 0 && U_SUCCESS(status)) {
        ZNTTriggerMatch match;
        match.start = uregex_start(icu, 0, &status);
        match.end = uregex_end(icu, 0, &status);
        const auto groupStart = groupCount_ > 0 ? uregex_start(icu, 1, &status) : -1;
        if (groupStart >= 0) {
            match.groupStart = groupStart;
            match.groupEnd = uregex_end(icu, 1, &status);
        }
        matches.push_back(match);
    }
    UErrorCode resetStatus = U_ZERO_ERROR; // neither the text nor the limit outlives the call
    uregex_setText(icu, u"", 0, &resetStatus);
    uregex_setMatchCallback(icu, nullptr, nullptr, &resetStatus);
    uregex_setFindProgressCallback(icu, nullptr, nullptr, &resetStatus);
    if (U_FAILURE(status))
        return regexError(status);
    return {};
}
