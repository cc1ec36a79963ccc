#include "ZNTGaggedLines.h"

#include <algorithm>

namespace
{

struct Stretch {
    std::size_t start, end;
};

constexpr bool isLineEnd(char16_t unit) { return unit == u'\n' || unit == u'\r'; }

/// Without the line ends at both ends; as it is if it holds nothing else.
Stretch trimmed(std::u16string_view chunk, Stretch match)
{
    auto inner = match;
    while (inner.start < inner.end && isLineEnd(chunk[inner.start]))
        ++inner.start;
    while (inner.end > inner.start && isLineEnd(chunk[inner.end - 1]))
        --inner.end;
    return inner.start < inner.end ? inner : Stretch{match.start, match.start};
}

/// The line in which the unit at `place` stands, with its line end.
Stretch lineAt(std::u16string_view chunk, std::size_t place)
{
    auto end = place;
    while (end < chunk.size() && !isLineEnd(chunk[end]))
        ++end;
    const bool isPair = end + 1 < chunk.size() && isLineEnd(chunk[end + 1]) && chunk[end] != chunk[end + 1];
    end = std::min(end + (isPair ? 2 : 1), chunk.size());
    while (place > 0 && !isLineEnd(chunk[place - 1]))
        --place;
    return {place, end};
}

} // namespace

void ZNTGaggedLines::add(std::u16string_view chunk, std::size_t start, std::size_t end)
{
    auto match = trimmed(chunk, {start, end});
    if (match.start == chunk.size()) { // an empty match at the end
        if (chunk.empty() || isLineEnd(chunk.back()))
            return;
        --match.start;
    }
    isGagged.resize(chunk.size());
    // A line that is gagged already is not measured again: a long one can hold thousands of matches.
    for (auto at = match.start; at == match.start || at < match.end;) {
        if (isGagged[at]) {
            ++at;
            continue;
        }
        const auto line = lineAt(chunk, at);
        std::fill(isGagged.begin() + static_cast<std::ptrdiff_t>(line.start),
                  isGagged.begin() + static_cast<std::ptrdiff_t>(line.end), true);
        at = line.end;
    }
}

std::u16string ZNTGaggedLines::takenOutOf(std::u16string_view text) const
{
    if (isEmpty())
        return std::u16string(text);
    std::u16string left;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (!isGagged[at])
            left += text[at];
    return left;
}
