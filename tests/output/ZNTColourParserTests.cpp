#include "ZNTColourParser.h"
#include "ZNTIcuReference.h"
#include "ZNTRandomText.h"
#include "ZNTSgrScanner.h"
#include "ZNTText.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace znt::colours;

namespace
{

/// How the character at `offset` is shown.
struct Shown {
    ZNTColour foreground;
    bool isBold;
    bool isUnderlined;
    friend bool operator==(const Shown&, const Shown&) = default;
    friend void PrintTo(const Shown& shown, std::ostream* out)
    {
        *out << int{shown.foreground.red} << ',' << int{shown.foreground.green} << ','
             << int{shown.foreground.blue} << (shown.isBold ? " bold" : "")
             << (shown.isUnderlined ? " underlined" : "");
    }
};

Shown shownAt(const ZNTAttributedText& text, std::size_t offset)
{
    const auto* set = text.attributesAt(offset);
    return {set->shownForeground(), set->isShownBold(), set->isShownUnderlined()};
}

Shown plain(ZNTColour colour) { return {colour, false, false}; }
Shown bold(ZNTColour colour) { return {colour, true, false}; }

ZNTAttributedText parsed(std::u16string text) { return ZNTColourParser().attributedText(std::move(text)); }

/// The same work done step by step with ICU, one attribute set for each character.
struct Reference {
    std::u16string text;
    std::vector<ZNTAttributeSet> sets;

    explicit Reference(std::u16string_view input)
    {
        const ZNTColourParser parser;
        auto marked = znt::icu::replacedAll(input, uR"(\e.(\d{1,1};\d{1,2};\d{1,2}m))", u"\x1b[0m");
        marked = znt::icu::replacedAll(marked, uR"(\e.(\d{1,2};\d{1,2};\d{1,2}m))", u"\x1b[1m");
        marked = znt::replacedAll(marked, u"\x1b[m", u"");
        const auto* sequence = uR"(\e.(\d{1,2};)??(\d{1,2}m))";
        text = znt::icu::replacedAll(marked, sequence, u"");
        ZNTAttributeSet current;
        parser.setupDefaults(current, ZNTColourParser::Overwrite::Yes);
        sets.assign(text.size(), current);
        const auto apply = [&](int groupStart, int shift) {
            for (auto at = static_cast<std::size_t>(std::max(groupStart - shift, 0)); at < sets.size(); ++at)
                sets[at] = current;
        };
        const auto reset = [&] {
            current = {};
            parser.setupDefaults(current, ZNTColourParser::Overwrite::Yes);
        };
        const auto store = [&](int code) {
            if (const auto name = ZNTColourParser::attributeNameForCode(code))
                current.at(*name) = parser.attributeForCode(code);
        };
        int shift = 2;
        for (const auto& match : znt::icu::matches(marked, sequence)) {
            if (const auto& [start, group] = match.groups[0]; start >= 0) {
                if (const int code = znt::integerValue(group); code == 0) {
                    reset();
                } else {
                    store(code);
                    apply(start, shift);
                }
                shift += static_cast<int>(group.size());
            }
            const auto& [start, group] = match.groups[1];
            if (const int code = znt::integerValue(group); code == 0)
                reset();
            else
                store(code);
            apply(start, shift);
            shift += static_cast<int>(group.size()) + 2;
        }
    }
};

} // namespace

TEST(ColourParser, LaysColourAndFontOverTheTextThatIsLeft)
{
    const auto hello = parsed(u"\x1b[1;32mHello\x1b[0m world");
    EXPECT_EQ(hello.text, u"Hello world");
    EXPECT_EQ(shownAt(hello, 0), bold(green));
    EXPECT_EQ(shownAt(hello, 4), bold(green));
    EXPECT_EQ(shownAt(hello, 5), plain(white));
    EXPECT_EQ(std::get<ZNTFont>(hello.attributesAt(0)->font), (ZNTFont{u"Menlo-Bold", 12}));
    EXPECT_EQ(std::get<ZNTFont>(hello.attributesAt(5)->font), (ZNTFont{u"Menlo", 12}));

    const auto accumulated = parsed(u"a\x1b[31mb\x1b[1mc\x1b[4md\x1b[0me");
    EXPECT_EQ(shownAt(accumulated, 0), plain(white));
    EXPECT_EQ(shownAt(accumulated, 1), plain(red));
    EXPECT_EQ(shownAt(accumulated, 2), bold(red));
    EXPECT_EQ(shownAt(accumulated, 3), (Shown{red, true, true}));
    EXPECT_EQ(shownAt(accumulated, 4), plain(white));

    const auto endsInColour = parsed(u"a\x1b[1;31mb\x1b[1;32m");
    EXPECT_EQ(endsInColour.runs.size(), 2U);
    EXPECT_EQ(endsInColour.runs.back().offset, 1U) << "no run stands where no text is";
}

