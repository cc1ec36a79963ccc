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

/// The character at `offset` as "r,g,b", with "bold" and "underlined".
std::string shownAt(const ZNTAttributedText& text, std::size_t offset)
{
    const auto* set = text.attributesAt(offset);
    const auto colour = set->shownForeground();
    return std::to_string(colour.red) + ',' + std::to_string(colour.green) + ',' +
           std::to_string(colour.blue) + (set->isShownBold() ? " bold" : "") +
           (set->isShownUnderlined() ? " underlined" : "");
}

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
    ZNTColourParser parser;
    parser.setFont(ZNTFont{u"Hack", 20});
    const auto text = parser.attributedText(u"a\x1b[31mb\x1b[1mc\x1b[4md\x1b[0me\x1b[1;33mf\x1b[1;32m");
    EXPECT_EQ(text.text, u"abcdef");
    const char* shown[] = {"255,255,255", "255,0,0",       "255,0,0 bold", "255,0,0 bold underlined",
                           "255,255,255", "255,255,0 bold"};
    for (std::size_t at = 0; at < std::size(shown); ++at)
        EXPECT_EQ(shownAt(text, at), shown[at]) << at;
    EXPECT_EQ(text.runs.back().offset, 5U) << "no run stands where no text is";
    EXPECT_EQ(std::get<ZNTFont>(text.attributesAt(0)->font), (ZNTFont{u"Hack", 20}));
    EXPECT_EQ(std::get<ZNTFont>(text.attributesAt(2)->font), (ZNTFont{u"Menlo-Bold", 20}));
}

TEST(ColourParser, AnswersAsIcuDoesOnRandomSequences)
{
    std::vector<std::u16string> pieces{u"31",           u"\x1b[",          u"\x1b[1;31m",
                                       u"\x1b[0m",      u"\x1b[m",         u"\x1b[1;2;3m",
                                       u"\x1b[10;2;3m", u"\x1b[38;5;214m", u"\x1b\xD835\xDFCE"};
    for (const char16_t unit : std::u16string_view(u"\x1b[m;01457x\n\r\u2028\u0663\xD83D\xDDE1"))
        pieces.emplace_back(1, unit);
    ZNTRandomText texts(pieces);
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
