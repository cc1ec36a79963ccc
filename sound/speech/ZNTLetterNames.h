#pragma once

#include <string>
#include <string_view>

namespace znt
{

/// What a voice is to say for one letter of a text, which is a character as readers see it (UAX 29) and not
/// empty. A sign that a voice would pass over has its name, a capital letter "cap" before it.
std::u16string spokenLetter(std::u16string_view letter);

} // namespace znt
