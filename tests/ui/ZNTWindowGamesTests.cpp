#include "ZNTWindowFixture.h"
#include "ZNTWindowOptions.h"

/// The list of games, opened with its key.
class ZNTWindowGames : public ZNTWindowFixture
{
protected:
    enum Column { Name, Address, Port, Default, Available, WebPage };

    void open()
    {
        ASSERT_TRUE(until([&] { return window.isActiveWindow(); }));
        press(window, Qt::Key_G, Qt::ControlModifier);
        sheet = &waitForDialog("ZNTMudListView");
        table = &find<QTableView>(*sheet, "tableView");
        filter = &find<QLineEdit>(*sheet, "filterField");
    }
    QPushButton& button(const char* name) { return find<QPushButton>(*sheet, name); }
    QString cell(int row, Column column) { return table->model()->index(row, column).data().toString(); }
    void doubleClick(int row, Column column, int fromLeft)
    {
        const QRect place = table->visualRect(table->model()->index(row, column));
        const QPoint at(fromLeft < 0 ? place.center().x() : place.left() + fromLeft, place.center().y());
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, at);
    }
    bool isPicked(const char16_t* host)
    {
        return until([&] { return !sheet->isVisible(); }) && window.ipAddress->text() == QStringView(host);
    }

    QDialog* sheet = nullptr;
    QTableView* table = nullptr;
    QLineEdit* filter = nullptr;
};

TEST_F(ZNTWindowGames, UnderAFilterWhatIsSeenIsUsedAndEdited)
{
    open();
    sheet->resize(600, 440);
    QTest::qWait(1);
    EXPECT_EQ(table->horizontalScrollBar()->maximum(), 0);
    EXPECT_GT(table->columnWidth(Name), table->columnWidth(WebPage)) << "the page gives way first";
    const int all = table->model()->rowCount();
    press(*sheet, Qt::Key_F, Qt::AltModifier);
    type(*filter, "MUD 4242");
    ASSERT_EQ(table->model()->rowCount(), 1);
    press(*filter, Qt::Key_Down);
    EXPECT_TRUE(table->hasFocus());
    editCell(*table, 0, Port, "4243", "4243"); // it does not match any more, and stays
    EXPECT_TRUE(sheet->isVisible()) << "Return ended the editor only";
    press(*table, Qt::Key_Return);
    EXPECT_TRUE(isPicked(u"discworld.starturtle.net"));
    EXPECT_EQ(window.port->text(), u"4243"_s);

    open();
    EXPECT_EQ(table->model()->rowCount(), all) << "the filter was for that time";
    fill(*filter, "nothing like it");
    EXPECT_TRUE(table->accessibleDescription().startsWith(u"No game matches"_s));
    EXPECT_FALSE(button("connectButton").isEnabled() || button("deleteButton").isEnabled());
    press(*filter, Qt::Key_Return);
    EXPECT_TRUE(sheet->isVisible());
    // What is typed into an open editor belongs to its game, whichever button ends it.
    fill(*filter, "squid");
    table->setFocus();
    press(*table, Qt::Key_F2);
    type(*QApplication::focusWidget(), "Stars");
    press(*QApplication::focusWidget(), Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(until([&] { return table->model()->rowCount() == all + 1; }));
    const auto games = database.getAllMudsFromMudList();
    EXPECT_EQ(std::ranges::count(games, u"Stars", &ZNTMudList::name), 1);
    EXPECT_EQ(std::ranges::find(games, u"Stars", &ZNTMudList::name)->telnetURL, u"squidsoft.net");
    // The new game's name is being typed.
    type(*QApplication::focusWidget(), "Mine");
    pressHere(Qt::Key_Return);
    EXPECT_TRUE(until([&] { return cell(all, Name) == u"Mine"_s; }));
    EXPECT_TRUE(sheet->isVisible());
    fill(*filter, "Mine");
    press(*sheet, Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(until([&] { return filter->text().isEmpty() && table->model()->rowCount() == all + 1; }));
}

TEST_F(ZNTWindowGames, AGameIsFoundByItsLettersMadeDefaultHiddenAndRestored)
{
    open();
    const QString first = cell(0, Name);
    type(*table, "disc");
    EXPECT_TRUE(table->currentIndex().data().toString().startsWith(u"Disc"_s)) << "no cell is edited";
    const QModelIndex mark = table->model()->index(2, Default);
    table->setCurrentIndex(mark);
    press(*table, Qt::Key_Space);
    EXPECT_EQ(mark.data(Qt::CheckStateRole), Qt::Checked);
    table->selectRow(0);
    press(button("deleteButton"), Qt::Key_Space);
    EXPECT_NE(cell(0, Name), first);
    press(button("restoreButton"), Qt::Key_Space);
    EXPECT_EQ(cell(0, Name), first);
    editCell(*table, 0, Port, "x47-1y1", "4711");
    leave(*sheet, Qt::Key_Return); // the default button
    EXPECT_TRUE(window.ipAddress->hasFocus()) << "where it was";
    EXPECT_EQ(window.port->text(), u"4711"_s);
}

TEST_F(ZNTWindowGames, ADoubleClickUsesAGameButNotOnAMark)
{
    open();
    const QModelIndex mark = table->model()->index(2, Available);
    const auto isSet = [&] { return mark.data(Qt::CheckStateRole) == Qt::Checked; };
    ASSERT_TRUE(isSet());
    const QRect place = table->visualRect(mark);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place.center());
    EXPECT_FALSE(isSet()) << "the mark stands in the middle";
    doubleClick(2, Available, 3);
    EXPECT_FALSE(isSet()) << "beside it";
    EXPECT_TRUE(sheet->isVisible());
    button("editButton").click();
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"Name"_s) << "a mark has no text";
    pressHere(Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return table->hasFocus(); }));
    doubleClick(0, Address, -1);
    EXPECT_TRUE(isPicked(u"aardmud.org"));
}

