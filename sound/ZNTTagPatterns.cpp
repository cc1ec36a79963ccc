#include "ZNTTagPatterns.h"

#include <unicode/uregex.h>

void ZNTTagPatterns::Close::operator()(URegularExpression* expression) const { uregex_close(expression); }

namespace
{

std::optional<std::u16string_view> currentMatch(URegularExpression* expression, std::u16string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto start = static_cast<std::size_t>(uregex_start(expression, 0, &status));
    const auto end = static_cast<std::size_t>(uregex_end(expression, 0, &status));
    if (U_FAILURE(status) != 0)
        return {};
    return text.substr(start, end - start);
}

} // namespace

URegularExpression* ZNTTagPatterns::expressionFor(const std::u16string& pattern, std::u16string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    auto& expression = compiled[pattern];
    if (expression == nullptr)
        expression.reset(
            uregex_open(pattern.data(), static_cast<std::int32_t>(pattern.size()), 0, nullptr, &status));
    if (expression != nullptr)
        uregex_setText(expression.get(), text.data(), static_cast<std::int32_t>(text.size()), &status);
    return U_SUCCESS(status) != 0 ? expression.get() : nullptr;
}

std::optional<std::u16string_view> ZNTTagPatterns::firstMatch(const std::u16string& pattern,
                                                              std::u16string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    auto* expression = expressionFor(pattern, text);
    if (expression == nullptr || uregex_findNext(expression, &status) == 0)
        return {};
    return currentMatch(expression, text);
}

std::optional<std::u16string_view> ZNTTagPatterns::lastMatch(const std::u16string& pattern,
                                                             std::u16string_view text)
{
    std::optional<std::u16string_view> last;
    UErrorCode status = U_ZERO_ERROR;
    if (auto* expression = expressionFor(pattern, text))
        while (uregex_findNext(expression, &status) != 0)
            last = currentMatch(expression, text);
    return last;
}
