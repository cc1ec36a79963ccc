#include "ZNTLetterNames.h"

#include "ZNTText.h"

#include <algorithm>
#include <array>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace
{

struct SignName {
    char16_t sign;
    std::u16string_view name;
};

/// The usual words for signs whose names in Unicode are longer or less known.
constexpr std::array signNames{SignName{u'\t', u"tab"},
                               SignName{u' ', u"space"},
                               SignName{u'!', u"exclamation mark"},
                               SignName{u'"', u"quote"},
                               SignName{u'#', u"number sign"},
                               SignName{u'$', u"dollar"},
                               SignName{u'%', u"percent"},
                               SignName{u'&', u"and"},
                               SignName{u'\'', u"apostrophe"},
                               SignName{u'(', u"left paren"},
                               SignName{u')', u"right paren"},
                               SignName{u'*', u"star"},
                               SignName{u'+', u"plus"},
                               SignName{u',', u"comma"},
                               SignName{u'-', u"dash"},
                               SignName{u'.', u"dot"},
                               SignName{u'/', u"slash"},
                               SignName{u':', u"colon"},
                               SignName{u';', u"semicolon"},
                               SignName{u'<', u"less than"},
                               SignName{u'=', u"equals"},
                               SignName{u'>', u"greater than"},
                               SignName{u'?', u"question mark"},
                               SignName{u'@', u"at"},
                               SignName{u'[', u"left bracket"},
                               SignName{u'\\', u"backslash"},
                               SignName{u']', u"right bracket"},
                               SignName{u'^', u"caret"},
                               SignName{u'_', u"underscore"},
                               SignName{u'`', u"backquote"},
                               SignName{u'{', u"left brace"},
                               SignName{u'|', u"bar"},
                               SignName{u'}', u"right brace"},
                               SignName{u'~', u"tilde"},
                               SignName{u'\u2018', u"left quote"},
                               SignName{u'\u2019', u"apostrophe"},
                               SignName{u'\u201C', u"left quote"},
                               SignName{u'\u201D', u"right quote"}};

/// Unicode's own name in small letters; empty if it has none.
std::u16string unicodeName(UChar32 character)
{
    std::array<char, 128> name{};
    UErrorCode status = U_ZERO_ERROR;
    u_charName(character, U_EXTENDED_CHAR_NAME, name.data(), static_cast<std::int32_t>(name.size()), &status);
    if (U_FAILURE(status))
        return {};
    std::string small(name.data());
    std::ranges::transform(small, small.begin(), znt::asciiLowered<char>);
    return znt::textFromUtf8(small);
}

} // namespace

std::u16string znt::spokenLetter(std::u16string_view letter)
{
    UChar32 first;
    std::size_t length = 0;
    U16_NEXT(letter.data(), length, letter.size(), first);
    if (u_isUUppercase(first)) {
        std::u16string small;
        const UChar32 lower = u_tolower(first);
        std::array<char16_t, U16_MAX_LENGTH> units{};
        std::size_t count = 0;
        U16_APPEND_UNSAFE(units, count, lower);
        return u"cap " + small.append(units.data(), count).append(letter.substr(length));
    }
    if (u_isalnum(first) || u_isUAlphabetic(first))
        return std::u16string(letter);
    const auto* known = std::ranges::find(signNames, letter.front(), &SignName::sign);
    return known != signNames.end() ? std::u16string(known->name) : unicodeName(first);
}
