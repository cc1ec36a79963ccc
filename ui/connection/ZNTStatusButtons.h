#pragma once

#include <QWidget>

class QPushButton;

/// The buttons at the right of the status line. At most one of them is shown. The place keeps the height of a
/// button, so that the window does not jump when one comes or goes.
class ZNTStatusButtons final : public QWidget
{
public:
    enum class Shown { None, Stop, ConnectAgain };

    ZNTStatusButtons();

    /// The focus stays on a button if it was on one and one is shown.
    void showOnly(Shown which);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

    QPushButton* stopConnecting; ///< each button's object name is its member's name
    QPushButton* connectAgain;
};
