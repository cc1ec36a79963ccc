#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"); // decided once, at start
    const QApplication application(argc, argv);
    // A desktop has the accessibility bus running; on a bus of its own a test must start it.
    if (auto* bus = QDBusConnection::sessionBus().interface())
        bus->startService(QStringLiteral("org.a11y.Bus"));
    return RUN_ALL_TESTS();
}
