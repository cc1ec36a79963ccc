#pragma once

#include "ZNTCellWidth.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// How one line of text falls into rows of a grid.
///
/// Rows break after blanks, on either side of wide characters, and inside a word only where it alone is
/// longer than a row. Blanks at the end of a row hang there without taking columns, so that text that a
/// game padded to its own width does not leave empty rows behind.
namespace znt
{

struct GridWidth {
    int columns = 80; ///< at least 2
    AmbiguousWidth ambiguous = AmbiguousWidth::Narrow;
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
};

/// Calls `place(PlacedCluster)` for each cluster of a row, in order, until it returns false.
template <typename Place>
void placeRow(std::u16string_view row, GridWidth grid, Place place)
{
    int column = 0;
    for (std::size_t offset = 0; offset < row.size();) {
        auto [length, width] = clusterAt(row, offset, grid.ambiguous);
        if (row[offset] == u'\t')
            width = tabStop - column % tabStop;
        if (column + width > grid.columns)
            width = grid.columns - column;
        if (!place(PlacedCluster{offset, length, column, width}))
            return;
        column += width;
        offset += length;
    }
}

} // namespace znt
