// What screen readers learn of fields.
#include "ZNTDesktopScreenReader.h"
#include "ZNTFocusFirst.h"

#include <QTest>
#include <QtDBus>
#include <QtWidgets>
#include <functional>
#include <gtest/gtest.h>

namespace
{

class Told final
{
public:
    Told() : before(QAccessible::installUpdateHandler(&tell)) { words.clear(); }
    ~Told() { QAccessible::installUpdateHandler(before); }
    static inline QStringList words; ///< inserted texts, and who got the focus

private:
    static void tell(QAccessibleEvent* event)
    {
        if (event->type() == QAccessible::Focus)
            words << event->object()->objectName();
        else if (event->type() == QAccessible::TextInserted)
            words << static_cast<QAccessibleTextInsertEvent*>(event)->textInserted();
        else if (event->type() == QAccessible::TextUpdated)
            words << static_cast<QAccessibleTextUpdateEvent*>(event)->textInserted();
    }
    QAccessible::UpdateHandler before;
};

struct FocusFirst : testing::Test {
    FocusFirst()
    {
        field.setObjectName(QStringLiteral("field"));
        menu.setObjectName(QStringLiteral("menu"));
        menu.addAction(QStringLiteral("Copy"));
        field.show();
        // Qt announces nothing before the accessibility bus has answered.
        until([] { return QAccessible::isActive(); });
        Told::words.clear();
    }

    static bool until(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

    QLineEdit field;
    QMenu menu;
    const Told told;
    const ZNTFocusFirst focusFirst;
};

} // namespace

TEST_F(FocusFirst, NoLetterOfHiddenTypingIsTold)
{
    field.setEchoMode(QLineEdit::Password);
    field.insert(QStringLiteral("secret"));
    field.clear();
    field.setEchoMode(QLineEdit::Normal);
    field.insert(QStringLiteral("look"));
    EXPECT_EQ(Told::words, QStringList{QStringLiteral("look")});
}

TEST_F(FocusFirst, ARecalledTextOfTheSameLengthIsToldAsNew)
{
    const ZNTDesktopScreenReader reader; // it can send such events
    const QDBusConnection ours = ZNTScreenReaderWatch::accessibilityBus();
    if (!ours.isConnected())
        GTEST_SKIP() << "no accessibility bus";
    field.setText(QStringLiteral("exits"));
    field.activateWindow();
    field.setFocus();
    ASSERT_TRUE(until([&] { return field.hasFocus(); }));
    QDBusInterface bus(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                       QStringLiteral("org.a11y.Bus"), QDBusConnection::sessionBus());
    const QDBusReply<QString> address = bus.call(QStringLiteral("GetAddress"));
    auto listener = QDBusConnection::connectToBus(address.value(), QStringLiteral("listener"));
    QTimer heard; // it runs once the event has come
    heard.setInterval(std::chrono::hours(1));
    ASSERT_TRUE(listener.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                                 QStringLiteral("TextCaretMoved"), &heard, SLOT(start())));
    field.setText(QStringLiteral("n"));
    EXPECT_FALSE(QTest::qWaitFor([&] { return heard.isActive(); }, 200)) << "Qt tells that the caret moves";
    field.setText(QStringLiteral("s"));
    EXPECT_TRUE(until([&] { return heard.isActive(); }));
    QDBusConnection::disconnectFromBus(QStringLiteral("listener"));
}

TEST_F(FocusFirst, AFieldBehindAnOpenMenuDoesNotSeemToGetTheFocus)
{
    const auto tellFocus = [](QWidget& widget) {
        QAccessibleEvent event(&widget, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    };
    menu.popup({});
    Told::words.clear();
    tellFocus(menu);
    tellFocus(field);
    EXPECT_EQ(Told::words, QStringList{menu.objectName()});
    menu.close();
    Told::words.clear();
    tellFocus(field);
    EXPECT_EQ(Told::words, QStringList{field.objectName()});
}

TEST_F(FocusFirst, AListThatIsNarrowedDownDoesNotSeemToGetTheFocus)
{
    QWidget window;
    auto* filter = new QLineEdit(&window);
    auto* list = new QListWidget(&window);
    list->setObjectName(QStringLiteral("list"));
    list->addItems({QStringLiteral("look"), QStringLiteral("north")});
    window.show();
    window.activateWindow();
    filter->setFocus();
    until([&] { return filter->hasFocus(); });
    Told::words.clear();
    list->setCurrentRow(1);
    EXPECT_EQ(Told::words, QStringList());
    list->setFocus();
    Told::words.clear();
    list->setCurrentRow(0);
    EXPECT_EQ(Told::words, QStringList{list->objectName()});
}
