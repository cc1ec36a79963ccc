#pragma once

#include "ZNTScreenReader.h"
#include "ZNTScreenReaderWatch.h"

#include <QMainWindow>
#include <QPointer>
#include <QQueue>
#include <QTimer>

/// Makes the desktop's screen reader speak lines, wherever the focus is.
///
/// A line goes one way only: the best one that the running reader listens for. `sayThis` refuses a line if no
/// reader listens, or if another program's window is active, because the reader would not speak for us then.
///
/// The window's accessibility must be on (`QT_LINUX_ACCESSIBILITY_ALWAYS_ON` before the application object):
/// the lines go out on the connection of Qt's own bridge.
class ZNTDesktopScreenReader final : public QObject, public ZNTScreenReader
{
    Q_OBJECT

public:
    explicit ZNTDesktopScreenReader(QObject* parent = nullptr);

    /// The window that the lines come from. Orca takes only a main window for the active window. `sayThis`
    /// refuses every line before this is called.
    void setWindow(QMainWindow* window) { this->window = window; }

    [[nodiscard]] bool isRunning() const override { return watch.isRunning(); }
    bool sayThis(std::u16string_view text) override;
    void forgetWhatWaits() override;

Q_SIGNALS:
    /// The reader was started, or it ended.
    void runningChanged(bool isRunning);

private:
    void handOverNext();
    [[nodiscard]] bool canSpeak() const;

    ZNTScreenReaderWatch watch;
    QPointer<QMainWindow> window;
    QQueue<QString> waiting;
    QTimer pacing;
};
