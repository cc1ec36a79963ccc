#include "ZNTWindowFixture.h"

#include <QDesktopServices>
#include <QTextBrowser>

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

TEST_F(ZNTWindowReach, TheManualOpensInTheWebBrowserAndWithoutOneInAWindow)
{
    QTextBrowser webBrowser;
    QDesktopServices::setUrlHandler(u"file"_s, &webBrowser, "setSource");
    press(find<QPushButton>(open("keyboardMap", "keyboardPage"), "openManual"), Qt::Key_Space);
    EXPECT_TRUE(webBrowser.source().toLocalFile().endsWith(u"/manual.html"_s));

    QDesktopServices::setUrlHandler(u"file"_s, &webBrowser, "isMissing");
    auto& manual = find<QTextBrowser>(open("manual", "manualPage"), "helpText");
    EXPECT_TRUE(manual.toPlainText().contains(u"Kept quirks"_s));
    QDesktopServices::unsetUrlHandler(u"file"_s);
}
