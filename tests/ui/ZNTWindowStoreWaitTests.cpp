#include "ZNTDatabaseHelper.h"
#include "ZNTStoreWaitSign.h"
#include "ZNTTestPlatform.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

namespace
{

QDialog* waitDialog()
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == QLatin1String("waitingForDatabase") && widget->isVisible())
            return qobject_cast<QDialog*>(widget);
    return nullptr;
}

TEST(ZNTStoreWait, AtTheStartAWindowSaysSoAndThePlayerCanEndIt)
{
    bool hasQuit = false;
    {
        ZNTStoreWaitWindow sign([&] { hasQuit = true; });
        EXPECT_EQ(waitDialog(), nullptr) << "there may be nothing to wait for";
        sign.keepAlive();
        QDialog* dialog = waitDialog();
        ASSERT_NE(dialog, nullptr);
        EXPECT_TRUE(dialog->accessibleName().contains(QLatin1String("another program has locked it")));
        QMetaObject::invokeMethod(dialog->findChild<QPushButton*>(), "click", Qt::QueuedConnection);
        sign.keepAlive();
        EXPECT_TRUE(hasQuit) << "what the player does is taken while it waits";
    }
    EXPECT_EQ(waitDialog(), nullptr);
}

TEST(ZNTStoreWait, InPlayTheStatusLineSaysSoAndNothingElseHappens)
{
    QLabel status(QStringLiteral("Connected"));
    ZNTStoreWaitStatus sign(status);
    bool hasHappened = false;
    QMetaObject::invokeMethod(
        &status, [&] { hasHappened = true; }, Qt::QueuedConnection);
    sign.show();
    EXPECT_TRUE(status.text().contains(QLatin1String("Waiting for the database")));
    EXPECT_FALSE(hasHappened) << "an event could call the store";
    sign.clear();
    EXPECT_EQ(status.text(), QStringLiteral("Connected"));
}

} // namespace
