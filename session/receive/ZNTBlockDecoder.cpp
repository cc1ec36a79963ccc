#include "ZNTBlockDecoder.h"

#include "ZNTTelnetCodes.h"
#include "ZNTText.h"
#include "ZNTTextScan.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace
{

using std::string_view;

// The cuts of the recovery, in bytes; the header lists them. They are settled.
constexpr std::size_t frontStep = 4;
constexpr std::size_t leastForFrontCuts = 9, leastForThreeOff = 15;

/// Which byte sequences are one well-formed character, asked of the decoder once each.
class CharacterShapes
{
public:
    explicit CharacterShapes(ZNTStringEncoding encoding) : encoding(encoding) {}

    bool isCharacter(string_view bytes)
    {
        const auto first = static_cast<unsigned char>(bytes[0]);
        Known& known =
            bytes.size() == 1 ? singles[first] : pairs[first * 256U + static_cast<unsigned char>(bytes[1])];
        if (known == Known::NotYet)
            known = znt::decodedText(bytes, encoding) ? Known::WellFormed : Known::IllFormed;
        return known == Known::WellFormed;
    }

private:
    enum class Known : std::uint8_t { NotYet, WellFormed, IllFormed };
    ZNTStringEncoding encoding;
    std::array<Known, 256> singles{};
    std::vector<Known> pairs = std::vector<Known>(65536);
};

/// For each position whether decoding that starts there reaches the end. Trying each beginning on its own
/// would take the square of the block's length; from the end backwards, each position needs one look ahead.
std::vector<bool> decodableSuffixes(string_view bytes, CharacterShapes& shapes)
{
    std::vector<bool> decodable(bytes.size() + 1);
    decodable[bytes.size()] = true;
    const auto endsWellAfter = [&](std::size_t at, std::size_t length) {
        return decodable[std::min(at + length, bytes.size())];
    };
    for (std::size_t at = bytes.size(); at-- > 0;) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (byte == znt::telnet::IAC) {
            const bool hasOption = at + 1 < bytes.size() &&
                                   znt::telnet::isFollowedByOption(static_cast<unsigned char>(bytes[at + 1]));
            decodable[at] = endsWellAfter(at, hasOption ? 3 : 2);
        } else if (shapes.isCharacter(bytes.substr(at, 1))) {
            decodable[at] = endsWellAfter(at, 1);
        } else {
            decodable[at] =
                at + 1 < bytes.size() && shapes.isCharacter(bytes.substr(at, 2)) && endsWellAfter(at, 2);
        }
    }
    return decodable;
}

/// What is left of `bytes` after the fewest multiple of 4 bytes (one at least) whose removal from the front
/// lets the rest decode, trimmed; none where that is nothing.
std::optional<std::u16string> withoutFront(string_view bytes, ZNTStringEncoding encoding,
                                           CharacterShapes& shapes)
{
    const auto decodable = decodableSuffixes(bytes, shapes);
    for (std::size_t start = frontStep; start < bytes.size(); start += frontStep) {
        if (!decodable[start])
            continue;
        const auto text = znt::decodedText(bytes.substr(start), encoding);
        const auto trimmed = znt::trimmedOfWhitespace(text ? std::u16string_view(*text) : u"");
        return trimmed.empty() ? std::nullopt : std::optional<std::u16string>(trimmed);
    }
    return std::nullopt;
}

std::optional<std::u16string> recoveredText(string_view bytes, ZNTStringEncoding encoding)
{
    if (bytes.size() <= 2)
        return std::nullopt;
    // The block's end cut a character that stands behind an ASCII one: its first byte and the ASCII go.
    const auto twoOff = bytes.substr(0, bytes.size() - 2);
    if (auto text = znt::decodedText(twoOff, encoding))
        return text;
    if (bytes.size() < leastForFrontCuts)
        return std::nullopt;
    // The block also begins inside a character, whose first byte the block before it lost.
    CharacterShapes shapes(encoding);
    if (auto text = withoutFront(twoOff, encoding, shapes))
        return text;
    if (bytes.size() < leastForThreeOff)
        return std::nullopt;
    // The block's end cut a character that stands behind a Chinese one: that one goes, too. 3 bytes are one
    // whole character and the first byte of the cut one.
    return withoutFront(bytes.substr(0, bytes.size() - 3), encoding, shapes);
}

/// The units from `start` on are text. A unit that looks like IAC gets another form.
void keepApartFromTelnet(std::u16string& text, std::size_t start)
{
    constexpr std::u16string_view iac(u"\u00FF"), sameLook(u"y\u0308");
    if (znt::findUnit(text, iac.front(), start) == text.npos)
        return;
    const auto apart = znt::replacedAll(std::u16string_view(text).substr(start), iac, sameLook);
    text.replace(start, text.npos, apart);
}

void appendUtf8(ZNTTextDecoder& utf8, string_view block, std::u16string& text)
{
    const auto padding = block.size() - (block.find_last_not_of('\0') + 1);
    const auto bytes = block.substr(0, block.size() - padding);
    for (std::size_t at = 0; at < bytes.size();) {
        const auto iac = std::min(bytes.find(static_cast<char>(znt::telnet::IAC), at), bytes.size());
        if (iac > at) {
            const auto start = text.size();
            utf8.decode(bytes.substr(at, iac - at), text);
            keepApartFromTelnet(text, start);
        }
        if (iac == bytes.size())
            break;
        utf8.finish(text);
        const auto command = bytes.substr(iac, znt::telnetLengthAt(bytes, iac));
        text.resize(text.size() + command.size());
        znt::widen(command, text.data() + text.size() - command.size());
        at = iac + command.size();
    }
    text.append(padding, u'\0');
}

} // namespace

std::u16string ZNTBlockDecoder::textOfBlock(std::string_view bytes, ZNTStringEncoding encoding)
{
    std::u16string text;
    if (encoding == ZNTStringEncoding::Utf8) {
        appendUtf8(utf8, bytes, text);
        return text;
    }
    utf8.finish(text); // of an encoding that was changed meanwhile
    auto block = znt::textOfBlock(bytes, encoding);
    return text.empty() ? block : text + block;
}

namespace znt
{

std::u16string textOfBlock(std::string_view bytes, ZNTStringEncoding encoding)
{
    if (encoding == ZNTStringEncoding::Utf8) {
        std::u16string text;
        ZNTTextDecoder utf8(encoding);
        appendUtf8(utf8, bytes, text);
        utf8.finish(text);
        return text;
    }
    if (auto text = decodedText(bytes, encoding))
        return *std::move(text);
    if (encoding != ZNTStringEncoding::Ascii)
        if (auto text = recoveredText(bytes, encoding))
            return *std::move(text);
    return *decodedText(bytes, ZNTStringEncoding::Ascii);
}

} // namespace znt
