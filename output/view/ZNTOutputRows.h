#pragma once

#include "ZNTLineWrap.h"
#include "ZNTOutputStore.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

/// A row of the text: its line, and its number in the line, from 0.
struct ZNTRowPlace {
    std::int64_t line = 0;
    int row = 0;
    friend auto operator<=>(const ZNTRowPlace&, const ZNTRowPlace&) = default; // NOLINT: takes it for a 0
};

/// The columns of one line. Movable; `width` refers to `cells`.
struct ZNTLineGrid {
    znt::GridWidth width;
    double column; ///< the part of the room that one column takes
    std::vector<znt::CellRun> cells;

    ZNTLineGrid(znt::GridWidth width, double column, std::vector<znt::CellRun> cells = {})
        : width(width),
          column(column),
          cells(std::move(cells))
    {
        this->width.cells = this->cells;
    }
    ZNTLineGrid(ZNTLineGrid&&) = default;
    ZNTLineGrid& operator=(ZNTLineGrid&&) = default;
};

/// The rows that the lines of a store fall into at the width of the view.
///
/// Rows near the view are counted exactly. After a change of width, blocks of wrapped lines far away are
/// estimated until the view comes near, so that a new width takes no time with a million lines. The totals
/// are slightly off then, and only the scroll bar shows them.
class ZNTOutputRows
{
public:
    /// The store outlives this.
    explicit ZNTOutputRows(const ZNTOutputStore& store) : store(store) {}

    /// `room` and the answers of `cellWidth` are in the same unit, pixels for instance.
    void setRoom(double room, std::function<double(ZNTOutputStore::FontNumber)> cellWidth);
    /// The columns of a line, and what one of them takes of the room.
    [[nodiscard]] ZNTLineGrid gridOfLine(std::int64_t line) const { return gridOf(store.line(line)); }
    [[nodiscard]] ZNTLineGrid gridOf(const ZNTOutputStore::Line& line) const;
    /// Of a line in this font alone.
    [[nodiscard]] int columnsOfFont(ZNTOutputStore::FontNumber font) const;
    /// Forgets all counts: the widths of characters or cells changed.
    void reset();
    /// Counts lines that the store has gained or lost. Call it before any of the questions below.
    void update();

    [[nodiscard]] int rowsOfLine(std::int64_t line) const;
    [[nodiscard]] std::int64_t totalRows() const { return closedRows + rowsOfLine(store.endLine() - 1); }

    /// How many rows are above `place`. Counts its block exactly.
    [[nodiscard]] std::int64_t rowsBefore(ZNTRowPlace place);
    /// The place of the row with that number. A number outside is brought inside.
    [[nodiscard]] ZNTRowPlace placeOfRow(std::int64_t row);
    /// `rows` further down, or up if negative, as far as there are rows. Exact.
    [[nodiscard]] ZNTRowPlace moved(ZNTRowPlace place, std::int64_t rows) const;

private:
    struct Counted {
        std::int64_t rows = 0;  // of the lines that are closed: all but the last of the store
        std::int64_t lines = 0; // so many of the block's lines
        bool isExact = true;
    };
    void countNewLines(std::int64_t block);
    void makeExact(std::int64_t block);
    [[nodiscard]] Counted& counted(std::int64_t block)
    {
        return blocks[static_cast<std::size_t>(block - firstBlock)];
    }
    [[nodiscard]] std::int64_t rowsOfBlock(std::int64_t block);

    const ZNTOutputStore& store;
    double room = 80;
    std::function<double(ZNTOutputStore::FontNumber)> cellWidth = [](auto) { return 1.0; };
    mutable std::vector<int> columnsByFont; ///< 0 where not asked for yet
    std::deque<Counted> blocks;
    std::int64_t firstBlock = 0;
    std::int64_t closedRows = 0;
    bool estimates = false; // while a new width is taken in
};
