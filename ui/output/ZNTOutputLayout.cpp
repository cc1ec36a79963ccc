#include "ZNTOutputLayout.h"

#include "ZNTTextBreaks.h"

#include <algorithm>

void ZNTOutputLayout::setRoom(int width)
{
    rows_.setRoom(width, [this](ZNTOutputStore::FontNumber font) { return fonts.face(font).cellWidth(); });
}

void ZNTOutputLayout::addRule(std::int64_t line)
{
    if (!hasRule(line))
        ruledLines.push_back(line);
}

void ZNTOutputLayout::dropOldRules()
{
    std::erase_if(ruledLines, [this](std::int64_t line) { return line < store.firstLine(); });
}

bool ZNTOutputLayout::hasRule(std::int64_t line) const
{
    return std::binary_search(ruledLines.begin(), ruledLines.end(), line);
}

// Rows

ZNTOutputLayout::Row ZNTOutputLayout::rowOfLine(const ZNTOutputStore::Line& line, std::int64_t number,
                                                const std::vector<std::uint32_t>& starts, std::size_t index)
{
    const bool isLast = index + 1 == starts.size();
    const std::size_t from = starts[index], to = isLast ? line.text.size() : starts[index + 1];
    return {{number, static_cast<int>(index)},
            line.start + static_cast<Position>(from),
            line.text.substr(from, to - from),
            from,
            isLast,
            line.font};
}

ZNTOutputLayout::Row ZNTOutputLayout::rowAtPlace(ZNTRowPlace place) const
{
    const auto line = store.line(place.line);
    std::vector<std::uint32_t> starts;
    znt::wrapLine(line.text, rows_.gridOf(line).width, starts);
    const auto index = std::min(static_cast<std::size_t>(std::max(place.row, 0)), starts.size() - 1);
    return rowOfLine(line, place.line, starts, index);
}

ZNTOutputLayout::Row ZNTOutputLayout::rowOf(Position position) const
{
    const auto number = store.lineAt(position);
    const auto line = store.line(number);
    std::vector<std::uint32_t> starts;
    znt::wrapLine(line.text, rows_.gridOf(line).width, starts);
    const auto offset =
        std::clamp<Position>(position - line.start, 0, static_cast<Position>(line.text.size()));
    const auto after = std::upper_bound(starts.begin(), starts.end(), static_cast<std::uint32_t>(offset));
    return rowOfLine(line, number, starts, static_cast<std::size_t>(after - starts.begin()) - 1);
}

/// A row is as high as its highest font. Only a line of several fonts need be searched for those of the row.
ZNTOutputLayout::RowSize ZNTOutputLayout::sizeOf(const Row& row) const
{
    RowSize size{0, 0, 0};
    const auto include = [&](ZNTOutputStore::FontNumber font) {
        const auto& face = fonts.face(font);
        size.textHeight = std::max(size.textHeight, face.cellHeight());
        size.ascent = std::max(size.ascent, face.ascent());
    };
    if (row.font != ZNTOutputStore::severalFonts)
        include(row.font);
    else
        for (const auto& [start, font] : store.fontsIn(row.start, row.end()))
            include(font);
    size.height = size.textHeight + (row.place.row == 0 && hasRule(row.place.line) ? ruleRoom : 0);
    return size;
}

int ZNTOutputLayout::heightOfRow(ZNTRowPlace place) const
{
    // With one font in all of the text, as is usual, no line need be wrapped to learn the height.
    if (store.fonts().size() == 1)
        return fonts.face(0).cellHeight() + (place.row == 0 && hasRule(place.line) ? ruleRoom : 0);
    return sizeOf(rowAtPlace(place)).height;
}

ZNTRowPlace ZNTOutputLayout::lastRow() const
{
    const auto last = store.endLine() - 1;
    return {last, rows_.rowsOfLine(last) - 1};
}

ZNTRowPlace ZNTOutputLayout::highestAbove(ZNTRowPlace last, int room) const
{
    room -= heightOfRow(last);
    for (;;) {
        const auto above = rows_.moved(last, -1);
        if (above == last) // the first row of all
            return last;
        room -= heightOfRow(above);
        if (room < 0)
            return last;
        last = above;
    }
}

