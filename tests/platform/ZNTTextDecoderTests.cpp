#include "ZNTTextDecoder.h"

#include <gtest/gtest.h>
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

struct LenientRow {
    ZNTStringEncoding encoding;
    string_view bytes;
    std::u16string_view text;
};

/// In UTF-8 one U+FFFD for each maximal part (Unicode 15, tables 3-8 to 3-11); in the Chinese encodings one
/// for each bad byte, and a good byte behind it stays.
constexpr LenientRow lenientRows[] = {
    {Utf8, "north \xE4\xB8\x96\xE2\x80\x94\xC3\xBF \xF0\x9F\x97\xA1\xF4\x8F\xBF\xBF",
     u"north 世—ÿ 🗡\U0010FFFF"},
    {Utf8, "\xEF\xBB\xBFmark\xEF\xBB\xBF", u"mark\uFEFF"},
    {Utf8,
     "\xF0\x80\x80"
     "A",
     u"\uFFFD\uFFFD\uFFFDA"},
    {Utf8,
     "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF"
     "A",
     u"\uFFFD\uFFFD\uFFFD\uFFFDA"},
    {Utf8, "\xC0\xAF\xED\xA0\x80\xF4\x91\x92\x93", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
    {Utf8, "\xE4\xB8\n\xC3\x1b[m\xFF\xE4\xB8\xE4\xB8\x96", u"\uFFFD\n\uFFFD\x1b[m\uFFFD\uFFFD世"},
    {Utf8, "cut \xF0\x9F\x97", u"cut \uFFFD"},
    {EucCn, "\xB1\xB1 \xE9\x46\x87\xE5\xA8\x44\xA1\xAA\xA2\xE3", u"北 镕囧―—€"},
    {EucCn, "\x81\nA\x81\x1b[m\xB1\xFF\x80\xB1\xB1", u"\uFFFD\nA\uFFFD\x1b[m\uFFFD\uFFFD\uFFFD北"},
    {EucCn,
     "\x90\x30\x81\x30 \x81\x30\x81"
     "a \xE3\x32\x9A\x36 cut \xB1",
     u"\U00010000 \uFFFD0乤 \uFFFD2\uFFFD6 cut \uFFFD"},
    {Big5Hkscs, "\xA5\x5F\x87\x45 \xF9\xF9\xC7\x65", u"北\U00027267 ═ま"},
    {Big5Hkscs, "\x81\nA\xA5\x1b[m\xA5\x80 \xC8\xC8 cut \xA5",
     u"\uFFFD\nA\uFFFD\x1b[m\uFFFD\uFFFD \uFFFD\uFFFD cut \uFFFD"},
    {Ascii, "caf\xE9 \xFF\x80", u"caf\u00E9 \u00FF\u0080"},
};

std::u16string icuDecoded(string_view bytes)
{
    UErrorCode error = U_ZERO_ERROR;
    static UConverter* const converter = ucnv_open("UTF-8", &error); // it replaces what is bad
    std::u16string text(2 * bytes.size(), u'\0');
    text.resize(static_cast<std::size_t>(ucnv_toUChars(converter, text.data(),
                                                       static_cast<std::int32_t>(text.size()), bytes.data(),
                                                       static_cast<std::int32_t>(bytes.size()), &error)));
    return text;
}

} // namespace

TEST(TextDecoder, ReadsTheSameTextHoweverTheBytesAreCut)
{
    for (const auto& [encoding, bytes, text] : lenientRows) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        EXPECT_EQ(decodedInPieces({bytes}, encoding), text);
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut)
            for (std::size_t second = cut; second <= bytes.size(); ++second)
                ASSERT_EQ(decodedInPieces(
                              {bytes.substr(0, cut), bytes.substr(cut, second - cut), bytes.substr(second)},
                              encoding),
                          text)
                    << cut << ' ' << second;
    }
}

TEST(TextDecoder, ReadsEveryUtf8SequenceOfFourBytesAsIcu)
{
    constexpr string_view kinds("A\x7F\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xE0\xED\xEF\xF0\xF4\xF5");
    const std::string run(40, '.'); // long enough for the fast loop on both sides
    for (unsigned number = 0; number < 0x10000; ++number) {
        std::string bytes = run;
        for (unsigned place = 0; place < 16; place += 4)
            bytes += kinds[number >> place & 0xFU];
        bytes += run;
        ASSERT_EQ(decodedInPieces({bytes}, Utf8), icuDecoded(bytes)) << std::hex << number;
    }
}

TEST(TextDecoder, ANewConnectionForgetsWhatWaitsAndHasAMarkOfItsOwn)
{
    for (const auto encoding : {Utf8, EucCn, Big5Hkscs}) {
        ZNTTextDecoder decoder(encoding);
        std::u16string text;
        decoder.decode("old \xE4", text);
        decoder.reset();
        decoder.decode(encoding == Utf8 ? "\xEF\xBB\xBFnew" : "new", text);
        EXPECT_EQ(text, u"old new");
    }
}

TEST(TextDecoder, ReadsAndWritesAllOfGbkAndGb2312AsStrictly)
{
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
        for (int trail = 0x40; trail <= 0xFE; ++trail) {
            if (trail == 0x7F)
                continue;
            const std::string bytes{static_cast<char>(lead), static_cast<char>(trail)};
            const auto text = decodedInPieces({bytes}, EucCn);
            ASSERT_EQ(text.size(), 1U) << std::hex << lead << trail;
            ASSERT_EQ(znt::encodedLeniently(text, EucCn), bytes) << std::hex << lead << trail;
            const bool isGb2312 = lead >= 0xA1 && lead <= 0xF7 && trail >= 0xA1;
            const auto strict = isGb2312 ? znt::decodedText(bytes, EucCn) : std::nullopt;
            if (strict && !(strict->front() >= 0xE000 && strict->front() <= 0xF8FF)) {
                ASSERT_EQ(text, *strict) << std::hex << lead << trail;
            }
        }
    }
}

TEST(TextDecoder, WhatIsTypedGoesOutInAtMostTwoBytesOfGbk)
{
    EXPECT_EQ(znt::encodedLeniently(u"门 門镕—·\u30FBü é\u0E01🗡\xD800€", EucCn),
              "\xC3\xC5 \xE9\x54\xE9\x46\xA1\xAA\xA1\xA4\xA1\xA4\xA8\xB9 \xA8\xA6???\xA2\xE3");
    EXPECT_EQ(znt::encodedLeniently(u"門\u0E01\U00027267", Big5Hkscs), "\xAA\xF9?\x87\x45");
    EXPECT_EQ(znt::encodedText(u"a門🗡ÿ\xD800z", Utf8), "a\xE9\x96\x80\xF0\x9F\x97\xA1\xC3\xBF?z");
}
