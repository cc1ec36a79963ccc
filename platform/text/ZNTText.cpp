#include "ZNTText.h"

#include "ZNTTextScan.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace
{

constexpr UChar32 replacementCharacter = 0xFFFD;

template <typename Number>
Number leadingInteger(std::u16string_view text)
{
    std::size_t at = 0;
    while (at < text.size() && u_isUWhiteSpace(text[at]))
        ++at;
    bool isNegative = false;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+'))
        isNegative = text[at++] == u'-';
    std::string digits = isNegative ? "-" : "";
    while (at < text.size() && text[at] >= u'0' && text[at] <= u'9')
        digits += static_cast<char>(text[at++]);
    Number number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec == std::errc::result_out_of_range)
        return isNegative ? std::numeric_limits<Number>::min() : std::numeric_limits<Number>::max();
    return number;
}

bool isBlank(char16_t unit) { return unit == u'\t' || u_charType(unit) == U_SPACE_SEPARATOR; }

} // namespace

namespace znt
{

std::u16string textFromUtf8(std::string_view utf8)
{
    std::u16string text;
    text.reserve(utf8.size());
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    for (std::size_t at = 0; at < utf8.size();) {
        UChar32 character;
        U8_NEXT_OR_FFFD(bytes, at, utf8.size(), character);
        if (character <= 0xFFFF) {
            text += static_cast<char16_t>(character);
        } else {
            text += static_cast<char16_t>(U16_LEAD(character));
            text += static_cast<char16_t>(U16_TRAIL(character));
        }
    }
    return text;
}

std::string utf8FromText(std::u16string_view text)
{
    char16_t allBits = 0; // most text is ASCII; the compiler vectorises the loops that find and narrow it
    for (const auto unit : text)
        allBits |= unit;
    if (allBits < 0x80) {
        std::string ascii(text.size(), '\0');
        for (std::size_t at = 0; at < text.size(); ++at)
            ascii[at] = static_cast<char>(text[at]);
        return ascii;
    }
    std::string utf8;
    utf8.reserve(text.size() + text.size() / 2);
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] < 0x80) {
            utf8 += static_cast<char>(text[at++]);
            continue;
        }
        UChar32 character;
        U16_NEXT(text.data(), at, text.size(), character);
        if (U_IS_SURROGATE(character))
            character = replacementCharacter;
        char bytes[U8_MAX_LENGTH];
        std::size_t length = 0;
        U8_APPEND_UNSAFE(bytes, length, character);
        utf8.append(bytes, length);
    }
    return utf8;
}

std::int32_t integerValue(std::u16string_view text) { return leadingInteger<std::int32_t>(text); }

std::int64_t longValue(std::u16string_view text) { return leadingInteger<std::int64_t>(text); }

float floatValue(std::u16string_view text)
{
    std::string ascii;
    for (const auto unit : trimmedOfWhitespace(text)) {
        if (unit > 0x7F)
            break;
        ascii += static_cast<char>(unit);
    }
    const char* start = ascii.data() + (ascii.starts_with('+') ? 1 : 0);
    float number = 0;
    const auto read = std::from_chars(start, ascii.data() + ascii.size(), number);
    if (read.ec == std::errc::result_out_of_range)
        return ascii.starts_with('-') ? std::numeric_limits<float>::lowest()
                                      : std::numeric_limits<float>::max();
    // "inf" and "nan", which are read as numbers, are words to a player.
    return std::isfinite(number) ? number : 0;
}

std::u16string decimalText(std::int64_t number) { return textFromUtf8(std::to_string(number)); }

std::u16string_view trimmedOfBlanks(std::u16string_view text) { return trimmedOf(text, isBlank); }

std::u16string_view trimmedOfSpacesAndTabs(std::u16string_view text)
{
    return trimmedOf(text, [](char16_t unit) { return unit == u' ' || unit == u'\t'; });
}

std::u16string_view trimmedOfNewlines(std::u16string_view text) { return trimmedOf(text, isLineTerminator); }

std::u16string_view trimmedOfWhitespace(std::u16string_view text)
{
    return trimmedOf(text, [](char16_t unit) { return isBlank(unit) || isLineTerminator(unit); });
}

std::u16string joinedSentences(std::initializer_list<std::u16string_view> sentences)
{
    std::u16string joined;
    for (const auto sentence : sentences) {
        if (!joined.empty() && !sentence.empty())
            joined += u' ';
        joined += sentence;
    }
    return joined;
}

std::u16string replacedAll(std::u16string_view text, std::u16string_view what, std::u16string_view with)
{
    std::u16string result;
    if (what.empty())
        return std::u16string(text);
    for (std::size_t at = 0;;) {
        const auto found = text.find(what, at);
        result += text.substr(at, found == text.npos ? text.npos : found - at);
        if (found == text.npos)
            return result;
        result += with;
        at = found + what.size();
    }
}

bool contains(std::u16string_view text, std::u16string_view part) { return text.find(part) != text.npos; }

} // namespace znt
