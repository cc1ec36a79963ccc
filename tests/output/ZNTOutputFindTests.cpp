#include "ZNTOutputFind.h"
#include "ZNTOutputSamples.h"
#include "ZNTRandomText.h"

namespace
{

using Match = ZNTOutputFind::Match;

TEST(OutputFind, FindsWithoutRegardToCaseInAnyScript)
{
    ZNTOutputStore store;
    store.append(coloured(u"Gr\u00FC\u00DFe, \u4F60\u7AD9 \u0416\u0418\u0422\u042C guARD\n"));
    ZNTOutputFind find(store);
    for (const auto* text : {u"gR\u00DC", u"\u7AD9", u"\u0436\u0438\u0442", u"Guard"}) {
        find.setText(text);
        EXPECT_TRUE(find.next(0));
    }
    find.setText(u"guards");
    EXPECT_FALSE(find.next(0));
}

TEST(OutputFind, AgreesWithAPlainSearchInBothDirectionsAndCountsAsItGoes)
{
    auto lines = ZNTRandomText::ofPieces(u"ab¦AB¦a¦b ¦c");
    ZNTOutputStore store;
    std::u16string plain;
    while (plain.size() < 130'000) {
        const auto line = lines.next(39) + u"\n";
        store.append(coloured(line));
        plain += line;
    }
    std::u16string lower = plain;
    std::ranges::replace(lower, u'A', u'a');
    std::ranges::replace(lower, u'B', u'b');
    std::vector<Match> expected;
    for (auto at = lower.find(u"abab"); at != lower.npos; at = lower.find(u"abab", at + 4))
        expected.push_back({static_cast<std::int64_t>(at), static_cast<std::int64_t>(at) + 4});
    ZNTOutputFind find(store);
    find.setText(u"aBAb");
    while (find.countSome(0)) {
    }
    std::int64_t end = 0;
    for (const auto& match : expected) {
        ASSERT_EQ(find.next(end), match);
        end = match.end;
    }
    EXPECT_EQ(find.status().current, static_cast<std::int64_t>(expected.size()));
    EXPECT_FALSE(find.status().hasWrapped);
    EXPECT_EQ(find.next(end), expected.front());
    EXPECT_TRUE(find.status().hasWrapped);
    EXPECT_EQ(find.previous(expected.front().start), expected.back());
    for (auto index = expected.size() - 1; index-- > expected.size() - 200;)
        ASSERT_EQ(find.previous(expected[index + 1].start), expected[index]);
    EXPECT_EQ(find.previous(expected[1].start), expected[0]);

    store.append(coloured(u"one more ABAB"));
    EXPECT_EQ(find.status().count, static_cast<std::int64_t>(expected.size()) + 1);
}

} // namespace
