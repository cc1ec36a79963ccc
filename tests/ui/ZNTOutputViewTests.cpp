#include "ZNTOutputViewFixture.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QImage>
#include <QPushButton>

#include <set>

namespace
{

using OutputView = ZNTOutputViewTest;

TEST_F(OutputView, FollowsTheEndUntilThePlayerScrollsBackAndAgainAfterwards)
{
    addLines(0, 100);
    EXPECT_EQ(topLine(), u"line 91"); // and an open line below line 99
    auto* mark = view.findChild<QPushButton*>(u"newLinesBelow"_s);
    EXPECT_FALSE(mark->isVisible());

    view.pageUp();
    const auto read = topLine();
    EXPECT_FALSE(rectOf(91).isEmpty()) << "the last one of the page";
    EXPECT_TRUE(rectOf(92).isEmpty());
    addLines(100, 400);
    EXPECT_EQ(topLine(), read);
    ASSERT_TRUE(mark->isVisible());
    EXPECT_TRUE(mark->accessibleName().contains(u"300 new lines"_s));
    mark->click();
    EXPECT_FALSE(mark->isVisible());
    addLines(400, 401);
    EXPECT_EQ(topLine(), u"line 392");

    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(topLine(), u"line 0");
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(view.followsEnd());
    view.verticalScrollBar()->setValue(200);
    EXPECT_EQ(topLine(), u"line 200");
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    EXPECT_TRUE(view.followsEnd());

    view.pageUp();
    view.clear();
    EXPECT_TRUE(view.followsEnd());
}

TEST_F(OutputView, WhileOneReadsFurtherUpTheLastRowsStandBelowAndTheMarkCoversNone)
{
    view.resize(view.sizeForGrid(40, 30));
    addLines(0, 200);
    view.pageUp();
    addLines(200, 300);
    const auto* mark = view.findChild<QPushButton*>(u"newLinesBelow"_s);
    int bottom = 0;
    for (auto line = view.store().lineAt(view.positionAt({8, 8})); line < view.store().endLine(); ++line) {
        const auto area = rectOf(line);
        if (area.isEmpty())
            continue;
        EXPECT_GE(area.top(), bottom) << "rows one below the other";
        bottom = area.bottom();
        EXPECT_TRUE(area.bottom() < mark->y() || area.top() > mark->geometry().bottom()) << line;
    }
    EXPECT_FALSE(rectOf(view.store().endLine() - 4).isEmpty());

    // Page by page nothing is left out.
    std::set<std::int64_t> seen;
    for (int page = 0; page < 20; ++page) {
        const auto top = view.store().lineAt(view.positionAt({8, 8}));
        for (auto line = top; line < view.store().endLine() && !rectOf(line).isEmpty(); ++line)
            seen.insert(line);
        view.pageUp();
    }
    EXPECT_EQ(*seen.begin(), 0);
    const auto read = static_cast<std::int64_t>(seen.size());
    EXPECT_EQ(*std::prev(seen.lower_bound(read)), read - 1) << "without a gap";
    EXPECT_GT(read, 160);
}

TEST_F(OutputView, ASessionBeginsOnALineOfItsOwnBelowARuleThatIsInNoText)
{
    view.clearFocus();
    view.beginSession();
    view.append(coloured(u"Goodbye.\n> "));
    view.beginSession();
    view.append(coloured(u"Welcome.\n"));
    view.beginSession(); // on a line of its own already
    view.append(coloured(u"Again.\n"));
    settle();
    EXPECT_EQ(everything(view.store()), u"Goodbye.\n> Welcome.\nAgain.\n");
    const auto image = view.viewport()->grab().toImage();
    const auto hasRuleAbove = [&](std::int64_t line) {
        const int top = rectOf(line).top();
        for (int y = std::max(top - 10, 0); y < top; ++y)
            if (image.pixelColor(image.width() / 2, y).lightness() > 100)
                return true;
        return false;
    };
    EXPECT_FALSE(hasRuleAbove(0)) << "before the first there is nothing to set apart";
    EXPECT_FALSE(hasRuleAbove(1));
    EXPECT_TRUE(hasRuleAbove(2));
    EXPECT_TRUE(hasRuleAbove(3));
    EXPECT_EQ(view.positionAt(rectOf(3).center()), view.store().line(3).start);
}

TEST_F(OutputView, TextKeepsItsFontAndSizeAndZoomScalesAll)
{
    const auto inSize = [](std::u16string_view text, double points) {
        auto made = coloured(text);
        made.sets.front().font = ZNTFont{u"Menlo", points};
        return made;
    };
    view.resize(view.sizeForGrid(60, 20));
    view.append(inSize(u"first\nboth ", 12));
    QFont larger = view.textFont();
    larger.setPointSizeF(24);
    view.setTextFont(larger);
    view.append(inSize(u"large\nlarge\n", 24));
    settle();
    const auto small = rectOf(0), large = rectOf(2);
    EXPECT_NEAR(large.height(), 2 * small.height(), 3);
    EXPECT_NEAR(large.width(), 2 * small.width(), 2);
    EXPECT_EQ(rectOf(1).height(), large.height()) << "as high as the larger of the two";
    EXPECT_EQ(rectOf(1).width(), small.width());
    EXPECT_EQ(rectOf(1, 5).width(), large.width());
    EXPECT_NEAR(rectOf(1, 5).left() - rectOf(1).left(), 5 * small.width(), 5);
    for (int offset = 0; offset < 10; ++offset)
        EXPECT_EQ(view.positionAt(rectOf(1, offset).center()), view.store().line(1).start + offset);
    view.setPointSize(36);
    settle();
    EXPECT_NEAR(rectOf(0).height(), small.height() * 1.5, 2);
    EXPECT_NEAR(rectOf(2).height(), large.height() * 1.5, 2);
    view.resetZoom();
    EXPECT_EQ(rectOf(0), small) << "in the size that was picked";

    // Text in two sizes wraps by what its cells really take.
    view.append(inSize(std::u16string(40, u'x'), 12));
    view.append(inSize(u" " + std::u16string(15, u'y') + u" end\n", 24));
    settle();
    const auto word = static_cast<int>(view.store().line(3).text.find(u'y'));
    EXPECT_GT(rectOf(3, word).top(), rectOf(3).top());
    EXPECT_LE(rectOf(3, word + 18).right(), view.viewport()->width());
}

TEST_F(OutputView, AFloodIsPaintedSeldomAndTheEndOfItShows)
{
    struct Counter : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint;
            return false;
        }
    } counter;
    view.viewport()->installEventFilter(&counter);
    QElapsedTimer elapsed;
    elapsed.start();
    for (int line = 0; line < 3000; ++line) {
        view.append(coloured(u"flood\n"));
        view.scrollToEnd();
        QApplication::processEvents();
    }
    EXPECT_LE(counter.paints, elapsed.elapsed() / 16 + 4);
    settle();
    EXPECT_FALSE(view.characterRect(view.store().end()).isEmpty());
}

