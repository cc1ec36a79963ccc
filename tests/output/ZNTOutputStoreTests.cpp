#include "ZNTOutputSamples.h"
#include "ZNTRandomText.h"

#include <map>

namespace
{

using namespace znt::colours;

TEST(OutputStore, EveryPairOfLineEndsIsOneBreakWhereverItIsCut)
{
    const std::u16string sent = u"one\r\ntwo\n\rthree\rfour\n\nsix\r\rlast\r\n\r\n\n\r";
    const std::vector<std::u16string> shown{u"one", u"two",  u"three", u"four", u"", u"six",
                                            u"",    u"last", u"",      u"",     u""};
    for (std::size_t cut = 0; cut <= sent.size(); ++cut)
        for (std::size_t second = cut; second <= sent.size(); ++second) {
            SCOPED_TRACE(testing::Message() << "cut at " << cut << " and " << second);
            ZNTOutputStore store;
            store.append(coloured(sent.substr(0, cut)));
            store.append(coloured(sent.substr(cut, second - cut)));
            store.append({});
            store.append(coloured(sent.substr(second)));
            std::vector<std::u16string> lines;
            for (auto number = store.firstLine(); number < store.endLine(); ++number)
                lines.emplace_back(store.line(number).text);
            ASSERT_EQ(lines, shown);
        }
}

TEST(OutputStore, ControlCharactersAreLeftOutButTheTextOfASequenceStays)
{
    ZNTOutputStore store;
    store.append(
        coloured(std::u16string(u"a\tb\u001B[38;5;1mc") + u'\0' + u"d\u0007\u007F\u0085\u009Be\u00E9"));
    EXPECT_EQ(everything(store), u"a\tb[38;5;1mcde\u00E9");
    // A character that is not shown still stands between what it separates.
    store.append(coloured(u"\r\u0007\nx"));
    EXPECT_EQ(store.endLine(), 3);
}

TEST(OutputStore, RunsKeepTheirLookAcrossAppendsLinesAndLeftOutCharacters)
{
    ZNTAttributedText text;
    text.text = u"plain\u0007RED\r\nred bold";
    text.sets.resize(3);
    text.sets[0].foreground = red;
    text.sets[1] = text.sets[0];
    text.sets[1].font = ZNTFont{u"Menlo-Bold", 12};
    text.sets[2].foreground = 1; // the wrong kind: shown as if it were not set
    text.sets[2].background = clear;
    text.runs = {{6, 0}, {15, 1}, {19, 2}};
    ZNTOutputStore store;
    store.append(text);
    store.append(coloured(u"!", green));

    std::u16string described;
    store.forEachRun(store.start(), store.end(), [&](auto from, auto to, auto number) {
        const auto& style = store.style(number);
        described += u"<" + store.text(from, to);
        described += style.foreground == red ? u" red" : style.foreground == green ? u" green" : u" white";
        described += style.isBold ? u" bold>" : u">";
    });
    EXPECT_EQ(described, u"<plain white><RED\nred  red><bold red bold><! green>");
    EXPECT_EQ(store.fontsIn(store.start(), store.end()).size(), 1U) << "colours and bold begin none";
    text.sets[1].font = ZNTFont{u"Times", 20};
    store.append(text);
    store.append(coloured(u"!", green));
    const auto fonts = store.fontsIn(store.start(), store.end());
    ASSERT_EQ(fonts.size(), 3U);
    EXPECT_NE(fonts[0].second, fonts[1].second);
    EXPECT_EQ(fonts[0].second, fonts[2].second);
}

TEST(OutputStore, ALineWithoutEndGoesOnInFurtherLinesAndCopiesWithoutABreak)
{
    std::u16string sent(ZNTOutputStore::longestLine - 1, u'x');
    sent += u"\U0001F600"; // the pair must not be cut
    sent += std::u16string(3 * ZNTOutputStore::longestLine, u'y');
    ZNTOutputStore store;
    for (std::size_t at = 0; at < sent.size(); at += 999)
        store.append(coloured(std::u16string_view(sent).substr(at, 999)));
    EXPECT_EQ(everything(store), sent);
    EXPECT_EQ(store.line(0).text.size(), ZNTOutputStore::longestLine + 1);
    EXPECT_EQ(store.endLine(), 4);
}

TEST(OutputStore, PlacesAndTextAgreeWithAPlainStringOverManyBlocks)
{
    auto lines = ZNTRandomText::ofPieces(u"word ¦a¦\u4F60¦\t¦\U0001F600¦e\u0301");
    ZNTOutputStore store;
    std::u16string plain;
    std::vector<std::size_t> starts{0};
    while (plain.size() < 400'000) {
        const auto line = lines.next(59) + u"\n";
        store.append(coloured(line, lines.number(2) == 0 ? red : green));
        plain += line;
        starts.push_back(plain.size());
    }
    ASSERT_GT(store.endBlock(), 4);
    EXPECT_EQ(store.endLine(), static_cast<std::int64_t>(starts.size()));
    for (int sample = 0; sample < 2000; ++sample) {
        const auto at = lines.number(plain.size());
        const auto number = store.lineAt(static_cast<std::int64_t>(at));
        const auto after = std::upper_bound(starts.begin(), starts.end(), at);
        ASSERT_EQ(number, after - starts.begin() - 1);
        const auto start = starts[static_cast<std::size_t>(number)];
        ASSERT_EQ(store.line(number).text, plain.substr(start, *after - start - 1));
        const auto to = std::min(plain.size(), at + lines.number(70'000));
        ASSERT_EQ(store.text(static_cast<std::int64_t>(at), static_cast<std::int64_t>(to)),
                  plain.substr(at, to - at));
    }
}

TEST(OutputStore, EachCharacterHasTheSecondInWhichItCame)
{
    ZNTOutputStore store;
    EXPECT_EQ(store.secondOf(store.end()), 0U);
    store.append(coloured(u"> "), 5);
    store.append({}, 6);
    store.append(coloured(u"look\r"), 7);
    store.append(coloured(u"\nroom\n"), 7);
    store.append(coloured(u"late"), 3); // the clock was set back
    for (const auto& [offset, second] :
         std::map<int, unsigned>{{0, 5}, {1, 5}, {2, 7}, {11, 7}, {12, 3}, {99, 3}})
        EXPECT_EQ(store.secondOf(offset), second) << offset;
    store.clear();
    EXPECT_EQ(store.secondOf(0), 0U);
}

TEST(OutputStore, TheOldestTextGoesAtTheLimitAndNumbersAndSecondsStay)
{
    ZNTOutputStore store;
    const auto line = std::u16string(98, u'x') + u"\n";
    const auto text = line + line; // some go on in another block
    constexpr std::size_t limit = 1 << 20;
    for (unsigned number = 0; number < 20'000; ++number) {
        if (number == 10'000) {
            EXPECT_LT(store.memoryInUse(), number * (2 * text.size() + 16));
            store.setMemoryLimit(limit);
            EXPECT_LE(store.memoryInUse(), limit);
        }
        store.append(coloured(text), 1000 + number / 700);
    }
    EXPECT_LE(store.memoryInUse(), limit);
    EXPECT_GT(store.firstLine(), 20'000);
    EXPECT_EQ(store.end(), 40'000 * 99);
    EXPECT_EQ(store.endLine(), 40'001);
    EXPECT_EQ(store.line(0).start, store.start()); // brought inside
    EXPECT_EQ(store.lineAt(0), store.firstLine());
    for (auto position = store.start(); position < store.end(); position += 33)
        ASSERT_EQ(store.secondOf(position), 1000 + static_cast<unsigned>(position / 198) / 700);

    const auto end = store.end();
    store.clear();
    EXPECT_EQ(store.start(), end);
    store.append(coloured(u"new"));
    EXPECT_EQ(everything(store), u"new");
}

} // namespace
