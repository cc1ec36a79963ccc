#include "ZNTStringEncoding.h"

#include "ZNTGbCharacters.h"
#include "ZNTTelnetCodes.h"
#include "ZNTTextScan.h"

#include <algorithm>
#include <map>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/utf16.h>

namespace
{

constexpr char iac = static_cast<char>(znt::telnet::IAC);

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

/// ICU's own substitution drops characters that are merely invisible. A "?" shows that one was lost.
void writeQuestionMark(const void*, UConverterFromUnicodeArgs* arguments, const UChar*, int32_t, UChar32,
                       UConverterCallbackReason reason, UErrorCode* error)
{
    if (reason > UCNV_IRREGULAR)
        return; // the converter is reset, closed or cloned
    *error = U_ZERO_ERROR;
    ucnv_cbFromUWriteBytes(arguments, "?", 1, 0, error);
}

Converter openConverter(const char* name)
{
    UErrorCode error = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &error));
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(converter.get(), &writeQuestionMark, nullptr, nullptr, nullptr, &error);
    return U_SUCCESS(error) ? std::move(converter) : nullptr;
}

/// Opening a converter reads tables from disk, and two threads must not share one: each thread keeps its own.
/// Null if ICU lacks the table.
UConverter* converterNamed(const char* name)
{
    thread_local std::map<std::string_view, Converter> opened;
    auto known = opened.find(name);
    if (known == opened.end())
        known = opened.emplace(name, openConverter(name)).first;
    return known->second.get();
}

/// No character of these encodings contains the byte IAC. So the text between two of them is converted in one
/// call, and a character that one cuts off is ill-formed.
std::optional<std::u16string> decodedByConverter(std::string_view bytes, UConverter* converter,
                                                 ZNTStringEncoding encoding)
{
    // A character never takes more UTF-16 units than it had bytes.
    std::u16string text(bytes.size(), u'\0');
    char16_t* to = text.data();
    for (std::size_t at = 0; at < bytes.size();) {
        if (bytes[at] == iac) {
            const auto length = znt::telnetLengthAt(bytes, at);
            znt::widen(bytes.substr(at, length), to);
            to += length;
            at += length;
            continue;
        }
        const auto end = std::min(bytes.find(iac, at), bytes.size());
        const char* from = bytes.data() + at;
        char16_t* const start = to;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_resetToUnicode(converter);
        ucnv_toUnicode(converter, &to, text.data() + text.size(), &from, bytes.data() + end, nullptr,
                       /*flush=*/true, &error);
        if (U_FAILURE(error))
            return std::nullopt;
        if (encoding == ZNTStringEncoding::EucCn)
            znt::toUsualGbNames(start, to);
        at = end;
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
    return text;
}

std::string encodedByConverter(std::u16string_view text, UConverter* converter)
{
    std::string bytes(text.size() * static_cast<std::size_t>(ucnv_getMaxCharSize(converter)), '\0');
    char* to = bytes.data();
    const char16_t* from = text.data();
    UErrorCode error = U_ZERO_ERROR;
    ucnv_resetFromUnicode(converter);
    ucnv_fromUnicode(converter, &to, bytes.data() + bytes.size(), &from, text.data() + text.size(), nullptr,
                     /*flush=*/true, &error);
    bytes.resize(static_cast<std::size_t>(to - bytes.data()));
    return bytes;
}

std::u16string decodedAscii(std::string_view bytes)
{
    std::u16string text(bytes.size(), u'\0');
    znt::widen(bytes, text.data());
    return text;
}

/// The units of the character at `at`: one, or a pair of surrogates.
std::size_t unitsOfCharacter(std::u16string_view text, std::size_t at)
{
    return U16_IS_LEAD(text[at]) && at + 1 < text.size() && U16_IS_TRAIL(text[at + 1]) ? 2 : 1;
}

std::string encodedAscii(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0, units = 0; at < text.size(); at += units) {
        units = unitsOfCharacter(text, at);
        bytes += units == 1 && text[at] <= 0xFF ? static_cast<char>(text[at]) : '?';
    }
    return bytes;
}

/// GB 18030 writes in four bytes what GBK lacks; a reader of GBK would see other characters. The narrow set
/// decides about those: it knows a few by a second name.
constexpr std::size_t mostBytesOfWiderCharacter = 2;

std::string encodedWidely(std::u16string_view text, UConverter* wider, ZNTStringEncoding encoding)
{
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (std::size_t at = 0, units = 0; at < text.size(); at += units) {
        units = unitsOfCharacter(text, at);
        const auto character = text.substr(at, units);
        if (character.front() < 0x80) {
            bytes += static_cast<char>(character.front());
            continue;
        }
        const auto wide = encodedByConverter(character, wider);
        bytes += wide.size() <= mostBytesOfWiderCharacter ? wide : znt::encodedText(character, encoding);
    }
    return bytes;
}

} // namespace

namespace znt
{

std::optional<std::u16string> decodedText(std::string_view bytes, ZNTStringEncoding encoding)
{
    const char* name = rowOf(encoding).converter;
    if (!name)
        return decodedAscii(bytes);
    auto* converter = converterNamed(name);
    return converter ? decodedByConverter(bytes, converter, encoding) : std::nullopt;
}

std::size_t telnetLengthAt(std::string_view bytes, std::size_t at)
{
    const std::size_t left = bytes.size() - at;
    if (left < 2)
        return left;
    const bool hasOption = telnet::isFollowedByOption(static_cast<unsigned char>(bytes[at + 1]));
    return std::min<std::size_t>(left, hasOption ? 3 : 2);
}

std::string encodedText(std::u16string_view text, ZNTStringEncoding encoding)
{
    const char* name = rowOf(encoding).converter;
    auto* converter = name ? converterNamed(name) : nullptr;
    if (!converter)
        return encodedAscii(text);
    if (encoding != ZNTStringEncoding::EucCn)
        return encodedByConverter(text, converter);
    std::u16string named(text);
    toConverterGbNames(named.data(), named.data() + named.size());
    return encodedByConverter(named, converter);
}

std::string encodedLeniently(std::u16string_view text, ZNTStringEncoding encoding)
{
    const char* name = rowOf(encoding).widerConverter;
    auto* wider = name ? converterNamed(name) : nullptr;
    return wider ? encodedWidely(text, wider, encoding) : encodedText(text, encoding);
}

const ZNTStringEncodingRow& rowOf(ZNTStringEncoding encoding)
{
    const auto* found = std::ranges::find(ZNTStringEncodings, encoding, &ZNTStringEncodingRow::encoding);
    return found == ZNTStringEncodings.end() ? ZNTStringEncodings.front() : *found;
}

std::optional<ZNTStringEncoding> encodingNamed(std::string_view name)
{
    const auto* found = std::ranges::find(ZNTStringEncodings, name, &ZNTStringEncodingRow::name);
    return found == ZNTStringEncodings.end() ? std::nullopt : std::optional(found->encoding);
}

std::optional<ZNTStringEncoding> encodingTitled(std::u16string_view title)
{
    const auto* found = std::ranges::find(ZNTStringEncodings, title, &ZNTStringEncodingRow::title);
    return title.empty() || found == ZNTStringEncodings.end() ? std::nullopt : std::optional(found->encoding);
}

std::string encodingNames(std::string_view between, std::string_view beforeLast)
{
    std::string names;
    for (const auto& row : ZNTStringEncodings) {
        if (!names.empty())
            names += &row == &ZNTStringEncodings.back() ? beforeLast : between;
        names += row.name;
    }
    return names;
}

} // namespace znt
