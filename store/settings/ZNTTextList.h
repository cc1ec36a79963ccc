#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The value of a setting that is a list of texts, such as patterns. UTF-8; no text is empty, has blanks at
/// its ends, or holds a control character.
using ZNTTextList = std::vector<std::string>;

namespace znt
{

/// What a list may hold, so that a damaged file cannot fill the memory. No player types as much.
inline constexpr std::size_t mostTextsOfList = 1'000;
inline constexpr std::size_t longestTextOfList = 1'000; ///< bytes

/// One text for the whole list: ";" stands between its texts. "\;" is a semicolon within one, and "\\" a
/// backslash; before any other character a backslash stands for itself, as patterns need it.
std::string joinedTexts(const ZNTTextList& list);

/// Reads what `joinedTexts` writes, also with line ends in place of semicolons. Blanks around a text and
/// empty texts do not count. None if a text is no UTF-8, holds a control character, or the limits above are
/// exceeded.
std::optional<ZNTTextList> textsIn(std::string_view joined);

/// Makes a list of texts that are not joined, by the rules of `textsIn`: one text has no line end.
std::optional<ZNTTextList> listOfTexts(const std::vector<std::string>& texts);

} // namespace znt
