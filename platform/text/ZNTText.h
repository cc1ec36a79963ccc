#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

/// Small operations on the UTF-16 text that the logic works with; the templates are for bytes, too.
namespace znt
{

/// Ill-formed sequences become U+FFFD. So every text of a file or a terminal is accepted.
std::u16string textFromUtf8(std::string_view utf8);
/// An unpaired surrogate becomes U+FFFD.
std::string utf8FromText(std::u16string_view text);

/// The leading decimal number of `text`: blanks, an optional sign, ASCII digits. 0 if there is none, the
/// nearest representable number if it does not fit. What follows the number is ignored.
std::int32_t integerValue(std::u16string_view text);
std::int64_t longValue(std::u16string_view text);
/// The same for a decimal fraction ("0.5", "50", "-1.25e2").
float floatValue(std::u16string_view text);

std::u16string decimalText(std::int64_t number);

/// An ASCII capital as its small letter; every other unit as it is.
template <typename Unit>
constexpr Unit asciiLowered(Unit unit)
{
    return unit >= Unit{'A'} && unit <= Unit{'Z'} ? static_cast<Unit>(unit + ('a' - 'A')) : unit;
}

/// Without the units at both ends for which `isDropped` is true.
template <typename Unit, typename Predicate>
constexpr std::basic_string_view<Unit> trimmedOf(std::basic_string_view<Unit> text, Predicate isDropped)
{
    while (!text.empty() && isDropped(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isDropped(text.back()))
        text.remove_suffix(1);
    return text;
}
/// Without the blanks and tabs (and other characters of category Zs) at both ends; line ends stay.
std::u16string_view trimmedOfBlanks(std::u16string_view text);
/// Without the spaces (U+0020) and tabs at both ends; other blanks stay.
std::u16string_view trimmedOfSpacesAndTabs(std::u16string_view text);
/// The last `most` UTF-16 units of `text`, or all of it if it is shorter.
constexpr std::u16string_view lastUnits(std::u16string_view text, std::size_t most)
{
    return text.substr(text.size() > most ? text.size() - most : 0);
}
/// Without the line ends (LF, VT, FF, CR, NEL, U+2028, U+2029) at both ends.
std::u16string_view trimmedOfNewlines(std::u16string_view text);
/// Without either at both ends.
std::u16string_view trimmedOfWhitespace(std::u16string_view text);

/// The sentences that are not empty, with a blank between them.
std::u16string joinedSentences(std::initializer_list<std::u16string_view> sentences);
std::u16string replacedAll(std::u16string_view text, std::u16string_view what, std::u16string_view with);
bool contains(std::u16string_view text, std::u16string_view part);

} // namespace znt
