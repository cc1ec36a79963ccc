#pragma once

#include <string>
#include <string_view>

/// Helpers that take typed lines apart and colour the game's lines. Case means the letters A to Z.
namespace znt::demo
{

/// `text` between the SGR sequence for `codes` ("1;33") and a reset.
std::u16string coloured(std::u16string_view codes, std::u16string_view text);

/// The first word of `line`, which keeps what follows the blanks after it.
std::u16string_view takeWord(std::u16string_view& line);

/// At most the first `units` of `text`, and no half of a character.
std::u16string_view startOf(std::u16string_view text, std::size_t units);

std::u16string lowerCased(std::u16string_view text);
bool equalsIgnoringCase(std::u16string_view a, std::u16string_view b);

/// A to Z in either case, or a Han character.
bool isLetter(char16_t unit);

/// Whether a player who says `word` means `thing` ("apple", "red apple" for "a red apple").
bool isNamedBy(std::u16string_view thing, std::u16string_view word);

/// `text` without its SGR sequences.
std::u16string withoutColours(std::u16string_view text);

/// `line` without control characters, and without those that turn the direction of all that follows: no
/// player may send them to another. A tab becomes a blank.
std::u16string withoutControls(std::u16string_view line);

} // namespace znt::demo
