#include "ZNTDesktopScreenReader.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QLineEdit>
#include <QVariantMap>
#include <chrono>
#include <vector>

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

/// Longer than a dialog needs to give the focus back, or a reader to begin.
constexpr std::chrono::seconds longestWaitForWindow{5};

QDBusMessage eventOf(QAccessibleInterface* element, const QString& event)
{
    return QDBusMessage::createSignal(
        QStringLiteral("/org/a11y/atspi/accessible/%1").arg(QAccessible::uniqueId(element)),
        QStringLiteral("org.a11y.atspi.Event.Object"), event);
}

void sendEvent(QAccessibleInterface* element, const QString& name, const char* kind, const QVariant& value)
{
    const ZNTAccessibleReference application{
        ZNTScreenReaderWatch::accessibilityBus().baseService(),
        QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))};
    auto event = eventOf(element, name);
    event << QString::fromLatin1(kind) << 0 << 0 << QVariant::fromValue(QDBusVariant(value))
          << QVariant::fromValue(application);
    ZNTScreenReaderWatch::accessibilityBus().send(event);
}

void sendProperty(QAccessibleInterface* element, const char* property, const QVariant& value)
{
    sendEvent(element, QStringLiteral("PropertyChange"), property, value);
}

void sendAnnouncement(QWidget& window, const QString& text)
{
    constexpr int polite = 1;
    auto event = eventOf(QAccessible::queryAccessibleInterface(&window), QStringLiteral("Announcement"));
    event << QString() << polite << 0 << QVariant::fromValue(QDBusVariant(text)) << QVariantMap();
    ZNTScreenReaderWatch::accessibilityBus().send(event);
}

/// What readers take for the element with the focus: in a table the cell, in a row of tabs the tab, in a
/// combo box the box or its field. A reader speaks for one of them only.
std::vector<QAccessibleInterface*> elementsWithFocus()
{
    auto* focused = QAccessible::queryAccessibleInterface(QApplication::focusWidget());
    if (!focused)
        return {};
    const auto* box = qobject_cast<QComboBox*>(focused->object());
    if (box && box->isEditable())
        return {focused, QAccessible::queryAccessibleInterface(box->lineEdit())};
    const auto* view = qobject_cast<QAbstractItemView*>(focused->object());
    if (view && view->currentIndex().isValid() && focused->tableInterface())
        return {focused->tableInterface()->cellAt(view->currentIndex().row(), view->currentIndex().column())};
    QAccessibleInterface* child = focused->focusChild();
    return {child ? child : focused};
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
    startPacing();
    return true;
}

void ZNTDesktopScreenReader::announce(std::u16string_view text)
{
    announcements.enqueue({QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())),
                           QDeadlineTimer(longestWaitForWindow)});
    startPacing();
}

void ZNTDesktopScreenReader::announceKind(QLineEdit& line)
{
    // ATSPI_ROLE_PASSWORD_TEXT and ATSPI_ROLE_TEXT of atspi-constants.h.
    constexpr int password = 40, text = 61;
    sendProperty(QAccessible::queryAccessibleInterface(&line), "accessible-role",
                 line.echoMode() == QLineEdit::Normal ? text : password);
}

/// The event says that the caret is at the start. Orca 43 compares that with the place that it knows, and
/// then asks for the text and for the place itself. Of several events it takes the last.
void ZNTDesktopScreenReader::announceNewText(QLineEdit& line)
{
    if (ZNTScreenReaderWatch::accessibilityBus().isConnected())
        sendEvent(QAccessible::queryAccessibleInterface(&line), QStringLiteral("TextCaretMoved"), "", 0);
}

void ZNTDesktopScreenReader::forgetWhatWaits() { waiting.clear(); }

bool ZNTDesktopScreenReader::isReached() const
{
    return watch.way() != ZNTReaderWay::None && ZNTScreenReaderWatch::accessibilityBus().isConnected();
}

bool ZNTDesktopScreenReader::canSpeak() const
{
    const QWidget* front = QApplication::activeWindow();
    if (!window || !front || !isReached())
        return false;
    return front == window.data() || watch.way() == ZNTReaderWay::Announcement ||
           !elementsWithFocus().empty();
}

void ZNTDesktopScreenReader::startPacing()
{
    if (pacing.isActive())
        return;
    pacing.start();
    handOverNext();
}

void ZNTDesktopScreenReader::handOverNext()
{
    if (announceNext())
        return;
    if (waiting.isEmpty() && announcements.isEmpty())
        pacing.stop();
    // Lines that were accepted wait until the window is in front again.
    else if (!waiting.isEmpty() && canSpeak())
        handOver(waiting.dequeue(), *QApplication::activeWindow());
}

void ZNTDesktopScreenReader::handOver(const QString& line, QWidget& front)
{
    if (watch.way() == ZNTReaderWay::Announcement) {
        // Orca 48 drops what comes from a dialog less than 0.1 s after the last announcement. Of a main
        // window it takes all, also while a dialog is in front.
        sendAnnouncement(window ? *window : front, line);
        return;
    }
    if (&front != window.data()) {
        for (auto* focused : elementsWithFocus())
            sendProperty(focused, "accessible-description", line);
        return;
    }
    auto* element = QAccessible::queryAccessibleInterface(window.data());
    sendProperty(element, "accessible-name", line);
    // Orca does not speak a name that is the same as the last one.
    sendProperty(element, "accessible-name", 0);
}

bool ZNTDesktopScreenReader::announceNext()
{
    while (!announcements.isEmpty() && announcements.head().until.hasExpired())
        announcements.dequeue();
    QWidget* front = QApplication::activeWindow();
    if (announcements.isEmpty() || !front || !isReached())
        return false;
    handOver(announcements.dequeue().words, *front);
    return true;
}
