#pragma once

#include "ZNTUserExpression.h"
#include "ZNTWildcardMatcher.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One check text, made ready to be matched against any number of texts.
class ZNTTriggerPattern
{
public:
    /// The ICU regular expression that a check stands for: every "%1" becomes "([\w\s]*)", then every "*",
    /// that of the groups just made included, becomes "([\w\s]*)". So a "%1" matches at least one character
    /// and a "*" possibly none.
    static std::u16string expressionForCheck(std::u16string_view check);

    explicit ZNTTriggerPattern(std::u16string_view check);

    /// Why the check cannot be used; empty if it can.
    [[nodiscard]] const std::string& problem() const { return problem_; }
    /// Why a trigger with that action cannot use it; empty if it can.
    [[nodiscard]] std::string problemWith(std::u16string_view action) const;
    [[nodiscard]] bool hasGroup() const { return hasGroup_; }
    /// A text that every match contains; empty if none is known.
    [[nodiscard]] const std::u16string& requiredLiteral() const { return requiredLiteral_; }
    /// Set if this matcher can be used. It takes time proportional to the text and needs no limit, but the
    /// text must have no surrogates.
    [[nodiscard]] const std::optional<ZNTWildcardMatcher>& wildcards() const { return wildcards_; }
    /// ICU's matcher for any text. If `wildcards` is set, it is compiled at the first call.
    ZNTUserExpression& expression();

private:
    std::u16string check;
    std::optional<ZNTWildcardMatcher> wildcards_;
    std::optional<ZNTUserExpression> expression_;
    std::u16string requiredLiteral_;
    std::string problem_;
    bool hasGroup_ = false;
};
