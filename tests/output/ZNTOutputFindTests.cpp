#include "ZNTOutputFind.h"
#include "ZNTOutputSamples.h"

#include <gtest/gtest.h>
#include <random>

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
    EXPECT_EQ(find.status().count, 0);
    find.setText(u"");
    EXPECT_FALSE(find.isActive());
    EXPECT_FALSE(find.previous(10));
}

TEST(OutputFind, AgreesWithAPlainSearchInBothDirectionsAndCountsAsItGoes)
{
    std::mt19937 random(5);
    ZNTOutputStore store;
    std::u16string plain;
    while (plain.size() < 130'000) {
        const auto line = randomLine(random, {u"ab", u"AB", u"a", u"b ", u"c"}, random() % 40) + u"\n";
        store.append(coloured(line));
        plain += line;
    }
    ASSERT_GT(store.endBlock(), 2);
    std::u16string lower = plain;
    for (auto& unit : lower)
        unit = static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + 32 : unit);
    std::vector<Match> expected;
    for (auto at = lower.find(u"abab"); at != lower.npos; at = lower.find(u"abab", at + 4))
        expected.push_back({static_cast<std::int64_t>(at), static_cast<std::int64_t>(at) + 4});
    ASSERT_GT(expected.size(), 100u);

    ZNTOutputFind find(store);
    find.setText(u"aBAb");
    while (find.countSome(0)) {
    }
    Match last{-1, 0};
    for (std::size_t index = 0; index < expected.size(); ++index) {
        ASSERT_EQ(find.next(last.end), expected[index]);
        last = expected[index];
        if (index % 300 == 0) {
            ASSERT_EQ(find.status().current, static_cast<std::int64_t>(index) + 1);
        }
    }
    EXPECT_FALSE(find.status().wentRound);
    EXPECT_EQ(find.status().count, static_cast<std::int64_t>(expected.size()));
    EXPECT_EQ(find.next(last.end), expected.front());
    EXPECT_TRUE(find.status().wentRound);
    EXPECT_EQ(find.previous(expected.front().start), expected.back());
    EXPECT_TRUE(find.status().wentRound);
    for (auto index = expected.size() - 1; index-- > expected.size() - 200;)
        ASSERT_EQ(find.previous(expected[index + 1].start), expected[index]);

    store.append(coloured(u"one more ABAB"));
    EXPECT_EQ(find.status().count, static_cast<std::int64_t>(expected.size()) + 1);
}

} // namespace
