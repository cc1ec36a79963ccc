// What screen readers learn of fields.
#include "ZNTFocusFirst.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QStringList>
#include <QThread>
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
        for (int turn = 0; turn < 1000 && !QAccessible::isActive(); ++turn) {
            QApplication::processEvents();
            QThread::msleep(10);
        }
        Told::words.clear();
    }

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
    menu.close();
    EXPECT_EQ(Told::words.value(0), menu.objectName());
    Told::words.removeAll(menu.objectName());
    EXPECT_LE(Told::words.size(), 1) << "the field gets the focus back when the menu is closed";
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
    for (int turn = 0; turn < 1000 && !filter->hasFocus(); ++turn) {
        QApplication::processEvents();
        QThread::msleep(10);
    }
    Told::words.clear();
    list->setCurrentRow(1);
    EXPECT_EQ(Told::words, QStringList());
    list->setFocus();
    Told::words.clear();
    list->setCurrentRow(0);
    EXPECT_EQ(Told::words, QStringList{list->objectName()});
}
