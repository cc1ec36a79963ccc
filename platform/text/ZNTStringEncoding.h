#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The encodings a game can use, by the platform's string-encoding numbers.
enum class ZNTStringEncoding : std::uint64_t {
    Ascii = 1,
    EucCn = 0x80000930,
    Big5Hkscs = 0x80000A06,
    Utf8 = 0x08000100
};

/// What the program knows of one encoding.
struct ZNTStringEncodingRow {
    ZNTStringEncoding encoding;
    std::u16string_view title;  ///< on its radio button; the session is given this title. Empty: no button
    std::string_view name;      ///< what players type: --encoding NAME, /encoding NAME
    const char* converter;      ///< ICU's name; null if each byte is the character of its value
    const char* widerConverter; ///< ICU's name of a superset that games send under this name, or null
    bool isChinese;             ///< its games lay text out for line drawing of two columns
};

/// Every encoding. The command lines, the terminal's commands and the window are made from this table, so a
/// further encoding is one row here (and a control in the preferences, if it is to have one).
inline constexpr std::array ZNTStringEncodings{
    ZNTStringEncodingRow{.encoding = ZNTStringEncoding::Ascii,
                         .title = u"ASCII",
                         .name = "ascii",
                         .converter = nullptr,
                         .widerConverter = nullptr,
                         .isChinese = false},
    ZNTStringEncodingRow{.encoding = ZNTStringEncoding::EucCn,
                         .title = u"EUC_CN - Chinese",
                         .name = "euc-cn",
                         .converter = "ibm-1383_P110-1999",
                         .widerConverter = "gb18030", // GBK is its part of one and two bytes
                         .isChinese = true},
    ZNTStringEncodingRow{.encoding = ZNTStringEncoding::Big5Hkscs,
                         .title = u"BIG5 - Chinese",
                         .name = "big5",
                         .converter = "ibm-1375_P100-2008", // with the Hong Kong characters already
                         .widerConverter = nullptr,
                         .isChinese = true},
    ZNTStringEncodingRow{.encoding = ZNTStringEncoding::Utf8,
                         .title = {},
                         .name = "utf-8",
                         .converter = "UTF-8",
                         .widerConverter = nullptr,
                         .isChinese = false},
};

/// Bytes of one received block to text and back. ASCII maps every byte to the character of the same value
/// and never fails. The other encodings are ICU's strict converters with one exception: byte 255 is telnet's
/// IAC (RFC 854), so it decodes to U+00FF, the byte after it to the character of its value, and after 250 to
/// 254 the option byte likewise. A few signs of EUC-CN get the names that input methods and fonts use
/// (ZNTGbCharacters.h). ZNTTextDecoder reads bytes that come in pieces and may be ill-formed. Any thread may
/// call.
namespace znt
{

/// None if a strict encoding meets an ill-formed character, or one that the block's end cuts off. In UTF-8 a
/// U+00FF of the text looks like IAC; ZNTBlockDecoder keeps the two apart.
std::optional<std::u16string> decodedText(std::string_view bytes, ZNTStringEncoding encoding);

/// The bytes that decoding lets through at the IAC at `at`: two or three, fewer at the end of `bytes`.
std::size_t telnetLengthAt(std::string_view bytes, std::size_t at);

/// Never fails: a character that the encoding lacks goes out as "?".
std::string encodedText(std::u16string_view text, ZNTStringEncoding encoding);
/// The same with the characters of the superset, in at most two bytes each: EUC-CN writes GBK. For a game
/// whose text ZNTTextDecoder reads.
std::string encodedLeniently(std::u16string_view text, ZNTStringEncoding encoding);

const ZNTStringEncodingRow& rowOf(ZNTStringEncoding encoding);
std::optional<ZNTStringEncoding> encodingNamed(std::string_view name);
/// None also for an empty title.
std::optional<ZNTStringEncoding> encodingTitled(std::u16string_view title);

/// The names with `between` between two of them, and `beforeLast` before the last.
std::string encodingNames(std::string_view between, std::string_view beforeLast);

} // namespace znt
