#include "ZNTIcuReference.h"
#include "ZNTRandomText.h"
#include "ZNTRecordedActions.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"
#include "ZNTTriggerList.h"
#include "ZNTTriggerPattern.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

/// The pass as it would be without any preparation: each expression built, compiled and run by ICU, its
/// actions put together by ICU.
struct Reference {
    std::vector<std::u16string> commands;
    bool isGagged = false;

    void passOver(const std::vector<ZNTTrigger>& triggers, std::u16string_view text)
    {
        for (const auto& trigger : triggers)
            if (!trigger.check.empty()) // no expression to ICU's interface for UTF-16 in place
                tryTrigger(trigger, text);
    }

private:
    void tryTrigger(const ZNTTrigger& trigger, std::u16string_view text)
    {
        const auto pattern =
            znt::replacedAll(znt::replacedAll(trigger.check, u"%1", uR"(([\w\s]*))"), u"*", uR"(([\w\s]*))");
        UErrorCode status = U_ZERO_ERROR;
        const auto input = znt::icu::unicodeString(text);
        icu::RegexMatcher matcher(znt::icu::unicodeString(pattern), input, 0, status);
        const bool usesGroup = znt::contains(trigger.action, u"%1");
        if (U_FAILURE(status) || (usesGroup && matcher.groupCount() == 0))
            return; // cannot be used
        std::vector<std::u16string> sent;
        UErrorCode templates =
            U_ZERO_ERROR; // an ill-formed one ends the trigger; the matches before it stand
        while (U_SUCCESS(templates) && matcher.find(status)) {
            auto command = trigger.action;
            if (usesGroup) {
                icu::RegexMatcher placeholder(u"%1", 0, status);
                const auto action = znt::icu::unicodeString(trigger.action);
                placeholder.reset(action);
                command = znt::icu::plainText(placeholder.replaceAll(matcher.group(1, templates), templates));
            }
            isGagged |= trigger.gag && U_SUCCESS(status);
            if (U_SUCCESS(templates))
                sent.push_back(command);
        }
        if (U_SUCCESS(status))
            commands.insert(commands.end(), sent.begin(), sent.end());
    }
};

/// An expression that reaches its limit of time, on a machine that is busy or slow, answers less than the
/// reference, which has none.
bool hasReachedLimit(const ZNTRecordedLog& log)
{
    return std::any_of(log.lines.begin(), log.lines.end(),
                       [](const auto& line) { return line.find("took too long") != line.npos; });
}

void comparePasses(const std::vector<ZNTTrigger>& triggers, ZNTTriggerList& list, ZNTRecordedLog& log,
                   const std::u16string& text)
{
    log.lines.clear();
    Reference reference;
    reference.passOver(triggers, text);
    ZNTRecordedActions actions;
    const bool isGagged = list.passOver(text, actions);
    if (hasReachedLimit(log))
        return;
    const auto shown = znt::utf8FromText(std::u16string_view(text).substr(0, 200));
    EXPECT_TRUE(actions.done == reference.commands)
        << testing::PrintToString(actions.done) << "\ninstead of\n"
        << testing::PrintToString(reference.commands) << "\nfor\n"
        << shown;
    EXPECT_EQ(isGagged, reference.isGagged) << shown;

    ZNTRecordedActions inParts; // with an end of the turn wherever the pass asks
    const auto pass = list.startPass(text, inParts);
    inParts.hasTime = false;
    while (!pass->goOn())
        continue;
    if (hasReachedLimit(log))
        return;
    EXPECT_TRUE(inParts.done == actions.done) << shown;
    EXPECT_EQ(pass->isGagged(), isGagged) << shown;
}

std::vector<ZNTTrigger> randomTriggers(ZNTRandomText& checks, std::size_t count, std::size_t mostPieces)
{
    std::vector<ZNTTrigger> triggers(count);
    for (auto& trigger : triggers) {
        trigger.check = checks.next(mostPieces);
        trigger.action = checks.number(3) == 0 ? u"look" : u"say %1, %1!";
        trigger.gag = checks.number(4) == 0;
        trigger.name = trigger.check;
    }
    return triggers;
}

/// Lists drawn from `checks`, each held against texts drawn from `texts`.
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
            if (testing::Test::HasFailure()) {
                for (const auto& trigger : triggers)
                    names += u"\n\"" + trigger.check + u"\" -> \"" + trigger.action + u'"';
                FAIL() << "with the triggers" << znt::utf8FromText(names);
            }
        }
    }
}

