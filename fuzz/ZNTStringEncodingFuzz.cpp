#include "FuzzInput.h"
#include "ZNTTextDecoder.h"

namespace
{

/// A decoding that succeeds takes no more units than bytes and shows every IAC; whatever decodes can be sent.
void checkStrict(std::string_view bytes, ZNTStringEncoding encoding)
{
    const auto text = znt::decodedText(bytes, encoding);
    if (!text)
        return;
    require(text->size() <= bytes.size(), "no more units than bytes");
    const bool hasIac = bytes.find('\xFF') != std::string_view::npos;
    const bool showsIac = text->find(u'\u00FF') != std::u16string::npos;
    require(showsIac == hasIac || (showsIac && encoding == ZNTStringEncoding::Utf8),
            "every IAC is seen, and no other but a letter of UTF-8");
    const auto encoded = znt::encodedText(*text, encoding);
    if (!hasIac)
        require(znt::decodedText(encoded, encoding) == text, "what was read can be written and read again");
}

std::u16string decodedInPieces(std::string_view bytes, std::size_t length, ZNTStringEncoding encoding)
{
    ZNTTextDecoder decoder(encoding);
    std::u16string text;
    for (std::size_t at = 0; at < bytes.size(); at += length)
        decoder.decode(bytes.substr(at, length), text);
    decoder.finish(text);
    return text;
}

void checkLenient(std::string_view bytes, ZNTStringEncoding encoding)
{
    const auto whole = decodedInPieces(bytes, bytes.size() + 1, encoding);
    require(whole.size() <= bytes.size(), "no more units than bytes");
    for (const std::size_t length : {1, 2, 3, 5})
        require(decodedInPieces(bytes, length, encoding) == whole, "text that was cut equals the whole");
    require(encoding == ZNTStringEncoding::Utf8 ||
                znt::encodedLeniently(whole, encoding).size() <= 2 * whole.size(),
            "a character goes out in two bytes at most");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = FuzzInput(data, size).rest();
    const auto text = znt::decodedText(bytes, ZNTStringEncoding::Ascii);
    require(text && znt::encodedText(*text, ZNTStringEncoding::Ascii) == bytes, "ASCII takes every byte");
    for (const auto& row : ZNTStringEncodings) {
        checkLenient(bytes, row.encoding);
        if (row.converter)
            checkStrict(bytes, row.encoding);
    }

    std::u16string typed;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
        typed += static_cast<char16_t>(static_cast<unsigned char>(bytes[at]) << 8 |
                                       static_cast<unsigned char>(bytes[at + 1]));
    for (const auto& row : ZNTStringEncodings)
        static_cast<void>(znt::encodedText(typed, row.encoding));
    return 0;
}
