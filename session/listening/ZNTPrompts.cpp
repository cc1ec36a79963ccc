#include "ZNTPrompts.h"

#include "ZNTText.h"

std::size_t ZNTPrompts::unitsWithoutRepeat(std::u16string_view chunk)
{
    const auto lineEnd = chunk.find_last_of(u"\r\n");
    const auto start = lineEnd == chunk.npos ? 0 : lineEnd + 1;
    if (chunk.size() - start > longest)
        return chunk.size();
    std::u16string prompt(chunk.substr(start));
    std::erase_if(prompt, [](char16_t unit) { return unit < u' '; }); // an inflated block ends with NULs
    const auto words = znt::trimmedOfWhitespace(prompt);
    if (words.empty())
        return chunk.size();
    if (words == last_)
        return start;
    last_ = words;
    return chunk.size();
}
