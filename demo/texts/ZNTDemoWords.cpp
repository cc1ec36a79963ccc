#include "ZNTDemoWords.h"

#include <algorithm>

namespace
{

char16_t lowerCased(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

/// Line and paragraph separators, embeddings, overrides and isolates (Unicode, UAX #9).
bool isOfLineOrDirection(char16_t unit)
{
    return (unit >= 0x2028 && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

bool isLatinLetter(char16_t unit) { return lowerCased(unit) >= u'a' && lowerCased(unit) <= u'z'; }

} // namespace

namespace znt::demo
{

std::u16string coloured(std::u16string_view codes, std::u16string_view text)
{
    std::u16string result = u"\x1b[";
    result += codes;
    result += u'm';
    result += text;
    result += u"\x1b[0m";
    return result;
}

std::u16string_view takeWord(std::u16string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(u' '), line.size()));
    const auto word = line.substr(0, line.find(u' '));
    line.remove_prefix(word.size());
    line.remove_prefix(std::min(line.find_first_not_of(u' '), line.size()));
    return word;
}

std::u16string_view startOf(std::u16string_view text, std::size_t units)
{
    const bool endsWithin =
        units > 0 && units < text.size() && (text[units] & 0xFC00) == 0xDC00; // the second half of a pair
    return text.substr(0, endsWithin ? units - 1 : units);
}

std::u16string lowerCased(std::u16string_view text)
{
    std::u16string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char16_t unit) { return ::lowerCased(unit); });
    return result;
}

bool equalsIgnoringCase(std::u16string_view a, std::u16string_view b)
{
    return lowerCased(a) == lowerCased(b);
}

bool isLetter(char16_t unit) { return isLatinLetter(unit) || (unit >= 0x4E00 && unit <= 0x9FFF); }

bool isNamedBy(std::u16string_view thing, std::u16string_view word)
{
    if (word.empty() || !isLetter(word.front()))
        return false;
    const auto at = lowerCased(thing).find(lowerCased(word));
    if (at == std::u16string_view::npos)
        return false;
    const auto end = at + word.size();
    // Latin words count whole; "a" names nothing.
    const bool beginsInside = at > 0 && isLatinLetter(thing[at - 1]) && isLatinLetter(word.front());
    const bool endsInside = end < thing.size() && isLatinLetter(thing[end]) && isLatinLetter(word.back());
    return !beginsInside && !endsInside && (word.size() > 1 || !isLatinLetter(word.front()));
}

std::u16string withoutColours(std::u16string_view text)
{
    std::u16string result;
    for (;;) {
        const auto start = text.find(u"\x1b[");
        result += text.substr(0, start);
        if (start == std::u16string_view::npos)
            return result;
        text.remove_prefix(start);
        text.remove_prefix(std::min(text.find(u'm'), text.size() - 1) + 1);
    }
}

std::u16string withoutControls(std::u16string_view line)
{
    std::u16string result;
    for (const char16_t unit : line) {
        if (unit == u'\t')
            result += u' ';
        else if (unit >= 0x20 && !(unit >= 0x7F && unit < 0xA0) && !isOfLineOrDirection(unit))
            result += unit;
    }
    return result;
}

} // namespace znt::demo