int ZNTOutputLayout::rowsThatFit(ZNTRowPlace from, int room) const
{
    for (int count = 0;; ++count) {
        const int height = heightOfRow(from);
        if (height > room)
            return std::max(count, 1);
        room -= height;
        const auto below = rows_.moved(from, 1);
        if (below == from) // the last row of all
            return count + 1 + room / presentRowHeight();
        from = below;
    }
}

// Inside a row

ZNTOutputLayout::Position ZNTOutputLayout::positionInRow(const Row& row, qreal x) const
{
    const auto grid = rows_.gridOfLine(row.place.line);
    auto offset = row.text.size();
    znt::placeRow(row.text, grid.width.fromOffset(row.offset), [&](const znt::PlacedCluster& cluster) {
        if (x >= (cluster.column + cluster.width) * grid.column)
            return true;
        offset = cluster.offset;
        return false;
    });
    return row.start + static_cast<Position>(offset);
}

qreal ZNTOutputLayout::xInRow(const Row& row, Position position) const
{
    const auto grid = rows_.gridOfLine(row.place.line);
    int column = 0;
    znt::placeRow(row.text, grid.width.fromOffset(row.offset), [&](const znt::PlacedCluster& cluster) {
        if (row.start + static_cast<Position>(cluster.offset) >= position)
            return false;
        column = cluster.column + cluster.width;
        return true;
    });
    return column * grid.column;
}

// Pieces of text

ZNTOutputLayout::Position ZNTOutputLayout::nextCluster(Position position) const
{
    const auto line = store.line(store.lineAt(position));
    if (position >= line.end())
        return std::min(position + 1, store.end());
    const auto offset = static_cast<std::size_t>(position - line.start);
    return position + static_cast<Position>(znt::clusterAt(line.text, offset, store.ambiguousWidth()).length);
}

ZNTOutputLayout::Position ZNTOutputLayout::previousCluster(Position position) const
{
    if (position <= store.start())
        return store.start();
    const auto row = rowOf(position - 1);
    if (position > row.end())
        return position - 1; // over the line break
    // A cluster's length is known only from its beginning, so the row is gone through from its own.
    auto found = row.start;
    const auto grid = rows_.gridOfLine(row.place.line);
    znt::placeRow(row.text, grid.width.fromOffset(row.offset), [&](const znt::PlacedCluster& cluster) {
        const auto start = row.start + static_cast<Position>(cluster.offset);
        if (start >= position)
            return false;
        found = start;
        return true;
    });
    return found;
}

ZNTOutputLayout::Position ZNTOutputLayout::nextWord(Position position) const
{
    const auto line = store.line(store.lineAt(position));
    if (position >= line.end())
        return nextCluster(position);
    const auto offset = static_cast<std::size_t>(position - line.start);
    return line.start + static_cast<Position>(znt::nextWordStart(line.text, offset));
}

ZNTOutputLayout::Position ZNTOutputLayout::previousWord(Position position) const
{
    const auto line = store.line(store.lineAt(position));
    if (position <= line.start)
        return previousCluster(position);
    const auto offset = static_cast<std::size_t>(position - line.start);
    return line.start + static_cast<Position>(znt::previousWordStart(line.text, offset));
}

std::pair<ZNTOutputLayout::Position, ZNTOutputLayout::Position>
ZNTOutputLayout::wordAround(Position position) const
{
    const auto line = store.line(store.lineAt(position));
    if (position >= line.end())
        return {position, position};
    const auto [from, to] =
        znt::pieceAround(line.text, static_cast<std::size_t>(position - line.start), znt::BreakKind::Word);
    return {line.start + static_cast<Position>(from), line.start + static_cast<Position>(to)};
}

std::pair<ZNTOutputLayout::Position, ZNTOutputLayout::Position>
ZNTOutputLayout::lineAround(Position position) const
{
    const auto line = store.line(store.lineAt(position));
    return {line.start, line.end() + (line.endsInBreak ? 1 : 0)};
}
