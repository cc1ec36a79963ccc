#include "ZNTGbCharacters.h"

#include "ZNTStringEncoding.h"

#include <algorithm>
#include <optional>
#include <unicode/ucnv.h>
#include <vector>

namespace
{

struct Name {
    char16_t known;
    char16_t wanted;
};
using Names = std::vector<Name>; // sorted by the known one

struct Tables {
    Names toUsual;
    Names toConverter;
};

/// The first rows of GB 2312 hold signs and alphabets. The characters of all other rows have one name only.
constexpr int firstByte = 0xA1, lastByte = 0xFE, lastRowOfSigns = 0xA8;

bool isPrivate(char16_t unit) { return unit >= 0xE000 && unit <= 0xF8FF; }

std::optional<char16_t> unitFor(UConverter* converter, int row, int cell)
{
    const char bytes[] = {static_cast<char>(row), static_cast<char>(cell)};
    char16_t units[2] = {};
    UErrorCode error = U_ZERO_ERROR;
    const auto count = ucnv_toUChars(converter, units, 2, bytes, 2, &error);
    return U_SUCCESS(error) && count == 1 ? std::optional(units[0]) : std::nullopt;
}

UConverter* openStrict(const char* name)
{
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(name, &error);
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    return converter; // null if ICU lacks the table
}

Tables compared()
{
    Tables tables;
    UConverter* converter = openStrict(znt::rowOf(ZNTStringEncoding::EucCn).converter);
    UConverter* standard = openStrict("gb18030");
    if (converter && standard) {
        for (int row = firstByte; row <= lastRowOfSigns; ++row) {
            for (int cell = firstByte; cell <= lastByte; ++cell) {
                const auto its = unitFor(converter, row, cell);
                const auto usual = unitFor(standard, row, cell);
                if (!its || !usual || *its == *usual || isPrivate(*usual))
                    continue;
                tables.toUsual.push_back({*its, *usual});
                tables.toConverter.push_back({*usual, *its});
            }
        }
    }
    ucnv_close(converter);
    ucnv_close(standard);
    std::ranges::sort(tables.toUsual, {}, &Name::known);
    std::ranges::sort(tables.toConverter, {}, &Name::known);
    return tables;
}

const Tables& tables()
{
    static const Tables all = compared();
    return all;
}

/// Latin letters and the common Chinese characters, nearly all of any text, have one name.
bool hasOneName(char16_t unit) { return unit < 0x80 || (unit >= 0x3100 && unit < 0xE000); }

void rename(char16_t* from, const char16_t* end, const Names& names)
{
    for (; from != end; ++from) {
        if (hasOneName(*from))
            continue;
        const auto found = std::ranges::lower_bound(names, *from, {}, &Name::known);
        if (found != names.end() && found->known == *from)
            *from = found->wanted;
    }
}

} // namespace

namespace znt
{

void toUsualGbNames(char16_t* from, const char16_t* end) { rename(from, end, tables().toUsual); }

void toConverterGbNames(char16_t* from, const char16_t* end) { rename(from, end, tables().toConverter); }

} // namespace znt
