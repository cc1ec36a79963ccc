#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTStringEncoding.h"

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = FuzzInput(data, size).rest();
    const auto text = znt::decodedText(bytes, ZNTStringEncoding::Ascii);
    require(text && znt::encodedText(*text, ZNTStringEncoding::Ascii) == bytes, "ASCII takes every byte");
    for (const auto& row : ZNTStringEncodings)
        if (row.converter)
            checkStrict(bytes, row.encoding);

    std::u16string typed;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
        typed += static_cast<char16_t>(static_cast<unsigned char>(bytes[at]) << 8 |
                                       static_cast<unsigned char>(bytes[at + 1]));
    for (const auto& row : ZNTStringEncodings)
        static_cast<void>(znt::encodedText(typed, row.encoding));
    return 0;
}
