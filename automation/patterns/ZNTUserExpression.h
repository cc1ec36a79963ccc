#pragma once

#include "ZNTResult.h"
#include "ZNTTriggerMatch.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

struct URegularExpression;

/// A regular expression that a player wrote, run by ICU within limits: a bounded backtracking stack and an
/// allowance of processor time for each text.
class ZNTUserExpression
{
public:
    /// Never fails. If the expression is ill-formed, `problem` says so.
    explicit ZNTUserExpression(std::u16string_view pattern);

    /// Why the expression is ill-formed; empty if it isn't.
    [[nodiscard]] const std::string& problem() const { return problem_; }
    /// Capture groups; 0 for an ill-formed expression.
    [[nodiscard]] std::int32_t groupCount() const { return groupCount_; }

    /// A search for the non-overlapping matches in one text. It can be made in several parts.
    struct Search {
        std::u16string_view text; ///< read in place
        /// Seconds of this thread's processor time that are left for it.
        double allowance;
        std::int64_t from = 0; ///< the place of the next attempt
        bool isOver = false;

        void goOnBehind(const ZNTTriggerMatch& match);
    };
    /// Appends the next matches, in order of position, until there are no more (`isOver`), `most` are in
    /// `matches`, or `hasTimeForMore`, which is asked between attempts, says no. It is an error if one
    /// attempt takes longer than `longestAttempt` or a search exceeds its allowance; some matches are missing
    /// then. Several searches may take turns.
    ZNTResult<void> collectMatches(Search& search, std::size_t most, std::vector<ZNTTriggerMatch>& matches,
                                   const std::function<bool()>& hasTimeForMore);

    /// Seconds of processor time. An attempt cannot be interrupted and continued.
    static constexpr double longestAttempt = 0.2;

private:
    struct Closer {
        void operator()(URegularExpression* expression) const;
    };
    std::unique_ptr<URegularExpression, Closer> expression;
    std::string problem_;
    std::int32_t groupCount_ = 0;
    /// "\G" stands for the end of the last match, so a search for it has one part only.
    bool looksAtLastMatch = false;
};
