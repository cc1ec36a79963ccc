#pragma once

#include "ZNTStringEncoding.h"

#include <memory>
#include <string>
#include <string_view>

/// Bytes of one connection to text, in pieces of any size: however the bytes are cut, the text is the same.
/// It sees the bytes of the text alone; telnet commands are taken out before.
///
/// It is lenient, other than `znt::decodedText`. EUC-CN is read as GB 18030, which holds GBK. Big5 is read
/// with the Hong Kong characters. In both a byte that belongs to no character becomes U+FFFD, and an ASCII
/// byte behind it stays. UTF-8 is read as ZNTUtf8Decoder does; a byte order mark at the beginning of the
/// connection is taken away. ASCII maps each byte to the character of its value.
///
/// Linear in the bytes. At most three of them wait for the next piece.
class ZNTTextDecoder
{
public:
    explicit ZNTTextDecoder(ZNTStringEncoding encoding);
    ~ZNTTextDecoder();
    ZNTTextDecoder(ZNTTextDecoder&& other) noexcept;
    ZNTTextDecoder& operator=(ZNTTextDecoder&& other) noexcept;

    [[nodiscard]] ZNTStringEncoding encoding() const { return encoding_; }

    /// Appends to `text` what `bytes` complete.
    void decode(std::string_view bytes, std::u16string& text);
    /// What waits is cut off: it is appended as U+FFFD. The connection may go on.
    void finish(std::u16string& text);
    /// Begins a new connection. What waits is dropped.
    void reset();

    class Reading; ///< one way to read bytes

private:
    ZNTStringEncoding encoding_;
    std::unique_ptr<Reading> reading;
};
