#pragma once

#include "ZNTText.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

/// How the terminal client reads the words of its commands.
namespace znt::words
{

/// The first word of `text`; `text` is left with what follows the blanks behind it.
inline std::u16string_view firstWord(std::u16string_view& text)
{
    text = trimmedOfWhitespace(text);
    const auto end = std::min(text.find(u' '), text.size());
    const auto word = text.substr(0, end);
    text = trimmedOfWhitespace(text.substr(end));
    return word;
}

/// What stands before `separator`; `text` is left with what follows. All of it if there is no separator.
inline std::u16string_view partBefore(std::u16string_view separator, std::u16string_view& text)
{
    const auto end = text.find(separator);
    const auto part = trimmedOfWhitespace(text.substr(0, end));
    text =
        end == text.npos ? std::u16string_view() : trimmedOfWhitespace(text.substr(end + separator.size()));
    return part;
}

/// The number that all of `word` is; 0 if it is no number.
inline int wholeNumber(std::u16string_view word)
{
    const bool isNumber =
        !word.empty() && word.size() < 10 &&
        std::all_of(word.begin(), word.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
    return isNumber ? integerValue(word) : 0;
}

/// The port that `word` names, or 0.
inline int portNumber(std::u16string_view word)
{
    const int port = wholeNumber(word);
    return port <= 65535 ? port : 0;
}

inline std::u16string joined(std::initializer_list<std::u16string_view> pieces)
{
    std::u16string text;
    for (const auto piece : pieces)
        text += piece;
    return text;
}

} // namespace znt::words
