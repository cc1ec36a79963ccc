#include "ZNTDesktopScreenReader.h"

#include <QAccessible>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QVariantMap>

/// An object of the accessibility bus: its owner's address and its path. D-Bus signature (so).
struct ZNTAccessibleReference {
    QString bus;
    QDBusObjectPath path;
};
Q_DECLARE_METATYPE(ZNTAccessibleReference)

QDBusArgument& operator<<(QDBusArgument& argument, const ZNTAccessibleReference& reference)
{
    argument.beginStructure();
    argument << reference.bus << reference.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ZNTAccessibleReference& reference)
{
    argument.beginStructure();
    argument >> reference.bus >> reference.path;
    argument.endStructure();
    return argument;
}

namespace
{

/// Orca 43 looks at nothing but the focus while more than 50 events wait for it, and a line takes two. It has
/// worked them off long before this time is over.
constexpr int millisecondsBetweenLines = 40;

QDBusMessage eventOf(QWidget& window, const QString& event)
{
    const auto id = QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&window));
    return QDBusMessage::createSignal(QStringLiteral("/org/a11y/atspi/accessible/%1").arg(id),
                                      QStringLiteral("org.a11y.atspi.Event.Object"), event);
}

void sendWindowName(QWidget& window, const QVariant& name)
{
    const ZNTAccessibleReference application{
        ZNTScreenReaderWatch::accessibilityBus().baseService(),
        QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))};
    auto event = eventOf(window, QStringLiteral("PropertyChange"));
    event << QStringLiteral("accessible-name") << 0 << 0 << QVariant::fromValue(QDBusVariant(name))
          << QVariant::fromValue(application);
    ZNTScreenReaderWatch::accessibilityBus().send(event);
}

void sendAnnouncement(QWidget& window, const QString& text)
{
    constexpr int polite = 1;
    auto event = eventOf(window, QStringLiteral("Announcement"));
    event << QString() << polite << 0 << QVariant::fromValue(QDBusVariant(text)) << QVariantMap();
    ZNTScreenReaderWatch::accessibilityBus().send(event);
}

} // namespace

ZNTDesktopScreenReader::ZNTDesktopScreenReader(QObject* parent) : QObject(parent)
{
    qDBusRegisterMetaType<ZNTAccessibleReference>();
    connect(&watch, &ZNTScreenReaderWatch::runningChanged, this, &ZNTDesktopScreenReader::runningChanged);
    pacing.setInterval(millisecondsBetweenLines);
    connect(&pacing, &QTimer::timeout, this, &ZNTDesktopScreenReader::handOverNext);
}

bool ZNTDesktopScreenReader::sayThis(std::u16string_view text)
{
    if (!canSpeak())
        return false;
    if (text.empty())
        return true;
    waiting.enqueue(QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())));
    if (!pacing.isActive()) {
        pacing.start();
        handOverNext();
    }
    return true;
}

void ZNTDesktopScreenReader::forgetWhatWaits() { waiting.clear(); }

bool ZNTDesktopScreenReader::canSpeak() const
{
    return window && window->isActiveWindow() && watch.way() != ZNTReaderWay::None &&
           ZNTScreenReaderWatch::accessibilityBus().isConnected();
}

void ZNTDesktopScreenReader::handOverNext()
{
    if (waiting.isEmpty()) {
        pacing.stop();
        return;
    }
    // Lines that were accepted wait until the window is in front again.
    if (!canSpeak())
        return;
    const auto text = waiting.dequeue();
    if (watch.way() == ZNTReaderWay::Announcement) {
        sendAnnouncement(*window, text);
        return;
    }
    sendWindowName(*window, text);
    // Orca does not speak a name that is the same as the last one.
    sendWindowName(*window, 0);
}
