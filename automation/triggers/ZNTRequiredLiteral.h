#pragma once

#include <string>
#include <string_view>

namespace znt
{

/// The longest text found that every match of the ICU regular expression `pattern` (without flags) contains.
/// Empty where none is certain: all that is not plainly understood counts as uncertain.
std::u16string requiredLiteral(std::u16string_view pattern);

} // namespace znt
