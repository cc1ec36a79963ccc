#include "ZNTTextScan.h"

#include <bit>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace znt
{

std::size_t findUnit(std::u16string_view text, char16_t wanted, std::size_t from)
{
    std::size_t at = from;
#if defined(__SSE2__)
    const __m128i pattern = _mm_set1_epi16(static_cast<short>(wanted));
    const auto load = [&](std::size_t offset) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + offset));
    };
    for (; at + 32 <= text.size(); at += 32) {
        const __m128i a = _mm_cmpeq_epi16(load(at), pattern), b = _mm_cmpeq_epi16(load(at + 8), pattern);
        const __m128i c = _mm_cmpeq_epi16(load(at + 16), pattern),
                      d = _mm_cmpeq_epi16(load(at + 24), pattern);
        if (_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) == 0)
            continue;
        const auto low = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(a, b)));
        const auto high = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(c, d)));
        return at + static_cast<std::size_t>(std::countr_zero(low | high << 16));
    }
#endif
    for (; at < text.size(); ++at)
        if (text[at] == wanted)
            return at;
    return std::u16string_view::npos;
}

std::size_t asciiLength(std::string_view bytes)
{
    // The compiler makes two vector operations of each step.
    constexpr std::size_t step = 32;
    std::size_t at = 0;
    for (; at + step <= bytes.size(); at += step) {
        unsigned char all = 0;
        for (std::size_t each = 0; each < step; ++each)
            all |= static_cast<unsigned char>(bytes[at + each]);
        if (all >= 0x80)
            break;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

void widen(std::string_view bytes, char16_t* to)
{
    // Pointers that cannot overlap let the compiler use vectors.
    const char* __restrict from = bytes.data();
    char16_t* __restrict into = to;
    for (std::size_t at = 0; at < bytes.size(); ++at)
        into[at] = static_cast<unsigned char>(from[at]);
}

} // namespace znt
