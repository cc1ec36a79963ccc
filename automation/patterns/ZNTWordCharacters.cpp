#include "ZNTWordCharacters.h"

#include <string>
#include <unicode/uregex.h>

ZNTWordCharacters::Bits ZNTWordCharacters::askIcu()
{
    Bits bits{};
    // Every unit but the surrogates, so that an offset is the unit itself or 0x800 below it.
    std::u16string all;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit)
        if (unit < 0xD800 || unit > 0xDFFF)
            all += static_cast<char16_t>(unit);
    UErrorCode status = U_ZERO_ERROR;
    URegularExpression* expression = uregex_open(uR"([\w\s]+)", -1, 0, nullptr, &status);
    uregex_setText(expression, all.data(), static_cast<std::int32_t>(all.size()), &status);
    while (uregex_findNext(expression, &status) != 0 && U_SUCCESS(status)) {
        const auto end = uregex_end(expression, 0, &status);
        for (auto at = uregex_start(expression, 0, &status); at < end; ++at) {
            const auto unit = all[static_cast<std::size_t>(at)];
            bits[unit / 64U] |= std::uint64_t{1} << (unit % 64U);
        }
    }
    uregex_close(expression);
    return bits;
}
