#include "ZNTWindowFixture.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <tuple>

using ZNTWindowSheets = ZNTWindowFixture;

namespace
{

int columnHeaded(const QTableView& table, const char* heading)
{
    for (int column = 0; column < table.model()->columnCount(); ++column)
        if (table.model()->headerData(column, Qt::Horizontal).toString() == QLatin1String(heading))
            return column;
    return -1;
}

/// The loop's exit code after `action`; 1 when it had to be ended.
int exitCodeAfter(const std::function<void()>& action)
{
    QTimer::singleShot(0, qApp, action);
    QTimer tooLong;
    QObject::connect(&tooLong, &QTimer::timeout, [] { QApplication::exit(1); });
    tooLong.start(2'000);
    return QApplication::exec();
}

} // namespace

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
        EXPECT_EQ(exitCodeAfter([&] { press(dialogInFront, Qt::Key_Q, Qt::ControlModifier); }), 0);
        EXPECT_EQ(dialog(name), nullptr);
        EXPECT_FALSE(window.isVisible());
    }
    EXPECT_EQ(answers, std::vector<bool>{false}) << "leaving is no consent";
}

TEST_F(ZNTWindowSheets, ATriggerIsEditedInTableAndPaneAndFiresOnceReloaded)
{
    playDemo();
    press(commandLine(), Qt::Key_Comma, Qt::ControlModifier);
    QDialog& preferences = waitForDialog("PreferencesView");
    const auto pressButton = [&](const char* name) {
        press(find<QPushButton>(preferences, name), Qt::Key_Space);
    };
    auto& table = find<QTableView>(preferences, "triggerTableView");
    auto& pane = find<QPlainTextEdit>(preferences, "triggerTextView");
    pressButton("addTriggerButton");
    ASSERT_EQ(table.model()->rowCount(), 1);
    table.setCurrentIndex(table.model()->index(0, columnHeaded(table, "Active")));
    EXPECT_EQ(pane.toPlainText(), u"A %1 kicks you hard!~\nkick %1"_s);
    press(table, Qt::Key_Space);
    editCell(table, 0, columnHeaded(table, "Name"), "Echo");
    pane.selectAll();
    type(pane, "ping (\\w+)~");
    press(pane, Qt::Key_Return);
    type(pane, "say pong %1");
    pressButton("saveTriggerButton");
    session().sendMessageToServer(u"say ping one", false);
    EXPECT_TRUE(outputHas("You say: ping one"));
    pressButton("reloadTriggersButton");
    session().sendMessageToServer(u"say ping two", false);
    EXPECT_TRUE(outputHas("You say: pong two"));
    EXPECT_FALSE(output().contains(u"pong one"_s));
    EXPECT_EQ(database.loadTriggers().at(0).name, u"Echo");

    pressButton("addTriggerButton");
    table.selectRow(0);
    pressButton("removeTriggerButton");
    EXPECT_EQ(table.model()->rowCount(), 1);
    press(preferences, Qt::Key_Escape);
    EXPECT_FALSE(preferences.isVisible());
}

TEST_F(ZNTWindowSheets, PreferencesActAtOnceAndAreOneWindow)
{
    parts->controller.showPreferencesView();
    QDialog& preferences = waitForDialog("PreferencesView");
    find<QRadioButton>(preferences, "encodingEucCn").click();
    EXPECT_EQ(session().cfStringEncoding(), ZNTStringEncoding::EucCn);
    // Neither on nor off counts as off.
    const std::tuple<const char*, Qt::CheckState, std::function<bool()>> boxes[] = {
        {"_mccpCheckBox", Qt::PartiallyChecked,
         [&] { return session()._mccp() && session()._isMccpOnOff(); }},
        {"_mspCheckBox", Qt::PartiallyChecked, [&] { return session()._isMspOnOff(); }},
        {"speechOnOffCheckBox", Qt::PartiallyChecked,
         [&] { return action("speechOnOff").isChecked() && status().contains(u"speech on"_s); }},
        {"speechInterruptCheckBox", Qt::Unchecked,
         [&] { return action("speechInterruptOnOff").isChecked(); }},
        {"muteCheckBox", Qt::Unchecked,
         [&] { return sounds.isMuted() && status().endsWith(u", sounds muted"_s); }}};
    for (const auto& [name, off, isOn] : boxes) {
        SCOPED_TRACE(name);
        auto& box = find<QCheckBox>(preferences, name);
        box.setCheckState(Qt::Checked);
        EXPECT_TRUE(isOn());
        box.setCheckState(off);
        EXPECT_FALSE(isOn());
    }

    auto& tabs = find<QTabWidget>(preferences, "tabView");
    tabs.setCurrentIndex(3);
    find<QCheckBox>(preferences, "muteCheckBox").setChecked(true);
    press(preferences, Qt::Key_Escape);
    parts->controller.showPreferencesView();
    EXPECT_EQ(&waitForDialog("PreferencesView"), &preferences);
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_TRUE(find<QCheckBox>(preferences, "muteCheckBox").isChecked());
}

