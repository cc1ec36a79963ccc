#include "ZNTRecordValue.h"

#include "ZNTText.h"

#include <algorithm>
#include <unicode/utf16.h>

namespace
{

bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }

/// A control character, or one that some editors take for a line end or drop.
bool isUnsafe(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029 || unit == 0xFEFF;
}

struct Escape {
    char16_t unit, letter;
};
constexpr Escape escapes[] = {{u'\n', u'n'}, {u'\r', u'r'}, {u'\t', u't'}, {u'"', u'"'}, {u'\\', u'\\'}};

bool hasUnpairedSurrogate(std::u16string_view text)
{
    return znt::textFromUtf8(znt::utf8FromText(text)) != text;
}

bool canStandAsItIs(std::u16string_view text)
{
    return text.empty() || (!isBlank(text.front()) && !isBlank(text.back()) && text.front() != u'"' &&
                            std::ranges::none_of(text, isUnsafe) && !hasUnpairedSurrogate(text));
}

void appendAsCode(std::u16string& quoted, char16_t unit)
{
    quoted += u"\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        quoted += u"0123456789ABCDEF"[(unit >> shift) & 0xF];
}

std::u16string quoted(std::u16string_view text)
{
    const bool hasUnpaired = hasUnpairedSurrogate(text);
    std::u16string made = u"\"";
    for (const auto unit : text) {
        if (const auto* escape = std::ranges::find(escapes, unit, &Escape::unit); escape != std::end(escapes))
            made += {u'\\', escape->letter};
        else if (isUnsafe(unit) || (hasUnpaired && U16_IS_SURROGATE(unit)))
            appendAsCode(made, unit);
        else
            made += unit;
    }
    return made + u'"';
}

using znt::exchange::Complaint;

std::optional<char16_t> codeIn(std::u16string_view digits)
{
    unsigned code = 0;
    for (const auto digit : digits) {
        const auto value = std::u16string_view(u"0123456789abcdef").find(digit | (digit > u'9' ? 0x20 : 0));
        if (value == std::u16string_view::npos)
            return std::nullopt;
        code = code * 16 + static_cast<unsigned>(value);
    }
    return digits.size() == 4 ? std::optional(static_cast<char16_t>(code)) : std::nullopt;
}

/// Reads a value that starts with a quotation mark. Says what is wrong with it if something is.
Complaint readQuoted(std::u16string_view text, std::u16string& value)
{
    std::size_t at = 1;
    while (at < text.size() && text[at] != u'"') {
        if (text[at] != u'\\') {
            value += text[at++];
            continue;
        }
        const char16_t letter = at + 1 < text.size() ? text[at + 1] : u'\0';
        const auto* escape = std::ranges::find(escapes, letter, &Escape::letter);
        const auto code = letter == u'u' ? codeIn(text.substr(at + 2, 4)) : std::nullopt;
        if (escape == std::end(escapes) && !code)
            return R"(Between quotation marks, a backslash stands before n, r, t, ", \ or u with four digits.)";
        value += code ? *code : escape->unit;
        at += code ? 6 : 2;
    }
    if (at + 1 != text.size())
        return "A value that starts with a quotation mark ends with one, and nothing follows it.";
    return {};
}

} // namespace

namespace znt::exchange
{

std::u16string valueOfText(std::u16string_view text)
{
    return canStandAsItIs(text) ? std::u16string(text) : quoted(text);
}

Complaint readTextOfValue(std::u16string_view value, std::u16string& text)
{
    if (std::ranges::any_of(value, [](char16_t unit) { return unit != u'\t' && isUnsafe(unit); }))
        return R"(This value holds a control character. Write it as \uXXXX between quotation marks.)";
    if (value.starts_with(u'"'))
        return readQuoted(value, text);
    text = value;
    return {};
}

} // namespace znt::exchange
