#include "ZNTLineWrap.h"

#include <algorithm>

namespace
{

using znt::GridWidth;

constexpr bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\u3000'; }

/// Calls `startRow(offset)` for every row after the first.
template <typename StartRow>
void walk(std::u16string_view line, GridWidth grid, StartRow startRow)
{
    constexpr auto nowhere = static_cast<std::size_t>(-1);
    int column = 0;
    std::size_t rowStart = 0;
    std::size_t lastBreak = nowhere; // the last place in this row where the next may start
    int columnAtBreak = 0;
    znt::CellWidths widths(grid);
    for (std::size_t offset = 0; offset < line.size();) {
        const char16_t unit = line[offset];
        const int cell = widths.at(offset);
        std::size_t length = 1;
        int cells = 1;
        const bool isAlone = offset + 1 == line.size() || line[offset + 1] < 0x300;
        if (unit != u'\t' && (!znt::isPlainUnit(unit) || !isAlone)) {
            const auto cluster = znt::clusterAt(line, offset, grid.ambiguous);
            length = cluster.length;
            cells = cluster.width;
        }
        const int width = unit == u'\t' ? znt::tabStop * cell - column % (znt::tabStop * cell) : cells * cell;
        if (isBlank(unit)) {
            column = std::min(column + width, grid.columns);
            offset += length;
            lastBreak = offset;
            columnAtBreak = column;
            continue;
        }
        if (cells == 2 && offset > rowStart) {
            lastBreak = offset;
            columnAtBreak = column;
        }
        if (column + width > grid.columns) {
            const bool canBreak = lastBreak != nowhere && lastBreak > rowStart;
            rowStart = canBreak ? lastBreak : offset;
            column = canBreak ? column - columnAtBreak : 0; // the beginning of the word moves down, too
            lastBreak = nowhere;
            startRow(rowStart);
        }
        column += width;
        offset += length;
        if (cells == 2) {
            lastBreak = offset;
            columnAtBreak = column;
        }
    }
}

} // namespace

void znt::wrapLine(std::u16string_view line, GridWidth grid, std::vector<std::uint32_t>& rowStarts)
{
    rowStarts.assign(1, 0);
    walk(line, grid,
         [&rowStarts](std::size_t start) { rowStarts.push_back(static_cast<std::uint32_t>(start)); });
}

int znt::countRows(std::u16string_view line, GridWidth grid)
{
    int rows = 1;
    walk(line, grid, [&rows](std::size_t) { ++rows; });
    return rows;
}
