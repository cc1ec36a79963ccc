#include "ZNTOutputPainter.h"

#include "ZNTReadableColour.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr ZNTColour selectedText = znt::colours::white, selectedBackground{0x26, 0x4F, 0x78};
constexpr ZNTColour matchText = znt::colours::black, matchBackground{0xFF, 0xD5, 0x4A};
constexpr ZNTColour currentMatchText = znt::colours::black, currentMatchBackground{0xFF, 0x8C, 0x1A};

QColor colourOf(ZNTColour colour) { return {colour.red, colour.green, colour.blue}; }

QString textOf(std::u16string_view text)
{
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

void drawGlyphs(QPainter& painter, const ZNTOutputFace::Glyphs& drawn, QPointF origin, qreal room)
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

} // namespace

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
    if (stretch.style.isConcealed) // what is marked is shown; it may be copied, too
        return {colourOf(stretch.style.background), colourOf(stretch.style.background)};
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

void ZNTOutputPainter::drawRow(QPainter& painter, const Place& place, std::u16string_view row,
                               znt::GridWidth grid, std::span<const Stretch> stretches)
{
    placed.clear();
    znt::placeRow(row, grid, [this](const znt::PlacedCluster& cluster) {
        placed.push_back(cluster);
        return true;
    });
    auto from = placed.cbegin();
    for (const auto& stretch : stretches) {
        auto to = from;
        while (to != placed.cend() && to->offset < stretch.to)
            ++to;
        drawStretch(painter, place, row, {from, to}, stretch);
        from = to;
    }
}

void ZNTOutputPainter::drawStretch(QPainter& painter, const Place& place, std::u16string_view row,
                                   std::span<const znt::PlacedCluster> clusters, const Stretch& stretch)
{
    if (clusters.empty())
        return;
    const auto look = lookOf(stretch);
    const auto& first = clusters.front();
    const auto& last = clusters.back();
    const qreal left = place.corner.x() + first.column * place.column;
    const QRectF area(left, place.corner.y(), (last.column + last.width - first.column) * place.column,
                      place.height);
    if (look.background != Qt::black)
        painter.fillRect(area, look.background);
    painter.setPen(look.foreground);
    auto& face = fonts.face(stretch.style.font);
    const qreal baseline = place.corner.y() + place.ascent;
    const qreal line = std::max<qreal>(1, std::round(face.cellHeight() / 16.0));
    const auto drawLine = [&](qreal y) {
        painter.fillRect(QRectF(area.left(), y, area.width(), line), look.foreground);
    };
    if (stretch.style.isUnderlined)
        drawLine(baseline + line);
    if (stretch.style.isStruck) // through the middle of small letters
        drawLine(std::round(baseline - 0.3 * face.ascent()));
    const ZNTFaceForm form{stretch.style.isBold, stretch.style.isItalic};
    auto text = row.substr(first.offset, last.offset + last.length - first.offset);
    const bool isPlain = std::all_of(text.begin(), text.end(), &znt::isPlainUnit);
    if (!isPlain || !face.isGrid(form)) {
        drawClusters(painter, place, row, clusters, face, form);
        return;
    }
    while (!text.empty() && text.back() == u' ')
        text.remove_suffix(1);
    if (text.empty())
        return;
    painter.setFont(face.font(form));
    painter.drawText(QPointF(area.left(), baseline), textOf(text));
}

void ZNTOutputPainter::drawClusters(QPainter& painter, const Place& place, std::u16string_view row,
                                    std::span<const znt::PlacedCluster> clusters, ZNTOutputFace& face,
                                    ZNTFaceForm form)
{
    for (const auto& cluster : clusters) {
        const char16_t unit = row[cluster.offset];
        if (unit == u'\t' || unit == u' ' || (cluster.width == 0 && cluster.cells != 0))
            continue;
        const auto& drawn = face.glyphsOf(row.substr(cluster.offset, cluster.length), cluster.cells, form);
        const QPointF origin(place.corner.x() + cluster.column * place.column,
                             place.corner.y() + place.ascent);
        drawGlyphs(painter, drawn, origin, cluster.cells * face.cellWidth());
    }
}
