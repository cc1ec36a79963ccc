#include "ZNTOutputPainter.h"

#include "ZNTReadableColour.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace
{

constexpr qsizetype mostGlyphs = 8192; // clusters kept per face; more than any game's daily Chinese

constexpr qreal largestGrowth = 1.15; // of a glyph that is narrower than its columns

constexpr ZNTColour selectedText = znt::colours::white, selectedBackground{0x26, 0x4F, 0x78};
constexpr ZNTColour matchText = znt::colours::black, matchBackground{0xFF, 0xD5, 0x4A};
constexpr ZNTColour currentMatchText = znt::colours::black, currentMatchBackground{0xFF, 0x8C, 0x1A};

QColor colourOf(ZNTColour colour) { return {colour.red, colour.green, colour.blue}; }

QString textOf(std::u16string_view text)
{
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

/// The default of a new view.
QFont gameFont()
{
    QFont font(QStringList{QStringLiteral("Menlo"), QStringLiteral("DejaVu Sans Mono")});
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(12);
    return font;
}

/// Line drawing and block elements.
constexpr bool isDrawing(char16_t unit) { return unit >= 0x2500 && unit <= 0x259F; }

bool fillsOneCell(const QFontMetricsF& metrics, qreal width)
{
    for (const char16_t* letter = u"iW.m"; *letter; ++letter)
        if (std::abs(metrics.horizontalAdvance(QChar(*letter)) - width) > 0.01)
            return false;
    return true;
}

} // namespace

ZNTOutputPainter::ZNTOutputPainter() { setFont(gameFont()); }

void ZNTOutputPainter::setFont(const QFont& font)
{
    regular = font;
    regular.setStyleHint(QFont::Monospace);
    regular.setStyleName({}); // a font panel sets one, and by it bold would stay what it names
    regular.setBold(false);
    regular.setKerning(false);
    bold = regular;
    bold.setBold(true);
    const QFontMetricsF metrics(regular), boldMetrics(bold);
    width = std::max<qreal>(metrics.horizontalAdvance(u'0'), 1);
    // A line's worth of rounding would leave gaps between the backgrounds of rows.
    height = std::max(static_cast<int>(std::ceil(std::max(metrics.height(), boldMetrics.height()))), 1);
    ascent = std::ceil(std::max(metrics.ascent(), boldMetrics.ascent()));
    isGrid = fillsOneCell(metrics, width) && fillsOneCell(boldMetrics, width);
    for (auto& kept : glyphs)
        kept.clear();
}

ZNTOutputPainter::Look ZNTOutputPainter::lookOf(const Stretch& stretch)
{
    switch (stretch.mark) {
    case Mark::Selected:
        return {colourOf(selectedText), colourOf(selectedBackground)};
    case Mark::Match:
        return {colourOf(matchText), colourOf(matchBackground)};
    case Mark::CurrentMatch:
        return {colourOf(currentMatchText), colourOf(currentMatchBackground)};
    case Mark::None:
        break;
    }
    const Look asked{colourOf(stretch.style.foreground), colourOf(stretch.style.background)};
    if (!isReadable)
        return asked;
    const auto key = quint64{asked.foreground.rgb()} << 32 | asked.background.rgb();
    const auto found = readableLooks.constFind(key);
    if (found != readableLooks.constEnd())
        return *found;
    const auto pair = znt::readable({stretch.style.foreground, stretch.style.background});
    return *readableLooks.insert(key, {colourOf(pair.foreground), colourOf(pair.background)});
}

void ZNTOutputPainter::drawRow(QPainter& painter, QPointF corner, std::u16string_view row,
                               znt::GridWidth grid, std::span<const Stretch> stretches)
{
    auto stretch = stretches.begin();
    if (stretch == stretches.end())
        return;
    int column = 0;
    const auto draw = [&](std::size_t end, int endColumn) {
        const auto from = std::min(stretch->from, end);
        drawStretch(painter, corner, row.substr(from, end - from), column, endColumn, grid, *stretch);
        column = endColumn;
    };
    int reached = 0;
    znt::placeRow(row, grid, [&](const znt::PlacedCluster& cluster) {
        while (cluster.offset >= stretch->to && stretch + 1 != stretches.end()) {
            draw(stretch->to, cluster.column);
            ++stretch;
        }
        reached = cluster.column + cluster.width;
        return true;
    });
    draw(row.size(), reached);
}

/// `text` stands in [column, endColumn) and looks one way.
void ZNTOutputPainter::drawStretch(QPainter& painter, QPointF corner, std::u16string_view text, int column,
                                   int endColumn, znt::GridWidth grid, const Stretch& stretch)
{
    const auto look = lookOf(stretch);
    const QRectF area(corner.x() + column * width, corner.y(), (endColumn - column) * width, height);
    if (look.background != Qt::black)
        painter.fillRect(area, look.background);
    painter.setPen(look.foreground);
    if (stretch.style.isUnderlined) {
        const qreal line = std::max<qreal>(1, std::round(height / 16.0));
        painter.fillRect(QRectF(area.left(), corner.y() + ascent + line, area.width(), line),
                         look.foreground);
    }
    const bool isPlain = std::all_of(text.begin(), text.end(), &znt::isPlainUnit);
    if (!isPlain || !isGrid) {
        drawClusters(painter, corner, text, column, grid, stretch.style.isBold);
        return;
    }
    while (!text.empty() && text.back() == u' ')
        text.remove_suffix(1);
    if (text.empty())
        return;
    painter.setFont(stretch.style.isBold ? bold : regular);
    painter.drawText(QPointF(area.left(), corner.y() + ascent), textOf(text));
}

void ZNTOutputPainter::drawClusters(QPainter& painter, QPointF corner, std::u16string_view text, int column,
                                    znt::GridWidth grid, bool isBold)
{
    // The stretch starts at `column`, which tab stops count from the row's own beginning.
    for (std::size_t offset = 0; offset < text.size();) {
        auto [length, columns] = znt::clusterAt(text, offset, grid.ambiguous);
        if (text[offset] == u'\t')
            columns = znt::tabStop - column % znt::tabStop;
        else if (text[offset] != u' ' && column < grid.columns) {
            const auto& drawn = glyphsOf(text.substr(offset, length), columns, isBold);
            drawGlyphs(painter, drawn, QPointF(corner.x() + column * width, corner.y() + ascent),
                       columns * width);
        }
        column += columns;
        offset += length;
    }
}

void ZNTOutputPainter::drawGlyphs(QPainter& painter, const Glyphs& drawn, QPointF origin, qreal room)
{
    if (!drawn.isStretched) {
        origin.rx() += std::max<qreal>(0, (room - drawn.advance) / 2);
        for (const auto& run : drawn.runs)
            painter.drawGlyphRun(origin, run);
        return;
    }
    const auto transform = painter.transform();
    painter.translate(origin);
    painter.scale(room / drawn.advance, 1);
    for (const auto& run : drawn.runs)
        painter.drawGlyphRun({}, run);
    painter.setTransform(transform);
}

/// Shaping a character that the font lacks takes longer than drawing it, so what was shaped is kept.
const ZNTOutputPainter::Glyphs& ZNTOutputPainter::glyphsOf(std::u16string_view cluster, int columns,
                                                           bool isBold)
{
    auto& kept = glyphs[isBold ? 1 : 0];
    const auto key = textOf(cluster);
    const auto found = kept.constFind(key);
    if (found != kept.constEnd())
        return *found;
    if (kept.size() >= mostGlyphs)
        kept.clear();
    const auto& font = isBold ? bold : regular;
    auto made = shaped(key, font);
    const qreal room = columns * width;
    made.isStretched = columns == 2 && isDrawing(cluster.front()) && made.advance > 0;
    if (made.isStretched)
        return *kept.insert(key, made);
    // Chinese fonts are narrower than two columns: set a little larger, their text does not fall apart.
    // A single character that is wider than its columns is made to fit.
    const qreal factor = made.advance > 0 ? std::min(room / made.advance, largestGrowth) : 1;
    const bool isTooWide = factor < 1 && key.toUcs4().size() == 1;
    if (isTooWide || (columns == 2 && factor > 1.02)) {
        QFont fitting = font;
        fitting.setPointSizeF(font.pointSizeF() * factor);
        made = shaped(key, fitting);
    }
    return *kept.insert(key, made);
}

/// The positions count from the baseline.
ZNTOutputPainter::Glyphs ZNTOutputPainter::shaped(const QString& cluster, const QFont& font) const
{
    QTextLayout layout(cluster, font);
    QTextOption option;
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    auto line = layout.createLine();
    line.setPosition({0, 0});
    layout.endLayout();

    Glyphs made;
    made.advance = line.naturalTextWidth();
    for (auto& run : line.glyphRuns()) {
        auto positions = run.positions();
        for (auto& position : positions)
            position.ry() -= line.ascent();
        run.setPositions(positions);
        made.runs.push_back(run);
    }
    return made;
}
