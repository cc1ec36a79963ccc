#include "ZNTOutputFind.h"

#include <algorithm>
#include <chrono>
#include <numeric>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

char16_t foldedUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    return U16_IS_SURROGATE(unit) ? unit : static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
}

constexpr char16_t upperOfAscii(char16_t unit)
{
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
}

} // namespace

void ZNTOutputFind::setText(std::u16string_view text)
{
    folded.clear();
    for (const char16_t unit : text.substr(0, text.find_first_of(u"\r\n")))
        folded.push_back(foldedUnit(unit));
    current.reset();
    hasWrapped = false;
    counts.clear();
    counted = 0;
    firstCounted = store.firstBlock();
}

/// Where in `text` the next match at or after `from` starts, or npos.
std::size_t ZNTOutputFind::findFrom(std::u16string_view text, std::size_t from) const
{
    const std::u16string_view wanted = folded;
    if (wanted.empty() || text.size() < wanted.size())
        return text.npos;
    const char16_t lower = wanted.front();
    const char16_t upper = upperOfAscii(lower);
    const bool isAscii = lower < 0x80;
    const auto last = text.size() - wanted.size();
    for (auto at = from; at <= last; ++at) {
        const char16_t unit = text[at];
        if (isAscii ? unit != lower && unit != upper : foldedUnit(unit) != lower)
            continue;
        std::size_t length = 1;
        while (length < wanted.size() && foldedUnit(text[at + length]) == wanted[length])
            ++length;
        if (length == wanted.size())
            return at;
    }
    return text.npos;
}

void ZNTOutputFind::matchesIn(std::u16string_view text,
                              std::vector<std::pair<std::size_t, std::size_t>>& found) const
{
    found.clear();
    for (auto at = findFrom(text, 0); at != text.npos; at = findFrom(text, at + folded.size()))
        found.emplace_back(at, at + folded.size());
}

std::optional<ZNTOutputFind::Match> ZNTOutputFind::firstFrom(Position from, Position until) const
{
    const auto length = static_cast<Position>(folded.size());
    for (auto number = store.blockAt(from); number < store.endBlock(); ++number) {
        const auto block = store.block(number);
        if (block.start >= until)
            return {};
        const auto offset = static_cast<std::size_t>(std::max(from, block.start) - block.start);
        const auto at = findFrom(block.text, offset);
        if (at == block.text.npos)
            continue;
        const auto start = block.start + static_cast<Position>(at);
        if (start >= until)
            return {};
        return Match{start, start + length};
    }
    return {};
}

std::optional<ZNTOutputFind::Match> ZNTOutputFind::lastBefore(Position before, Position from) const
{
    for (auto number = store.blockAt(before); number >= store.firstBlock(); --number) {
        const auto block = store.block(number);
        if (block.start + static_cast<Position>(block.text.size()) < from)
            return {};
        std::optional<Match> last;
        for (auto at = findFrom(block.text, 0); at != block.text.npos;
             at = findFrom(block.text, at + folded.size())) {
            const auto start = block.start + static_cast<Position>(at);
            if (start >= before)
                break;
            if (start >= from)
                last = Match{start, start + static_cast<Position>(folded.size())};
        }
        if (last)
            return last;
    }
    return {};
}

std::optional<ZNTOutputFind::Match> ZNTOutputFind::next(Position position)
{
    if (!isActive())
        return {};
    const auto from = std::clamp(position, store.start(), store.end());
    current = firstFrom(from, store.end());
    hasWrapped = !current;
    if (!current)
        current = firstFrom(store.start(), from);
    return current;
}

std::optional<ZNTOutputFind::Match> ZNTOutputFind::previous(Position position)
{
    if (!isActive())
        return {};
    const auto before = std::clamp(position, store.start(), store.end());
    current = lastBefore(before, store.start());
    hasWrapped = !current;
    if (!current)
        current = lastBefore(store.end(), before);
    return current;
}

void ZNTOutputFind::dropOldCounts()
{
    for (; firstCounted < store.firstBlock(); ++firstCounted) {
        if (counts.empty())
            continue;
        counted -= counts.front();
        counts.pop_front();
    }
}

bool ZNTOutputFind::countSome(int milliseconds)
{
    if (!isActive())
        return false;
    dropOldCounts();
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    std::vector<std::pair<std::size_t, std::size_t>> found;
    for (;;) {
        const auto next = firstCounted + static_cast<std::int64_t>(counts.size());
        if (next + 1 >= store.endBlock())
            return false;
        matchesIn(store.block(next).text, found);
        counts.push_back(static_cast<std::int64_t>(found.size()));
        counted += counts.back();
        if (std::chrono::steady_clock::now() >= end)
            return true;
    }
}

ZNTOutputFind::Status ZNTOutputFind::status() const
{
    Status status;
    if (!isActive())
        return status;
    status.hasWrapped = hasWrapped;
    status.isCounting = firstCounted + static_cast<std::int64_t>(counts.size()) + 1 < store.endBlock();
    std::vector<std::pair<std::size_t, std::size_t>> found;
    matchesIn(store.block(store.endBlock() - 1).text, found);
    status.count = counted + static_cast<std::int64_t>(found.size());
    if (status.isCounting || !current || current->start < store.start())
        return status;
    const auto number = store.blockAt(current->start);
    const auto block = store.block(number);
    const auto before = static_cast<std::size_t>(number - std::min(number, firstCounted));
    status.current = std::accumulate(
        counts.begin(), counts.begin() + static_cast<std::ptrdiff_t>(std::min(before, counts.size())),
        std::int64_t{0});
    matchesIn(block.text, found);
    for (const auto& match : found)
        if (block.start + static_cast<Position>(match.first) <= current->start)
            ++status.current;
    return status;
}
