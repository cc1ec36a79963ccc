#pragma once

#include <string>
#include <string_view>

/// UTF-8 (RFC 3629) to UTF-16, piece by piece: a character that a piece cuts off waits for the next one. Each
/// maximal part of an ill-formed sequence is one U+FFFD, as the Encoding Standard's UTF-8 decoder has it
/// (encoding.spec.whatwg.org): surrogates, overlong forms and what lies past U+10FFFF end at the first byte
/// that cannot go on. That byte is then read anew. A byte order mark is a character like any other.
///
/// Linear in the bytes; at most three of them wait.
class ZNTUtf8Decoder
{
public:
    /// Appends to `text` what `bytes` complete.
    void decode(std::string_view bytes, std::u16string& text);
    /// A character that still waits is cut off: it becomes U+FFFD.
    void finish(std::u16string& text);

private:
    char16_t* decodeByte(unsigned char byte, char16_t* to);
    bool begin(unsigned char lead);

    char32_t character = 0; ///< the bits that came so far
    int missing = 0;        ///< bytes; 0 between two characters
    // What the next byte may be. It differs from 80 to BF behind some first bytes only.
    unsigned char least = 0, most = 0;
};
