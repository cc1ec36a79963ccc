#include "FuzzInput.h"
#include "ZNTFullColourParser.h"

/// A game's text, one unit a byte.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::u16string text(data, data + size);
    ZNTFullColourParser parser;
    const auto whole = parser.attributedText(text);
    require(whole.text.size() <= size, "the text does not grow");
    require(whole.text.find(u'\x1b') == whole.text.npos, "no sequence begins in the text");
    parser.reset();
    FuzzInput cuts(data, size);
    std::size_t seen = 0;
    for (std::size_t at = 0, length = 0; at < size; at += length) {
        length = 1 + cuts.byte() % 16;
        const auto piece = parser.attributedText(text.substr(at, length));
        require(whole.text.substr(seen, piece.text.size()) == piece.text, "the same text, whole and cut");
        for (std::size_t unit = 0; unit < piece.text.size(); ++unit, ++seen)
            require(*whole.attributesAt(seen) == *piece.attributesAt(unit), "the same looks, whole and cut");
    }
    require(seen == whole.text.size(), "all of the text, whole and cut");
    return 0;
}
