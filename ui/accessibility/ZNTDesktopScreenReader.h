#pragma once

#include "ZNTScreenReader.h"
#include "ZNTScreenReaderWatch.h"

#include <QMainWindow>
#include <QPointer>
#include <QQueue>
#include <QTimer>

/// Has the desktop's screen reader speak lines as if it had come upon them itself, whatever has the focus.
///
/// A line goes one way only, the best that the running reader listens for. Where there is none, or while
/// another window than ours is active and the reader would not speak for us, `sayThis` declines.
///
/// The window's accessibility must be on (`QT_LINUX_ACCESSIBILITY_ALWAYS_ON` before the application object):
/// the lines go out on the connection of Qt's own bridge.
class ZNTDesktopScreenReader final : public QObject, public ZNTScreenReader
{
    Q_OBJECT

public:
    explicit ZNTDesktopScreenReader(QObject* parent = nullptr);

    /// The window that the lines come from; a main window, for Orca takes no other kind for the active one.
    /// Before this is called `sayThis` declines.
    void setWindow(QMainWindow* window) { this->window = window; }

    [[nodiscard]] bool isRunning() const override { return watch.isRunning(); }
    bool sayThis(std::u16string_view text) override;
    void forgetWhatWaits() override;

Q_SIGNALS:
    /// The reader was started or ended while we run.
    void runningChanged(bool isRunning);

private:
    void handOverNext();
    [[nodiscard]] bool canSpeak() const;

    ZNTScreenReaderWatch watch;
    QPointer<QMainWindow> window;
    QQueue<QString> waiting;
    QTimer pacing;
};
