#include "ZNTOutputFonts.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace
{

constexpr qsizetype mostGlyphs =
    8192; // clusters kept for each form; more than the Chinese characters that a game uses

constexpr qreal largestGrowth = 1.15; // of a glyph that is narrower than its columns

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

ZNTOutputFace::ZNTOutputFace(const QFont& font)
{
    for (const bool isItalic : {false, true})
        for (const bool isBold : {false, true}) {
            auto& form = forms[ZNTFaceForm{isBold, isItalic}.index()];
            form.font = font;
            form.font.setStyleHint(QFont::Monospace);
            form.font.setBold(isBold);
            form.font.setItalic(isItalic);
            form.font.setKerning(false);
        }
    const QFontMetricsF metrics(forms[0].font), boldMetrics(forms[1].font);
    width = std::max<qreal>(metrics.horizontalAdvance(u'0'), 1);
    // A height with a fraction would leave gaps between the backgrounds of rows.
    height = std::max(static_cast<int>(std::ceil(std::max(metrics.height(), boldMetrics.height()))), 1);
    ascent_ = static_cast<int>(std::ceil(std::max(metrics.ascent(), boldMetrics.ascent())));
}

bool ZNTOutputFace::isGrid(ZNTFaceForm form)
{
    auto& asked = forms[form.index()];
    if (!asked.isGrid)
        asked.isGrid = fillsOneCell(QFontMetricsF(asked.font), width);
    return *asked.isGrid;
}

/// Shaping a character that the font lacks takes longer than drawing it, so its shape is kept.
const ZNTOutputFace::Glyphs& ZNTOutputFace::glyphsOf(std::u16string_view cluster, int cells, ZNTFaceForm form)
{
    auto& kept = forms[form.index()].glyphs;
    const auto key = QString::fromUtf16(cluster.data(), static_cast<qsizetype>(cluster.size()));
    const auto found = kept.constFind(key);
    if (found != kept.constEnd())
        return *found;
    if (kept.size() >= mostGlyphs)
        kept.clear();
    const auto& font = forms[form.index()].font;
    auto made = shaped(key, font);
    const qreal room = cells * width;
    made.isStretched = cells == 2 && isDrawing(cluster.front()) && made.advance > 0;
    if (made.isStretched)
        return *kept.insert(key, made);
    // Characters of Chinese fonts are narrower than two columns. Drawn a little larger, their text has no
    // gaps. A single character that is wider than its columns is drawn narrower.
    const qreal factor = made.advance > 0 ? std::min(room / made.advance, largestGrowth) : 1;
    const bool isTooWide = factor < 1 && key.toUcs4().size() == 1;
    if (isTooWide || (cells == 2 && factor > 1.02)) {
        QFont fitting = font;
        fitting.setPointSizeF(font.pointSizeF() * factor);
        made = shaped(key, fitting);
    }
    return *kept.insert(key, made);
}

/// The positions count from the baseline.
ZNTOutputFace::Glyphs ZNTOutputFace::shaped(const QString& cluster, const QFont& font)
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

void ZNTOutputFonts::setZoom(double newFactor)
{
    factor = newFactor;
    faces.clear();
}

ZNTOutputFace& ZNTOutputFonts::face(std::size_t number) const
{
    if (number >= faces.size())
        faces.resize(number + 1);
    auto& face = faces[number];
    if (!face)
        face = std::make_unique<ZNTOutputFace>(fontOf(fonts[number], factor));
    return *face;
}

QFont ZNTOutputFonts::fontOf(const ZNTFont& font, double factor)
{
    const auto name = QString::fromUtf16(font.name.data(), static_cast<qsizetype>(font.name.size()));
    QFont found(QStringList{name, QStringLiteral("DejaVu Sans Mono")});
    found.setStyleHint(QFont::Monospace);
    found.setPointSizeF(std::max(font.size * factor, 1.0));
    return found;
}
