#pragma once

#include "ZNTAttributedText.h"

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <QString>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The forms of a face: two weights, each upright and slanted.
struct ZNTFaceForm {
    bool isBold = false;
    bool isItalic = false;
    [[nodiscard]] std::size_t index() const { return (isBold ? 1U : 0U) | (isItalic ? 2U : 0U); }
};

/// One family and size at the present zoom, in all its forms: the size of its cells, and its characters once
/// they were shaped. The upright forms give the cells their size, and slanted ones stand in the same cells.
class ZNTOutputFace
{
public:
    struct Glyphs {
        QList<QGlyphRun> runs; ///< from the baseline
        qreal advance = 0;
        bool isStretched = false; ///< to the width of its columns, as line drawing needs it
    };

    explicit ZNTOutputFace(const QFont& font);

    [[nodiscard]] const QFont& font(ZNTFaceForm form) const { return forms[form.index()].font; }
    [[nodiscard]] qreal cellWidth() const { return width; }
    /// The same for all forms.
    [[nodiscard]] int cellHeight() const { return height; }
    [[nodiscard]] int ascent() const { return ascent_; }
    /// A plain character of this form is just one cell wide.
    [[nodiscard]] bool isGrid(ZNTFaceForm form);
    /// Of one cluster that takes so many cells. Good until the next call.
    const Glyphs& glyphsOf(std::u16string_view cluster, int cells, ZNTFaceForm form);

private:
    struct Form {
        QFont font;
        std::optional<bool> isGrid;    // asked for when it is first drawn: few games write slanted text
        QHash<QString, Glyphs> glyphs; // by cluster
    };
    [[nodiscard]] static Glyphs shaped(const QString& cluster, const QFont& font);

    std::array<Form, 4> forms; // by ZNTFaceForm
    qreal width = 1;
    int height = 1;
    int ascent_ = 1;
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
