#include "ZNTReadyText.h"

#include <algorithm>

namespace
{

constexpr bool isLineEnd(char16_t unit) { return unit == u'\n' || unit == u'\r'; }

/// The place after the last line end, 0 if there is none.
std::size_t endOfLastLine(std::u16string_view text)
{
    while (!text.empty() && !isLineEnd(text.back()))
        text.remove_suffix(1);
    return text.size();
}

/// The half of a pair that is left at the end of `lineEnds`, each paired with the one before if it can be.
char16_t halfLeft(char16_t half, std::u16string_view lineEnds)
{
    for (const auto unit : lineEnds)
        half = half != 0 && half != unit ? char16_t{0} : unit;
    return half;
}

} // namespace

std::optional<std::size_t> ZNTReadyText::readyUnits(std::u16string_view text,
                                                    std::optional<std::size_t> endOfPrompt)
{
    const auto ready = std::max(endOfLines(text), endOfPrompt); // none is less than any
    const bool didTextWait = doesTextWait;
    doesTextWait = ready.value_or(0) < text.size() || (didTextWait && !ready);
    return ready == 0U && !didTextWait ? std::nullopt : ready;
}

std::optional<std::size_t> ZNTReadyText::endOfLines(std::u16string_view text)
{
    if (text.empty())
        return std::nullopt;
    const bool didReturnWait = halfOfPair == u'\r';
    const auto end = endOfLastLine(text);
    std::size_t startOfLineEnds = end;
    while (startOfLineEnds > 0 && isLineEnd(text[startOfLineEnds - 1]))
        --startOfLineEnds;
    if (startOfLineEnds > 0)
        halfOfPair = 0;
    halfOfPair = end < text.size() ? char16_t{0} : halfLeft(halfOfPair, text.substr(startOfLineEnds));
    const auto ready = halfOfPair == u'\r' ? endOfLastLine(text.substr(0, end - 1)) : end;
    // Whatever follows a CR completes its line.
    return ready > 0 || didReturnWait ? std::optional(ready) : std::nullopt;
}
