#include "ZNTRandomText.h"
#include "ZNTRecordedActions.h"
#include "ZNTTestPlatform.h"
#include "ZNTTriggerList.h"
#include "ZNTTriggerReference.h"

#include <gtest/gtest.h>

namespace
{

void comparePasses(const std::vector<ZNTTrigger>& triggers, ZNTTriggerList& list, ZNTRecordedLog& log,
                   const std::u16string& text)
{
    log.lines.clear();
    ZNTTriggerReference reference;
    reference.passOver(triggers, text);
    ZNTRecordedActions actions, inParts;
    const bool isGagged = actions.passOver(list, text);
    inParts.hasTime = false; // the turn ends wherever the pass asks
    const bool isGaggedInParts = inParts.passOver(list, text);
    if (reference.isSlow || hasSlowTrigger(log.lines))
        return;
    const auto shown = znt::utf8FromText(std::u16string_view(text).substr(0, 200));
    EXPECT_TRUE(actions.done == reference.commands)
        << testing::PrintToString(actions.done) << "\ninstead of\n"
        << testing::PrintToString(reference.commands) << "\nfor\n"
        << shown;
    EXPECT_EQ(isGagged, reference.isGagged) << shown;
    EXPECT_TRUE(inParts.done == actions.done) << shown;
    EXPECT_EQ(isGaggedInParts, isGagged) << shown;
}

std::vector<ZNTTrigger> randomTriggers(ZNTRandomText& checks, std::size_t count, std::size_t mostPieces)
{
    std::vector<ZNTTrigger> triggers(count);
    for (auto& trigger : triggers) {
        trigger.check = trigger.name = checks.next(mostPieces);
        trigger.action = checks.number(3) == 0 ? u"look" : u"say %1, %1!";
        trigger.gag = checks.number(4) == 0;
    }
    return triggers;
}

/// Lists made of `checks`, each tried on texts made of `texts`.
void compareRandomly(ZNTRandomText checks, ZNTRandomText texts, std::size_t lists, std::size_t mostPieces)
{
    ZNTRecordedLog log;
    VirtualRunLoop loop;
    ZNTTriggerList list(log, loop); // the same for all, so that patterns are found in its cache as well
    for (std::size_t run = 0; run < lists; ++run) {
        const auto triggers = randomTriggers(checks, 1 + checks.number(8), mostPieces);
        list.setTriggers(triggers);
        for (int text = 0; text < 6; ++text) {
            comparePasses(triggers, list, log, texts.next(text == 0 ? 1500 : 14));
            std::u16string names;
            for (const auto& trigger : triggers)
                names += u"\n\"" + trigger.check + u"\" -> \"" + trigger.action + u'"';
            ASSERT_FALSE(testing::Test::HasFailure()) << "with the triggers" << znt::utf8FromText(names);
        }
    }
}

// Pieces, parted by a broken bar
constexpr std::u16string_view textPieces =
    u"a¦b¦ab¦aab¦ ¦  ¦\r\n¦\n¦!¦.¦,¦A ¦goblin¦ kicks¦ "
    u"you¦\u4f60¦-¦_¦\t¦\u0301¦\u2028¦$1¦\\¦B¦\u00e9¦arrives¦\uE000¦\uFF21¦\uFF01¦1"
    u"¦%¦[¦]";
constexpr std::u16string_view wildcardPieces =
    u"a¦b¦ab¦%1¦*¦%1¦*¦ ¦.¦!¦\\.¦A ¦ kicks¦ you¦\\\\¦%¦\u4f60¦\n¦-¦\\[¦]¦arrives";
constexpr std::u16string_view expressionPieces =
    u"a¦b¦ab¦goblin¦(a|b)¦|¦?¦a+¦goblin+¦{2}¦{0}¦[ab]¦[^a]¦(?i)¦(?:ab)¦(¦)¦\\b¦\\w¦\\Q¦\\E¦(?=a)¦(?!b)¦(?#a)¦"
    u"\\x61¦$¦^¦%1¦*¦ kicks¦(?x)¦ ¦#¦[[a]b]¦(?-i:¦\\n¦\\1¦(.+)¦\\.¦[]¦[a\\]]¦\\d¦\U0001F600¦{1,2}¦(?<n>a)";

TEST(TriggerEquivalence, ChecksOfTextAndWildcardsMatchAsTheirExpressionsDo)
{
    compareRandomly(ZNTRandomText::ofPieces(wildcardPieces), ZNTRandomText::ofPieces(textPieces), 1500, 6);
}

TEST(TriggerEquivalence, ExpressionsOfAnyKindMatchAsWithoutTheFilter)
{
    compareRandomly(ZNTRandomText::ofPieces(expressionPieces), ZNTRandomText::ofPieces(textPieces), 1500, 5);
}

TEST(TriggerEquivalence, TextBeyondTheBasicPlaneIsReadAsCharacters)
{
    compareRandomly(ZNTRandomText::ofPieces(u"a¦%1¦*¦.¦ ¦!¦\U00020000¦\U0001F600"),
                    ZNTRandomText::ofPieces(std::u16string(textPieces) + u"¦\U00020000¦\U0001F600"), 500, 5);
}

/// Many literals of each length, so that every group of the filter has many members with parts in common, in
/// texts longer than the filter takes at a time.
TEST(TriggerEquivalence, EveryOccurrenceOfManyLiteralsIsFoundWhereverItStands)
{
    auto parts = ZNTRandomText::ofPieces(u"You ¦hit¦ the¦orc¦\u4f60\u597d¦e¦-¦--¦tells¦.");
    std::vector<ZNTTrigger> triggers;
    for (int count = 0; count < 400; ++count) {
        const auto check = znt::replacedAll(parts.next(7), u".", u"\\.");
        if (!check.empty())
            triggers.push_back({0, u"", check, check, std::nullopt, false, true});
    }
    ZNTRecordedLog log;
    VirtualRunLoop loop;
    ZNTTriggerList list(log, loop);
    list.setTriggers(triggers);
    for (std::size_t shift = 0; shift < 16; ++shift) {
        std::u16string text(15'340 + shift, u'x'); // the parts lie across the end of what is taken at once
        text += parts.next(60);
        comparePasses(triggers, list, log, text);
        ASSERT_FALSE(HasFailure()) << shift;
    }
}

} // namespace
