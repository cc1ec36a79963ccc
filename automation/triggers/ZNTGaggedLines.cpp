#include "ZNTGaggedLines.h"

#include "ZNTLine.h"

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
    while (place > 0 && !isLineEnd(chunk[place - 1]))
        --place;
    auto rest = chunk.substr(place);
    return {place, place + ZNTLine::takenFrom(rest).whole.size()};
}

} // namespace

void ZNTGaggedLines::add(std::u16string_view chunk, std::size_t start, std::size_t end,
                         const MatchesAlone& matchesAlone)
{
    auto match = trimmed(chunk, {start, end});
    if (match.start == chunk.size()) { // an empty match at the end
        if (chunk.empty() || isLineEnd(chunk.back()))
            return;
        --match.start;
    }
    isGagged.resize(chunk.size());
    if (addThoseThatMatchAlone(chunk, match.start, match.end, matchesAlone))
        return;
    // A line that is gagged already is not measured again: a long one can hold thousands of matches.
    for (auto at = match.start; at == match.start || at < match.end;) {
        if (isGagged[at]) {
            ++at;
            continue;
        }
        const auto line = lineAt(chunk, at);
        gag(line.start, line.end);
        at = line.end;
    }
}

/// False if none does, or if the match touches one line only: then there is nothing to ask.
bool ZNTGaggedLines::addThoseThatMatchAlone(std::u16string_view chunk, std::size_t start, std::size_t end,
                                            const MatchesAlone& matchesAlone)
{
    const auto match = chunk.substr(start, end - start);
    if (std::none_of(match.begin(), match.end(), isLineEnd))
        return false;
    bool isAny = false;
    for (auto at = start; at < end;) {
        const auto line = lineAt(chunk, at);
        auto text = chunk.substr(line.start, line.end - line.start);
        while (!text.empty() && isLineEnd(text.back()))
            text.remove_suffix(1);
        if (matchesAlone(text)) {
            gag(line.start, line.end);
            isAny = true;
        }
        at = line.end;
    }
    return isAny;
}

void ZNTGaggedLines::gag(std::size_t start, std::size_t end)
{
    std::fill(isGagged.begin() + static_cast<std::ptrdiff_t>(start),
              isGagged.begin() + static_cast<std::ptrdiff_t>(end), true);
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
