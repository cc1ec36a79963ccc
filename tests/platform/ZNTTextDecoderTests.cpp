#include "ZNTTextDecoder.h"

#include <unicode/ucnv.h>

using enum ZNTStringEncoding;

namespace
{

using std::string_view;

std::u16string decodedInPieces(std::initializer_list<string_view> pieces, ZNTStringEncoding encoding)
{
    ZNTTextDecoder decoder(encoding);
    std::u16string text;
    for (const auto piece : pieces)
        decoder.decode(piece, text);
    decoder.finish(text);
    return text;
}

/// In UTF-8 one U+FFFD for each maximal part (Unicode 15, tables 3-8 to 3-11); in the Chinese encodings one
/// for each bad byte, and a good byte behind it stays.
constexpr std::tuple<ZNTStringEncoding, string_view, std::u16string_view> lenientRows[] = {
    {Utf8, "\xEF\xBB\xBFnorth \xE4\xB8\x96\xE2\x80\x94\xC3\xBF \xF0\x9F\x97\xA1\xEF\xBB\xBF",
     u"north 世—ÿ 🗡\uFEFF"},
    {Utf8, "\xF0\x80\x80z\xE1\x80\xE2\xF0\x91\x92\xF1\xBFz", u"\uFFFD\uFFFD\uFFFDz\uFFFD\uFFFD\uFFFD\uFFFDz"},
    {Utf8, "\xC0\xAF \xED\xA0\x80 \xF4\x91\x92", u"\uFFFD\uFFFD \uFFFD\uFFFD\uFFFD \uFFFD\uFFFD\uFFFD"},
    {Utf8, "\xE4\xB8\n\xC3\x1b[m\xFF\xE4\xB8\xE4\xB8\x96 cut \xF0\x9F\x97",
     u"\uFFFD\n\uFFFD\x1b[m\uFFFD\uFFFD世 cut \uFFFD"},
    {EucCn, "\xB1\xB1 \xE9\x46\x87\xE5\xA8\x44\xA1\xAA\xA2\xE3 \x90\x30\x81\x30", u"北 镕囧―—€ \U00010000"},
    {EucCn, "\x81\nz\x81\x1b[m\xB1\xFF\xFF\xB1\xB1", u"\uFFFD\nz\uFFFD\x1b[m\uFFFD\uFFFD\uFFFD北"},
    {EucCn, "\x81\x30\x81n \xE3\x32\x9A\x36 cut \xB1", u"\uFFFD0乶 \uFFFD2\uFFFD6 cut \uFFFD"},
    {Big5Hkscs, "\xA5\x5F\x87\x45 \xF9\xF9\xC7\x65", u"北\U00027267 ═ま"},
    {Big5Hkscs, "\x81\nz\xA5\x1b[m\xA5\x80 \xC8\xC8 cut \xA5",
     u"\uFFFD\nz\uFFFD\x1b[m\uFFFD\uFFFD \uFFFD\uFFFD cut \uFFFD"},
    {Ascii, "caf\xE9 \xFF\x80", u"caf\u00E9 \u00FF\u0080"},
};

} // namespace

TEST(TextDecoder, ReadsTheSameTextHoweverTheBytesAreCut)
{
    for (const auto& [encoding, bytes, text] : lenientRows)
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut)
            for (std::size_t length = 0; length <= bytes.size() - cut; ++length)
                ASSERT_EQ(decodedInPieces(
                              {bytes.substr(0, cut), bytes.substr(cut, length), bytes.substr(cut + length)},
                              encoding),
                          text)
                    << testing::PrintToString(bytes) << cut << ' ' << length;
}

TEST(TextDecoder, ReadsEveryUtf8SequenceOfFourBytesAsIcu)
{
    constexpr string_view kinds("A\x7F\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xE0\xED\xEF\xF0\xF4\xF5");
    UErrorCode error = U_ZERO_ERROR;
    UConverter* const icu = ucnv_open("UTF-8", &error); // it replaces what is bad
    for (unsigned number = 0; number < 0x10000; ++number) {
        std::string bytes(40, '.'); // the fast loop is left, and entered again
        for (unsigned place = 0; place < 16; place += 4)
            bytes += kinds[number >> place & 0xFU];
        bytes += std::string(40, '.');
        char16_t expected[100];
        const auto units = ucnv_toUChars(icu, expected, 100, bytes.data(), 84, &error);
        ASSERT_EQ(decodedInPieces({bytes}, Utf8),
                  std::u16string_view(expected, static_cast<std::size_t>(units)))
            << std::hex << number;
    }
    ucnv_close(icu);
}

TEST(TextDecoder, ReadsAndWritesAllOfGbkAndGb2312AsStrictly)
{
    for (unsigned code = 0x8140; code <= 0xFEFE; ++code) {
        const auto trail = code & 0xFFU;
        // ICU 76 reads A3A0 as browsers do, as a second code of the ideographic space.
        if (trail < 0x40 || trail == 0x7F || trail == 0xFF || code == 0xA3A0)
            continue;
        const std::string bytes{static_cast<char>(code >> 8), static_cast<char>(trail)};
        const auto text = decodedInPieces({bytes}, EucCn);
        ASSERT_EQ(znt::encodedLeniently(text, EucCn), bytes) << std::hex << code;
        const auto strict = code < 0xF800 ? znt::decodedText(bytes, EucCn) : std::nullopt;
        const bool isNamed = strict && strict->size() == 1 && (strict->front() >> 12) != 0xE; // not private
        ASSERT_TRUE(!isNamed || text == *strict) << std::hex << code;
    }
}

TEST(TextDecoder, WhatIsTypedGoesOutInAtMostTwoBytesOfGbk)
{
    EXPECT_EQ(znt::encodedLeniently(u"门 門镕—·\u30FBü é\u0E01🗡\xD800€", EucCn),
              "\xC3\xC5 \xE9\x54\xE9\x46\xA1\xAA\xA1\xA4\xA1\xA4\xA8\xB9 \xA8\xA6???\xA2\xE3");
    EXPECT_EQ(znt::encodedText(u"a門🗡ÿ\xD800z", Utf8), "a\xE9\x96\x80\xF0\x9F\x97\xA1\xC3\xBF?z");
}
