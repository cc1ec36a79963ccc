#include "ZNTWindowFixture.h"

using ZNTWindowSheets = ZNTWindowFixture;

TEST_F(ZNTWindowSheets, AnOpenDialogDoesNotKeepTheWindowOpen)
{
    playDemo(); // nor does a connection
    std::vector<bool> answers;
    const std::pair<const char*, std::function<void()>> inFront[] = {
        {"ZNTMudListView", [&] { action("showZNTMudListController").trigger(); }},
        {"PreferencesView", [&] { action("showPreferencesView").trigger(); }},
        {"alert",
         [&] { alert.askForConfirmation(u"Sure?", u"", [&](bool sure) { answers.push_back(sure); }); }}};
    for (const auto& [name, open] : inFront) {
        SCOPED_TRACE(name);
        window.show();
        window.activateWindow();
        open();
        QDialog& dialogInFront = waitForDialog(name);
        QTimer::singleShot(0, [&] { press(dialogInFront, Qt::Key_Q, Qt::ControlModifier); });
        QTimer::singleShot(2'000, &dialogInFront, [] { QApplication::exit(1); });
        EXPECT_EQ(QApplication::exec(), 0);
        EXPECT_FALSE(dialog(name) || window.isVisible());
    }
    EXPECT_EQ(answers, std::vector<bool>{false}) << "leaving is no consent";
}

TEST_F(ZNTWindowSheets, ATriggerIsEditedInTableAndPaneAndFiresOnceReloaded)
{
    enum Column { Active, Name };
    playDemo();
    press(commandLine(), Qt::Key_Comma, Qt::ControlModifier);
    QDialog& preferences = waitForDialog("PreferencesView");
    const auto pressButton = [&](const char* name) {
        press(find<QPushButton>(preferences, name), Qt::Key_Space);
    };
    auto& table = find<QTableView>(preferences, "triggerTableView");
    auto& pane = find<QPlainTextEdit>(preferences, "triggerTextView");
    pressButton("addTriggerButton");
    table.setCurrentIndex(table.model()->index(0, Active));
    EXPECT_EQ(pane.toPlainText(), u"A %1 kicks you hard!~\nkick %1"_s);
    press(table, Qt::Key_Space);
    editCell(table, 0, Name, "Echo", "Echo");
    pane.selectAll();
    type(pane, "ping (\\w+)~");
    press(pane, Qt::Key_Return);
    type(pane, "say pong %1");
    pressButton("saveTriggerButton");
    pressButton("reloadTriggersButton");
    session().sendMessageToServer(u"say ping two", false);
    EXPECT_TRUE(outputHas("You say: pong two"));
    EXPECT_EQ(database.loadTriggers().at(0).name, u"Echo");
    pressButton("removeTriggerButton");
    EXPECT_EQ(table.model()->rowCount(), 0);

    database.runSQL("create trigger refuse before insert on ZNTTrigger begin select raise(abort, ''); end");
    pressButton("addTriggerButton");
    for (const int role : {Qt::ToolTipRole, Qt::AccessibleDescriptionRole})
        EXPECT_TRUE(table.model()->index(0, 0).data(role).toString().contains(u"Not saved"_s));
}

TEST_F(ZNTWindowSheets, PreferencesActAtOnceAndAreOneWindow)
{
    QDialog& preferences = openPreferences();
    auto& utf8 = find<QCheckBox>(preferences, "encodingUtf8");
    auto& chinese = find<QRadioButton>(preferences, "encodingEucCn");
    // A radio button that is chosen anew, then the one that stands chosen already, then the box alone.
    for (const auto& leave : std::initializer_list<std::function<void()>>{
             [&] { chinese.click(); }, [&] { chinese.click(); }, [&] { utf8.setChecked(false); }}) {
        utf8.setChecked(true);
        EXPECT_EQ(session().cfStringEncoding(), ZNTStringEncoding::Utf8);
        EXPECT_TRUE(utf8.accessibleDescription().startsWith(u"In force now"_s));
        leave();
        EXPECT_EQ(session().cfStringEncoding(), ZNTStringEncoding::EucCn);
        EXPECT_FALSE(utf8.isChecked());
    }
    const std::pair<const char*, std::function<bool()>> boxes[] = {
        {"_mccpCheckBox", [&] { return session()._isMccpOnOff(); }},
        {"_mspCheckBox", [&] { return session()._isMspOnOff(); }},
        {"speechOnOffCheckBox", [&] { return status().contains(u"speech on"_s); }},
        {"speechInterruptCheckBox", [&] { return action("speechInterruptOnOff").isChecked(); }},
        {"muteCheckBox", [&] { return sounds.isMuted() && status().endsWith(u", sounds muted"_s); }}};
    for (const auto& [name, isOn] : boxes) {
        SCOPED_TRACE(name);
        auto& box = find<QCheckBox>(preferences, name);
        box.setCheckState(Qt::Checked);
        EXPECT_TRUE(isOn());
        // Neither on nor off counts as off.
        box.setCheckState(box.isTristate() ? Qt::PartiallyChecked : Qt::Unchecked);
        EXPECT_FALSE(isOn());
    }
    leave(preferences);
    EXPECT_EQ(&openPreferences(), &preferences);
}

TEST_F(ZNTWindowSheets, ThePreferencesStandBesideTheGameAndKeepTheirPlace)
{
    QDialog& preferences = openPreferences();
    EXPECT_FALSE(preferences.isModal());
    EXPECT_EQ(preferences.windowHandle()->transientParent(), nullptr) << "it would hide the game";
    const QRect place(30, 40, 500, 400);
    preferences.setGeometry(place);
    EXPECT_TRUE(until([&] { return preferences.geometry() == place; }));
    auto& tabs = find<QTabWidget>(preferences, "tabView");
    tabs.setCurrentIndex(2);
    find<QCheckBox>(preferences, "encodingUtf8").setFocus();
    leave(preferences);
    openPreferences();
    EXPECT_TRUE(until([&] { return preferences.geometry() == place; }));
    EXPECT_TRUE(tabs.tabBar()->hasFocus()) << "it opens as it did first";
}

TEST_F(ZNTWindowSheets, ALineOfAChannelIsSaidAndTakenIntoTheCommandLine)
{
    playDemo();
    const auto say = [&](Qt::Key key, Qt::KeyboardModifiers more = Qt::NoModifier) {
        press(commandLine(), key, Qt::ControlModifier | more);
        return speech.said.back();
    };
    EXPECT_EQ(say(Qt::Key_J, Qt::ShiftModifier),
              "The channel history is off. To keep one, mark \"Keep the last lines of each channel\" in the "
              "preferences (Ctrl+,), tab Speech.");
    parts->controller.chooseSetting("channel-history", "on");
    for (const char* word : {"say one", "say two"}) {
        send(word);
        EXPECT_TRUE(gameIsReady());
    }
    EXPECT_EQ(say(Qt::Key_J), "says, 2 lines. just now: You say: two");
    EXPECT_EQ(say(Qt::Key_Up, Qt::ShiftModifier), "just now: You say: one");
    EXPECT_EQ(say(Qt::Key_Down, Qt::ShiftModifier), "just now: You say: two");
    for (const bool isTaken : {false, true}) {
        press(commandLine(), Qt::Key_H, Qt::ControlModifier | Qt::ShiftModifier);
        QDialog& sheet = waitForDialog("ZNTChannelHistoryView");
        auto& table = find<QTableView>(sheet, "linesTable");
        EXPECT_EQ(table.currentIndex().row(), 1);
        auto& channel = find<QComboBox>(sheet, "channel");
        channel.setCurrentText(u"tells"_s);
        EXPECT_EQ(table.accessibleDescription(), u"The channel tells has no line yet."_s);
        channel.setCurrentText(u"says"_s);
        table.setFocus();
        press(table, Qt::Key_Up);
        press(table, isTaken ? Qt::Key_Return : Qt::Key_Escape);
        EXPECT_TRUE(until([&] { return !sheet.isVisible() && commandLine().hasFocus(); }));
        EXPECT_EQ(commandLineText(), isTaken ? u"You say: one"_s : QString());
    }
}

TEST_F(ZNTWindowSheets, AListOfPatternsIsTakenWhenThePlayerLeavesItsField)
{
    QDialog& preferences = openPreferences();
    find<QTabWidget>(preferences, "tabView").setCurrentIndex(3);
    auto& editor = find<QPlainTextEdit>(preferences, "quiet-lines");
    const auto quietLines = [&] { return session().settings().quietLines; };
    editor.setFocus();
    type(editor, "rain; sun");
    press(editor, Qt::Key_Return);
    type(editor, "([");
    EXPECT_TRUE(quietLines().empty());
    press(editor, Qt::Key_Tab);
    EXPECT_EQ(quietLines(), ZNTTextList({"rain; sun", "(["}));
    EXPECT_TRUE(status().contains(u"The pattern \"([\" cannot be used"_s));
    editor.setPlainText(QString(1'001, u'x'));
    editor.document()->setModified(true);
    press(preferences, Qt::Key_Escape);
    EXPECT_EQ(answerAlert(), u"The list cannot be kept."_s);
    EXPECT_EQ(quietLines().size(), 2U);
    EXPECT_EQ(find<QPlainTextEdit>(preferences, "channels").toPlainText().count(u'\n'), 4);
}

TEST_F(ZNTWindowSheets, PreferencesSayWhatIsInForceBesideWhatWasLastPicked)
{
    playDemo();
    QDialog& preferences = openPreferences();
    action("speechOnOff").trigger();
    EXPECT_TRUE(find<QCheckBox>(preferences, "speechOnOffCheckBox").isChecked());
    action("speechInterruptOnOff").trigger();
    EXPECT_TRUE(find<QCheckBox>(preferences, "speechInterruptCheckBox").isChecked());
    const auto now = [&](const char* name) { return find<QLabel>(preferences, name).text().toStdString(); };
    session().changeEncoding(u"BIG5 - Chinese");
    EXPECT_EQ(now("encodingNow"), "Text: BIG5 - Chinese");
    auto& ascii = find<QRadioButton>(preferences, "encodingAscii");
    EXPECT_TRUE(ascii.isChecked()) << "as it was left";
    EXPECT_TRUE(ascii.accessibleDescription().contains(u"Text: BIG5"_s));

    session().set_isMccpOnOff(true);
    EXPECT_TRUE(now("compressionNow").starts_with("Compressed since ")) << now("compressionNow");
    session().set_isMccpOnOff(false);
    EXPECT_EQ(now("compressionNow"), "Not compressed");
}

TEST_F(ZNTWindowSheets, StandardTelnetIsSwitchedByKeyForOneGameAndByItsBoxForAll)
{
    const auto pressItsKey = [&] { press(window, Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier); };
    parts->controller.settings().setRemembering(true);
    press(window, Qt::Key_F8);
    playDemo();
    EXPECT_FALSE(status().contains(u"settings"_s));
    pressItsKey();
    const auto news = u"Standard telnet is on from the next connection on."_s;
    EXPECT_TRUE(status().endsWith(u". "_s + news)) << status().toStdString();
    EXPECT_TRUE(until([&] { return std::ranges::count(speech.said, news.toStdString()) == 1; }));
    QDialog& preferences = openPreferences();
    auto& forAll = find<QCheckBox>(preferences, "standard-telnet");
    auto& colours = find<QCheckBox>(preferences, "full-colours");
    EXPECT_FALSE(forAll.isChecked() || colours.isChecked()) << "it is for this game, and for later";

    leave(preferences);
    leaveTheGame();
    EXPECT_TRUE(action("standardTelnet").isChecked());
    EXPECT_TRUE(colours.isChecked()) << "it follows";
    connectAgain();
    EXPECT_TRUE(status().contains(u", with settings for this game, "_s)) << status().toStdString();
    leaveTheGame();
    pressItsKey();
    EXPECT_TRUE(status().endsWith(u"Standard telnet is off."_s));
    EXPECT_FALSE(action("standardTelnet").isChecked() || colours.isChecked());
    forAll.click();
    EXPECT_TRUE(action("standardTelnet").isChecked() && colours.isChecked() && forAll.isChecked());
}

TEST_F(ZNTWindowSheets, WhatIsImportedStandsInThePanelsAtOnce)
{
    makeMacroGroup("fight");
    // Both are kept when they are closed.
    QDialog& preferences = openPreferences();
    const auto& triggers = find<QTableView>(preferences, "triggerTableView");
    leave(preferences);
    QDialog& sheetOfGames = open("showZNTMudListController", "ZNTMudListView");
    const auto& games = find<QTableView>(sheetOfGames, "tableView");
    leave(sheetOfGames);
    const auto& macros = find<QTableView>("macroTable");
    const int gamesBefore = games.model()->rowCount();
    home.write("records.txt",
               "Zantor export 1\n[trigger]\nname = quiet one\npattern = x\n[group]\nname = fight\n[macro]\n"
               "name = k\ntext = kick\n[game]\nname = new\naddress = h\nport = 1\n[end]\n");
    const auto choose = [&](ZNTActionName opening, const char* name, const char* file) {
        fill(find<QLineEdit>(open(opening, name), "fileNameEdit"), home.path(file).c_str());
        pressHere(Qt::Key_Return);
        return answerAlert();
    };
    EXPECT_EQ(choose("importRecords", "importDialog", "records.txt"), u"Imported"_s);
    EXPECT_EQ(triggers.model()->rowCount(), 1) << "an inactive one is shown, too";
    EXPECT_EQ(games.model()->rowCount(), gamesBefore + 1);
    EXPECT_EQ(macros.model()->rowCount(), 1);
    EXPECT_EQ(choose("exportRecords", "exportDialog", "all.txt"), u"Exported"_s);
    EXPECT_NE(home.read("all.txt").find("name = quiet one\npattern = x\n"), std::string::npos);
    home.write("records.txt", "poems");
    EXPECT_EQ(choose("importRecords", "importDialog", "records.txt"), u"Not imported"_s);
}

TEST_F(ZNTWindowSheets, OldLogsAreListedReadInPartsAndSearched)
{
    std::string large;
    while (large.size() < std::size_t{3} << 20)
        large += "A quiet evening in the village, \xE5\x89\x91.\r\n";
    home.write("Library/Zantor/logs/zantor_log_03.05.24_10.00.log",
               "look\r\x1b[1;36mlook\rA dragon sleeps.\r\n");
    home.write("Library/Zantor/logs/zantor_log_31.12.13_21.05.log", large + "The dragon wakes.\r\n" + large);
    QDialog& logs = open("showOldLogs", "oldLogs");
    auto& list = find<QListWidget>(logs, "oldLogsList");
    auto& text = find<ZNTOutputView>(logs, "oldLogText");
    ASSERT_EQ(list.count(), 3) << "the third is this session's";
    EXPECT_TRUE(list.item(1)->text().startsWith(u"3 May 2024, 10:00"_s));
    EXPECT_TRUE(list.item(2)->text().startsWith(u"31 December 2012, 21:05"_s))
        << list.item(2)->text().toStdString();
    press(list, Qt::Key_End); // is being read
    press(list, Qt::Key_Up);
    EXPECT_TRUE(until([&] { return textOf(text) == u"look\nlook\nA dragon sleeps.\n"_s; }));
    press(list, Qt::Key_End);
    EXPECT_LT(text.store().end(), 1'000'000) << "only a part a turn";
    EXPECT_TRUE(until([&] {
        return text.store().end() > 5'500'000 && find<QLabel>(logs, "oldLogStatus").text().isEmpty();
    }));
    press(list, Qt::Key_F, Qt::ControlModifier);
    type(*QApplication::focusWidget(), "the dragon");
    EXPECT_TRUE(until([&] { return text.selectedText() == u"The dragon"_s; }));
    pressHere(Qt::Key_Escape);
    EXPECT_TRUE(list.hasFocus() && logs.isVisible());
    leave(logs);
}
