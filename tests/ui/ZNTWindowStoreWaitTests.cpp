#include "ZNTStoreWaitSign.h"

#include <QtWidgets>
#include <algorithm>
#include <gtest/gtest.h>

TEST(ZNTStoreWait, AtTheStartAWindowSaysSoAndThePlayerCanEndIt)
{
    const auto shown = [] {
        const auto all = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(all, &QWidget::isVisible);
        return found == all.end() ? nullptr : *found;
    };
    bool hasQuit = false;
    ZNTStoreWaitWindow sign([&] { hasQuit = true; });
    EXPECT_EQ(shown(), nullptr) << "there may be nothing to wait for";
    sign.keepAlive();
    const QWidget* dialog = shown();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->accessibleName().contains(QLatin1String("another program has locked it")));
    QMetaObject::invokeMethod(dialog->findChild<QPushButton*>(), "click", Qt::QueuedConnection);
    sign.keepAlive();
    EXPECT_TRUE(hasQuit) << "what the player does is taken while it waits";
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
