#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct URegularExpression; // ICU's

/// ICU patterns for taking sound tags apart, each compiled on first use.
class ZNTTagPatterns
{
public:
    /// Views into `text`. None if there is no match, or if ICU refuses the pattern.
    std::optional<std::u16string_view> firstMatch(const std::u16string& pattern, std::u16string_view text);
    std::optional<std::u16string_view> lastMatch(const std::u16string& pattern, std::u16string_view text);

private:
    struct Close {
        void operator()(URegularExpression* expression) const;
    };
    using Expression = std::unique_ptr<URegularExpression, Close>;

    URegularExpression* expressionFor(const std::u16string& pattern, std::u16string_view text);

    std::map<std::u16string, Expression, std::less<>> compiled;
};
