#pragma once

#include <QProgressBar>
#include <QTimer>

/// A small ring that turns while something goes on whose end nobody knows. A screen reader finds a progress
/// bar without a value.
///
/// It is as high as a line of its font. While it is hidden no timer runs. If the desktop wants no animations
/// it stands still.
class ZNTTurningRing final : public QProgressBar
{
public:
    ZNTTurningRing();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] bool isTurning() const { return timer.isActive(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QTimer timer;
    int step = 0; ///< of the turn, in pictures
};