TEST_F(ZNTWindowSheets, AGameIsPickedMadeDefaultHiddenAndRestored)
{
    press(*window.ipAddress, Qt::Key_G, Qt::ControlModifier);
    QDialog& sheet = waitForDialog("ZNTMudListView");
    auto& table = find<QTableView>(sheet, "tableView");
    const auto name = [&](int row) { return table.model()->index(row, 0).data().toString(); };
    const int shipped = table.model()->rowCount();
    EXPECT_TRUE(table.hasFocus());

    // Letters go to the game that begins so, and overwrite none.
    const QString first = name(0);
    type(table, "disc");
    EXPECT_TRUE(table.currentIndex().data().toString().startsWith(u"Disc"_s));
    EXPECT_EQ(name(0), first);

    const QModelIndex mark = table.model()->index(2, columnHeaded(table, "Default"));
    table.setCurrentIndex(mark);
    press(table, Qt::Key_Space);
    EXPECT_EQ(mark.data(Qt::CheckStateRole), Qt::Checked);
    table.selectRow(0);
    press(find<QPushButton>(sheet, "deleteButton"), Qt::Key_Space);
    EXPECT_NE(name(0), first);
    press(find<QPushButton>(sheet, "restoreButton"), Qt::Key_Space);
    EXPECT_EQ(name(0), first);

    press(find<QPushButton>(sheet, "addButton"), Qt::Key_Space);
    EXPECT_EQ(name(shipped), u"New Row"_s);
    editCell(table, shipped, columnHeaded(table, "Port"), "x47-1y1", "4711");
    press(sheet, Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
    EXPECT_EQ(sheet.result(), 1) << "the code of each way that a sheet ends";
    parts->controller.showZNTMudListController();
    waitForDialog("ZNTMudListView");
    table.setFocus();
    table.selectRow(shipped);
    press(table, Qt::Key_Return); // the default button
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && window.ipAddress->hasFocus(); }));
    EXPECT_EQ(window.ipAddress->text(), u"some url"_s);
    EXPECT_EQ(window.port->text(), u"4711"_s);
}

TEST_F(ZNTWindowSheets, ARowThatCouldNotBeSavedSaysSo)
{
    database.runSQL("create trigger refuse before insert on ZNTTrigger begin select raise(abort, ''); end");
    action("showPreferencesView").trigger();
    QDialog& sheet = waitForDialog("PreferencesView");
    find<QPushButton>(sheet, "addTriggerButton").click();
    const QModelIndex row = find<QTableView>(sheet, "triggerTableView").model()->index(0, 0);
    for (const int role : {Qt::ToolTipRole, Qt::AccessibleDescriptionRole})
        EXPECT_TRUE(row.data(role).toString().contains(u"Not saved"_s));
}

TEST_F(ZNTWindowSheets, WhilePlayingTheListSaysThatTheGameGoesOn)
{
    playDemo();
    parts->controller.showZNTMudListController();
    QDialog& sheet = waitForDialog("ZNTMudListView");
    const QString standing = find<QLabel>(sheet, "playingHint").text();
    EXPECT_TRUE(standing.contains(u"Lantern Cove"_s)) << standing.toStdString();
    auto& table = find<QTableView>(sheet, "tableView");
    EXPECT_TRUE(table.accessibleDescription().contains(standing));
    press(table, Qt::Key_Return);
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && window.isActiveWindow(); }));
    EXPECT_TRUE(session().isConnected());
    EXPECT_NE(window.mudName->text(), u"Lantern Cove"_s);
    EXPECT_TRUE(status().startsWith(u"Connected to Lantern Cove"_s));
    leaveTheGame();
    parts->controller.showZNTMudListController();
    EXPECT_FALSE(find<QLabel>(waitForDialog("ZNTMudListView"), "playingHint").isVisible());
}

TEST_F(ZNTWindowSheets, PreferencesSayWhatIsInForceBesideWhatWasLastPicked)
{
    playDemo();
    parts->controller.showPreferencesView();
    QDialog& preferences = waitForDialog("PreferencesView");
    window.activateWindow();
    commandLine().setFocus();
    ASSERT_TRUE(until([&] { return QApplication::focusWidget() == &commandLine(); }));
    for (const bool on : {true, false}) {
        press(commandLine(), Qt::Key_F8);
        EXPECT_EQ(find<QCheckBox>(preferences, "speechOnOffCheckBox").isChecked(), on);
        press(commandLine(), Qt::Key_F8, Qt::ShiftModifier);
        EXPECT_EQ(find<QCheckBox>(preferences, "speechInterruptCheckBox").isChecked(), on);
    }
    const auto now = [&](const char* name) { return find<QLabel>(preferences, name).text().toStdString(); };
    session().changeEncoding(u"BIG5 - Chinese");
    EXPECT_EQ(now("encodingNow"), "Text: BIG5 - Chinese");
    auto& ascii = find<QRadioButton>(preferences, "encodingAscii");
    EXPECT_TRUE(ascii.isChecked()) << "as it was left";
    EXPECT_TRUE(ascii.accessibleDescription().contains(u"Text: BIG5"_s));

    session().set_isMccpOnOff(true);
    EXPECT_TRUE(now("compressionNow").starts_with("Compressed since ")) << now("compressionNow");
    EXPECT_FALSE(find<QCheckBox>(preferences, "_mccpCheckBox").isChecked());
    session().set_isMccpOnOff(false);
    EXPECT_EQ(now("compressionNow"), "Not compressed");
}
