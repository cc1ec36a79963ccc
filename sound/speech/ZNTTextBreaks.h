#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <unicode/ubrk.h>

/// ICU's break iterators (UAX 29), of no particular language. For the sources of this room.
namespace znt
{

struct BreakCloser {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};
using Breaks = std::unique_ptr<UBreakIterator, BreakCloser>;

/// `text` outlives it. Null if ICU's data cannot be read.
inline Breaks breaksOf(UBreakIteratorType type, std::u16string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    Breaks breaks(ubrk_open(type, "", text.data(), static_cast<std::int32_t>(text.size()), &status));
    return U_SUCCESS(status) ? std::move(breaks) : nullptr;
}

} // namespace znt
