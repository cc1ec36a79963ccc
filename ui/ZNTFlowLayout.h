#pragma once

#include <QLayout>
#include <QList>

/// Puts its items side by side and begins a new row where the width ends, so that nothing is cut off with a
/// large font.
class ZNTFlowLayout final : public QLayout
{
public:
    /// `gap` is the distance of items and of rows, in pixels.
    ZNTFlowLayout(QWidget* parent, int gap);
    ~ZNTFlowLayout() override;

    /// Items whose widget is in the list of stretching ones share what a row leaves over.
    void addStretching(QWidget* widget);

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
    int arrange(const QRect& whole, Mode mode) const;
    void placeRow(const QList<QLayoutItem*>& row, const QRect& rect, int y, int height) const;
    [[nodiscard]] bool stretches(const QLayoutItem* item) const;

    QList<QLayoutItem*> items;
    QList<QWidget*> stretching;
    int gap;
};