const std::vector<std::u16string> textPieces{
    u"a",      u"b",  u"ab",     u"aab",    u" ",      u"  ",      u"\r\n", u"\n", u"!",  u".",
    u",",      u"A ", u"goblin", u" kicks", u" you",   u"\u4f60",  u"-",    u"_",  u"\t", u"\u0301",
    u"\u2028", u"$1", u"\\",     u"B",      u"\u00e9", u"arrives", u"1",    u"%",  u"[",  u"]"};

TEST(TriggerEquivalence, ChecksOfTextAndWildcardsMatchAsTheirExpressionsDo)
{
    compareRandomly(ZNTRandomText({u"a",      u"b",  u"ab",  u"%1",  u"*",      u"%1",     u"*",    u" ",
                                   u".",      u"!",  u"\\.", u"A ",  u" kicks", u" you",   u"\\\\", u"%",
                                   u"\u4f60", u"\n", u"-",   u"\\[", u"]",      u"arrives"}),
                    ZNTRandomText(textPieces), 1500, 6);
}

TEST(TriggerEquivalence, ExpressionsOfAnyKindMatchAsWithoutTheFilter)
{
    compareRandomly(
        ZNTRandomText({u"a",          u"b",       u"ab",     u"goblin", u"(a|b)", u"|",      u"?",
                       u"a+",         u"goblin+", u"{2}",    u"{0}",    u"[ab]",  u"[^a]",   u"(?i)",
                       u"(?:ab)",     u"(",       u")",      u"\\b",    u"\\w",   u"\\Q",    u"\\E",
                       u"(?=a)",      u"(?!b)",   u"(?#a)",  u"\\x61",  u"$",     u"^",      u"%1",
                       u"*",          u" kicks",  u"(?x)",   u" ",      u"#",     u"[[a]b]", u"(?-i:",
                       u"\\n",        u"\\1",     u"(.+)",   u"\\.",    u"[]",    u"[a\\]]", u"\\d",
                       u"\U0001F600", u"{1,2}",   u"(?<n>a)"}),
        ZNTRandomText(textPieces), 1500, 5);
}

TEST(TriggerEquivalence, TextBeyondTheBasicPlaneIsReadAsCharacters)
{
    auto pieces = textPieces;
    pieces.insert(pieces.end(), {u"\U00020000", u"\U0001F600"});
    compareRandomly(ZNTRandomText({u"a", u"%1", u"*", u".", u" ", u"!", u"\U00020000", u"\U0001F600"}),
                    ZNTRandomText(pieces), 500, 5);
}

TEST(TriggerEquivalence, TheWordClassIsIcusForEveryCharacterOfOneUnit)
{
    const ZNTWordCharacters words;
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher matcher(uR"([\w\s])", 0, status);
    std::vector<unsigned> different;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const icu::UnicodeString text(static_cast<char16_t>(unit));
        matcher.reset(text);
        if ((matcher.matches(status) != 0) != words.contains(static_cast<char16_t>(unit)))
            different.push_back(unit);
    }
    EXPECT_TRUE(different.empty()) << different.size() << " from " << different.front();
}

/// Many literals of each length, so that every group of the filter has many members with parts in common, in
/// texts longer than the filter takes at a time.
TEST(TriggerEquivalence, EveryOccurrenceOfManyLiteralsIsFoundWhereverItStands)
{
    ZNTRandomText parts(
        {u"You ", u"hit", u" the", u"orc", u"\u4f60\u597d", u"e", u"-", u"--", u"tells", u"."});
    std::vector<ZNTTrigger> triggers;
    for (int count = 0; count < 400; ++count) {
        auto check = parts.next(7);
        for (auto dot = check.find(u'.'); dot != check.npos; dot = check.find(u'.', dot + 2))
            check.insert(dot, 1, u'\\');
        if (!check.empty())
            triggers.push_back({0, u"", check, check, std::nullopt, false, true});
    }
    ZNTRecordedLog log;
    VirtualRunLoop loop;
    ZNTTriggerList list(log, loop);
    list.setTriggers(triggers);
    ZNTRandomText fill({u"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"});
    for (std::size_t shift = 0; shift < 16; ++shift) {
        std::u16string text(15'340 + shift, u'x'); // the parts lie across the end of what is taken at once
        text += parts.next(60);
        comparePasses(triggers, list, log, text);
        ASSERT_FALSE(HasFailure()) << shift;
    }
}

} // namespace
