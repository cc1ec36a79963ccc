#include "ZNTStringEncoding.h"

namespace znt
{

std::optional<std::u16string> decodedText(std::string_view bytes, ZNTStringEncoding)
{
    std::u16string text(bytes.size(), u'\0');
    for (std::size_t at = 0; at < bytes.size(); ++at)
        text[at] = static_cast<unsigned char>(bytes[at]);
    return text;
}

std::string encodedText(std::u16string_view text, ZNTStringEncoding)
{
    std::string bytes(text.size(), '?');
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text[at] <= 0xFF)
            bytes[at] = static_cast<char>(text[at]);
    return bytes;
}

} // namespace znt
