#pragma once

#include "ZNTOutputStore.h"

#include <QPoint>
#include <QRect>

class ZNTOutputFonts;
class ZNTOutputLayout;
class ZNTOutputScroll;

/// Where characters are drawn in the viewport, in both of its panes.
class ZNTOutputPlaces
{
public:
    using Position = ZNTOutputStore::Position;

    /// All of it outlives this.
    ZNTOutputPlaces(const ZNTOutputStore& store, const ZNTOutputFonts& fonts, const ZNTOutputLayout& layout,
                    const ZNTOutputScroll& scrolling)
        : store(store),
          fonts(fonts),
          layout(layout),
          scrolling(scrolling)
    {
    }

    /// Empty where the character at `position` is out of sight.
    [[nodiscard]] QRect characterRect(Position position) const;
    /// The character drawn at `point`, or the nearest of its row.
    [[nodiscard]] Position positionAt(QPoint point) const;

private:
    const ZNTOutputStore& store;
    const ZNTOutputFonts& fonts;
    const ZNTOutputLayout& layout;
    const ZNTOutputScroll& scrolling;
};
