#include "ZNTPreferencesController.h"
#include "ZNTSpeechSynth.h"
#include "ZNTWindowFixture.h"

#include <QCheckBox>
#include <QDateTime>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <cstdlib>
#include <tuple>
#include <xcb/xcb.h>

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

/// What the window manager sends when the player closes the window by its frame.
void askToClose(const QWidget& window)
{
    auto* connection = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const auto atom = [connection](std::string_view name) {
        std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(
                connection,
                xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
                nullptr),
            &std::free);
        return reply->atom;
    };
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = atom("WM_PROTOCOLS");
    message.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(connection, 0, message.window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection);
}

/// The loop's exit code after `action`; 1 when it had to be ended.
int exitCodeAfter(const std::function<void()>& action)
{
    QTimer::singleShot(0, qApp, action);
    QTimer tooLong;
    tooLong.setSingleShot(true);
    QObject::connect(&tooLong, &QTimer::timeout, [] { QApplication::exit(1); });
    tooLong.start(2'000);
    return QApplication::exec();
}

} // namespace

TEST_F(ZNTWindowSheets, AnOpenDialogDoesNotKeepTheWindowOpen)
{
    playDemo(); // nor does a connection
    std::vector<bool> answers;
    const std::vector<std::pair<const char*, std::function<void()>>> inFront{
        {"ZNTMudListView", [&] { action("showZNTMudListController").trigger(); }},
        {"fontPanel", [&] { action("changeFont").trigger(); }},
        {"PreferencesView", [&] { action("showPreferencesView").trigger(); }},
        {"alert",
         [&] { alert.askForConfirmation(u"Sure?", u"", [&](bool sure) { answers.push_back(sure); }); }}};
    for (const auto& [name, open] : inFront) {
        for (const bool byFrame : {true, false}) {
            SCOPED_TRACE(std::string(name) + (byFrame ? " by the frame" : " by Ctrl+Q"));
            window.show();
            window.activateWindow();
            open();
            QDialog& dialogInFront = waitForDialog(name);
            EXPECT_EQ(exitCodeAfter([&] {
                          byFrame ? askToClose(window) : press(dialogInFront, Qt::Key_Q, Qt::ControlModifier);
                      }),
                      0);
            EXPECT_EQ(dialog(name), nullptr);
            EXPECT_FALSE(window.isVisible());
            if (QDialog* left = dialog(name))
                left->close();
        }
    }
    EXPECT_EQ(answers, (std::vector<bool>{false, false})) << "leaving is no consent";
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
    table.selectRow(0);
    EXPECT_EQ(pane.toPlainText(), u"A %1 kicks you hard!~\nkick %1"_s);

    const int active = columnHeaded(table, "Active");
    table.setCurrentIndex(table.model()->index(0, active));
    table.setFocus();
    press(table, Qt::Key_Space);
    EXPECT_EQ(table.model()->index(0, active).data(Qt::CheckStateRole), Qt::Checked);
    editCell(table, 0, columnHeaded(table, "Name"), "Echo");
    pane.setFocus();
    pane.selectAll();
    type(pane, "ping (\\w+)~");
    press(pane, Qt::Key_Return);
    type(pane, "say pong %1");
    pressButton("saveTriggerButton");
    const auto stored = database.loadTriggers();
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0].name, u"Echo");
    EXPECT_EQ(stored[0].check, u"ping (\\w+)");
    EXPECT_EQ(stored[0].action, u"say pong %1");

    session().sendMessageToServer(u"say ping one", false);
    EXPECT_TRUE(outputHas("You say: ping one"));
    pressButton("reloadTriggersButton");
    session().sendMessageToServer(u"say ping two", false);
    EXPECT_TRUE(outputHas("You say: pong two"));
    EXPECT_FALSE(output().contains(u"pong one"_s));

    pressButton("addTriggerButton");
    table.selectRow(0);
    pressButton("removeTriggerButton");
    ASSERT_EQ(table.model()->rowCount(), 1);
    EXPECT_EQ(pane.toPlainText(), u"A %1 kicks you hard!~\nkick %1"_s)
        << "of the trigger that is selected now";
    press(preferences, Qt::Key_Escape);
    EXPECT_FALSE(preferences.isVisible());
}

