#include "ZNTRandomText.h"
#include "ZNTRequiredLiteral.h"
#include "ZNTText.h"
#include "ZNTTriggerReference.h"

namespace
{

// Pieces, parted by a broken bar
const std::u16string textPieces =
    u"a¦b¦ab¦aab¦ ¦  ¦\r\n¦\n¦!¦.¦,¦A ¦goblin¦ kicks¦ "
    u"you¦\u4f60¦-¦_¦\t¦\u0301¦\u2028¦$1¦\\¦B¦\u00e9¦arrives¦\uE000¦\uFF21¦\uFF01¦1"
    u"¦%¦[¦]";
const std::u16string wildcards =
    u"a¦b¦ab¦%1¦*¦%1¦*¦ ¦.¦!¦\\.¦A ¦ kicks¦ you¦\\\\¦%¦\u4f60¦\n¦-¦\\[¦]¦arrives";
const std::u16string expressions =
    u"a¦b¦ab¦goblin¦(a|b)¦|¦?¦a+¦goblin+¦{2}¦{0}¦[ab]¦[^a]¦(?i)¦(?:ab)¦(¦)¦\\b¦\\w¦\\Q¦\\E¦(?=a)¦(?!b)¦(?#a)¦"
    u"\\x61¦$¦^¦%1¦*¦ kicks¦(?x)¦ ¦#¦[[a]b]¦(?-i:¦\\n¦\\1¦(.+)¦\\.¦[]¦[a\\]]¦\\d¦\U0001F600¦{1,2}¦(?<n>a)";
const std::u16string farPlanes = u"¦\U00020000¦\U0001F600";

TEST(TriggerEquivalence, RandomChecksMatchRandomTextAsIcuAloneMatchesIt)
{
    const struct {
        std::u16string checks, texts;
        std::size_t lists, mostPieces;
    } cases[] = {{wildcards, textPieces, 600, 6},
                 {expressions, textPieces, 600, 5},
                 {u"a¦%1¦*¦.¦ ¦!" + farPlanes, textPieces + farPlanes, 200, 5}};
    for (const auto& row : cases) {
        auto checks = ZNTRandomText::ofPieces(row.checks), texts = ZNTRandomText::ofPieces(row.texts);
        ZNTRecordedLog log;
        VirtualRunLoop loop;
        ZNTTriggerList list(log, loop); // one for all lists of triggers, so that its cache is used as well
        for (std::size_t run = 0; run < row.lists; ++run) {
            std::vector<ZNTTrigger> triggers(1 + checks.number(8));
            std::u16string shown;
            for (auto& trigger : triggers) {
                trigger.check = trigger.name = checks.next(row.mostPieces);
                trigger.action = checks.number(3) == 0 ? u"look" : u"say %1, %1!";
                trigger.gag = checks.number(4) == 0;
                shown += u"\n\"" + trigger.check + u"\" -> \"" + trigger.action + u'"';
            }
            list.setTriggers(triggers);
            for (int count = 0; count < 6; ++count) {
                const auto text = texts.next(count == 0 ? 1500 : 14);
                ASSERT_EQ(differenceFromIcu(triggers, list, log, text), "")
                    << znt::utf8FromText(text.substr(0, 200) + shown);
            }
        }
    }
}

/// Many literals of each length, so that every group of the filter has many members with parts in common, in
/// texts longer than the filter takes at a time.
/// An answer that is too short or empty costs time; a wrong one would silence a trigger.
TEST(TriggerEquivalence, TheLongestTextThatEveryMatchHoldsIsFoundOrNoneIfThePatternIsNotUnderstood)
{
    const std::pair<std::u16string_view, std::u16string_view> rows[] = {
        {u"kill (\\w+) now", u"kill "},
        {u"ab?cd", u"cd"},
        {u"ab+cde", u"cde"},
        {u"ab{2}c", u"a"},
        {u"ab{2}?+cd", u"cd"},
        {u"xy\U0001F600?b", u"xy"},
        {u"^one.three$", u"three"},
        {u"a}b]long", u"long"},
        {u"x\\.y\\~z", u"x.y~z"},
        {u"one\\d+three", u"three"},
        {u"\\zone\\Atwo", u"one"},
        {u"(a(b)[)]\\))long?er", u"lon"},
        {u"(?:a)?+{2}?+long", u"long"},
        {u"[^a\\]b]+long", u"long"},
        {u"[(]long", u"long"},
        {u"(?<=a)long", u"long"},
        {u"long(", u""},
        {u"long(a", u""},
        {u"(?i)long", u""},
        {u"(a(?#b)c)long", u""},
        {u"long(?", u""},
        {u"a|long", u""},
        {u"long)", u""},
        {u"*long", u""},
        {u"+long", u""},
        {u"?long", u""},
        {u"long[", u""},
        {u"long[^", u""},
        {u"[]]long", u""},
        {u"[^]]long", u""},
        {u"[[:alpha:]]long", u""},
        {u"[a\\", u""},
        {u"[\\c]]long", u""},
        {u"(\\Q)long", u""},
        {u"long\\", u""},
        {u"\\Qlong", u""},
        {u"\\elong", u""},
        {u"\\0long", u""},
        {u"\\ long", u""},
        {u"\\\u007Flong", u""},
        {u"(a){2long", u""},
        {u"long(a)?", u"long"},
    };
    for (const auto& [pattern, expected] : rows)
        EXPECT_EQ(znt::requiredLiteral(pattern), expected) << znt::utf8FromText(pattern);
}

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
        ASSERT_EQ(differenceFromIcu(triggers, list, log, text), "") << shift;
    }
}

} // namespace
