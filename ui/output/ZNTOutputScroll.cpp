#include "ZNTOutputScroll.h"

#include <QWidget>
#include <algorithm>

std::int64_t ZNTOutputScroll::newLinesBelow() const
{
    return isFollowing_ ? 0 : std::max<std::int64_t>(0, store.endLine() - endLineSeen);
}

bool ZNTOutputScroll::moveTo(ZNTRowPlace place)
{
    const auto lowest = topForEnd();
    top_ = std::min(place, lowest);
    return setFollowing(top_ == lowest);
}

bool ZNTOutputScroll::setFollowing(bool follows)
{
    if (follows == isFollowing_)
        return false;
    isFollowing_ = follows;
    endLineSeen = store.endLine();
    return true;
}

void ZNTOutputScroll::keepUp(bool holdsStill)
{
    if (isFollowing_ && !holdsStill)
        top_ = topForEnd();
    else if (top_.line < store.firstLine())
        top_ = {store.firstLine(), 0};
}

void ZNTOutputScroll::keepRowInItsLine()
{
    const auto line = std::clamp(top_.line, store.firstLine(), store.endLine() - 1);
    top_.row = std::min(top_.row, layout.rows().rowsOfLine(line) - 1);
}

ZNTRowPlace ZNTOutputScroll::topForEnd() const { return layout.highestAbove(layout.lastRow(), textHeight()); }

std::int64_t ZNTOutputScroll::rowsOfLastPage() const
{
    std::int64_t count = 1;
    const auto last = layout.lastRow();
    for (auto place = topForEnd(); place < last; place = layout.rows().moved(place, 1))
        ++count;
    return count;
}

ZNTRowPlace ZNTOutputScroll::topOfPageAbove() const
{
    const auto page = layout.highestAbove(top_, readingHeight(Split::Yes));
    return page == top_ ? layout.rows().moved(top_, -1) : page;
}

std::optional<ZNTRowPlace> ZNTOutputScroll::topToShow(ZNTRowPlace place) const
{
    if (const auto end = topForEnd(); place >= end)
        return end;
    const auto last = layout.rows().moved(top_, visibleRows() - 1);
    if (place >= top_ && place <= last)
        return {};
    if (place == layout.rows().moved(top_, -1))
        return place;
    // One row further down scrolls by one row. What is far away comes into the middle.
    const int room = readingHeight(Split::Yes);
    return layout.highestAbove(place, place == layout.rows().moved(last, 1) ? room : room / 2);
}

std::vector<ZNTOutputScroll::Pane> ZNTOutputScroll::panes() const
{
    std::vector<Pane> found{{top_, ZNTOutputLayout::margin, readingHeight()}};
    const int height = isFollowing_ ? 0 : lastRowsHeight();
    if (height > 0)
        found.push_back({layout.highestAbove(lastRowWithText(), height),
                         viewport.height() - ZNTOutputLayout::margin - height, height});
    return found;
}

int ZNTOutputScroll::textHeight() const
{
    return std::max(viewport.height() - 2 * ZNTOutputLayout::margin, rowHeight());
}

ZNTRowPlace ZNTOutputScroll::lastRowWithText() const
{
    const auto last = layout.lastRow();
    return store.line(last.line).text.empty() ? layout.rows().moved(last, -1) : last;
}

/// Few where there is little room: what is read comes first. None where there is no room for one row of each.
int ZNTOutputScroll::lastRowsShown() const
{
    constexpr int enoughRows = 12, share = 5, most = 5;
    const int all = textHeight() / rowHeight();
    const bool hasRoomForOne = textHeight() - stripHeight() >= 2 * rowHeight();
    return all >= enoughRows ? std::min(all / share, most) : hasRoomForOne ? 1 : 0;
}

/// A last row in a larger font than the present one is shown whole, if that leaves half of the view to read.
int ZNTOutputScroll::lastRowsHeight() const
{
    const int rows = lastRowsShown();
    if (rows == 0)
        return 0;
    const int larger = std::min(layout.heightOfRow(lastRowWithText()), (textHeight() - stripHeight()) / 2);
    return std::max(rows * rowHeight(), larger);
}

int ZNTOutputScroll::stripHeight() const { return mark.sizeHint().height() + 2; }

int ZNTOutputScroll::readingHeight(Split split) const
{
    return split == Split::No ? textHeight()
                              : std::max(textHeight() - stripHeight() - lastRowsHeight(), rowHeight());
}