TEST_F(OutputView, KeepsItsPlaceWhenWidthAndSizeChange)
{
    for (int line = 0; line < 3000; ++line)
        view.append(coloured(u"number " + QString::number(line).toStdU16String() +
                             u" of the many lines that wrap in a narrow window but not in a wide one\n"));
    settle();
    view.scrollToPosition(view.store().line(1500).start);
    const auto read = topLine();
    for (const int columns : {100, 25, 60}) {
        view.resize(view.sizeForGrid(columns, 10));
        settle();
        EXPECT_EQ(topLine(), read);
    }
    view.setPointSize(100);
    EXPECT_EQ(view.pointSize(), ZNTOutputView::largestPointSize);
    settle();
    EXPECT_EQ(topLine(), read);
    view.jumpToEnd();
    view.setPointSize(1);
    EXPECT_EQ(view.pointSize(), ZNTOutputView::smallestPointSize);
    settle();
    EXPECT_FALSE(view.characterRect(view.store().end()).isEmpty()) << "it still follows the end";
}

TEST_F(OutputView, TypedKeysGoToTheCommandLineAndReadingKeysStay)
{
    addLines(0, 50);
    QString forwarded;
    QObject::connect(&view, &ZNTOutputView::keyForCommandLine, &view, [&](QKeyEvent* event) {
        forwarded += event->text().isEmpty() ? QString::number(event->key()) : event->text();
    });
    press(Qt::Key_L, {}, u"l"_s);
    press(Qt::Key_AsciiTilde, Qt::ShiftModifier, u"~"_s);
    press(Qt::Key_8, Qt::KeypadModifier, u"8"_s);
    press(Qt::Key_Return, {}, u"\r"_s);
    EXPECT_EQ(forwarded, u"l~8\r"_s);
    forwarded.clear();

    press(Qt::Key_Up);
    EXPECT_EQ(lineAtCaret(), u"line 49");
    press(Qt::Key_PageUp);
    EXPECT_EQ(lineAtCaret(), u"line 40");
    press(Qt::Key_End);
    press(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(view.caret() - view.store().line(40).start, 5); // at the number
    EXPECT_EQ(forwarded, QString());

    // No trap: what the view has no use for is left to the window.
    for (const int key : {Qt::Key_Escape, Qt::Key_F3}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&view, &event);
        EXPECT_FALSE(event.isAccepted());
    }
}

