#pragma once

#include "ZNTResult.h"
#include "ZNTTriggerMatch.h"

#include <cstddef>
#include <cstdint>
#include <functional>
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

    /// A search for the non-overlapping matches in one text, which may be made in several parts.
    struct Search {
        std::u16string_view text; ///< read in place
        /// Seconds of this thread's processor time that are left for it.
        double allowance;
        std::int64_t from = 0; ///< where it goes on
        bool isOver = false;

        void goOnBehind(const ZNTTriggerMatch& match);
    };
    /// Appends the next matches, in order of position, until there are no more (`isOver`), `most` are in
    /// `matches`, or `hasTimeForMore` says no, which is asked between attempts. One attempt that takes longer
    /// than `longestAttempt` is an error, as is a search that exceeds its allowance; what was appended is
    /// then not the whole answer. Several searches may take turns.
    ZNTResult<void> collectMatches(Search& search, std::size_t most, std::vector<ZNTTriggerMatch>& matches,
                                   const std::function<bool()>& hasTimeForMore);

    /// Seconds of processor time: an attempt cannot be interrupted and taken up again.
    static constexpr double longestAttempt = 0.2;

private:
    struct Closer {
        void operator()(URegularExpression* expression) const { uregex_close(expression); }
    };
    std::unique_ptr<URegularExpression, Closer> expression;
    std::string problem_;
    std::int32_t groupCount_ = 0;
    bool looksAtLastMatch = false; ///< "\G" tells where the last match ended, so a search has one part only
};
