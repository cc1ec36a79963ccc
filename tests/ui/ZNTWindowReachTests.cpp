#include "ZNTWindowFixture.h"

#include <QAction>
#include <map>

using ZNTWindowReach = ZNTWindowFixture;

TEST_F(ZNTWindowReach, NoShortcutHasTwoMeanings)
{
    std::map<QString, std::string> keys;
    for (const QAction* each : window.findChildren<QAction*>())
        for (const QKeySequence& key : each->shortcuts()) {
            const auto [other, isNew] = keys.emplace(key.toString(), each->text().toStdString());
            EXPECT_TRUE(isNew) << each->text().toStdString() << " has the keys of " << other->second;
        }
    EXPECT_GT(keys.size(), 40U);
}