TEST_F(OutputView, SelectsByMouseAndKeyboardAndCopiesPlainText)
{
    view.append(coloured(u"The \u4F60\u7AD9 guard\u0301 stands here.\r\nSecond line\n\rthird\n"));
    settle();
    const auto start = view.store().start();
    auto* clipboard = QApplication::clipboard();

    mouse(QEvent::MouseButtonPress, pointOf(start + 4));
    mouse(QEvent::MouseMove, pointOf(view.store().line(1).start + 6));
    mouse(QEvent::MouseButtonRelease, pointOf(view.store().line(1).start + 6));
    EXPECT_EQ(view.selectedText().toStdU16String(), u"\u4F60\u7AD9 guard\u0301 stands here.\nSecond");

    mouse(QEvent::MouseButtonDblClick, pointOf(start + 8));
    EXPECT_EQ(view.selectedText().toStdU16String(), u"guard\u0301");
    mouse(QEvent::MouseButtonRelease, pointOf(start + 8));
    mouse(QEvent::MouseButtonPress, pointOf(start + 8));
    mouse(QEvent::MouseButtonRelease, pointOf(start + 8));
    EXPECT_EQ(view.selectedText().toStdU16String(), u"The \u4F60\u7AD9 guard\u0301 stands here.\n");

    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_FALSE(view.hasSelection());
    press(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text().toStdU16String(), u"The \u4F60\u7AD9 guard\u0301 stands here.\nSecond");

    press(Qt::Key_A, Qt::ControlModifier);
    addLines(0, 3); // what comes later does not join in
    press(Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text().toStdU16String(),
              u"The \u4F60\u7AD9 guard\u0301 stands here.\nSecond line\nthird\n");
}

TEST_F(OutputView, ASelectionSurvivesTheLossOfWhatIsSelected)
{
    view.append(coloured(std::u16string(500'000, u'x')));
    view.selectAll();
    view.setMemoryLimit(1 << 18);
    EXPECT_EQ(view.selectedText().size(), view.store().end() - view.store().start());
    view.clear();
    EXPECT_FALSE(view.hasSelection());
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(view.caret(), view.store().end());
}

TEST_F(OutputView, FindSelectsTheNearestAboveGoesRoundAndCounts)
{
    addLines(0, 500);
    view.find(u"LINE 49"_s);
    settle();
    EXPECT_EQ(view.findStatus().count, 11); // 49 and 490 to 499
    EXPECT_EQ(view.findStatus().current, 11);
    view.find(u"LINE 49"_s); // typing on, or the same again, stays
    EXPECT_EQ(lineAtCaret(), u"line 499");
    view.findNext();
    EXPECT_EQ(lineAtCaret(), u"line 49");
    EXPECT_FALSE(view.characterRect(view.caret()).isEmpty());
    EXPECT_TRUE(view.findStatus().wentRound);
    view.findPrevious();
    view.findPrevious();
    EXPECT_EQ(lineAtCaret(), u"line 498");
    view.endFind();
    EXPECT_FALSE(view.findStatus().isCounting);
}

TEST_F(OutputView, EveryCharacterStandsInItsColumn)
{
    view.append(coloured(u"\u4F60\u7AD9\u5728|\nabcdef|\n\u2605\u2605\u2605|\ta\u0301\u0302b\n"));
    settle();
    const auto barOf = [&](int line) {
        const auto content = view.store().line(line);
        return view.characterRect(content.start + static_cast<std::int64_t>(content.text.find(u'|'))).left();
    };
    EXPECT_EQ(barOf(0), barOf(1));
    view.setAmbiguousWidth(znt::AmbiguousWidth::Wide);
    settle();
    EXPECT_EQ(barOf(2), barOf(1));
    // What is drawn at a place is what is found at that place.
    for (auto at = view.store().start(); at < view.store().end();) {
        const auto area = view.characterRect(at);
        ASSERT_FALSE(area.isEmpty());
        ASSERT_EQ(view.positionAt(area.center()), at);
        view.select(at, at);
        press(Qt::Key_Right);
        const auto next = view.caret();
        ASSERT_GT(next, at);
        press(Qt::Key_Left);
        ASSERT_EQ(view.caret(), at);
        at = next;
    }
}

TEST_F(OutputView, BoldStaysBoldInAFontThatWasChosenByTheNameOfItsStyle)
{
    const QFontInfo shown(view.textFont());
    view.setTextFont(QFontDatabase::font(shown.family(), shown.styleName(), 12));
    view.clearFocus();
    auto bold = coloured(u"MMMMMMMM\n");
    bold.sets.front().font = ZNTFont{u"Menlo-Bold", 12};
    view.append(bold);
    view.append(coloured(u"MMMMMMMM\n"));
    settle();
    const auto image = view.viewport()->grab().toImage();
    const auto drawn = [&](int line) {
        const auto area = rectOf(line);
        return image.copy(area.left(), area.top(), 8 * area.width(), area.height());
    };
    EXPECT_NE(drawn(0), drawn(1));
}

} // namespace
