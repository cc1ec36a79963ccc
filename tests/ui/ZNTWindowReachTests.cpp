#include "ZNTWindowFixture.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTabWidget>
#include <map>
#include <set>

using ZNTWindowReach = ZNTWindowFixture;

namespace
{

std::string nameOf(const QWidget* widget) { return widget ? widget->objectName().toStdString() : "nothing"; }

std::vector<QWidget*> focusableIn(QWidget& window)
{
    std::vector<QWidget*> all;
    for (QWidget* each : window.findChildren<QWidget*>())
        if (each->window() == &window && each->isVisibleTo(&window) && each->isEnabled() &&
            (each->focusPolicy() & Qt::TabFocus) != 0 && each->focusProxy() == nullptr)
            all.push_back(each);
    return all;
}

/// The way that Tab goes, or Shift+Tab, from where the focus is until it comes back.
std::vector<QWidget*> cycle(QWidget& window, bool backwards)
{
    std::vector<QWidget*> visited;
    QWidget* const first = QApplication::focusWidget();
    for (int step = 0; step < 200; ++step) {
        QWidget* now = QApplication::focusWidget();
        visited.push_back(now);
        QTest::keyClick(now ? now : &window, backwards ? Qt::Key_Backtab : Qt::Key_Tab,
                        backwards ? Qt::ShiftModifier : Qt::NoModifier);
        if (QApplication::focusWidget() == first)
            return visited;
    }
    ADD_FAILURE() << "Tab never comes back to " << nameOf(first);
    return visited;
}

void expectReachable(QWidget& window)
{
    SCOPED_TRACE(nameOf(&window));
    for (QWidget* widget : focusableIn(window)) {
        const auto* accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr) << nameOf(widget);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << nameOf(widget) << " has no name";
        EXPECT_NE(accessible->role(), QAccessible::NoRole) << nameOf(widget);
    }
    auto forth = cycle(window, false);
    for (QWidget* widget : focusableIn(window)) {
        // One radio button stands for its group, its arrows for the others.
        if (widget->inherits("QRadioButton"))
            continue;
        EXPECT_NE(std::find(forth.begin(), forth.end(), widget), forth.end())
            << "Tab does not come to " << nameOf(widget);
    }
    auto back = cycle(window, true);
    std::reverse(back.begin() + 1, back.end());
    EXPECT_EQ(forth, back) << "Shift+Tab goes another way";
}

/// The letters that work with Alt in a window, each with what bears it.
void expectDistinctMnemonics(QWidget& window)
{
    SCOPED_TRACE(nameOf(&window));
    std::map<QChar, std::string> taken;
    const auto take = [&](const QString& text, const QString& bearer) {
        static const QRegularExpression marked(QStringLiteral("&([^&])"));
        const auto match = marked.match(QString(text).remove(QStringLiteral("&&")));
        if (!match.hasMatch())
            return;
        const auto [other, isNew] = taken.emplace(match.captured(1).at(0).toLower(), bearer.toStdString());
        EXPECT_TRUE(isNew) << text.toStdString() << " takes the letter of " << other->second;
    };
    if (auto* mainWindow = qobject_cast<QMainWindow*>(&window))
        for (const QAction* action : mainWindow->menuBar()->actions())
            take(action->text(), action->text());
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->buddy() && label->isVisibleTo(&window))
            take(label->text(), label->text());
    for (const auto* button : window.findChildren<QAbstractButton*>())
        if (button->isVisibleTo(&window))
            take(button->text(), button->text());
}

} // namespace

TEST_F(ZNTWindowReach, TabVisitsEverythingInTheWindowAndEverythingHasAName)
{
    expectReachable(window);
    expectDistinctMnemonics(window);
    playDemo();
    expectReachable(window);
    expectDistinctMnemonics(window);
}

TEST_F(ZNTWindowReach, TabVisitsEverythingInEverySheetAndTab)
{
    find<QWidget>("macroComboBoxGroup").setFocus();
    type(find<QWidget>("macroComboBoxGroup"), "Group");
    press(find<QPushButton>("createNewMacroGroup"), Qt::Key_Space);
    expectReachable(waitForDialog("alert"));
    answerAlert();

    const std::pair<QAction*, const char*> sheets[] = {
        {parts->menu.showZNTMudListController, "ZNTMudListView"},
        {parts->menu.addMacro, "ZNTAddMacroView"},
        {parts->menu.doneRecording, "ZNTCommandRecorderView2"},
        {parts->menu.keyboardMap, "keyboardPage"},
        {parts->menu.firstSteps, "firstStepsPage"},
        {parts->menu.about, "aboutPage"}};
    for (const auto& [action, name] : sheets) {
        action->trigger();
        QDialog& sheet = waitForDialog(name);
        expectReachable(sheet);
        expectDistinctMnemonics(sheet);
        press(sheet, Qt::Key_Escape);
        EXPECT_TRUE(until([name = name] { return dialog(name) == nullptr; })) << name;
    }
    parts->menu.showPreferencesView->trigger();
    QDialog& preferences = waitForDialog("PreferencesView");
    for (int tab = 0; tab < 5; ++tab) {
        SCOPED_TRACE(tab);
        find<QTabWidget>(preferences, "tabView").setCurrentIndex(tab);
        preferences.setFocus();
        find<QPushButton>(preferences, "closeButton").setFocus();
        expectReachable(preferences);
        expectDistinctMnemonics(preferences);
    }
}

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
            EXPECT_GE(at, 0) << text.toStdString() << " has no letter";
            EXPECT_TRUE(at < 0 || letters.insert(text.at(at + 1).toLower()).second) << text.toStdString();
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
