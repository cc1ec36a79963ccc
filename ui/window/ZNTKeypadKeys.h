#pragma once

#include <QAction>
#include <QObject>
#include <span>

class QKeyEvent;
class QWidget;

/// Carries out a window's shortcuts of the numeric keypad.
///
/// Qt 6.4 forgets on X11 and on Wayland that a key belongs to the keypad before it looks for a shortcut
/// (`QXkbCommon::possibleKeys`), so there it never finds one with Qt::KeypadModifier. This takes such a key
/// when it is about to be typed, unless the widget that has the focus wants to type it.
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
