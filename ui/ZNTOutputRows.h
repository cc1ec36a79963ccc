#pragma once

#include "ZNTLineWrap.h"
#include "ZNTOutputStore.h"

#include <cstdint>
#include <deque>

/// Where in the text the view stands: a line and a row of it, 0 being its first.
struct ZNTRowPlace {
    std::int64_t line = 0;
    int row = 0;
    friend auto operator<=>(const ZNTRowPlace&, const ZNTRowPlace&) = default; // NOLINT: takes it for a 0
};

/// The rows that the lines of a store fall into at the width of the view.
///
/// What is near the view is exact. Blocks far away that hold wrapped lines are estimated after a change of
/// width until the view comes near, so that changing the width of a million lines takes no time; the totals,
/// which only a scroll bar shows, are then off by the words that did not fit.
class ZNTOutputRows
{
public:
    /// The store outlives this.
    explicit ZNTOutputRows(const ZNTOutputStore& store) : store(store) {}

    void setColumns(int columns);
    [[nodiscard]] znt::GridWidth grid() const { return {columns, store.ambiguousWidth()}; }
    /// Forgets all counts: the widths of characters changed.
    void reset();
    /// Takes in what the store has gained or lost since. Before any of the questions below.
    void update();

    [[nodiscard]] int rowsOfLine(std::int64_t line) const;
    [[nodiscard]] std::int64_t totalRows() const { return closedRows + rowsOfLine(store.endLine() - 1); }

    /// How many rows are above `place`. Counts its block exactly.
    [[nodiscard]] std::int64_t rowsBefore(ZNTRowPlace place);
    /// The other way round; a row outside is brought inside.
    [[nodiscard]] ZNTRowPlace placeOfRow(std::int64_t row);
    /// `rows` further down, or up where negative, as far as there are rows. Exact.
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
    int columns = 80;
    std::deque<Counted> blocks;
    std::int64_t firstBlock = 0;
    std::int64_t closedRows = 0;
    bool estimates = false; // while a new width is taken in
};
