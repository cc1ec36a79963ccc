#pragma once

#include <string>
#include <string_view>

namespace znt
{

/// A text that every match of the ICU regular expression `pattern` (without flags) contains, as long a one as
/// can be found. If it does not occur in a chunk, the expression cannot match there, and ICU need not run.
///
/// A wrong answer would silently disable a player's trigger, so the walk over the pattern gives up at all
/// that it does not understand completely, and the answer is empty: then ICU runs on every chunk. An
/// optional, repeated or alternative part never counts.
std::u16string requiredLiteral(std::u16string_view pattern);

} // namespace znt
