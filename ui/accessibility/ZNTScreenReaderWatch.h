#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>

class QDBusConnection;
class QDBusMessage;

/// How a reader can be made to speak a line.
enum class ZNTReaderWay {
    /// It listens for neither of the two.
    None,
    /// It speaks the new name of the active window (Orca up to 45.1; tried with 43.1).
    WindowName,
    /// It speaks what an application announces (Orca from 45.2).
    Announcement
};

/// Knows whether the desktop's screen reader runs and what it listens for.
///
/// The desktop says whether a reader is on: the property ScreenReaderEnabled of org.a11y.Status on the
/// session bus. A reader that was started by hand leaves it false, but registers with the accessibility bus
/// for the events that it wants (AT-SPI). Both are read at the start and watched. Without a bus no reader
/// runs.
class ZNTScreenReaderWatch final : public QObject
{
    Q_OBJECT

public:
    explicit ZNTScreenReaderWatch(QObject* parent = nullptr);

    [[nodiscard]] bool isRunning() const { return isEnabled || way_ != ZNTReaderWay::None; }
    [[nodiscard]] ZNTReaderWay way() const { return way_; }

    /// The connection of Qt's own accessibility bridge. Our announcements leave on it, too.
    [[nodiscard]] static QDBusConnection accessibilityBus();

Q_SIGNALS:
    void runningChanged(bool isRunning);

private:
    void readStatus();
    void watchRegistry();
    void askForListeners();
    void takeListeners(const QDBusMessage& answer);
    void change(bool enabled, ZNTReaderWay way);

    bool isEnabled = false;
    ZNTReaderWay way_ = ZNTReaderWay::None;
    /// Until Qt's bridge has found the accessibility bus.
    QTimer untilConnected;
    /// A reader registers for dozens of events at once. We look once, afterwards.
    QTimer afterRegistrations;

private Q_SLOTS:
    void statusChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
    void listenersChanged();
};
