#include "ZNTDemoTexts.h"

#include "ZNTDemoLanguages.h"

#include <algorithm>

const ZNTDemoTexts& ZNTDemoTexts::forEncoding(ZNTStringEncoding encoding)
{
    if (encoding == ZNTStringEncoding::EucCn)
        return znt::demo::simplifiedChinese();
    if (encoding == ZNTStringEncoding::Big5Hkscs)
        return znt::demo::traditionalChinese();
    return znt::demo::english();
}

namespace
{

/// Han characters, their punctuation and full-width forms.
bool isWide(char16_t unit) { return unit >= 0x2E80; }

bool isSurrogate(char16_t unit) { return (unit & 0xF800) == 0xD800; }

/// Columns of one unit. The two halves of a character beyond the first 65536 take one each: most of those are
/// wide.
std::size_t columnsOf(char16_t unit) { return isWide(unit) && !isSurrogate(unit) ? 2 : 1; }

/// Punctuation that must not begin a line.
bool clingsToTheLineBefore(char16_t unit)
{
    return std::u16string_view(u"，。！？；：、」』”’）》").find(unit) != std::u16string_view::npos;
}

/// The piece of `rest` that must stay together: a word with the blanks before it, or one wide character with
/// the punctuation that follows it.
std::size_t lengthOfNextPiece(std::u16string_view rest)
{
    std::size_t length = rest.find_first_not_of(u' ');
    if (length == std::u16string_view::npos)
        return rest.size();
    if (isSurrogate(rest[length]))
        length = std::min(length + 2, rest.size()); // both halves of one character
    else if (isWide(rest[length]))
        ++length;
    else
        while (length < rest.size() && rest[length] != u' ' && rest[length] != u'\n' && !isWide(rest[length]))
            ++length;
    while (length < rest.size() && clingsToTheLineBefore(rest[length]))
        ++length;
    return length;
}

std::size_t columnsOf(std::u16string_view piece)
{
    std::size_t columns = 0;
    for (const char16_t unit : piece)
        columns += columnsOf(unit);
    return columns;
}

} // namespace

namespace znt::demo
{

std::u16string filled(std::u16string_view text, std::u16string_view first, std::u16string_view second)
{
    std::u16string result;
    while (!text.empty()) {
        const auto sign = text.find(u'%');
        result += text.substr(0, sign);
        if (sign == std::u16string_view::npos)
            break;
        text.remove_prefix(sign);
        if (text.starts_with(u"%1") || text.starts_with(u"%2")) {
            result += text[1] == u'1' ? first : second;
            text.remove_prefix(2);
        } else {
            result += u'%';
            text.remove_prefix(1);
        }
    }
    return result;
}

std::u16string wrapped(std::u16string_view text, std::size_t columns)
{
    std::u16string result;
    std::size_t used = 0;
    while (!text.empty()) {
        if (text.front() == u'\n') {
            result += u'\n';
            used = 0;
            text.remove_prefix(1);
            continue;
        }
        auto piece = text.substr(0, lengthOfNextPiece(text));
        text.remove_prefix(piece.size());
        if (used > 0 && used + columnsOf(piece) > columns) {
            result += u'\n';
            used = 0;
            piece.remove_prefix(std::min(piece.find_first_not_of(u' '), piece.size()));
        }
        result += piece;
        used += columnsOf(piece);
    }
    return result;
}

} // namespace znt::demo
