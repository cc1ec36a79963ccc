#pragma once

#include "ZNTResult.h"
#include "ZNTTriggerMatch.h"

#include <memory>
#include <string_view>
#include <unicode/uregex.h>
#include <vector>

/// A regular expression that a player wrote, run by ICU within limits: a bounded backtracking stack and an
/// allowance of processor time for each text.
class ZNTUserExpression
{
public:
    /// Never fails: an ill-formed expression says so in `problem`.
    explicit ZNTUserExpression(std::u16string_view pattern);

    /// Why the expression is ill-formed; empty if it isn't.
    [[nodiscard]] const std::string& problem() const { return problem_; }
    /// Capture groups; 0 for an ill-formed expression.
    [[nodiscard]] std::int32_t groupCount() const { return groupCount_; }

    /// Appends every non-overlapping match in `text`, read in place, in order of position. `allowance` is
    /// seconds of this thread's processor time. On an error what was appended is not the whole answer.
    ZNTResult<void> collectMatches(std::u16string_view text, double allowance,
                                   std::vector<ZNTTriggerMatch>& matches);

private:
    struct Closer {
        void operator()(URegularExpression* expression) const { uregex_close(expression); }
    };
    std::unique_ptr<URegularExpression, Closer> expression;
    std::string problem_;
    std::int32_t groupCount_ = 0;
};
