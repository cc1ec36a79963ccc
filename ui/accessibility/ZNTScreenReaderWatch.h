#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>

class QDBusMessage;

/// How a reader can be brought to speak a line of our choice.
enum class ZNTReaderWay {
    /// It listens for nothing that would do.
    None,
    /// It speaks the new name of the active window (Orca up to 45.1; tried with 43.1).
    WindowName,
    /// It speaks what an application announces (Orca from 45.2).
    Announcement
};

/// Knows whether the desktop's screen reader runs and what it listens for.
///
/// The desktop says whether a reader is on: the property ScreenReaderEnabled of org.a11y.Status on the
/// session bus. One started by hand leaves that false, but tells the registry of the accessibility bus which
/// events it wants (AT-SPI). Both are read at the start and watched; without a bus no reader runs.
class ZNTScreenReaderWatch final : public QObject
{
    Q_OBJECT

public:
    explicit ZNTScreenReaderWatch(QObject* parent = nullptr);

    [[nodiscard]] bool isRunning() const { return isEnabled || way_ != ZNTReaderWay::None; }
    [[nodiscard]] ZNTReaderWay way() const { return way_; }

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
    /// A reader registers for dozens of events at once; one look afterwards is enough.
    QTimer afterRegistrations;

private Q_SLOTS:
    void statusChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
    void listenersChanged();
};
