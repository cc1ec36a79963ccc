#pragma once

#include <QHash>
#include <QLayout>
#include <QList>
#include <functional>

/// Puts its items side by side and begins a new row if an item does not fit, so that nothing is cut off with
/// a large font or in a narrow window.
class ZNTFlowLayout final : public QLayout
{
public:
    /// `gap` is the distance of items and of rows, in pixels.
    ZNTFlowLayout(QWidget* parent, int gap);
    ~ZNTFlowLayout() override;

    /// The widgets that were added as stretching share the width that a row leaves over.
    void addStretching(QWidget* widget);
    /// The same for one that becomes narrower, down to `least`, before an item goes to a new row. `least` is
    /// asked each time, because it follows the font.
    void addShrinking(QWidget* widget, std::function<int()> least);
    /// Rows without a stretching widget stand at the right, as a dialog's buttons do.
    void standAtRight() { isAtRight = true; }
    /// All items become as wide as the widest and share the width evenly, at most so many in a row.
    void shareEvenly(int mostColumns) { mostEvenColumns = mostColumns; }

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] QSize sizeHint() const override;
    void setGeometry(const QRect& rect) override;

private:
    enum class Mode { Measure, Place };
    /// A row as wide as `rect` allows: its items with their widths.
    struct Row {
        QList<QLayoutItem*> items;
        QList<int> widths;
    };
    int arrange(const QRect& whole, Mode mode) const;
    [[nodiscard]] QList<Row> rowsFor(int width) const;
    [[nodiscard]] QList<Row> evenRowsFor(int width) const;
    void stretchRow(Row& row, int width) const;
    void shrinkRow(Row& row, int width) const;
    [[nodiscard]] int leastWidth(QLayoutItem* item) const;
    [[nodiscard]] QList<QLayoutItem*> shownItems() const;
    [[nodiscard]] QSize largestHint() const;
    [[nodiscard]] bool stretches(const QLayoutItem* item) const;

    QList<QLayoutItem*> items;
    QList<QWidget*> stretching;
    QHash<QWidget*, std::function<int()>> shrinking;
    int gap;
    int mostEvenColumns = 0; ///< 0: items keep their own widths
    bool isAtRight = false;
};
