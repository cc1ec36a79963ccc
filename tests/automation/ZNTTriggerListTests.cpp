#include "ZNTRecordedActions.h"
#include "ZNTTestPlatform.h"
#include "ZNTTriggerList.h"

#include "ZNTText.h"

#include <ctime>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

enum class Gag { No, Yes };

ZNTTrigger trigger(std::u16string check, std::u16string action, std::optional<std::u16string> sound = {},
                   Gag gag = Gag::No)
{
    return {7, u"of the test", std::move(check), std::move(action), std::move(sound), gag == Gag::Yes, true};
}

class TriggerList : public testing::Test
{
protected:
    std::vector<std::u16string> doneFor(std::u16string_view text)
    {
        ZNTRecordedActions actions;
        isGagged = actions.passOver(list, text);
        return actions.done;
    }
    std::vector<std::u16string> doneBy(std::vector<ZNTTrigger> triggers, std::u16string_view text)
    {
        list.setTriggers(std::move(triggers));
        return doneFor(text);
    }

    ZNTRecordedLog log;
    VirtualRunLoop loop;
    ZNTTriggerList list{log, loop};
    bool isGagged = false;
};

TEST_F(TriggerList, AWordOfTheTextGoesIntoTheCommand)
{
    using Text = std::u16string;
    const std::tuple<Text, Text, Text, std::vector<Text>> cases[] = {
        {u"A %1 kicks you hard!", u"kick %1", u"A big goblin kicks you hard!\r\n", {u"kick big goblin"}},
        {u"A %1 kicks you hard!", u"kick %1", u"A  kicks you hard!", {}},
        {u"You are hungry\\.", u"eat", u"You are hungry!", {}},
        {u"^Bob", u"wave", u"Ann\nBob", {}},
        {u"%1 gives * to %1", u"%1 %1", u"Bob gives bread to Ann.", {u"Bob Bob"}},
        {u"A %1, %1, %1, %1!", u"get %1", u"A rat, a cat, a dog, an owl!", {u"get rat"}},
        {u"one\r\ntwo", u"yes", u"one\r\ntwo", {u"yes"}},
        {u"\\0141b", u"yes", u"ab", {u"yes"}},
        // The character behind "\c" opens or closes nothing.
        {u"[\\c]abc]x", u"yes", u"ax", {u"yes"}},
        {u"(\\c()a|b(\\c)c)goblin", u"yes", u"\ba", {u"yes"}},
        {u"(\\c[)x|y(]z)goblin", u"yes", u"\x1bx", {u"yes"}},
        {u"[\\]goblin]x", u"yes", u"gx", {u"yes"}},
    };
    for (const auto& [check, action, text, done] : cases)
        EXPECT_EQ(doneBy({trigger(check, action)}, text), done) << znt::utf8FromText(check);
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(TriggerList, EveryMatchActsInOrderOfTheListThenOfPosition)
{
    const auto loud = trigger(u"%1 bites!", u"hit %1", u"bite.wav"), silent = trigger(u"rat", u"flee", u"");
    EXPECT_THAT(doneBy({loud, silent, loud}, u"A rat bites! A cat bites!"),
                ElementsAre(u"hit A rat", u"sound:bite.wav", u"hit  A cat", u"sound:bite.wav", u"flee",
                            u"sound:", u"hit A rat", u"sound:bite.wav", u"hit  A cat", u"sound:bite.wav"));
}

TEST_F(TriggerList, AGagCanTakeOutTheLinesThatItTouches)
{
    list.setRules({.gagsLines = true, .emptyActsSilent = true});
    const std::u16string longLine(200'000, u'a');
    const std::tuple<std::u16string, std::u16string, std::u16string> cases[] = {
        {u"caws|barks", u"One.\r\nA crow caws.\r\nTwo.\r\nA dog barks.", u"One.\r\nTwo.\r\n"},
        {u"\nTwo", u"One.\r\nTwo.\r\nThree.", u"One.\r\nThree."}, // "\n" says where a line begins
        {u"a\r\nb", u"xa\r\nbx\r\nc", u"c"},
        // A wildcard reaches over line ends in both directions.
        {u"%1 caws*", u"Hall\r\nExits north\r\nA crow caws\r\nA door", u"Hall\r\nExits north\r\nA door"},
        {u"Hall%1door", u"One\r\nHall\r\nA door\r\nTwo", u"One\r\nTwo"},
        {u"b|d", u"a\rb\rc\n\rd\n\re", u"a\rc\n\re"},
        {u"$", u"One.\r\n> ", u"One.\r\n"},
        {u"\r\n", u"One.\r\nTwo.", u"Two."}, // a line end alone is that of its line
        {u"\\z", u"One.\r\n", u"One.\r\n"},  // behind the last line there is none
        {u"a", longLine + u"\n\nb", u"\nb"}, // each of the matches would measure the line
    };
    for (const auto& [check, text, left] : cases) {
        SCOPED_TRACE(znt::utf8FromText(check));
        list.setTriggers({trigger(check, u"", {}, Gag::Yes)});
        ZNTRecordedActions actions;
        const auto pass = list.startPass(text, actions);
        while (!pass->goOn())
            continue;
        EXPECT_EQ(pass->outcome().gaggedLines.takenOutOf(text), left);
        EXPECT_FALSE(pass->outcome().isGagged);
        EXPECT_THAT(actions.done, IsEmpty()) << "an empty action";
    }
}

TEST_F(TriggerList, ATriggerThatCannotBeUsedDoesNothingAndTheOthersDo)
{
    list.setTriggers({trigger(u"sword", u"first"), trigger(u"a(b", u"never", u"never.wav", Gag::Yes),
                      trigger(u"sword", u"no %1"), trigger(u"", u"never"),
                      trigger(u"costs (.{0,9}) coins", u"pay %1", {}, Gag::Yes),
                      trigger(u"The %1", u"last")});
    EXPECT_EQ(log.lines.size(), 3u) << "once each, when they are set";
    EXPECT_THAT(log.lines.front(), HasSubstr("U_REGEX_MISMATCHED_PAREN at character"));
    log.lines.clear();

    EXPECT_THAT(doneFor(u"The sword costs 5 coins or costs $5 coins or costs 6 coins."),
                ElementsAre(u"first", u"pay 5", u"last"))
        << "an ill-formed template ends its trigger; the matches before it stand, and so does the gag";
    EXPECT_TRUE(isGagged);
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("replacement template")));
    EXPECT_THAT(doneFor(u"The sword costs 5 coins."), ElementsAre(u"first", u"pay 5", u"last"));
}

