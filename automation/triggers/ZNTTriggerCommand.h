#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace znt
{

/// `action` with every "%1" replaced by `replacement`, which is read as one of ICU's replacement templates: a
/// backslash quotes the next character, "$0" is what is replaced. None if the template is ill-formed, as
/// any other "$" is.
std::optional<std::u16string> triggerCommand(std::u16string_view action, std::u16string_view replacement);

} // namespace znt
