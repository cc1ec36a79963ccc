#pragma once

#include <QObject>
#include <QTimer>
#include <optional>

/// Lets the text cursor stand still after ten seconds without a key or a mouse button, as the fields of many
/// desktops do, and blink again after the next one. Each blink paints a field anew and wakes two threads, so
/// that a window in which nothing happens would never let a laptop rest.
class ZNTCursorRest final : public QObject
{
public:
    /// Made after the application object, for all its windows.
    explicit ZNTCursorRest(int millisecondsUntilRest = 10'000);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void rest();

    QTimer resting;
    std::optional<int> usualFlashTime; ///< while the cursor stands still
};
