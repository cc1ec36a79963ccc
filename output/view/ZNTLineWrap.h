#pragma once

#include "ZNTCellWidth.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// How one line of text falls into rows of a grid.
///
/// Rows break after blanks, on either side of wide characters, and inside a word only if the word alone is
/// longer than a row. Blanks at the end of a row take no columns, so that text that a game padded to a width
/// of its own leaves no empty rows.
namespace znt
{

/// From `offset` of a line on, a cell takes this many columns.
struct CellRun {
    std::size_t offset;
    int width;
};

/// In a line of one font a column is one cell. In a line of several fonts with different widths the columns
/// are finer, and `cells` says how many of them a cell takes.
struct GridWidth {
    int columns = 80; ///< at least 2 cells
    AmbiguousWidth ambiguous = AmbiguousWidth::Narrow;
    std::span<const CellRun> cells = {}; ///< sorted, the first at 0; empty where each cell is one column
    std::size_t skipped = 0;             ///< the offset in the line at which the text begins

    /// For the row that begins at `offset` of the line.
    [[nodiscard]] GridWidth fromOffset(std::size_t offset) const
    {
        return {columns, ambiguous, cells, offset};
    }
};

/// The widths of cells, asked for at offsets that only grow.
class CellWidths
{
public:
    explicit CellWidths(const GridWidth& grid) : cells(grid.cells), skipped(grid.skipped) {}
    int at(std::size_t offset)
    {
        if (cells.empty())
            return 1;
        while (index + 1 < cells.size() && cells[index + 1].offset <= offset + skipped)
            ++index;
        return cells[index].width;
    }

private:
    std::span<const CellRun> cells;
    std::size_t skipped;
    std::size_t index = 0;
};

/// The offset in `line` at which each row starts; the first is 0, also of an empty line.
void wrapLine(std::u16string_view line, GridWidth grid, std::vector<std::uint32_t>& rowStarts);

/// How many rows `wrapLine` finds.
int countRows(std::u16string_view line, GridWidth grid);

/// One cluster of a row and where it stands.
struct PlacedCluster {
    std::size_t offset; ///< in the row's text
    std::size_t length; ///< UTF-16 units
    int column;
    int width; ///< columns; 0 for a blank that hangs past the edge
    int cells; ///< of its own font that it is drawn in: 0, 1 or 2
};

/// Calls `place(PlacedCluster)` for each cluster of a row, in order, until it returns false.
template <typename Place>
void placeRow(std::u16string_view row, GridWidth grid, Place place)
{
    CellWidths widths(grid);
    int column = 0;
    for (std::size_t offset = 0; offset < row.size();) {
        const auto [length, cells] = clusterAt(row, offset, grid.ambiguous);
        const int cell = widths.at(offset);
        int width = cells * cell;
        if (row[offset] == u'\t')
            width = tabStop * cell - column % (tabStop * cell);
        if (column + width > grid.columns)
            width = grid.columns - column;
        if (!place(PlacedCluster{offset, length, column, width, cells}))
            return;
        column += width;
        offset += length;
    }
}

} // namespace znt
