#pragma once

#include <QAbstractNativeEventFilter>
#include <QKeySequence>
#include <QObject>

class QWidget;

/// Closes the main window also while a sheet or an alert is open in front of it: by the window's frame, and
/// by the key in each window of the program.
///
/// Qt passes no event to a window that a dialog blocks. On Wayland it makes an exception for the frame's
/// button. On X11 this object reads the window manager's message instead.
class ZNTQuitAnywhere final : public QObject, private QAbstractNativeEventFilter
{
public:
    /// `window` outlives this; made after the application object.
    ZNTQuitAnywhere(QWidget& window, QKeySequence key);
    ~ZNTQuitAnywhere() override;

    /// Closes all sheets, alerts and further windows of the program. No question in them counts as answered
    /// yes.
    static void closeDialogs();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void closeSoon();

    QWidget& window;
    QKeySequence key;
    quint32 protocols = 0, deleteWindow = 0; ///< atoms of the X server; 0 elsewhere
};