TEST_F(ZNTWindowGames, AFurtherWindowPlaysTheGameAndAFailureIsSaid)
{
    std::vector<QStringList> started;
    bool isStartable = true;
    parts->controller.startProgram = [&](const QString& program, const QStringList& arguments) {
        EXPECT_EQ(program, QApplication::applicationFilePath());
        started.push_back(arguments);
        return isStartable;
    };
    open();
    const auto play = [&](const char* address, const char* port) {
        editCell(*table, 0, Address, address, address);
        editCell(*table, 0, Port, port, port);
        press(*sheet, Qt::Key_O, Qt::AltModifier);
    };
    for (const auto& [address, port] :
         {std::pair("aardmud.org", "4000"), {"-h.example", "23"}, {"::1", "1"}}) {
        SCOPED_TRACE(address);
        play(address, port);
        ASSERT_TRUE(until([&] { return !started.empty(); }));
        QList<QByteArray> words;
        for (const auto& each : started.back())
            words << each.toUtf8();
        std::vector<const char*> arguments{"zantor"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const auto parsed =
            ZNTWindowOptions::fromArguments(static_cast<int>(arguments.size()), arguments.data());
        const auto* options = std::get_if<ZNTWindowOptions>(&parsed);
        ASSERT_TRUE(options);
        EXPECT_EQ(options->host, address);
        EXPECT_EQ(std::to_string(options->port), port);
        started.clear();
    }
    for (const auto& [address, port] : {std::pair("some url", "23"), {"h.example", "0"}}) {
        play(address, port);
        EXPECT_EQ(answerAlert(), u"The game was not opened."_s);
    }
    EXPECT_TRUE(started.empty());
    isStartable = false;
    play("h.example", "1");
    EXPECT_EQ(answerAlert(), u"No new window."_s);
}

TEST_F(ZNTWindowGames, AWebPageIsShownBeforeItIsOpened)
{
    open();
    for (const auto& [page, isOpenable] :
         {std::pair("https://a.example/", true), {"file:///etc/passwd", false}}) {
        SCOPED_TRACE(page);
        editCell(*table, 0, WebPage, page, page);
        press(*sheet, Qt::Key_W, Qt::AltModifier);
        QDialog& question = waitForDialog("webAddressQuestion");
        EXPECT_EQ(find<QPlainTextEdit>(question, "webAddress").toPlainText(), QLatin1String(page));
        EXPECT_EQ(question.findChildren<QPushButton*>().size(), isOpenable ? 2 : 1);
        press(question, Qt::Key_Escape);
        EXPECT_TRUE(
            until([&] { return dialog("webAddressQuestion") == nullptr && sheet->isActiveWindow(); }));
    }
}

TEST_F(ZNTWindowGames, AGameIsPlayedWithTheSettingsOfItsSheet)
{
    playDemo();
    const auto here = window.port->text();
    open();
    editCell(*table, 0, Address, "127.0.0.1", "127.0.0.1");
    editCell(*table, 0, Port, here.toUtf8().constData(), here.toUtf8().constData());
    const auto choose = [&](const char* name, const char16_t* words) {
        press(*sheet, Qt::Key_S, Qt::AltModifier);
        QDialog& settings = waitForDialog("ZNTGameSettingsView");
        auto& box = find<QComboBox>(settings, name);
        const QString before = box.currentText();
        const int at = box.findText(QString::fromUtf16(words));
        EXPECT_GE(at, 0);
        box.setCurrentIndex(at);
        press(settings, Qt::Key_Escape);
        EXPECT_TRUE(until([&] { return sheet->isActiveWindow(); }));
        return before;
    };
    EXPECT_EQ(choose("encoding", u"UTF-8"), u"Usual: ASCII"_s);
    EXPECT_EQ(session().cfStringEncoding(), ZNTStringEncoding::Utf8) << "at once";
    EXPECT_EQ(choose("compression", u"On"), u"Usual: Off"_s);
    EXPECT_TRUE(session()._isMccpOnOff());
    leave(*sheet);
    leaveTheGame();
    EXPECT_FALSE(session()._isMccpOnOff()) << "it is that game's";
    connectAgain();
    EXPECT_TRUE(session()._isMccpOnOff());
    open();
    EXPECT_EQ(choose("encoding", u"Usual: ASCII"), u"UTF-8"_s);
    EXPECT_EQ(session().cfStringEncoding(), ZNTStringEncoding::Ascii);
}
