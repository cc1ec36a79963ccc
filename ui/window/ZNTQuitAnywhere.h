#pragma once

#include <QAbstractNativeEventFilter>
#include <QKeySequence>
#include <QObject>

class QWidget;

/// Closes the main window also while a sheet or an alert stands in front of it: by its frame, and by its key
/// in each of our windows.
///
/// Qt lets nothing through to a window that a dialog holds up. On Wayland it makes an exception for the
/// frame's button; on X11 the window manager's message is read here instead.
class ZNTQuitAnywhere final : public QObject, private QAbstractNativeEventFilter
{
public:
    /// `window` outlives this; made after the application object.
    ZNTQuitAnywhere(QWidget& window, QKeySequence key);
    ~ZNTQuitAnywhere() override;

    /// Closes all sheets, alerts and further windows of ours; to nothing in them is agreed.
    static void closeDialogs();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void closeSoon();

    QWidget& window;
    QKeySequence key;
    quint32 protocols = 0, deleteWindow = 0; ///< atoms of the X server; 0 elsewhere
};
