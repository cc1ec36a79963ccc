#include "ZNTOutputPlaces.h"

#include "ZNTOutputFonts.h"
#include "ZNTOutputLayout.h"
#include "ZNTOutputScroll.h"

#include <algorithm>
#include <cmath>

QRect ZNTOutputPlaces::characterRect(Position position) const
{
    if (position < store.start() || position > store.end())
        return {};
    const auto row = layout.rowOf(position);
    const auto size = layout.sizeOf(row);
    for (const auto& pane : scrolling.panes()) {
        if (row.place < pane.top)
            continue;
        int y = pane.y;
        for (auto place = pane.top; place < row.place && y < pane.y + pane.height;
             place = layout.rows().moved(place, 1))
            y += layout.heightOfRow(place);
        if (y + size.height > pane.y + pane.height && y > pane.y)
            continue;
        const qreal x = layout.xInRow(row, position);
        const qreal advance = layout.xInRow(row, layout.nextCluster(position)) - x;
        const qreal width = advance > 0 ? advance : fonts.face(store.defaultFont()).cellWidth();
        return {ZNTOutputLayout::margin + static_cast<int>(std::floor(x)), y + size.height - size.textHeight,
                static_cast<int>(std::ceil(width)), size.textHeight};
    }
    return {};
}

ZNTOutputPlaces::Position ZNTOutputPlaces::positionAt(QPoint point) const
{
    const auto all = scrolling.panes();
    const auto& pane = point.y() >= all.back().y ? all.back() : all.front();
    auto place = pane.top;
    for (int y = pane.y + layout.heightOfRow(place);; place = layout.rows().moved(place, 1)) {
        const auto below = layout.rows().moved(place, 1);
        if (point.y() < y || below == place)
            break;
        y += layout.heightOfRow(below);
        if (y > pane.y + pane.height)
            break;
    }
    return layout.positionInRow(layout.rowAtPlace(place), std::max(point.x() - ZNTOutputLayout::margin, 0));
}
