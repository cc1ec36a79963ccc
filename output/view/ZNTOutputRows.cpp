#include "ZNTOutputRows.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr int leastCells = 2;
constexpr int finerColumns = 64; // a pixel, in lines of several fonts
} // namespace

void ZNTOutputRows::setRoom(double newRoom, std::function<double(ZNTOutputStore::FontNumber)> newCellWidth)
{
    const auto before = std::exchange(columnsByFont, {});
    const bool hasOneFont = store.fonts().size() == 1;
    room = newRoom;
    cellWidth = std::move(newCellWidth);
    // A few pixels more change nothing if they make no further column.
    if (!hasOneFont || before.empty() || before.front() != columnsOfFont(0))
        reset();
}

int ZNTOutputRows::columnsOfFont(ZNTOutputStore::FontNumber font) const
{
    if (font >= columnsByFont.size())
        columnsByFont.resize(font + std::size_t{1});
    int& columns = columnsByFont[font];
    if (columns == 0)
        columns = std::max(static_cast<int>(std::floor(room / cellWidth(font) + 0.001)), leastCells);
    return columns;
}

ZNTLineGrid ZNTOutputRows::gridOf(const ZNTOutputStore::Line& line) const
{
    const auto ambiguous = store.ambiguousWidth();
    const auto inOneFont = [&](ZNTOutputStore::FontNumber font) {
        return ZNTLineGrid({columnsOfFont(font), ambiguous}, cellWidth(font));
    };
    if (line.font != ZNTOutputStore::severalFonts)
        return inOneFont(line.font);
    std::vector<znt::CellRun> cells;
    const auto fonts = store.fontsIn(line.start, line.end());
    for (const auto& [start, font] : fonts) {
        const int width = static_cast<int>(std::lround(cellWidth(font) * finerColumns));
        if (cells.empty() || cells.back().width != width)
            cells.push_back({static_cast<std::size_t>(start - line.start), width});
    }
    if (cells.size() == 1)
        return inOneFont(fonts.front().second);
    int widest = 0;
    for (const auto& run : cells)
        widest = std::max(widest, run.width);
    const int columns = std::max(static_cast<int>(room * finerColumns), leastCells * widest);
    return {{columns, ambiguous}, 1.0 / finerColumns, std::move(cells)};
}

void ZNTOutputRows::reset()
{
    blocks.clear();
    closedRows = 0;
    firstBlock = store.firstBlock();
    estimates = true;
    update();
    estimates = false;
}

void ZNTOutputRows::update()
{
    for (; firstBlock < store.firstBlock() && !blocks.empty(); ++firstBlock) {
        closedRows -= blocks.front().rows;
        blocks.pop_front();
    }
    firstBlock = store.firstBlock();
    // The last block known may have grown, and its last line may have been closed.
    const auto known = firstBlock + static_cast<std::int64_t>(blocks.size());
    for (auto block = std::max(firstBlock, known - 1); block < store.endBlock(); ++block) {
        if (block == firstBlock + static_cast<std::int64_t>(blocks.size()))
            blocks.emplace_back();
        countNewLines(block);
    }
}

void ZNTOutputRows::countNewLines(std::int64_t block)
{
    const auto extent = store.block(block);
    const bool isLast = block + 1 == store.endBlock();
    const auto lines = extent.lineCount - (isLast ? 1 : 0);
    auto& count = counted(block);
    const int columns = columnsOfFont(store.firstFontOfBlock(block));
    const bool isMixed = store.line(extent.firstLine).font == ZNTOutputStore::severalFonts;
    std::int64_t added = 0;
    for (; count.lines < lines; ++count.lines) {
        if (!estimates) {
            added += rowsOfLine(extent.firstLine + count.lines);
            continue;
        }
        const int width = store.columnsInBlock(block, count.lines);
        if (width > columns || isMixed)
            count.isExact = false;
        added += width > columns ? (width + columns - 1) / columns : 1;
    }
    count.rows += added;
    closedRows += added;
}

void ZNTOutputRows::makeExact(std::int64_t block)
{
    auto& count = counted(block);
    if (count.isExact)
        return;
    closedRows -= count.rows;
    count = {};
    countNewLines(block);
}

int ZNTOutputRows::rowsOfLine(std::int64_t line) const
{
    const auto content = store.line(line);
    if (content.font != ZNTOutputStore::severalFonts && content.columns <= columnsOfFont(content.font))
        return 1;
    return content.text.empty() ? 1 : znt::countRows(content.text, gridOf(content).width);
}

std::int64_t ZNTOutputRows::rowsOfBlock(std::int64_t block)
{
    const bool isLast = block + 1 == store.endBlock();
    return counted(block).rows + (isLast ? rowsOfLine(store.endLine() - 1) : 0);
}

std::int64_t ZNTOutputRows::rowsBefore(ZNTRowPlace place)
{
    const auto line = std::clamp(place.line, store.firstLine(), store.endLine() - 1);
    const auto target = store.blockOfLine(line);
    makeExact(target);
    std::int64_t rows = 0;
    for (auto block = firstBlock; block < target; ++block)
        rows += counted(block).rows;
    for (auto at = store.block(target).firstLine; at < line; ++at)
        rows += rowsOfLine(at);
    return rows + (line == place.line ? place.row : 0);
}

ZNTRowPlace ZNTOutputRows::placeOfRow(std::int64_t row)
{
    row = std::max<std::int64_t>(row, 0);
    for (auto block = firstBlock; block < store.endBlock(); ++block) {
        if (row >= rowsOfBlock(block) && block + 1 < store.endBlock()) {
            row -= rowsOfBlock(block);
            continue;
        }
        makeExact(block);
        const auto extent = store.block(block);
        for (auto line = extent.firstLine; line < extent.firstLine + extent.lineCount; ++line) {
            const int rows = rowsOfLine(line);
            if (row < rows)
                return {line, static_cast<int>(row)};
            row -= rows;
        }
        if (block + 1 < store.endBlock())
            return {extent.firstLine + extent.lineCount, 0}; // the estimate was a little high
    }
    const auto last = store.endLine() - 1;
    return {last, rowsOfLine(last) - 1};
}

ZNTRowPlace ZNTOutputRows::moved(ZNTRowPlace place, std::int64_t rows) const
{
    const auto first = store.firstLine();
    const auto last = store.endLine() - 1;
    if (place.line < first)
        place = {first, 0};
    place.line = std::min(place.line, last);
    place.row = std::clamp(place.row, 0, rowsOfLine(place.line) - 1);
    for (; rows < 0; ++rows) {
        if (place.row > 0)
            --place.row;
        else if (place.line > first) {
            --place.line;
            place.row = rowsOfLine(place.line) - 1;
        } else
            break;
    }
    for (int inLine = rows > 0 ? rowsOfLine(place.line) : 0; rows > 0; --rows) {
        if (place.row + 1 < inLine)
            ++place.row;
        else if (place.line < last) {
            place = {place.line + 1, 0};
            inLine = rowsOfLine(place.line);
        } else
            break;
    }
    return place;
}
