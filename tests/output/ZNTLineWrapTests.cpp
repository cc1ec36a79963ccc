#include "ZNTLineWrap.h"
#include "ZNTOutputRows.h"
#include "ZNTOutputSamples.h"
#include "ZNTRandomText.h"

namespace
{

using znt::AmbiguousWidth;

std::vector<std::u16string> rowsOf(std::u16string_view line, int columns,
                                   AmbiguousWidth ambiguous = AmbiguousWidth::Narrow)
{
    std::vector<std::uint32_t> starts;
    znt::wrapLine(line, {columns, ambiguous}, starts);
    std::vector<std::u16string> rows;
    for (std::size_t row = 0; row < starts.size(); ++row)
        rows.emplace_back(line.substr(starts[row], (row + 1 < starts.size() ? starts[row + 1] : line.size()) -
                                                       starts[row]));
    return rows;
}

TEST(LineWrap, RowsBreakWhereAReaderWouldBreakThem)
{
    const std::tuple<const char*, std::u16string, int, std::vector<std::u16string>> cases[] = {
        {"between words", u"You see a guard", 10, {u"You see a ", u"guard"}},
        {"word ends at the edge", u"0123456789 next", 10, {u"0123456789 ", u"next"}},
        {"word longer than a row", u"to abcdefghijklmnop", 10, {u"to ", u"abcdefghij", u"klmnop"}},
        {"padding hangs, then text", u"short          more", 10, {u"short          ", u"more"}},
        {"wide do not straddle the edge", u"a\u4F60\u4F60\u4F60", 6, {u"a\u4F60\u4F60", u"\u4F60"}},
        {"wide break from narrow", u"abcd\u4F60efg", 6, {u"abcd\u4F60", u"efg"}},
        {"marks stay with their letter", u"abcde\u0301f", 5, {u"abcde\u0301", u"f"}},
        {"a mark without a letter", u"\u0301abcde", 5, {u"\u0301abcd", u"e"}},
        {"parts of a syllable are one", u"\u1112\u1161\u11ABab", 4, {u"\u1112\u1161\u11ABab"}},
        {"pairs are one wide", u"ab\U0001F600\U0001F600", 5, {u"ab\U0001F600", u"\U0001F600"}},
        {"tab stops", u"a\tb\tc", 16, {u"a\tb\t", u"c"}},
        {"tab stops and one column", u"a\tb\tc", 17, {u"a\tb\tc"}},
    };
    for (const auto& [what, line, columns, rows] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(rowsOf(line, columns), rows);
    }
    EXPECT_EQ(rowsOf(u"\u2605\u2605\u2605", 4).size(), 1u);
    EXPECT_EQ(rowsOf(u"\u2605\u2605\u2605", 4, AmbiguousWidth::Wide).size(), 2u);
}

TEST(LineWrap, RowsOfAnyTextTileItAndFit)
{
    auto lines = ZNTRandomText::ofPieces(u"a¦guard ¦ ¦   ¦\u4F60\u7AD9¦\U0001F600¦\t¦e\u0301¦\u0301¦\u3000¦"
                                         u"\xD83D¦\xDE00¦\u2605");
    for (int sample = 0; sample < 3000; ++sample) {
        const auto line = lines.next(39);
        const int columns = 2 + static_cast<int>(lines.number(30));
        const znt::GridWidth grid{columns, AmbiguousWidth::Narrow};
        std::u16string joined;
        const auto rows = rowsOf(line, columns);
        ASSERT_EQ(static_cast<int>(rows.size()), znt::countRows(line, grid));
        for (const auto& row : rows) {
            joined += row;
            int right = 0;
            znt::placeRow(row, grid, [&](const znt::PlacedCluster& cluster) {
                EXPECT_EQ(cluster.column, right);
                right += cluster.width;
                // Only blanks are squeezed to fit.
                EXPECT_TRUE(std::u16string_view(u" \t\u3000").find(row[cluster.offset]) !=
                                std::u16string_view::npos ||
                            znt::clusterAt(row, cluster.offset, grid.ambiguous).width == cluster.width);
                return true;
            });
            ASSERT_LE(right, columns);
        }
        ASSERT_EQ(joined, line);
    }
}

TEST(OutputRows, EveryRowIsFoundAgainAfterEveryChangeOfWidth)
{
    auto lines = ZNTRandomText::ofPieces(u"guard ¦\u4F60¦castle ¦x");
    ZNTOutputStore store;
    ZNTOutputRows rows(store);
    for (const int columns : {80, 23, 200, 40}) {
        SCOPED_TRACE(columns);
        rows.setRoom(columns, [](auto) { return 1.0; });
        for (int line = 0; line < 1500; ++line)
            store.append(coloured(lines.next(29) + u"\n"));
        rows.update();
        std::int64_t all = 0;
        for (auto line = store.firstLine(); line < store.endLine(); ++line)
            all += rows.rowsOfLine(line);
        for (auto block = store.firstBlock(); block < store.endBlock(); ++block)
            (void)rows.rowsBefore({store.block(block).firstLine, 0}); // the view has been everywhere
        ASSERT_EQ(rows.totalRows(), all);
        ZNTRowPlace walked{store.firstLine(), 0};
        for (std::int64_t row = 0; row < all; row += 97) {
            const auto place = rows.placeOfRow(row);
            ASSERT_EQ(place, walked);
            ASSERT_EQ(rows.rowsBefore(place), row);
            walked = rows.moved(walked, 97);
        }
        EXPECT_EQ(rows.placeOfRow(all + 5), rows.moved(walked, all));
        EXPECT_EQ(rows.moved(walked, -all), (ZNTRowPlace{store.firstLine(), 0}));
    }
    ASSERT_GT(store.endBlock(), 3);
    EXPECT_EQ(rows.rowsBefore({store.firstLine() - 1, 3}), 0) << "a line that has gone";
}

TEST(OutputRows, ARowThatTheEstimateHadTooManyIsTheFirstOfTheNextBlock)
{
    ZNTOutputStore store;
    ZNTOutputRows rows(store);
    const auto padded = u"guard" + std::u16string(95, u' ') + u"\n"; // the blanks hang: it is one row
    while (store.endBlock() < 3)
        store.append(coloured(padded));
    rows.setRoom(50, [](auto) { return 1.0; });
    const auto lines = store.block(store.firstBlock()).lineCount;
    EXPECT_EQ(rows.placeOfRow(2 * lines - 1), (ZNTRowPlace{lines, 0}));
    EXPECT_EQ(rows.placeOfRow(lines - 1), (ZNTRowPlace{lines - 1, 0})) << "the view was there";
}

} // namespace
