#include "ZNTOutputSamples.h"
#include "ZNTSentLines.h"
#include "ZNTTextBreaks.h"
#include "ZNTWordCompletion.h"

namespace
{

using testing::ElementsAre;
using Texts = std::vector<std::u16string>;

void showSent(ZNTOutputStore& store, std::u16string_view line)
{
    auto echo = coloured(std::u16string(line) + u"\r", znt::colours::cyan);
    echo.isSentLine = true;
    store.append(echo);
}

TEST(SentLines, AreReadBackNewestFirstAndOnceByTheirMark)
{
    ZNTOutputStore store;
    showSent(store, u"look");
    store.append(coloured(u"look\r\n12 hp> ", znt::colours::cyan)); // a game that uses the same colour
    showSent(store, u"kill rat");
    showSent(store, u"");
    showSent(store, u"look");
    showSent(store, u"say a \U0001F600");
    store.append(coloured(u"\nYou say a.\n"));
    EXPECT_THAT(znt::newestSentLines(store, 10), ElementsAre(u"say a \U0001F600", u"look", u"kill rat"));
    EXPECT_THAT(znt::newestSentLines(store, 2), ElementsAre(u"say a \U0001F600", u"look"));

    auto twoColours = coloured(u"abcd\r");
    twoColours.sets.emplace_back().foreground = znt::colours::red;
    twoColours.runs.push_back({2, 1});
    twoColours.isSentLine = true;
    store.append(twoColours);
    EXPECT_THAT(znt::newestSentLines(store, 1), ElementsAre(u"abcd"));
    EXPECT_EQ(store.sentTextOfBlock(store.endBlock() - 1).back().second, store.end());
    store.clear();
    EXPECT_THAT(znt::newestSentLines(store, 10), ElementsAre());
}

TEST(SentLines, OfManyBlocksAreAllFoundAndTakeNoMemoryOfTheirOwn)
{
    ZNTOutputStore marked, unmarked;
    for (int number = 0; number < 20'000; ++number) {
        const auto line = u"go " + std::u16string(1, static_cast<char16_t>(u'a' + number % 26));
        showSent(marked, line);
        unmarked.append(coloured(line + u"\r", znt::colours::cyan));
        for (auto* store : {&marked, &unmarked})
            store->append(coloured(u"The road goes on.\n"));
    }
    ASSERT_GT(marked.endBlock() - marked.firstBlock(), 3);
    EXPECT_EQ(znt::newestSentLines(marked, 100).size(), 26U);
    EXPECT_EQ(marked.memoryInUse(), unmarked.memoryInUse());
}

TEST(TextBreaks, TheNextWordBeginsBehindThePlaceAndThePreviousOneBeforeIt)
{
    const std::u16string_view line = u"You, see  it.";
    for (const auto& [place, next, previous] :
         {std::tuple(0U, 5U, 0U), {5U, 10U, 0U}, {6U, 10U, 5U}, {10U, 13U, 5U}}) {
        EXPECT_EQ(znt::nextWordStart(line, place), next) << place;
        EXPECT_EQ(znt::previousWordStart(line, place), previous) << place;
    }
}

TEST(WordCompletion, FindsWholeWordsOfAnyScriptByTheirBeginning)
{
    ZNTOutputStore store;
    store.append(coloured(u"A dragon and a Drake. DRAGON!\nDra\u0308ger, \u00DCbel, isn't, dr\n"));
    const std::pair<std::u16string_view, Texts> rows[] = {
        {u"dr", {u"Dra\u0308ger", u"DRAGON", u"Drake"}}, // the newest spelling, and not the beginning itself
        {u"\u00FC", {u"\u00DCbel"}},
        {u"is", {u"isn't"}},
        {u"x", {}},
    };
    for (const auto& [beginning, words] : rows)
        EXPECT_EQ(znt::wordsThatBegin(beginning, store, {}), words) << testing::PrintToString(beginning);
    EXPECT_THAT(znt::wordsThatBegin(u"dra", store, {u"draw-sword", u"drake"}),
                ElementsAre(u"Dra\u0308ger", u"DRAGON", u"Drake", u"draw-sword"));

    const std::pair<std::u16string_view, std::size_t> starts[] = {
        {u"say dra", 4}, {u"~dra", 1}, {u"say ", 4}, {u"", 0}, {u"don't", 0}, {u"go \u00DCb", 3}};
    for (const auto& [text, start] : starts)
        EXPECT_EQ(znt::startOfLastWord(text), start) << testing::PrintToString(text);
}

TEST(WordCompletion, ReadsTheLastLinesOnly)
{
    ZNTOutputStore store;
    store.append(coloured(u"wombat\n"));
    for (int line = 0; line < znt::linesToCompleteFrom - 2; ++line)
        store.append(coloured(u"x\n"));
    EXPECT_THAT(znt::wordsThatBegin(u"wo", store, {}), ElementsAre(u"wombat"));
    store.append(coloured(u"x\n"));
    EXPECT_THAT(znt::wordsThatBegin(u"wo", store, {}), ElementsAre());
    store.append(coloured(u"wolf " + std::u16string(0x10000, u'-')));
    EXPECT_THAT(znt::wordsThatBegin(u"wo", store, {}), ElementsAre()) << "a line of any length";
}

TEST(WordCompletion, AgainTakesTheNextWordAndAtLastWhatWasTyped)
{
    ZNTWordCompletion completion;
    int timesAsked = 0;
    const auto words = [&](std::u16string_view beginning) {
        ++timesAsked;
        return beginning == u"dr" ? Texts{u"dragon", u"drake"} : Texts{};
    };
    ZNTWordCompletion::Typed line{u"kill dr now", 7};
    for (const auto* expected : {u"kill dragon now", u"kill drake now", u"kill dr now", u"kill dragon now"}) {
        const auto completed = completion.next(line, words);
        ASSERT_TRUE(completed);
        line = completed->line;
        EXPECT_EQ(line.text, expected);
        EXPECT_EQ(line.text.substr(line.caret), u" now");
    }
    EXPECT_EQ(timesAsked, 1);
    line = {u"kill dragon dr", 14}; // the player went on typing
    EXPECT_EQ(completion.next(line, words).value().line.text, u"kill dragon dragon");
    for (const auto& [text, caret] : {std::pair{u"kill ", 5}, {u"kill zz", 7}, {u"", 0}})
        EXPECT_FALSE(completion.next({text, static_cast<std::size_t>(caret)}, words));
}

} // namespace
