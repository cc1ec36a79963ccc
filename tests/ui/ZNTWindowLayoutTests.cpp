#include "ZNTFindBar.h"
#include "ZNTHintedTable.h"
#include "ZNTWindowFixture.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QFocusFrame>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QToolButton>

// Whether everything has the room that its words need. The same tests run on screens of two and three times
// the density too.

namespace
{

constexpr int rounding = 1; // of what several rows share

std::string described(const QWidget& widget)
{
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const QRect place = widget.geometry();
    return u"%1 %2 \"%3\" (%4, %5, %6 x %7)"_s
        .arg(QLatin1String(widget.metaObject()->className()), widget.objectName(),
             button  ? button->text()
             : label ? label->text()
                     : QString())
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height())
        .toStdString();
}

/// The room that a widget with words needs at the width that it has; empty for widgets that scroll or show
/// nothing.
QSize neededBy(const QWidget& widget)
{
    const QWidget* around = widget.parentWidget();
    if (qobject_cast<const QComboBox*>(around) || qobject_cast<const QAbstractSpinBox*>(around))
        return {}; // the field in a box has what the box has
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool isWorded = qobject_cast<const QAbstractButton*>(&widget) ||
                          (label && !label->text().isEmpty()) || qobject_cast<const QComboBox*>(&widget) ||
                          qobject_cast<const QAbstractSpinBox*>(&widget);
    if (isWorded && (widget.hasHeightForWidth() || (label && label->wordWrap())))
        return {label ? 0 : widget.minimumSizeHint().width(),
                widget.heightForWidth(widget.width()) - rounding};
    if (isWorded)
        return widget.minimumSizeHint();
    if (qobject_cast<const QLineEdit*>(&widget))
        return {widget.fontMetrics().averageCharWidth() * 4, widget.minimumSizeHint().height()};
    return {};
}

bool isInScrolledContent(const QWidget& widget)
{
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget()->parentWidget());
    return area != nullptr && area->viewport() == widget.parentWidget();
}

/// Without the ring around the focus and the arrows that scroll the tabs.
std::vector<QWidget*> shownIn(QWidget& window)
{
    std::vector<QWidget*> shown;
    for (QWidget* each : window.findChildren<QWidget*>())
        if (each->window() == &window && each->isVisible() && !qobject_cast<QFocusFrame*>(each) &&
            !qobject_cast<QToolButton*>(each))
            shown.push_back(each);
    return shown;
}

using Faults = std::vector<std::string>;

void lookAtHeadings(const QHeaderView& header, Faults& faults)
{
    for (int section = 0; header.orientation() == Qt::Horizontal && section < header.count(); ++section) {
        const QString heading = header.model()->headerData(section, Qt::Horizontal).toString();
        if (header.sectionSize(section) < header.fontMetrics().horizontalAdvance(heading))
            faults.push_back("the heading " + heading.toStdString() + " is cut to " +
                             std::to_string(header.sectionSize(section)));
    }
}

void lookAt(const QWidget& widget, Faults& faults)
{
    const QSize needed = neededBy(widget);
    if (widget.width() < needed.width() || widget.height() < needed.height())
        faults.push_back(described(widget) + " needs " + std::to_string(needed.width()) + " x " +
                         std::to_string(needed.height()));
    const QWidget& around = *widget.parentWidget();
    if (!isInScrolledContent(widget) && !around.rect().contains(widget.geometry()))
        faults.push_back(described(widget) + " sticks out of " + described(around));
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget))
        lookAtHeadings(*header, faults);
    const auto* area = qobject_cast<const QScrollArea*>(&widget);
    if (area && area->widget()->width() > area->viewport()->width())
        faults.push_back(described(widget) + " must be scrolled sideways");
}

Faults cutIn(QWidget& window)
{
    Faults faults;
    if (!window.screen()->availableGeometry().contains(window.geometry()))
        faults.push_back("the window is larger than the screen");
    const auto shown = shownIn(window);
    for (auto one = shown.begin(); one != shown.end(); ++one) {
        lookAt(**one, faults);
        for (auto other = one + 1; other != shown.end(); ++other)
            if ((*one)->parentWidget() == (*other)->parentWidget() &&
                (*one)->geometry().intersects((*other)->geometry()))
                faults.push_back(described(**one) + " and " + described(**other) + " overlap");
    }
    return faults;
}

