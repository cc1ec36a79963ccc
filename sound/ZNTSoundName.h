#pragma once

#include <string>
#include <string_view>

/// File names as players and games mean them: without regard to case and diacritics.
namespace znt
{

/// Two names that mean the same have the same folded name. A base character stays one character.
std::u16string foldedSoundName(std::u16string_view name);

/// Whether all of `name` fits `pattern`, in which "*" stands for any characters and "?" for one. Both folded.
bool soundNameFits(std::u16string_view name, std::u16string_view pattern);

} // namespace znt
