#include "ZNTCellWidth.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

constexpr char32_t firstMark = 0x300; // nothing below combines, but for the soft hyphen, which we show

bool joinsTheOneBefore(char32_t character)
{
    if (character < firstMark)
        return false;
    if (character >= 0x1160 && character <= 0x11FF) // the vowels and finals of a Hangul syllable
        return true;
    return (U_MASK(u_charType(static_cast<UChar32>(character))) &
            (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK)) != 0;
}

} // namespace

int znt::cellWidth(char32_t character, AmbiguousWidth ambiguous)
{
    if (character < 0xA1)
        return 1;
    if (character >= 0x4E00 && character <= 0x9FFF) // most of every Chinese text
        return 2;
    if (joinsTheOneBefore(character))
        return 0;
    switch (u_getIntPropertyValue(static_cast<UChar32>(character), UCHAR_EAST_ASIAN_WIDTH)) {
    case U_EA_FULLWIDTH:
    case U_EA_WIDE:
        return 2;
    case U_EA_AMBIGUOUS:
        return ambiguous == AmbiguousWidth::Wide ? 2 : 1;
    default:
        return 1;
    }
}

znt::Cluster znt::clusterAt(std::u16string_view text, std::size_t offset, AmbiguousWidth ambiguous)
{
    const auto size = text.size();
    const auto next = [text, size](std::size_t& at) {
        UChar32 character = 0;
        U16_NEXT(text.data(), at, size, character);
        return static_cast<char32_t>(character);
    };
    auto end = offset;
    const int width = cellWidth(next(end), ambiguous);
    while (end < size && text[end] >= firstMark) {
        auto after = end;
        if (cellWidth(next(after), ambiguous) != 0)
            break;
        end = after;
    }
    return {end - offset, width == 0 ? 1 : width}; // a mark without a character before it stands alone
}
