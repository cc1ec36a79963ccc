#include "ZNTOutputPanePainter.h"

#include "ZNTWebAddresses.h"

#include <QPainter>
#include <algorithm>

namespace
{

constexpr QColor ruleColour(0x8A, 0x92, 0x9E); // 3 to 1 and more on black

using Mark = ZNTOutputPainter::Mark;

} // namespace

void ZNTOutputPanePainter::paint(QPainter& canvas, const ZNTOutputScroll::Pane& pane, const QRect& damaged,
                                 int width, std::pair<Position, Position> selected)
{
    const int bottom = pane.y + pane.height;
    int y = pane.y, index = pane.top.row; // the first line may begin above the pane
    for (auto number = std::max(pane.top.line, store.firstLine()); number < store.endLine();
         ++number, index = 0) {
        // A line is wrapped and searched once for all of its rows.
        const auto line = store.line(number);
        const auto grid = layout.rows().gridOf(line);
        znt::wrapLine(line.text, grid.width, starts);
        finder.matchesIn(line.text, matches);
        if (underlinesAddresses)
            znt::webAddressesIn(line.text, addresses);
        else
            addresses.clear();
        for (; index < static_cast<int>(starts.size()); ++index) {
            const auto row =
                ZNTOutputLayout::rowOfLine(line, number, starts, static_cast<std::size_t>(index));
            const auto size = layout.sizeOf(row);
            const QRect area(0, y, width, size.height);
            // No row is cut off, but for one that is higher than the pane.
            if (area.bottom() >= bottom && y > pane.y)
                return;
            y += area.height();
            if (!damaged.intersects(area))
                continue;
            gatherStretches(row, selected);
            paintRow(canvas, row, size, grid, area);
        }
    }
}

void ZNTOutputPanePainter::paintRow(QPainter& canvas, const ZNTOutputLayout::Row& row,
                                    const ZNTOutputLayout::RowSize& size, const ZNTLineGrid& grid,
                                    const QRect& area)
{
    using Layout = ZNTOutputLayout;
    if (row.place.row == 0 && layout.hasRule(row.place.line))
        canvas.fillRect(ZNTOutputLayout::margin, area.top() + (Layout::ruleRoom - Layout::ruleWidth) / 2,
                        area.width() - 2 * ZNTOutputLayout::margin, Layout::ruleWidth, ruleColour);
    const int rule = area.height() - size.textHeight;
    painter.drawRow(canvas,
                    {.corner = QPointF(ZNTOutputLayout::margin, area.top() + rule),
                     .height = size.textHeight,
                     .ascent = size.ascent,
                     .column = grid.column},
                    row.text, grid.width.fromOffset(row.offset), stretches);
}

/// What is laid over later wins: a selection over what is found, the current match over both, so that the
/// player always sees at which match the search stands.
void ZNTOutputPanePainter::gatherStretches(const ZNTOutputLayout::Row& row,
                                           std::pair<Position, Position> selected)
{
    stretches.clear();
    store.forEachRun(row.start, row.end(),
                     [&](Position begin, Position until, ZNTOutputStore::StyleNumber style) {
                         stretches.push_back({static_cast<std::size_t>(begin - row.start),
                                              static_cast<std::size_t>(until - row.start), store.style(style),
                                              Mark::None});
                     });
    const Position line = row.start - static_cast<Position>(row.offset);
    const auto marking = [](Mark mark) {
        return [mark](ZNTOutputPainter::Stretch& part) { part.mark = mark; };
    };
    for (const auto& [from, to] : addresses)
        layOver(row, line + static_cast<Position>(from), line + static_cast<Position>(to),
                [](ZNTOutputPainter::Stretch& part) { part.style.isUnderlined = true; });
    for (const auto& [from, to] : matches)
        layOver(row, line + static_cast<Position>(from), line + static_cast<Position>(to),
                marking(Mark::Match));
    layOver(row, selected.first, selected.second, marking(Mark::Selected));
    if (const auto& match = finder.currentMatch())
        layOver(row, match->start, match->end, marking(Mark::CurrentMatch));
}

/// Changes the look of the part of the row in [from, to): stretches are cut at both ends.
template <typename Change>
void ZNTOutputPanePainter::layOver(const ZNTOutputLayout::Row& row, Position from, Position to, Change change)
{
    from = std::max(from, row.start);
    to = std::min(to, row.end());
    if (from >= to)
        return;
    const auto first = static_cast<std::size_t>(from - row.start);
    const auto last = static_cast<std::size_t>(to - row.start);
    laidOver.clear();
    for (const auto& stretch : stretches) {
        const auto begin = std::clamp(first, stretch.from, stretch.to);
        const auto end = std::clamp(last, stretch.from, stretch.to);
        if (begin >= end) {
            laidOver.push_back(stretch);
            continue;
        }
        if (stretch.from < begin)
            laidOver.push_back({stretch.from, begin, stretch.style, stretch.mark});
        laidOver.push_back({begin, end, stretch.style, stretch.mark});
        change(laidOver.back());
        if (end < stretch.to)
            laidOver.push_back({end, stretch.to, stretch.style, stretch.mark});
    }
    stretches.swap(laidOver);
}
