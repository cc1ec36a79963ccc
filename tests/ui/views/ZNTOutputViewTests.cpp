#include "ZNTOutputViewFixture.h"

using OutputView = ZNTOutputViewTest;

TEST_F(OutputView, FollowsTheEndUntilThePlayerScrollsBackAndAgainAfterwards)
{
    addLines(0, 100);
    EXPECT_EQ(topLine(), u"line 91"); // and an open line below line 99
    auto* mark = view.findChild<QPushButton*>(u"newLinesBelow"_s);
    view.pageUp();
    const auto read = topLine();
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
    view.clear();
    EXPECT_TRUE(view.followsEnd());
}

TEST_F(OutputView, WhileOneReadsFurtherUpTheLastRowsStandBelowAndTheMarkCoversNone)
{
    view.resize(view.sizeForGrid(40, 30));
    addLines(0, 200);
    // Page by page nothing is left out.
    while (topLine() != u"line 0") {
        const auto top = view.store().lineAt(view.positionAt({8, 8}));
        view.pageUp();
        ASSERT_FALSE(rectOf(top).isEmpty());
        ASSERT_NE(view.store().lineAt(view.positionAt({8, 8})), top);
    }
    const auto* mark = view.findChild<QPushButton*>(u"newLinesBelow"_s);
    addLines(200, 300);
    int bottom = 0;
    for (std::int64_t line = 0; line < view.store().endLine(); ++line) {
        const auto area = rectOf(line);
        if (area.isEmpty())
            continue;
        EXPECT_GE(area.top(), bottom) << "rows one below the other";
        bottom = area.bottom();
        EXPECT_TRUE(area.bottom() < mark->y() || area.top() > mark->geometry().bottom()) << line;
    }
    EXPECT_FALSE(rectOf(view.store().endLine() - 4).isEmpty());
}

TEST_F(OutputView, HoweverLowTheViewTheEndStaysInSightWhileOneReadsFurtherUp)
{
    addLines(0, 100);
    for (const int rows : {12, 9, 6, 5, 4}) {
        SCOPED_TRACE(rows);
        view.resize(view.sizeForGrid(40, rows));
        settle();
        view.jumpToEnd();
        view.pageUp();
        EXPECT_FALSE(view.followsEnd());
        const auto newest = rectOf(view.store().endLine() - 2);
        EXPECT_FALSE(newest.isEmpty()) << "the last line, not the empty one below it";
        EXPECT_LT(newest.bottom(), view.viewport()->height());
        EXPECT_FALSE(rectOf(view.store().lineAt(view.positionAt({8, 8}))).isEmpty());
    }
    // A last row that is higher than the pane is not cut off.
    view.resize(view.sizeForGrid(40, 10));
    auto large = coloured(u"LARGE");
    large.sets.front().font = ZNTFont{u"Menlo", 30};
    view.append(large);
    settle();
    EXPECT_LE(rectOf(view.store().endLine() - 1).bottom(), view.viewport()->height());
}

TEST_F(OutputView, AClickOnAWebAddressAsksOnlyOnceThePlayerWantsIt)
{
    view.append(coloured(u"See http://a.example/b, you.\n"));
    settle();
    QStringList clicked;
    QObject::connect(&view, &ZNTOutputView::webAddressClicked, &view,
                     [&](const QString& address) { clicked << address; });
    const auto picture = view.grab().toImage();
    clickAcross(pointOf(10), pointOf(10));
    EXPECT_EQ(clicked, QStringList());
    view.setWebLinks(true);
    press(Qt::Key_End, Qt::ControlModifier);
    settle();
    EXPECT_NE(view.grab().toImage(), picture) << "underlined";
    clickAcross(pointOf(5), pointOf(12)); // selects
    const auto beside = rectOf(0, 27).center() + QPoint(60, 0);
    for (const auto point : {pointOf(3), pointOf(22), beside})
        clickAcross(point, point);
    EXPECT_EQ(clicked, QStringList());
    for (const int offset : {4, 21})
        clickAcross(pointOf(offset), pointOf(offset));
    EXPECT_EQ(clicked, QStringList(2, u"http://a.example/b"_s));
}

TEST_F(OutputView, TheTimeOfALineIsThatOfTheLineWhereThePlayerIs)
{
    view.activateWindow();
    EXPECT_EQ(view.timeOfLineInWords(), QString());
    const QDateTime noon(QDate(2026, 3, 4), QTime(12, 0));
    std::uint32_t now = 0;
    const auto isAt = [&](const QDateTime& time) {
        now = static_cast<std::uint32_t>(time.toSecsSinceEpoch());
    };
    view.setClock([&] { return now; });
    const std::pair<QDateTime, const char16_t*> sent[] = {
        {noon.addDays(-1), u"yesterday\n"}, {noon, u"prompt> "}, {noon.addSecs(61), u"look\n\n"}};
    for (const auto& [time, text] : sent) {
        isAt(time);
        view.append(coloured(text));
    }
    settle();
    EXPECT_EQ(view.timeOfLineInWords(), u"12:00:00, prompt> look"_s) << "when the line began";
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(view.timeOfLineInWords(), u"2026-03-03 12:00:00, yesterday"_s);
    view.clearFocus();
    EXPECT_EQ(view.timeOfLineInWords(), u"12:00:00, prompt> look"_s);
    view.select(2, 4);
    EXPECT_EQ(view.timeOfLineInWords(), u"2026-03-03 12:00:00, yesterday"_s);
}

