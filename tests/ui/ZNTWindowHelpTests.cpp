#include "ZNTWindowFixture.h"

using ZNTWindowHelp = ZNTWindowFixture;

TEST_F(ZNTWindowHelp, TheKeyboardMapFindsAKeyByWordsAndByTheKey)
{
    QDialog& map = open("keyboardMap", "keyboardPage");
    auto& table = find<QTableView>(map, "keyTable");
    auto& filter = find<QLineEdit>(map, "keyFilter");
    ASSERT_TRUE(filter.hasFocus());
    const int all = table.model()->rowCount();
    EXPECT_EQ(announced.words, QStringList{u"Keyboard map. %1 rows"_s.arg(all)});
    map.resize(map.width() * 2 / 3, map.height());
    EXPECT_TRUE(until([&] { return table.rowHeight(0) < table.rowHeight(all - 4); })) << "long words wrap";
    EXPECT_EQ(table.horizontalScrollBar()->maximum(), 0);
    // The words, the name in the first row (empty for no row), and whether it is the only row.
    for (const auto& [words, first, isOnly] : {std::tuple("ctrl+k", "Kept recordings", true),
                                               {" Ctrl + K ", "Kept recordings", true},
                                               {"F1", "Keyboard map", true},
                                               {"ctrl+comma", "Preferences", true},
                                               {"ctrl+,", "Preferences", true},
                                               {"ctrl++", "Larger text", true},
                                               {"speech SILENCE", "Silence the voice", true},
                                               {"keypad 8", "North", true},
                                               {"command line", "Go to the command line", false},
                                               {"f99", "", false},
                                               {"no such words", "", false}}) {
        SCOPED_TRACE(words);
        fill(filter, words);
        const int rows = table.model()->rowCount();
        EXPECT_LT(rows, all);
        EXPECT_TRUE(rows == 1 || !isOnly) << rows;
        EXPECT_EQ(table.model()->index(0, 0).data().toString(), QLatin1String(first));
    }
    fill(filter, "ctrl+k");
    EXPECT_TRUE(until([&] { return announced.words.constLast() == u"1 row, Kept recordings"_s; }));
    pressHere(Qt::Key_Return);
    EXPECT_TRUE(table.hasFocus() && dialog("keyboardPage")) << "Return goes to the rows";
    const QModelIndex key = table.model()->index(0, 1);
    fill(filter, "ctrl+comma");
    EXPECT_EQ(key.data().toString(), u"Ctrl+,"_s);
    EXPECT_EQ(table.model()->index(0, 1).data(Qt::AccessibleTextRole).toString(), u"Ctrl+comma"_s);
    leave(map);
}

TEST_F(ZNTWindowHelp, APageSaysItsTitleAndFirstLineOnceWhereTheCaretIs)
{
    auto& reader = find<QTextBrowser>(open("firstHourByEar", "listeningPage"), "helpText");
    EXPECT_EQ(reader.textCursor().blockFormat().headingLevel(), 0) << "the title was said";
    ASSERT_FALSE(reader.textCursor().block().text().isEmpty());
    const QStringList once{u"First hour by ear. "_s + reader.textCursor().block().text()};
    action("firstHourByEar").trigger();
    EXPECT_EQ(announced.words, once);
}

TEST_F(ZNTWindowHelp, TheHomePageIsOpenedOnlyAfterAQuestion)
{
    QDialog& about = open("about", "aboutPage");
    EXPECT_EQ(find<QLabel>(about, "aboutIcon").pixmap().deviceIndependentSize().toSize(), QSize(128, 128));
    pressHere(Qt::Key_Tab);
    for (int time = 0; time < 2; ++time) {
        pressHere(Qt::Key_Return);
        QDialog& question = waitForDialog("webAddressQuestion");
        EXPECT_TRUE(find<QPlainTextEdit>(question, "webAddress").toPlainText().startsWith(u"https://"_s));
        press(question, Qt::Key_Escape);
        EXPECT_TRUE(until([&] { return about.isActiveWindow(); })) << "back where the link is";
    }
}

TEST_F(ZNTWindowHelp, AFontIsTakenWithOkAndLeftWithCancel)
{
    const QFont before = window.textFromServer->textFont();
    for (const Qt::Key answer : {Qt::Key_Escape, Qt::Key_Return}) {
        QDialog& panel = open("changeFont", "fontPanel");
        auto& list = find<QListView>(panel, "fontList");
        EXPECT_EQ(list.currentIndex().data().toString(), QFontInfo(before).family());
        auto& filter = find<QLineEdit>(panel, "fontFilter");
        fill(filter, "no such font");
        EXPECT_EQ(list.model()->rowCount(), 0);
        fill(filter, "MONO");
        EXPECT_GT(list.model()->rowCount(), 0);
        auto& sample = find<ZNTOutputView>(panel, "fontSample");
        find<QSpinBox>(panel, "fontSize").setValue(20);
        EXPECT_EQ(sample.textFont().pointSize(), 20);
        EXPECT_EQ(window.textFromServer->textFont(), before) << "only the sample changes";
        press(filter, answer);
        EXPECT_TRUE(until([] { return dialog("fontPanel") == nullptr; }));
    }
    EXPECT_EQ(window.textFromServer->textFont().pointSize(), 20);
}

TEST_F(ZNTWindowHelp, WhatShiftF1ShowsIsAnnounced)
{
    press(*window.ipAddress, Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_EQ(announced.words, QStringList{window.ipAddress->whatsThis()});
    pressHere(Qt::Key_Escape);
}

TEST_F(ZNTWindowHelp, AnAlertHasItsTitleOnceAndTheNameOfTheProgram)
{
    alert.showMessage(u"Game", u"Gone.");
    auto& box = static_cast<QMessageBox&>(waitForDialog("alert"));
    EXPECT_EQ(box.windowTitle(), u"Zantor"_s);
    EXPECT_EQ(box.text(), u"Game"_s);
    EXPECT_EQ(box.icon(), QMessageBox::Warning);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&box)->text(QAccessible::Name).contains(u"Game"_s));
    answerAlert();
    alert.showSuccess(u"Kept", u"All of it.");
    EXPECT_EQ(static_cast<QMessageBox&>(waitForDialog("alert")).icon(), QMessageBox::Information);
    answerAlert();
}

TEST_F(ZNTWindowHelp, NoShortcutHasTwoMeanings)
{
    std::map<QString, std::string> keys;
    for (const QAction* each : window.findChildren<QAction*>())
        for (const QKeySequence& key : each->shortcuts()) {
            const auto [other, isNew] = keys.emplace(key.toString(), each->text().toStdString());
            EXPECT_TRUE(isNew) << each->text().toStdString() << " has the keys of " << other->second;
        }
    EXPECT_GT(keys.size(), 40U);
}

TEST_F(ZNTWindowHelp, TheManualOpensInTheWebBrowserAndWithoutOneInAWindow)
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