void expectNothingCut(QWidget& window)
{
    SCOPED_TRACE(described(window));
    EXPECT_GT(shownIn(window).size(), 2U);
    QTest::qWait(1);
    Faults faults;
    // Layouts settle on later turns.
    const bool isWhole = QTest::qWaitFor([&] { return (faults = cutIn(window)).empty(); }, 2'000);
    EXPECT_TRUE(isWhole);
    for (const std::string& fault : faults)
        ADD_FAILURE() << fault;
}

/// The desktop's font in points, there before the first widget.
class DesktopFont
{
protected:
    explicit DesktopFont(int points) : before(QApplication::font())
    {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~DesktopFont() { QApplication::setFont(before); }

private:
    QFont before;
};

} // namespace

class ZNTWindowLayout : DesktopFont, public ZNTWindowFixture, public testing::WithParamInterface<int>
{
protected:
    ZNTWindowLayout() : DesktopFont(GetParam()) {}

    void expectSheetWhole(ZNTActionName opener, const char* name)
    {
        action(opener).trigger();
        QDialog& sheet = waitForDialog(name);
        expectNothingCut(sheet);
        press(sheet, Qt::Key_Escape);
        EXPECT_TRUE(until([name] { return dialog(name) == nullptr; })) << name;
    }
};

INSTANTIATE_TEST_SUITE_P(Points, ZNTWindowLayout, testing::Values(8, 11, 14, 24, 48));

TEST_P(ZNTWindowLayout, NothingIsCutOffInTheWindow)
{
    constexpr int largestUsual = 14;
    EXPECT_GE(window.textFromServer->columns(), GetParam() <= largestUsual ? 80 : 60);
    expectNothingCut(window);
    playDemo();
    expectNothingCut(window);
    window.findBar->open();
    expectNothingCut(window);
    for (const double points : {8.0, 14.0, 24.0, 48.0}) {
        SCOPED_TRACE(points);
        window.textFromServer->setPointSize(points);
        expectNothingCut(window);
    }
}

TEST_P(ZNTWindowLayout, MenusFitOnTheScreen)
{
    const QRect screen = window.screen()->geometry();
    const auto menus = window.menuBar()->findChildren<QMenu*>();
    ASSERT_GE(menus.size(), parts->menu.menus().size());
    for (QMenu* menu : menus) {
        SCOPED_TRACE(menu->title().toStdString());
        menu->popup(screen.topLeft());
        ASSERT_TRUE(until([menu] { return menu->isVisible(); }));
        EXPECT_TRUE(screen.contains(menu->geometry()));
        EXPECT_GE(menu->width(), menu->sizeHint().width()); // what is too high scrolls
        menu->close();
    }
}

TEST_P(ZNTWindowLayout, NothingIsCutOffInTheSheets)
{
    action("addMacro").trigger();
    expectNothingCut(waitForDialog("alert"));
    answerAlert();
    makeMacroGroup("Greetings");

    expectSheetWhole("addMacro", "ZNTAddMacroView");
    action("addMacro").trigger();
    find<QPushButton>(waitForDialog("ZNTAddMacroView"), "doneButton").click();
    window.macroTable->selectRow(0);
    expectSheetWhole("editMacro", "ZNTEditMacroView");
    expectSheetWhole("showZNTMudListController", "ZNTMudListView");
    expectSheetWhole("doneRecording", "ZNTCommandRecorderView2");
    expectSheetWhole("keyboardMap", "keyboardPage");
    expectSheetWhole("about", "aboutPage");
}

TEST_P(ZNTWindowLayout, NothingIsCutOffInThePreferences)
{
    action("showPreferencesView").trigger();
    QDialog& preferences = waitForDialog("PreferencesView");
    auto& tabs = find<QTabWidget>(preferences, "tabView");
    for (int tab = 0; tab < tabs.count(); ++tab) {
        SCOPED_TRACE(tabs.tabText(tab).toStdString());
        tabs.setCurrentIndex(tab);
        expectNothingCut(preferences);
    }
}

using ZNTWindowRoom = ZNTWindowFixture;

TEST_F(ZNTWindowRoom, ControlsThatGrowAndShrinkInOpenWindowsStayWhole)
{
    const QFont before = QApplication::font();
    const auto points = [] { return QApplication::font().pointSizeF(); };
    action("showPreferencesView").trigger();
    QDialog& preferences = waitForDialog("PreferencesView");
    for (const double wanted : {24.0, 48.0, 8.0}) {
        SCOPED_TRACE(wanted);
        while (points() < wanted)
            action("controlsLarger").trigger();
        while (points() > wanted)
            action("controlsSmaller").trigger();
        expectNothingCut(window);
        expectNothingCut(preferences);
    }
    QApplication::setFont(before);
}

TEST_F(ZNTWindowRoom, TheOutputHasTheEightyColumnsThatGamesAreMadeForOnASmallScreen)
{
    window.resize(1024, 768);
    ASSERT_TRUE(until([&] { return window.width() == 1024; }));
    EXPECT_GE(window.textFromServer->columns(), 80);
    EXPECT_TRUE(window.sidePanel->isVisible());
    expectNothingCut(window);
    // Larger windows give the rest to the output, smaller ones take it from there.
    window.resize(900, 700);
    ASSERT_TRUE(until([&] { return window.textFromServer->columns() < 80; }));
    expectNothingCut(window);
    window.resize(1024, 768);
    EXPECT_TRUE(until([&] { return window.textFromServer->columns() >= 80; }));
}

TEST_F(ZNTWindowRoom, AnEmptyOutputSaysHowToBeginAndHoldsNoText)
{
    ZNTOutputView& view = *window.textFromServer;
    EXPECT_TRUE(view.accessibleDescription().contains(u"Pick a game with Ctrl+G"_s));
    EXPECT_EQ(output(), QString());
    playDemo();
    EXPECT_EQ(view.accessibleDescription(), QString());
    view.clear();
    EXPECT_EQ(view.accessibleDescription(), QString()); // the game goes on
    action("connectToServer").trigger();
    EXPECT_TRUE(until([&] { return session().state() == ZNTSessionState::Idle; }));
    view.clear();
    EXPECT_TRUE(view.accessibleDescription().contains(u"Pick a game"_s));
}

TEST_F(ZNTWindowRoom, AnEmptyListSaysWhyItIsEmpty)
{
    ZNTHintedTable& macros = *window.macroTable;
    EXPECT_EQ(macros.model()->rowCount(), 0);
    EXPECT_TRUE(macros.accessibleDescription().contains(u"Pick a group"_s));
    makeMacroGroup("Greetings");
    EXPECT_TRUE(macros.accessibleDescription().contains(u"no macros yet"_s));

    action("showPreferencesView").trigger();
    QDialog& preferences = waitForDialog("PreferencesView");
    auto& triggers = find<ZNTHintedTable>(preferences, "triggerTableView");
    auto& sameMacros = find<ZNTHintedTable>(preferences, "preferencesMacroTable");
    EXPECT_EQ(sameMacros.accessibleDescription(), macros.accessibleDescription());
    EXPECT_TRUE(triggers.accessibleDescription().contains(u"No triggers yet"_s));
    find<QPushButton>(preferences, "addTriggerButton").click();
    EXPECT_EQ(triggers.model()->rowCount(), 1);
    EXPECT_EQ(triggers.accessibleDescription(), QString());
    find<QPushButton>(preferences, "removeTriggerButton").click();
    EXPECT_TRUE(triggers.accessibleDescription().contains(u"No triggers yet"_s));
    press(preferences, Qt::Key_Escape);

    action("addMacro").trigger();
    find<QPushButton>(waitForDialog("ZNTAddMacroView"), "doneButton").click();
    EXPECT_TRUE(until([&] { return macros.model()->rowCount() == 1; }));
    EXPECT_EQ(macros.accessibleDescription(), QString());
    find<QComboBox>("macroComboBoxGroup").setEditText(u"Nobody's"_s);
    EXPECT_TRUE(macros.accessibleDescription().contains(u"Pick a group"_s));
}
