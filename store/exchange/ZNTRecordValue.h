#pragma once

#include <optional>
#include <string>
#include <string_view>

// How a text stands as a value behind "NAME =". Most texts stand as they are. A text with blanks at its ends,
// control characters or an unpaired surrogate stands between quotation marks, with escapes.
namespace znt::exchange
{

/// What is wrong with a place in the file, as a sentence for the player. None if nothing is.
using Complaint = std::optional<std::string>;

/// Any text; `readTextOfValue` makes it again.
std::u16string valueOfText(std::u16string_view text);

/// Reads what `value` stands for into the empty `text`. `value` has no blanks at its ends. Linear.
Complaint readTextOfValue(std::u16string_view value, std::u16string& text);

} // namespace znt::exchange
