#pragma once

#include "ZNTScreenReader.h"
#include "ZNTScreenReaderWatch.h"

#include <QDeadlineTimer>
#include <QMainWindow>
#include <QPointer>
#include <QQueue>
#include <QTimer>

class QLineEdit;

/// Makes the desktop's screen reader speak lines, wherever the focus is.
///
/// A line goes one way only: the best one that the running reader listens for. `sayThis` refuses a line if no
/// reader listens, or if another program's window is active, because the reader would not speak for us then.
///
/// Lines and announcements are said also while a dialog of ours is in front. Orca speaks no new name of a
/// dialog, but the new description of what has the focus; a window of ours without a focus refuses lines. If
/// no window of ours is in front for a while, as between a dialog and its owner, an announcement waits; it is
/// dropped after some seconds.
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
    void announce(std::u16string_view text) override;
    void forgetWhatWaits() override;

    /// Announces which kind of field `line` is now. Readers keep the kind that they have asked for once, and
    /// Qt does not announce that it changes with the echo mode.
    static void announceKind(QLineEdit& line);
    /// Has a reader say the text of `line` after an arrow key put it there. Readers do so only if the caret
    /// is not where it was before.
    static void announceNewText(QLineEdit& line);

Q_SIGNALS:
    /// The reader was started, or it ended.
    void runningChanged(bool isRunning);

private:
    void handOver(const QString& line, QWidget& front);
    void handOverNext();
    bool announceNext();
    void startPacing();
    [[nodiscard]] bool isReached() const;
    [[nodiscard]] bool canSpeak() const;

    ZNTScreenReaderWatch watch;
    QPointer<QMainWindow> window;
    struct Announcement {
        QString words;
        QDeadlineTimer until; ///< it is dropped then
    };

    QQueue<QString> waiting;
    QQueue<Announcement> announcements;
    QTimer pacing;
};