TEST_F(OutputView, ASessionBeginsOnALineOfItsOwnThatIsInNoText)
{
    view.beginSession();
    view.append(coloured(u"Goodbye.\n> "));
    view.beginSession();
    view.append(coloured(u"Welcome.\n"));
    view.beginSession(); // on a line of its own already
    view.append(coloured(u"Again.\n"));
    settle();
    EXPECT_EQ(everything(view.store()), u"Goodbye.\n> Welcome.\nAgain.\n");
    EXPECT_EQ(view.store().line(2).text, u"Welcome.");
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
    EXPECT_EQ(rectOf(1).height(), large.height()) << "as high as the larger of the two";
    EXPECT_EQ(rectOf(1).width(), small.width());
    EXPECT_EQ(rectOf(1, 5).width(), large.width());
    for (int offset = 0; offset < 10; ++offset)
        EXPECT_EQ(view.positionAt(rectOf(1, offset).center()), view.store().line(1).start + offset);
    view.setPointSize(36);
    settle();
    EXPECT_NEAR(rectOf(0).height(), small.height() * 1.5, 2);
    view.resetZoom();
    EXPECT_EQ(rectOf(0), small) << "in the size that was picked";
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
    for (const double points : {ZNTOutputView::largestPointSize, ZNTOutputView::smallestPointSize}) {
        view.setPointSize(points < 10 ? 1 : 100);
        EXPECT_EQ(view.pointSize(), points);
        settle();
        EXPECT_EQ(topLine(), read);
    }
}

TEST_F(OutputView, TypedKeysGoToTheCommandLineAndReadingKeysStay)
{
    addLines(0, 50);
    QString forwarded;
    QObject::connect(&view, &ZNTOutputView::keyForCommandLine, &view, [&](QKeyEvent* event) {
        forwarded += event->text().isEmpty() ? QString::number(event->key()) : event->text();
    });
    press(Qt::Key_L);
    press(Qt::Key_8, Qt::KeypadModifier);
    press(Qt::Key_Return);
    EXPECT_EQ(forwarded, u"l8\r"_s);
    forwarded.clear();

    press(Qt::Key_Up);
    EXPECT_EQ(lineAtCaret(), u"line 49");
    press(Qt::Key_PageUp);
    EXPECT_EQ(lineAtCaret(), u"line 40");
    EXPECT_EQ(forwarded, QString());
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&view, &escape);
    EXPECT_FALSE(escape.isAccepted()) << "left to the window";
}

TEST_F(OutputView, SelectsByMouseAndKeyboardAndCopiesPlainText)
{
    view.append(coloured(u"The \u4F60\u7AD9 guard\u0301 stands here.\r\nSecond line\n\rthird\n"));
    settle();
    const auto start = view.store().start();

    clickAcross(pointOf(start + 4), pointOf(view.store().line(1).start + 6));
    EXPECT_EQ(view.selectedText().toStdU16String(), u"\u4F60\u7AD9 guard\u0301 stands here.\nSecond");

    mouse(QEvent::MouseButtonDblClick, pointOf(start + 8));
    EXPECT_EQ(view.selectedText().toStdU16String(), u"guard\u0301");
    for (const auto type : {QEvent::MouseButtonRelease, QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
        mouse(type, pointOf(start + 8));
    EXPECT_EQ(view.selectedText().toStdU16String(), u"The \u4F60\u7AD9 guard\u0301 stands here.\n");

    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText().toStdU16String(), u"The \u4F60\u7AD9 guard\u0301 stands here.\nSecond");

    press(Qt::Key_A, Qt::ControlModifier);
    addLines(0, 3); // what comes later does not join in
    press(Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdU16String(),
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

TEST_F(OutputView, FindSelectsTheNearestAboveAndShowsWhatItSelects)
{
    addLines(0, 500);
    for (int typed = 0; typed < 2; ++typed) { // the same again stays
        view.find(u"LINE 49"_s);
        EXPECT_EQ(lineAtCaret(), u"line 499");
    }
    view.findNext();
    EXPECT_EQ(lineAtCaret(), u"line 49");
    EXPECT_FALSE(view.characterRect(view.caret()).isEmpty());
    settle();
    EXPECT_EQ(view.findStatus().count, 11); // 49 and 490 to 499
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
