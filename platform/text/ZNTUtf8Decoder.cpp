#include "ZNTUtf8Decoder.h"

#include "ZNTTextScan.h"

#include <array>
#include <unicode/utf16.h>

namespace
{

constexpr char16_t replacement = 0xFFFD;
constexpr unsigned char leastTrail = 0x80, mostTrail = 0xBF;

/// The first bytes of longer characters (RFC 3629, section 4). What is in no row begins nothing.
struct Lead {
    unsigned char first, last;
    int trails;
    unsigned char leastSecond, mostSecond;
};
constexpr std::array leads{
    Lead{0xC2, 0xDF, 1, leastTrail, mostTrail}, // C0 and C1 would be overlong
    Lead{0xE0, 0xE0, 2, 0xA0, mostTrail},       // no overlong forms
    Lead{0xE1, 0xEC, 2, leastTrail, mostTrail},
    Lead{0xED, 0xED, 2, leastTrail, 0x9F}, // no surrogates
    Lead{0xEE, 0xEF, 2, leastTrail, mostTrail},
    Lead{0xF0, 0xF0, 3, 0x90, mostTrail}, // no overlong forms
    Lead{0xF1, 0xF3, 3, leastTrail, mostTrail},
    Lead{0xF4, 0xF4, 3, leastTrail, 0x8F}, // nothing past U+10FFFF
};

/// The row of each byte, so that none is searched for.
constexpr std::array<Lead, 256> leadOfByte = [] {
    std::array<Lead, 256> all{};
    for (const auto& lead : leads)
        for (std::size_t byte = lead.first; byte <= lead.last; ++byte)
            all[byte] = lead;
    return all;
}();

/// The bits of a first byte that belong to the character: 5, 4 or 3.
constexpr unsigned bitsOfLead(unsigned char byte, int trails) { return byte & (0x3FU >> trails); }

char16_t* put(char32_t character, char16_t* to)
{
    if (character > 0xFFFF) {
        *to++ = U16_LEAD(character);
        *to++ = U16_TRAIL(character);
    } else {
        *to++ = static_cast<char16_t>(character);
    }
    return to;
}

} // namespace

void ZNTUtf8Decoder::decode(std::string_view bytes, std::u16string& text)
{
    const auto before = text.size();
    // A byte gives one unit at most. What waits from before can add one.
    text.resize(before + bytes.size() + 1);
    char16_t* to = text.data() + before;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (missing == 0 && byte < 0x80) {
            const auto ascii = bytes.substr(at, znt::asciiLength(bytes.substr(at)));
            znt::widen(ascii, to);
            to += ascii.size();
            at += ascii.size();
        } else {
            to = decodeByte(byte, to);
            ++at;
        }
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
}

char16_t* ZNTUtf8Decoder::decodeByte(unsigned char byte, char16_t* to)
{
    if (missing > 0) {
        if (byte >= least && byte <= most) {
            character = character << 6 | (byte & 0x3FU);
            least = leastTrail;
            most = mostTrail;
            return --missing == 0 ? put(character, to) : to;
        }
        missing = 0;
        *to++ = replacement; // for what came before; the byte may begin something
    }
    if (byte < 0x80)
        *to++ = byte;
    else if (!begin(byte))
        *to++ = replacement;
    return to;
}

bool ZNTUtf8Decoder::begin(unsigned char lead)
{
    const auto& row = leadOfByte[lead];
    missing = row.trails;
    least = row.leastSecond;
    most = row.mostSecond;
    character = bitsOfLead(lead, row.trails);
    return missing > 0;
}

void ZNTUtf8Decoder::finish(std::u16string& text)
{
    if (missing > 0)
        text += replacement;
    missing = 0;
}
