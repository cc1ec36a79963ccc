#include "ZNTTriggerCommand.h"

#include "ZNTText.h"

#include <memory>
#include <unicode/uregex.h>

namespace
{

std::optional<std::u16string> replacedByTemplate(std::u16string_view action, std::u16string_view replacement)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<URegularExpression, decltype(&uregex_close)> expression(
        uregex_open(u"%1", -1, 0, nullptr, &status), &uregex_close);
    uregex_setText(expression.get(), action.data(), static_cast<std::int32_t>(action.size()), &status);
    const auto length = uregex_replaceAll(expression.get(), replacement.data(),
                                          static_cast<std::int32_t>(replacement.size()), nullptr, 0, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR)
        status = U_ZERO_ERROR;
    std::u16string command(static_cast<std::size_t>(length) + 1, u'\0');
    uregex_replaceAll(expression.get(), replacement.data(), static_cast<std::int32_t>(replacement.size()),
                      command.data(), static_cast<std::int32_t>(command.size()), &status);
    if (U_FAILURE(status))
        return std::nullopt;
    command.pop_back();
    return command;
}

} // namespace

namespace znt
{

std::optional<std::u16string> triggerCommand(std::u16string_view action, std::u16string_view replacement)
{
    if (replacement.find_first_of(u"\\$") == std::u16string_view::npos)
        return replacedAll(action, u"%1", replacement);
    return replacedByTemplate(action, replacement);
}

} // namespace znt
