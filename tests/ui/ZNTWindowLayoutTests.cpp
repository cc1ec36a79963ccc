#include "ZNTFindBar.h"
#include "ZNTWindowFixture.h"

// Whether everything has the room that its words need. The same tests run on screens of two and three times
// the density too.

namespace
{

constexpr int rounding = 1; // of what several rows share

std::string described(const QWidget& widget) { return QDebug::toString(&widget).toStdString(); }

/// The room that a widget needs at the width that it has; empty for widgets that scroll or lay others out.
QSize neededBy(const QWidget& widget)
{
    const QWidget* around = widget.parentWidget();
    if (qobject_cast<const QAbstractScrollArea*>(&widget) || qobject_cast<const QScrollBar*>(&widget) ||
        widget.layout() != nullptr || qobject_cast<const QComboBox*>(around) ||
        qobject_cast<const QAbstractSpinBox*>(around))
        return {}; // the field in a box has what the box has
    if (widget.hasHeightForWidth())
        return {0, widget.heightForWidth(widget.width()) - rounding};
    return widget.minimumSizeHint();
}

bool isInScrolledContent(const QWidget& widget)
{
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget()->parentWidget());
    return area != nullptr && area->viewport() == widget.parentWidget();
}

using Faults = std::vector<std::string>;

void lookAt(const QWidget& widget, Faults& faults)
{
    const QSize needed = neededBy(widget);
    if (widget.width() < needed.width() || widget.height() < needed.height())
        faults.push_back(described(widget) + " needs " + std::to_string(needed.width()) + " x " +
                         std::to_string(needed.height()));
    const QWidget& around = *widget.parentWidget();
    if (!isInScrolledContent(widget) && !around.rect().contains(widget.geometry()))
        faults.push_back(described(widget) + " sticks out of " + described(around));
    const auto* area = qobject_cast<const QScrollArea*>(&widget);
    if (area && area->widget()->width() > area->viewport()->width())
        faults.push_back(described(widget) + " must be scrolled sideways");
}

Faults cutIn(QWidget& window)
{
    Faults faults;
    if (!window.screen()->availableGeometry().contains(window.geometry()))
        faults.push_back("the window is larger than the screen");
    // Without the ring around the focus and the arrows that scroll the tabs.
    for (const QWidget* each : window.findChildren<QWidget*>())
        if (each->window() == &window && each->isVisible() && !qobject_cast<const QFocusFrame*>(each) &&
            !qobject_cast<const QToolButton*>(each))
            lookAt(*each, faults);
    return faults;
}

void expectNothingCut(QWidget& window)
{
    SCOPED_TRACE(described(window));
    QTest::qWait(1);
    Faults faults;
    // Layouts settle on later turns.
    EXPECT_TRUE(QTest::qWaitFor([&] { return (faults = cutIn(window)).empty(); }, patience))
        << testing::PrintToString(faults);
}

/// The desktop's font in points, there before the first widget.
struct DesktopFont {
    explicit DesktopFont(int points)
    {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~DesktopFont() { QApplication::setFont(before); }
    const QFont before = QApplication::font();
};

} // namespace

class ZNTWindowLayout : private DesktopFont, public ZNTWindowFixture, public testing::WithParamInterface<int>
{
protected:
    ZNTWindowLayout() : DesktopFont(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Points, ZNTWindowLayout, testing::Values(8, 11, 14, 24, 48));

TEST_P(ZNTWindowLayout, NothingIsCutOffInTheWindow)
{
    constexpr int largestUsual = 14;
    EXPECT_GE(window.textFromServer->columns(), GetParam() <= largestUsual ? 80 : 60);
    playDemo();
    expectNothingCut(window);
    window.findBar->open();
    expectNothingCut(window);
    for (const double points : {8.0, 48.0}) {
        SCOPED_TRACE(points);
        window.textFromServer->setPointSize(points);
        expectNothingCut(window);
    }
}

TEST_P(ZNTWindowLayout, NothingIsCutOffInTheSheets)
{
    expectNothingCut(open("addMacro", "alert"));
    answerAlert();
    makeMacroGroup("Greetings");
    addMacro("wave");
    window.macroTable->selectRow(0);
    const struct {
        ZNTActionName opener;
        const char* name;
    } sheets[] = {{"addMacro", "ZNTAddMacroView"},
                  {"editMacro", "ZNTEditMacroView"},
                  {"showZNTMudListController", "ZNTMudListView"},
                  {"showChannelHistory", "ZNTChannelHistoryView"},
                  {"doneRecording", "ZNTCommandRecorderView2"},
                  {"keptRecordings", "ZNTKeptRecordingsForm"},
                  {"keyboardMap", "keyboardPage"},
                  {"about", "aboutPage"},
                  {"changeFont", "fontPanel"}};
    for (const auto& [opener, name] : sheets) {
        QDialog& sheet = open(opener, name);
        expectNothingCut(sheet);
        leave(sheet);
    }
    QDialog& preferences = openPreferences();
    auto& tabs = find<QTabWidget>(preferences, "tabView");
    for (int tab = 0; tab < tabs.count(); ++tab) {
        SCOPED_TRACE(tab);
        tabs.setCurrentIndex(tab);
        expectNothingCut(preferences);
    }
}

using ZNTWindowRoom = ZNTWindowFixture;

TEST_F(ZNTWindowRoom, ControlsThatGrowAndShrinkInOpenWindowsStayWhole)
{
    const QFont before = QApplication::font();
    const auto points = [] { return QApplication::font().pointSizeF(); };
    QDialog& preferences = openPreferences();
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

TEST_F(ZNTWindowRoom, ARingTouchesNeitherTheMarkNorTheWordsInIt)
{
    const auto& box = *window.listeningBox;
    window.listeningBox->setFocus();
    const auto rings = window.findChildren<QFocusFrame*>();
    ASSERT_EQ(rings.size(), 1);
    constexpr int ringAndGap = 4;
    EXPECT_EQ(rings[0]->mapToGlobal(QPoint()).x(), box.mapToGlobal(QPoint()).x() - ringAndGap);
    EXPECT_FALSE(
        rings[0]->mask().contains(rings[0]->mapFromGlobal(box.mapToGlobal(QPoint(-1, box.height() / 2)))));
}
