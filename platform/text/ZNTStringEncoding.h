#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The encodings a game can use, by the platform's string-encoding numbers.
enum class ZNTStringEncoding : std::uint64_t { Ascii = 1, EucCn = 0x80000930, Big5Hkscs = 0x80000A06 };

/// What the program knows of one encoding.
struct ZNTStringEncodingRow {
    ZNTStringEncoding encoding;
    std::u16string_view title; ///< on its radio button; the session is given this title
    std::string_view name;     ///< what players type: --encoding NAME, /encoding NAME
    const char* converter;     ///< ICU's name; null if each byte is the character of its value
};

/// Every encoding. The command lines, the terminal's commands and the window are made from this table, so a
/// further encoding is one row here (and a radio button, if it is to have one).
inline constexpr std::array ZNTStringEncodings{
    ZNTStringEncodingRow{ZNTStringEncoding::Ascii, u"ASCII", "ascii", nullptr},
    ZNTStringEncodingRow{ZNTStringEncoding::EucCn, u"EUC_CN - Chinese", "euc-cn", "ibm-1383_P110-1999"},
    ZNTStringEncodingRow{ZNTStringEncoding::Big5Hkscs, u"BIG5 - Chinese", "big5", "ibm-1375_P100-2008"},
};

/// Bytes of one received block to text and back. ASCII maps every byte to the character of the same value
/// and never fails. The other encodings are ICU's strict converters with one exception: byte 255 is telnet's
/// IAC (RFC 854), so it decodes to U+00FF, the byte after it to the character of its value, and after 250 to
/// 254 the option byte likewise. A few signs of EUC-CN get the names that input methods and fonts use
/// (ZNTGbCharacters.h). Any thread may call.
namespace znt
{

/// None if a strict encoding meets an ill-formed character, or one that the block's end cuts off.
std::optional<std::u16string> decodedText(std::string_view bytes, ZNTStringEncoding encoding);

/// Never fails: a character that the encoding lacks goes out as "?".
std::string encodedText(std::u16string_view text, ZNTStringEncoding encoding);

const ZNTStringEncodingRow& rowOf(ZNTStringEncoding encoding);
std::optional<ZNTStringEncoding> encodingNamed(std::string_view name);
std::optional<ZNTStringEncoding> encodingTitled(std::u16string_view title);

/// The names with `between` between two of them, and `beforeLast` before the last.
std::string encodingNames(std::string_view between, std::string_view beforeLast);

} // namespace znt
