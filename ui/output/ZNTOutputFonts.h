#pragma once

#include "ZNTAttributedText.h"

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <QString>

#include <memory>
#include <string_view>
#include <vector>

/// One family and size at the present zoom, in both weights: the size of its cells, and its characters once
/// they were shaped.
class ZNTOutputFace
{
public:
    struct Glyphs {
        QList<QGlyphRun> runs; ///< from the baseline
        qreal advance = 0;
        bool isStretched = false; ///< to the width of its columns, as line drawing needs it
    };

    explicit ZNTOutputFace(const QFont& font);

    [[nodiscard]] const QFont& font(bool isBold) const { return isBold ? bold : regular; }
    [[nodiscard]] qreal cellWidth() const { return width; }
    /// The same for both weights.
    [[nodiscard]] int cellHeight() const { return height; }
    [[nodiscard]] int ascent() const { return ascent_; }
    /// A plain character is just one cell wide, in both weights.
    [[nodiscard]] bool isGrid() const { return isGrid_; }
    /// Of one cluster that takes so many cells. Good until the next call.
    const Glyphs& glyphsOf(std::u16string_view cluster, int cells, bool isBold);

private:
    [[nodiscard]] static Glyphs shaped(const QString& cluster, const QFont& font);

    QFont regular, bold;
    qreal width = 1;
    int height = 1;
    int ascent_ = 1;
    bool isGrid_ = true;
    QHash<QString, Glyphs> glyphs[2]; // by cluster; regular and bold
};

/// The faces of the fonts that a text is in, all larger or smaller by one factor.
class ZNTOutputFonts
{
public:
    /// By the numbers of `fonts`, which outlives this and may grow.
    explicit ZNTOutputFonts(const std::vector<ZNTFont>& fonts) : fonts(fonts) {}

    void setZoom(double factor);
    [[nodiscard]] double zoom() const { return factor; }
    /// Good until the zoom changes.
    [[nodiscard]] ZNTOutputFace& face(std::size_t number) const;

    /// A family that is not installed shows as the system's font of fixed width.
    [[nodiscard]] static QFont fontOf(const ZNTFont& font, double factor = 1);

private:
    const std::vector<ZNTFont>& fonts;
    double factor = 1;
    mutable std::vector<std::unique_ptr<ZNTOutputFace>> faces; // made when first asked for
};
