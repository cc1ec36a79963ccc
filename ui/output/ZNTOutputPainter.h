#pragma once

#include "ZNTLineWrap.h"
#include "ZNTOutputFonts.h"
#include "ZNTOutputStore.h"

#include <QColor>
#include <QHash>
#include <QPointF>

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

class QPainter;

/// Draws rows of text into their columns, and holds the colours to do so.
///
/// Every character stands exactly in its columns. Fonts alone do not achieve that: a Chinese character is
/// seldom exactly twice as wide as a Latin one.
class ZNTOutputPainter
{
public:
    enum class Mark : std::uint8_t { None, Match, CurrentMatch, Selected };

    /// A part of a row in one look. Offsets count in the row's text.
    struct Stretch {
        std::size_t from;
        std::size_t to;
        ZNTOutputStyle style;
        Mark mark = Mark::None;
    };

    /// Where a row stands, and how large it and its columns are, in pixels.
    struct Place {
        QPointF corner; ///< left upper
        int height;
        int ascent;
        qreal column;
    };

    /// `fonts` outlives this.
    explicit ZNTOutputPainter(const ZNTOutputFonts& fonts) : fonts(fonts) {}

    void setReadableColours(bool readable) { isReadable = readable; }
    [[nodiscard]] bool hasReadableColours() const { return isReadable; }

    /// `stretches` cover the row in order.
    void drawRow(QPainter& painter, const Place& place, std::u16string_view row, znt::GridWidth grid,
                 std::span<const Stretch> stretches);

private:
    struct Look {
        QColor foreground, background;
    };

    [[nodiscard]] Look lookOf(const Stretch& stretch);
    /// `clusters` are those of the stretch; their offsets count from the row's beginning.
    void drawStretch(QPainter& painter, const Place& place, std::u16string_view row,
                     std::span<const znt::PlacedCluster> clusters, const Stretch& stretch);
    static void drawClusters(QPainter& painter, const Place& place, std::u16string_view row,
                             std::span<const znt::PlacedCluster> clusters, ZNTOutputFace& face,
                             ZNTFaceForm form);

    const ZNTOutputFonts& fonts;
    bool isReadable = false;
    QHash<quint64, Look> readableLooks;     // by both colours; finding a pair is slow
    std::vector<znt::PlacedCluster> placed; // of the row being drawn
};