TEST_F(TriggerList, AnExpressionThatTakesTooLongCostsItsOwnActionsOnly)
{
    list.setTriggers({trigger(u"(a+)+$", u"found"), trigger(u"end", u"yes")});
    const auto text = std::u16string(40, u'a') + u"! end";
    for (int chunk = 0; chunk < 3; ++chunk) {
        EXPECT_FALSE(list.isResting(7));
        EXPECT_THAT(doneFor(text), ElementsAre(u"yes"));
    }
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("took too long"), HasSubstr("took too long"),
                                       HasSubstr("is given 1 ms a chunk for the next 30 s")));
    EXPECT_TRUE(list.isResting(7));
    loop.advance(29.9);
    for (int chunk = 0; chunk < 5; ++chunk)
        EXPECT_THAT(doneFor(text), ElementsAre(u"yes"));
    EXPECT_THAT(doneFor(u"aaa"), ElementsAre(u"found")) << "what it is fast enough for it answers";

    loop.advance(0.1);
    EXPECT_FALSE(list.isResting(7));
    for (const auto& chunk : {text, std::u16string(u"aaa"), text, text})
        doneFor(chunk);
    EXPECT_FALSE(list.isResting(7)) << "three, but not in a row";
    EXPECT_EQ(log.lines.size(), 6u);
}

TEST_F(TriggerList, ManyExpressionsThatTakeTooLongShareTheTimeOfAChunk)
{
    std::vector<ZNTTrigger> triggers(300, trigger(u"(a+)+$", u"never"));
    triggers.push_back(trigger(u"\\bend\\b", u"yes"));
    list.setTriggers(triggers);
    const auto before = std::clock();
    EXPECT_THAT(doneFor(std::u16string(40, u'a') + u"! end"), ElementsAre(u"yes"));
    EXPECT_LT(std::clock() - before, 5 * CLOCKS_PER_SEC) << "300 times 50 ms are 15 s";
}

/// Text on which a backtracking matcher takes the square of its length, or longer than any limit.
TEST_F(TriggerList, AFloodOfWordsIsMatchedInFull)
{
    std::u16string flood;
    while (flood.size() < (std::size_t{1} << 20))
        flood += u"A goblin A orc ";
    const auto check = trigger(u"A %1 kicks %1 hard!", u"kick %1");
    EXPECT_THAT(doneBy({check, trigger(u"* A *zzz", u"no")}, flood), IsEmpty());
    const auto done = doneFor(flood + u" kicks you hard! A troll kicks you hard!");
    EXPECT_THAT(log.lines, IsEmpty());
    for (const auto* each : {u"A", u"[A]", u"\\GA"}) // more matches than are gathered at once
        EXPECT_EQ(doneBy({trigger(each, u"B")}, std::u16string(99'999, u'A')).size(), 99'999u);
    ASSERT_EQ(done.size(), 2u);
    EXPECT_EQ(done.front().size(), flood.size() + std::u16string_view(u"kick ").size() - 2);
    EXPECT_EQ(done.back(), u"kick troll");
}

} // namespace
