#pragma once

#include "ZNTLineWrap.h"
#include "ZNTOutputStore.h"

#include <QColor>
#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <QPointF>
#include <QString>

#include <cstdint>
#include <span>
#include <string_view>

class QPainter;

/// Draws rows of text into a grid of equal cells, and holds the fonts and colours to do so.
///
/// Every character stands exactly in its columns, whatever font it came from: a Chinese one is seldom just
/// twice as wide as a Latin one.
class ZNTOutputPainter
{
public:
    enum class Mark : std::uint8_t { None, Match, CurrentMatch, Selected };

    /// A stretch of a row in one look; offsets are into the row's text.
    struct Stretch {
        std::size_t from;
        std::size_t to;
        ZNTOutputStyle style;
        Mark mark = Mark::None;
    };

    ZNTOutputPainter();

    void setFont(const QFont& font);
    [[nodiscard]] const QFont& font() const { return regular; }
    [[nodiscard]] qreal cellWidth() const { return width; }
    [[nodiscard]] int cellHeight() const { return height; }

    void setReadableColours(bool readable) { isReadable = readable; }

    /// `stretches` cover the row in order. The row's left upper corner is at `corner`.
    void drawRow(QPainter& painter, QPointF corner, std::u16string_view row, znt::GridWidth grid,
                 std::span<const Stretch> stretches);

private:
    struct Glyphs {
        QList<QGlyphRun> runs;
        qreal advance = 0;
        bool isStretched = false; ///< to the width of its columns, as lines that have to meet are
    };
    struct Look {
        QColor foreground, background;
    };

    [[nodiscard]] Look lookOf(const Stretch& stretch);
    void drawStretch(QPainter& painter, QPointF corner, std::u16string_view text, int column, int endColumn,
                     znt::GridWidth grid, const Stretch& stretch);
    static void drawGlyphs(QPainter& painter, const Glyphs& drawn, QPointF origin, qreal room);
    const Glyphs& glyphsOf(std::u16string_view cluster, int columns, bool isBold);
    [[nodiscard]] Glyphs shaped(const QString& cluster, const QFont& font) const;
    void drawClusters(QPainter& painter, QPointF corner, std::u16string_view text, int column,
                      znt::GridWidth grid, bool isBold);

    QFont regular, bold;
    qreal width = 1;
    int height = 1;
    qreal ascent = 1;
    bool isGrid = true; // a plain character is just one cell wide, in both faces
    bool isReadable = false;
    QHash<QString, Glyphs> glyphs[2];   // by cluster; regular and bold
    QHash<quint64, Look> readableLooks; // by both colours; working one out takes a while
};
