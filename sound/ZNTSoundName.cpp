#include "ZNTSoundName.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

namespace
{

using Normalizer = const UNormalizer2* (*)(UErrorCode*);

std::u16string normalised(std::u16string_view text, Normalizer form)
{
    UErrorCode status = U_ZERO_ERROR;
    const auto* normalizer = form(&status);
    // No character takes more than 18 units of UTF-16 in NFD, nor more than 3 in NFC (UAX #15).
    std::u16string result(text.size() * 18 + 1, u'\0');
    const auto length = unorm2_normalize(normalizer, text.data(), static_cast<std::int32_t>(text.size()),
                                         result.data(), static_cast<std::int32_t>(result.size()), &status);
    if (U_FAILURE(status) != 0)
        return std::u16string(text);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

template <typename Visit>
void forEachCharacter(std::u16string_view text, Visit visit)
{
    for (std::size_t at = 0; at < text.size();) {
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        visit(character);
    }
}

void append(std::u16string& text, UChar32 character)
{
    if (U_IS_BMP(character)) {
        text += static_cast<char16_t>(character);
    } else {
        text += static_cast<char16_t>(U16_LEAD(character));
        text += static_cast<char16_t>(U16_TRAIL(character));
    }
}

} // namespace

namespace znt
{

std::u16string foldedSoundName(std::u16string_view name)
{
    std::u16string folded;
    if (std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x80; })) {
        for (const auto unit : name)
            folded += unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
        return folded;
    }
    std::u16string bare;
    forEachCharacter(normalised(name, unorm2_getNFDInstance), [&](UChar32 character) {
        if (u_charType(character) != U_NON_SPACING_MARK)
            append(bare, character);
    });
    forEachCharacter(normalised(bare, unorm2_getNFCInstance),
                     [&](UChar32 character) { append(folded, u_foldCase(character, U_FOLD_CASE_DEFAULT)); });
    return folded;
}

bool soundNameFits(std::u16string_view name, std::u16string_view pattern)
{
    // After a mismatch, let the last "*" match one character more and try again. Earlier ones need no second
    // try: they matched the shortest text that they could.
    constexpr auto none = std::u16string_view::npos;
    std::size_t inName = 0, inPattern = 0, afterStar = none, starEnd = 0;
    while (inName < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == u'*') {
            afterStar = ++inPattern;
            starEnd = inName;
        } else if (inPattern < pattern.size() && pattern[inPattern] == u'?') {
            U16_FWD_1(name.data(), inName, name.size());
            ++inPattern;
        } else if (inPattern < pattern.size() && pattern[inPattern] == name[inName]) {
            ++inName;
            ++inPattern;
        } else if (afterStar != none) {
            inPattern = afterStar;
            inName = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', inPattern) == none;
}

} // namespace znt
