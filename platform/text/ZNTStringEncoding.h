#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The encodings a game can speak, by the platform's string-encoding numbers.
enum class ZNTStringEncoding : std::uint64_t { Ascii = 1, EucCn = 0x80000930, Big5Hkscs = 0x80000A06 };

/// Bytes of one received block to text and back. ASCII maps every byte to the character of the same value
/// and never fails. The Chinese ones are ICU's strict converters (`ibm-1383_P110-1999`,
/// `ibm-1375_P100-2008`) with one exception: byte 255 is telnet's IAC (RFC 854), so it decodes to U+00FF, the
/// byte after it to the character of its value, and after 250 to 254 the option byte likewise. A few signs of
/// EUC-CN bear the names that input methods and fonts know (ZNTGbCharacters.h).
namespace znt
{

/// None where a Chinese encoding meets an ill-formed character, or one that the block's end cuts off.
std::optional<std::u16string> decodedText(std::string_view bytes, ZNTStringEncoding encoding);

/// Never fails: a character that the encoding lacks goes out as "?".
std::string encodedText(std::u16string_view text, ZNTStringEncoding encoding);

} // namespace znt
