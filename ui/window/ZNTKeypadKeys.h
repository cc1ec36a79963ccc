#pragma once

#include <QAction>
#include <QObject>
#include <span>

class QKeyEvent;
class QWidget;

/// Carries out a window's shortcuts of the numeric keypad.
///
/// On X11 and Wayland, Qt 6.4 loses the keypad's modifier before it looks for a shortcut
/// (`QXkbCommon::possibleKeys`), so it finds none with Qt::KeypadModifier. This object takes such a key just
/// before it is typed, unless the widget that has the focus wants to type it.
class ZNTKeypadKeys final : public QObject
{
public:
    /// The caller owns the window and its actions, which outlive this.
    ZNTKeypadKeys(QWidget& window, std::span<QAction* const> actions);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QAction* actionFor(const QKeyEvent& key) const;

    QWidget& window;
    std::span<QAction* const> actions;
};
