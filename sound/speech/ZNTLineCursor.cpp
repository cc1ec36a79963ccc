#include "ZNTLineCursor.h"

#include "ZNTTextBreaks.h"

#include <algorithm>

void ZNTLineCursor::setLine(std::u16string_view newLine)
{
    line = newLine;
    now.reset();
}

std::vector<ZNTLineCursor::Part> ZNTLineCursor::partsOf(Unit unit) const
{
    std::vector<Part> parts;
    const auto breaks = znt::breaksOf(unit == Unit::Word ? UBRK_WORD : UBRK_CHARACTER, line);
    if (!breaks)
        return parts;
    std::size_t start = 0;
    for (auto at = ubrk_next(breaks.get()); at != UBRK_DONE; at = ubrk_next(breaks.get())) {
        const auto end = static_cast<std::size_t>(at);
        if (unit == Unit::Letter || ubrk_getRuleStatus(breaks.get()) >= UBRK_WORD_NONE_LIMIT)
            parts.push_back({unit, start, end});
        start = end;
    }
    return parts;
}

std::u16string_view ZNTLineCursor::move(Unit unit, Way way)
{
    const auto parts = partsOf(unit);
    if (parts.empty())
        return {};
    if (way == Way::Next) {
        const bool isIntoWord = now && now->unit == Unit::Word && unit == Unit::Letter;
        const std::size_t from = !now ? 0 : isIntoWord ? now->start : now->end;
        const auto found =
            std::ranges::find_if(parts, [from](const Part& part) { return part.start >= from; });
        now = found == parts.end() ? parts.back() : *found;
    } else {
        const std::size_t before = now ? now->start : line.size();
        const auto after =
            std::ranges::partition_point(parts, [before](const Part& part) { return part.start < before; });
        now = after == parts.begin() ? parts.front() : *(after - 1);
    }
    return std::u16string_view(line).substr(now->start, now->end - now->start);
}
