#include "ZNTScreenReaderWatch.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace
{

constexpr int millisecondsForStatus = 1'000;
constexpr int millisecondsBetweenAttempts = 200;
constexpr int millisecondsAfterRegistrations = 100;

const auto statusInterface = QStringLiteral("org.a11y.Status");
const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const auto registryName = QStringLiteral("org.a11y.atspi.Registry");
const auto registryPath = QStringLiteral("/org/a11y/atspi/registry");

/// Whether the event `wanted` goes to a listener for `registered` ("Object:PropertyChange:AccessibleName"; an
/// empty part stands for all).
bool includes(const QString& registered, const QStringList& wanted)
{
    const auto parts = registered.split(u':');
    for (qsizetype at = 0; at < wanted.size(); ++at)
        if (at < parts.size() && !parts[at].isEmpty() &&
            QString(parts[at]).remove(u'-').compare(wanted[at], Qt::CaseInsensitive) != 0)
            return false;
    return true;
}

ZNTReaderWay wayOfListener(const QString& registered)
{
    if (includes(registered, {QStringLiteral("Object"), QStringLiteral("Announcement")}))
        return ZNTReaderWay::Announcement;
    if (includes(registered, {QStringLiteral("Object"), QStringLiteral("PropertyChange"),
                              QStringLiteral("AccessibleName")}))
        return ZNTReaderWay::WindowName;
    return ZNTReaderWay::None;
}

} // namespace

QDBusConnection ZNTScreenReaderWatch::accessibilityBus() { return QDBusConnection(QStringLiteral("a11y")); }

ZNTScreenReaderWatch::ZNTScreenReaderWatch(QObject* parent) : QObject(parent)
{
    untilConnected.setInterval(millisecondsBetweenAttempts);
    connect(&untilConnected, &QTimer::timeout, this, &ZNTScreenReaderWatch::watchRegistry);
    afterRegistrations.setInterval(millisecondsAfterRegistrations);
    afterRegistrations.setSingleShot(true);
    connect(&afterRegistrations, &QTimer::timeout, this, &ZNTScreenReaderWatch::askForListeners);
    readStatus();
    untilConnected.start();
    watchRegistry();
}

void ZNTScreenReaderWatch::readStatus()
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    const auto service = QStringLiteral("org.a11y.Bus");
    const auto path = QStringLiteral("/org/a11y/bus");
    bus.connect(service, path, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                SLOT(statusChanged(QString, QVariantMap, QStringList)));
    auto question = QDBusMessage::createMethodCall(service, path, propertiesInterface, QStringLiteral("Get"));
    question << statusInterface << QStringLiteral("ScreenReaderEnabled");
    // We wait for this answer, because it decides whether speech is on at the start.
    const QDBusPendingReply<QDBusVariant> answer = bus.call(question, QDBus::Block, millisecondsForStatus);
    if (answer.isValid())
        isEnabled = answer.value().variant().toBool();
}

void ZNTScreenReaderWatch::watchRegistry()
{
    auto bus = ZNTScreenReaderWatch::accessibilityBus();
    if (!bus.isConnected())
        return;
    untilConnected.stop();
    for (const auto& signal :
         {QStringLiteral("EventListenerRegistered"), QStringLiteral("EventListenerDeregistered")})
        bus.connect(registryName, registryPath, registryName, signal, this, SLOT(listenersChanged()));
    // A reader that crashed does not deregister. Only its connection disappears.
    bus.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), this,
                SLOT(listenersChanged()));
    askForListeners();
}

void ZNTScreenReaderWatch::askForListeners()
{
    const auto question = QDBusMessage::createMethodCall(registryName, registryPath, registryName,
                                                         QStringLiteral("GetRegisteredEvents"));
    auto* answer =
        new QDBusPendingCallWatcher(ZNTScreenReaderWatch::accessibilityBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        takeListeners(answer->reply());
    });
}

void ZNTScreenReaderWatch::takeListeners(const QDBusMessage& answer)
{
    auto best = ZNTReaderWay::None;
    if (answer.type() == QDBusMessage::ReplyMessage && answer.signature() == u"a(ss)") {
        const auto listeners = answer.arguments().constFirst().value<QDBusArgument>();
        listeners.beginArray();
        while (!listeners.atEnd()) {
            QString bus, event;
            listeners.beginStructure();
            listeners >> bus >> event;
            listeners.endStructure();
            best = std::max(best, wayOfListener(event));
        }
        listeners.endArray();
    }
    change(isEnabled, best);
}

void ZNTScreenReaderWatch::statusChanged(const QString& interface, const QVariantMap& changed,
                                         const QStringList& invalidated)
{
    Q_UNUSED(invalidated)
    const auto value = changed.value(QStringLiteral("ScreenReaderEnabled"));
    if (interface == statusInterface && value.isValid())
        change(value.toBool(), way_);
}

void ZNTScreenReaderWatch::listenersChanged()
{
    if (!afterRegistrations.isActive())
        afterRegistrations.start();
}

void ZNTScreenReaderWatch::change(bool enabled, ZNTReaderWay way)
{
    const bool wasRunning = isRunning();
    isEnabled = enabled;
    way_ = way;
    if (isRunning() != wasRunning)
        Q_EMIT runningChanged(isRunning());
}
