#pragma once

#include "ZNTOutputFind.h"
#include "ZNTOutputLayout.h"
#include "ZNTOutputPainter.h"
#include "ZNTOutputScroll.h"

#include <utility>
#include <vector>

class QPainter;
class QRect;

/// Paints the rows of a pane: each in the colours of its text, with what is found and what is selected laid
/// over them, web addresses underlined if that is wanted, and a rule above a session's first row.
class ZNTOutputPanePainter
{
public:
    using Position = ZNTOutputStore::Position;

    /// All of it outlives this.
    ZNTOutputPanePainter(const ZNTOutputStore& store, const ZNTOutputLayout& layout,
                         const ZNTOutputFind& finder, const ZNTOutputFonts& fonts)
        : store(store),
          layout(layout),
          finder(finder),
          painter(fonts)
    {
    }

    void setReadableColours(bool readable) { painter.setReadableColours(readable); }
    [[nodiscard]] bool hasReadableColours() const { return painter.hasReadableColours(); }
    void setWebLinks(bool shown) { underlinesAddresses = shown; }

    /// Only rows that touch `damaged` are painted. `width` is the viewport's; [selected) may be empty.
    void paint(QPainter& canvas, const ZNTOutputScroll::Pane& pane, const QRect& damaged, int width,
               std::pair<Position, Position> selected);

private:
    void paintRow(QPainter& canvas, const ZNTOutputLayout::Row& row, const ZNTOutputLayout::RowSize& size,
                  const ZNTLineGrid& grid, const QRect& area);
    /// Fills `stretches` with the looks of the row.
    void gatherStretches(const ZNTOutputLayout::Row& row, std::pair<Position, Position> selected);
    template <typename Change>
    void layOver(const ZNTOutputLayout::Row& row, Position from, Position to, Change change);

    const ZNTOutputStore& store;
    const ZNTOutputLayout& layout;
    const ZNTOutputFind& finder;
    ZNTOutputPainter painter;
    bool underlinesAddresses = false;
    // Kept from row to row, so that a flood of rows allocates nothing
    std::vector<std::uint32_t> starts;
    std::vector<ZNTOutputPainter::Stretch> stretches, laidOver;
    std::vector<std::pair<std::size_t, std::size_t>> matches, addresses; ///< of the line, in its text
};
