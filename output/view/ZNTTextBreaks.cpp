#include "ZNTTextBreaks.h"

#include <memory>
#include <unicode/ubrk.h>

namespace
{

struct Close {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};
using Breaks = std::unique_ptr<UBreakIterator, Close>;

/// Null where ICU lacks its data.
Breaks breaksOf(std::u16string_view text, znt::BreakKind kind)
{
    const auto type = kind == znt::BreakKind::Character ? UBRK_CHARACTER
                      : kind == znt::BreakKind::Word    ? UBRK_WORD
                                                        : UBRK_SENTENCE;
    UErrorCode status = U_ZERO_ERROR;
    return Breaks(ubrk_open(type, "", text.data(), static_cast<std::int32_t>(text.size()), &status));
}

/// Calls `visit(start, end)` for each word until it returns false.
template <typename Visit>
void forEachWord(std::u16string_view text, Visit visit)
{
    const auto breaks = breaksOf(text, znt::BreakKind::Word);
    if (!breaks)
        return;
    auto start = ubrk_first(breaks.get());
    for (auto end = ubrk_next(breaks.get()); end != UBRK_DONE; end = ubrk_next(breaks.get())) {
        // ICU says of each boundary what kind of piece it ends.
        const bool isWord = ubrk_getRuleStatus(breaks.get()) >= UBRK_WORD_NONE_LIMIT;
        if (isWord && !visit(static_cast<std::size_t>(start), static_cast<std::size_t>(end)))
            return;
        start = end;
    }
}

} // namespace

std::pair<std::size_t, std::size_t> znt::pieceAround(std::u16string_view text, std::size_t offset,
                                                     BreakKind kind)
{
    const auto breaks = breaksOf(text, kind);
    if (!breaks || offset >= text.size())
        return {offset, text.size()};
    const auto end = ubrk_following(breaks.get(), static_cast<std::int32_t>(offset));
    const auto start = ubrk_previous(breaks.get());
    return {static_cast<std::size_t>(start), static_cast<std::size_t>(end)};
}

std::size_t znt::nextWordStart(std::u16string_view text, std::size_t offset)
{
    auto found = text.size();
    forEachWord(text, [&](std::size_t start, std::size_t) {
        if (start <= offset)
            return true;
        found = start;
        return false;
    });
    return found;
}

std::size_t znt::previousWordStart(std::u16string_view text, std::size_t offset)
{
    std::size_t found = 0;
    forEachWord(text, [&](std::size_t start, std::size_t) {
        if (start >= offset)
            return false;
        found = start;
        return true;
    });
    return found;
}

void znt::wordsIn(std::u16string_view text, std::vector<std::pair<std::size_t, std::size_t>>& found)
{
    found.clear();
    forEachWord(text, [&](std::size_t start, std::size_t end) {
        found.emplace_back(start, end);
        return true;
    });
}

std::size_t znt::startOfLastWord(std::u16string_view text)
{
    auto found = text.size();
    forEachWord(text, [&](std::size_t start, std::size_t end) {
        if (end == text.size())
            found = start;
        return true;
    });
    return found;
}
