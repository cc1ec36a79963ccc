#include "ZNTColourParser.h"
#include "ZNTIcuReference.h"
#include "ZNTRandomText.h"
#include "ZNTSgrScanner.h"
#include "ZNTText.h"

#include <algorithm>

using namespace znt::colours;

namespace
{

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
        ZNTAttributeSet plain;
        parser.setupDefaults(plain, ZNTColourParser::Overwrite::Yes);
        sets.assign(text.size(), plain);
        auto current = plain;
        int shift = 2;
        for (const auto& match : znt::icu::matches(marked, sequence))
            for (const bool isLast : {false, true}) {
                const auto& [start, digits] = match.groups[isLast ? 1 : 0];
                if (start < 0)
                    continue;
                const int code = znt::integerValue(digits);
                if (code == 0)
                    current = plain;
                else if (const auto name = ZNTColourParser::attributeNameForCode(code))
                    current.at(*name) = parser.attributeForCode(code);
                // A reset in front of another code changes nothing by itself.
                if (code != 0 || isLast)
                    std::fill(sets.begin() + std::clamp<long>(start - shift, 0, std::ssize(sets)), sets.end(),
                              current);
                shift += static_cast<int>(digits.size()) + (isLast ? 2 : 0);
            }
    }
};

} // namespace

TEST(ColourParser, LaysColourAndFontOverTheTextThatIsLeft)
{
    ZNTColourParser parser;
    parser.setFont(ZNTFont{u"Hack", 20});
    const auto text = parser.attributedText(u"a\x1b[31mb\x1b[1mc\x1b[4md\x1b[0me\x1b[1;33mf\x1b[1;32m");
    EXPECT_EQ(text.text, u"abcdef");
    const std::tuple<ZNTColour, bool, bool> shown[] = {{white, false, false}, {red, false, false},
                                                       {red, true, false},    {red, true, true},
                                                       {white, false, false}, {yellow, true, false}};
    for (std::size_t at = 0; at < std::size(shown); ++at) {
        const auto* set = text.attributesAt(at);
        EXPECT_EQ(std::tuple(set->shownForeground(), set->isShownBold(), set->isShownUnderlined()), shown[at])
            << at;
    }
    EXPECT_EQ(text.runs.back().offset, 5U) << "no run stands where no text is";
    EXPECT_EQ(std::get<ZNTFont>(text.attributesAt(0)->font), (ZNTFont{u"Hack", 20}));
    EXPECT_EQ(std::get<ZNTColour>(text.attributesAt(0)->background), black);
    EXPECT_EQ(std::get<ZNTFont>(text.attributesAt(2)->font), (ZNTFont{u"Menlo-Bold", 20}));
}

TEST(ColourParser, AnswersAsIcuDoesOnRandomSequences)
{
    auto texts = ZNTRandomText::ofPieces(u"31¦\x1b[¦\x1b[1;31m¦\x1b[0m¦\x1b[m¦\x1b[1;2;3m¦\x1b[10;2;3m¦\x1b["
                                         u"38;5;214m¦\x1b\xD835\xDFCE¦\x1b¦[¦m¦;¦"
                                         u"0¦1¦4¦5¦7¦x¦\n¦\r¦\u2028¦\u0663¦\xD83D¦\xDDE1");
    for (int round = 0; round < 8'000; ++round) {
        const auto text = texts.next(24);
        const auto result = ZNTColourParser().attributedText(text);
        const Reference reference(text);
        ASSERT_EQ(result.text, reference.text) << znt::utf8FromText(text);
        for (std::size_t at = 0; at < result.text.size(); ++at)
            ASSERT_EQ(*result.attributesAt(at), reference.sets[at])
                << znt::utf8FromText(text) << " at " << at;
    }
}