TEST_F(ZNTWindowSheets, PreferencesActAtOnceAndAreOneWindow)
{
    playDemo();
    parts->controller.showPreferencesView();
    QDialog& preferences = waitForDialog("PreferencesView");
    auto& tabs = find<QTabWidget>(preferences, "tabView");
    const std::pair<const char*, ZNTStringEncoding> encodings[] = {
        {"encodingBig5", ZNTStringEncoding::Big5Hkscs},
        {"encodingEucCn", ZNTStringEncoding::EucCn},
        {"encodingAscii", ZNTStringEncoding::Ascii}};
    for (const auto& [button, encoding] : encodings) {
        find<QRadioButton>(preferences, button).click();
        EXPECT_EQ(session().cfStringEncoding(), encoding) << button;
    }
    // Neither on nor off counts as off.
    const std::tuple<const char*, Qt::CheckState, std::function<bool()>> boxes[] = {
        {"_mccpCheckBox", Qt::PartiallyChecked, [&] { return session()._mccp(); }},
        {"_mspCheckBox", Qt::PartiallyChecked, [&] { return session()._isMspOnOff(); }},
        {"speechOnOffCheckBox", Qt::PartiallyChecked,
         [&] {
             return session().speechOnOffBindingState() == 1 && action("speechOnOff").isChecked() &&
                    !session().zntSpeechSynth().isSpeachOn();
         }}, // true would mean off
        {"speechInterruptCheckBox", Qt::Unchecked,
         [&] {
             return session().speechInterruptOnOffBindingState() == 1 &&
                    action("speechInterruptOnOff").isChecked();
         }},
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
    EXPECT_TRUE(session().zntSpeechSynth().isSpeachOn());

    tabs.setCurrentIndex(3);
    find<QCheckBox>(preferences, "muteCheckBox").setChecked(true);
    press(preferences, Qt::Key_Escape);
    parts->controller.showPreferencesView();
    EXPECT_EQ(&waitForDialog("PreferencesView"), &preferences);
    EXPECT_EQ(tabs.currentIndex(), 0);
    EXPECT_TRUE(find<QCheckBox>(preferences, "muteCheckBox").isChecked());
}

TEST_F(ZNTWindowSheets, EachTabIsReachedByItsOwnAction)
{
    ZNTPreferencesController preferences(window, parts->controller);
    const auto& tabs = find<QTabWidget>("tabView");
    QStringList reached;
    for (const auto select :
         {&ZNTPreferencesController::selectProtocolTab, &ZNTPreferencesController::selectSpeechTab,
          &ZNTPreferencesController::selectEncodingTab, &ZNTPreferencesController::selectMacroTab,
          &ZNTPreferencesController::selectTriggerTab}) {
        (preferences.*select)();
        reached << QString::number(tabs.currentIndex()) + tabs.tabText(tabs.currentIndex());
    }
    EXPECT_EQ(reached.join(QLatin1Char(' ')).toStdString(), "4Protocols 3Speech 2Encoding 1Macros 0Triggers");
}

TEST_F(ZNTWindowSheets, CompressionMarkedBeforeAConnectionTakesTheFirstBlockForCompressed)
{
    parts->controller.showPreferencesView();
    QDialog& preferences = waitForDialog("PreferencesView");
    find<QCheckBox>(preferences, "_mccpCheckBox").setCheckState(Qt::Checked);
    EXPECT_TRUE(session()._mccp() && session()._isMccpOnOff());
    find<QCheckBox>(preferences, "_mccpCheckBox").setCheckState(Qt::PartiallyChecked);
    EXPECT_FALSE(session()._mccp() || session()._isMccpOnOff());
}

TEST_F(ZNTWindowSheets, AGameIsPickedMadeDefaultHiddenAndRestored)
{
    window.ipAddress->setFocus();
    press(*window.ipAddress, Qt::Key_G, Qt::ControlModifier);
    QDialog& sheet = waitForDialog("ZNTMudListView");
    auto& table = find<QTableView>(sheet, "tableView");
    const int shipped = table.model()->rowCount();
    ASSERT_GT(shipped, 3);
    EXPECT_TRUE(table.hasFocus());

    // Letters go to the game that begins so, and overwrite none.
    const QString first = table.model()->index(0, 0).data().toString();
    type(table, "disc");
    EXPECT_TRUE(table.currentIndex().data().toString().startsWith(u"Disc"_s));
    EXPECT_EQ(table.model()->index(0, 0).data().toString(), first);
    EXPECT_TRUE(table.hasFocus());

    const int mark = columnHeaded(table, "Default");
    table.setCurrentIndex(table.model()->index(2, mark));
    press(table, Qt::Key_Space);
    EXPECT_EQ(table.model()->index(2, mark).data(Qt::CheckStateRole), Qt::Checked);
    table.selectRow(0);
    press(find<QPushButton>(sheet, "deleteButton"), Qt::Key_Space);
    EXPECT_EQ(table.model()->rowCount(), shipped - 1);
    EXPECT_NE(table.model()->index(0, 0).data().toString(), first);
    press(find<QPushButton>(sheet, "restoreButton"), Qt::Key_Space);
    EXPECT_EQ(table.model()->index(0, 0).data().toString(), first);

    press(find<QPushButton>(sheet, "addButton"), Qt::Key_Space);
    EXPECT_EQ(table.model()->index(shipped, 0).data().toString(), u"New Row"_s);
    editCell(table, shipped, columnHeaded(table, "Port"), "x47-1y1", "4711");
    press(sheet, Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
    EXPECT_EQ(sheet.result(), 1) << "the code of each way that a sheet ends";
    parts->controller.showZNTMudListController();
    waitForDialog("ZNTMudListView");
    table.setFocus();
    table.selectRow(shipped);
    press(table, Qt::Key_Return); // the default button
    EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
    EXPECT_EQ(window.mudName->text(), u"New Row"_s);
    EXPECT_EQ(window.ipAddress->text(), u"some url"_s);
    EXPECT_EQ(window.port->text(), u"4711"_s);
    EXPECT_FALSE(session().isConnected());
    EXPECT_TRUE(until([&] { return window.ipAddress->hasFocus(); }));
}

TEST_F(ZNTWindowSheets, ARowThatCouldNotBeSavedSaysSo)
{
    makeMacroGroup("Greetings");
    for (const char* table : {"ZNTMacro", "ZNTTrigger", "ZNTMudList"})
        database.runSQL(std::string("create trigger refuse_") + table + " before insert on " + table +
                        " begin select raise(abort, ''); end");
    const std::tuple<const char*, const char*, const char*, const char*> additions[] = {
        {"showZNTMudListController", "ZNTMudListView", "addButton", "tableView"},
        {"addMacro", "ZNTAddMacroView", "doneButton", nullptr},
        {"showPreferencesView", "PreferencesView", "addTriggerButton", "triggerTableView"}};
    for (const auto& [opener, sheetName, button, tableName] : additions) {
        SCOPED_TRACE(sheetName);
        find<QAction>(opener).trigger();
        QDialog& sheet = waitForDialog(sheetName);
        find<QPushButton>(sheet, button).click();
        const QTableView& table =
            tableName ? find<QTableView>(sheet, tableName) : find<QTableView>("macroTable");
        const QModelIndex last = table.model()->index(table.model()->rowCount() - 1, 0);
        for (const int role : {Qt::ToolTipRole, Qt::AccessibleDescriptionRole})
            EXPECT_TRUE(last.data(role).toString().contains(u"Not saved"_s));
        sheet.close();
    }
}

TEST_F(ZNTWindowSheets, WhilePlayingTheListSaysThatTheGameGoesOn)
{
    parts->controller.showZNTMudListController();
    QDialog& sheet = waitForDialog("ZNTMudListView");
    auto& standing = find<QLabel>(sheet, "playingHint");
    EXPECT_FALSE(standing.isVisible());
    press(sheet, Qt::Key_Escape);
    playDemo();
    parts->controller.showZNTMudListController();
    waitForDialog("ZNTMudListView");
    EXPECT_TRUE(standing.isVisible());
    EXPECT_TRUE(standing.text().contains(u"Lantern Cove"_s)) << standing.text().toStdString();
    auto& table = find<QTableView>(sheet, "tableView");
    EXPECT_TRUE(table.accessibleDescription().contains(standing.text()));
    table.selectRow(0);
    const QString picked = table.model()->index(0, 0).data().toString();
    press(table, Qt::Key_Return);
    EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
    EXPECT_EQ(window.mudName->text(), picked);
    EXPECT_TRUE(session().isConnected());
    EXPECT_TRUE(status().startsWith(u"Connected to Lantern Cove"_s));
}

TEST_F(ZNTWindowSheets, PreferencesSayWhatIsInForceBesideWhatWasLastPicked)
{
    playDemo();
    parts->controller.showPreferencesView();
    QDialog& preferences = waitForDialog("PreferencesView");
    auto& tabs = find<QTabWidget>(preferences, "tabView");
    auto& speaks = find<QCheckBox>(preferences, "speechOnOffCheckBox");
    auto& interrupts = find<QCheckBox>(preferences, "speechInterruptCheckBox");
    window.activateWindow();
    commandLine().setFocus();
    ASSERT_TRUE(until([&] { return QApplication::focusWidget() == &commandLine(); }));
    for (const bool on : {true, false}) {
        press(commandLine(), Qt::Key_F8);
        EXPECT_EQ(speaks.isChecked(), on);
        press(commandLine(), Qt::Key_F8, Qt::ShiftModifier);
        EXPECT_EQ(interrupts.isChecked(), on);
    }

    tabs.setCurrentIndex(2);
    const auto now = [&](const char* name) { return find<QLabel>(preferences, name).text().toStdString(); };
    EXPECT_EQ(now("encodingNow"), "Text: ASCII");
    session().changeEncoding(u"BIG5 - Chinese");
    EXPECT_EQ(now("encodingNow"), "Text: BIG5 - Chinese");
    EXPECT_TRUE(find<QRadioButton>(preferences, "encodingAscii").isChecked()) << "as it was left";
    EXPECT_TRUE(
        find<QRadioButton>(preferences, "encodingAscii").accessibleDescription().contains(u"Text: BIG5"_s));

    EXPECT_EQ(now("compressionNow"), "Not compressed");
    const auto before = QDateTime::currentDateTime();
    session().set_isMccpOnOff(true);
    const std::string since = "Compressed since ";
    EXPECT_TRUE(now("compressionNow") == since + before.toString(u"HH:mm"_s).toStdString() ||
                now("compressionNow") == since + before.addSecs(60).toString(u"HH:mm"_s).toStdString())
        << now("compressionNow");
    EXPECT_FALSE(find<QCheckBox>(preferences, "_mccpCheckBox").isChecked());
    session().set_isMccpOnOff(false);
    EXPECT_EQ(now("compressionNow"), "Not compressed");
}
