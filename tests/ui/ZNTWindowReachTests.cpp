#include "ZNTWindowFixture.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <map>
#include <set>

using ZNTWindowReach = ZNTWindowFixture;

TEST_F(ZNTWindowReach, NoMenuHasALetterTwiceAndNoShortcutTwoMeanings)
{
    std::map<QString, std::string> keys;
    const std::function<void(const QMenu&)> look = [&](const QMenu& menu) {
        std::set<QChar> letters;
        for (const QAction* action : menu.actions()) {
            if (action->isSeparator())
                continue;
            const QString text = action->text();
            const qsizetype at = text.indexOf(QLatin1Char('&'));
            EXPECT_TRUE(at >= 0 && letters.insert(text.at(at + 1).toLower()).second) << text.toStdString();
            for (const QKeySequence& key : action->shortcuts()) {
                const auto [other, isNew] = keys.emplace(key.toString(), text.toStdString());
                EXPECT_TRUE(isNew) << text.toStdString() << " has the keys of " << other->second;
            }
            if (action->menu())
                look(*action->menu());
        }
    };
    for (const QMenu* menu : parts->menu.menus())
        look(*menu);
    EXPECT_GT(keys.size(), 40U);
}
