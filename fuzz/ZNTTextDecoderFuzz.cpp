#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTTextDecoder.h"

#include <unicode/ucnv.h>

namespace
{

/// Every piece is as long as a byte of `cuts` says; the pieces repeat.
std::u16string decodedInPieces(std::string_view bytes, std::string_view cuts, ZNTStringEncoding encoding)
{
    ZNTTextDecoder decoder(encoding);
    std::u16string text;
    for (std::size_t at = 0, piece = 0; at < bytes.size(); ++piece) {
        const auto length =
            cuts.empty() ? bytes.size() : static_cast<unsigned char>(cuts[piece % cuts.size()]) + 1U;
        const auto before = text.size();
        const auto part = bytes.substr(at, length);
        decoder.decode(part, text);
        require(text.size() - before <= part.size() + 3, "no more units than bytes, and what waited");
        at += part.size();
    }
    decoder.finish(text);
    return text;
}

/// ICU replaces each maximal part, too, and keeps a byte order mark.
std::u16string icuDecoded(std::string_view bytes)
{
    UErrorCode error = U_ZERO_ERROR;
    static UConverter* const converter = ucnv_open("UTF-8", &error);
    std::u16string text(bytes.size() + 1, u'\0');
    text.resize(static_cast<std::size_t>(ucnv_toUChars(converter, text.data(),
                                                       static_cast<std::int32_t>(text.size()), bytes.data(),
                                                       static_cast<std::int32_t>(bytes.size()), &error)));
    return text.starts_with(u'\uFEFF') ? text.substr(1) : text;
}

} // namespace

/// Bytes that say where to cut, a zero, then the text of a game.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto cuts = input.field('\0');
    const auto bytes = input.rest();
    for (const auto& row : ZNTStringEncodings) {
        const auto whole = decodedInPieces(bytes, {}, row.encoding);
        require(decodedInPieces(bytes, cuts, row.encoding) == whole, "text that was cut equals the whole");
        require(row.encoding == ZNTStringEncoding::Utf8 ||
                    znt::encodedLeniently(whole, row.encoding).size() <= 2 * whole.size(),
                "a character goes out in two bytes at most");
    }
    require(decodedInPieces(bytes, cuts, ZNTStringEncoding::Utf8) == icuDecoded(bytes), "UTF-8 is as ICU's");
    return 0;
}