TEST(ColourParser, KnowsTheSequencesThatServersSend)
{
    const struct {
        std::u16string_view sequence;
        Shown first;
    } cases[] = {
        {u"\x1b[0;31m", plain(red)},       {u"\x1b[1;33;40m", plain(white)}, {u"\x1b[10;33;40m", bold(white)},
        {u"\x1b[m", plain(white)},         {u"\x1b[30m", plain(white)},      {u"\x1b[33;1m", bold(yellow)},
        {u"\x1b[2;37;0m", plain(white)},   {u"\x1b[0;00m", plain(white)},    {u"\x1b[5m", plain(white)},
        {u"\x1b[39m", plain(white)},       {u"\x1b[9m", plain(white)},       {u"\x1b[2m", plain(white)},
        {u"\x1b[31m\x1b[15m", plain(red)},
    };
    for (const auto& [sequence, first] : cases) {
        SCOPED_TRACE(znt::utf8FromText(sequence.substr(1)));
        const auto result = parsed(std::u16string(sequence) + u"text");
        EXPECT_EQ(result.text, u"text");
        EXPECT_EQ(shownAt(result, 0), first);
    }
    for (const auto* unknown :
         {u"\x1b[2J", u"\x1b[38;5;214mx", u"\x1b[1;2;3;4mx", u"\x1b[256D", u"\x1b[101mx"})
        EXPECT_EQ(parsed(unknown).text, unknown);
    EXPECT_TRUE(parsed(u"\x1b[1;31m\x1b[m\x1b[0m").empty());
    EXPECT_TRUE(parsed(u"").empty());
}

TEST(ColourParser, UsesTheFontThatThePlayerPicked)
{
    ZNTColourParser parser;
    parser.setFont(ZNTFont{u"Hack", 20});
    const auto result = parser.attributedText(u"a\x1b[1mb");
    EXPECT_EQ(std::get<ZNTFont>(result.attributesAt(0)->font), (ZNTFont{u"Hack", 20}));
    EXPECT_EQ(std::get<ZNTFont>(result.attributesAt(1)->font), (ZNTFont{u"Menlo-Bold", 20}));
}

TEST(ColourParser, AnswersAsIcuDoesOnRandomSequences)
{
    ZNTRandomText texts({u"\x1b",
                         u"[",
                         u"m",
                         u";",
                         u"0",
                         u"1",
                         u"31",
                         u"4",
                         u"45",
                         u"\x1b[",
                         u"\x1b[1;31m",
                         u"\x1b[0m",
                         u"\x1b[m",
                         u"\x1b[1;2;3m",
                         u"\x1b[10;2;3m",
                         u"x",
                         u"text ",
                         u"\n",
                         u"\r",
                         u"\u2028",
                         u"萬",
                         u"\xD83D\xDDE1",
                         u"\xD83D",
                         u"\x1b\xD835\xDFCE",
                         u"٣",
                         u"5m",
                         u"7;8m"});
    for (int round = 0; round < 20'000; ++round) {
        const auto text = texts.next(24);
        const auto result = parsed(text);
        const Reference reference(text);
        ASSERT_EQ(result.text, reference.text) << znt::utf8FromText(text);
        for (std::size_t at = 0; at < result.text.size(); ++at)
            ASSERT_EQ(*result.attributesAt(at), reference.sets[at])
                << znt::utf8FromText(text) << " at " << at;
        ASSERT_TRUE(std::is_sorted(result.runs.begin(), result.runs.end(),
                                   [](const auto& a, const auto& b) { return a.offset < b.offset; }));
    }
}
