#include "ZNTCommandLine.h"
#include "ZNTRecorder.h"
#include "ZNTSpeechSynth.h"
#include "ZNTTypingGuard.h"
#include "ZNTWindowFixture.h"

#include <QClipboard>
#include <QFontDialog>
#include <QKeyEvent>

using ZNTWindowPlay = ZNTWindowFixture;

namespace
{

/// As a key of the keypad arrives on X11, where Qt has looked for its shortcut and found none.
void typeOnKeypad(QWidget& widget, Qt::Key digit)
{
    QKeyEvent press(QEvent::KeyPress, digit, Qt::KeypadModifier, QString(QChar(digit)));
    QApplication::sendEvent(&widget, &press);
}

} // namespace

TEST_F(ZNTWindowPlay, AGameIsPlayedWithTheKeyboardAlone)
{
    EXPECT_TRUE(window.ipAddress->hasFocus());
    EXPECT_FALSE(commandLine().isEnabled());
    EXPECT_EQ(status(), u"Not connected, speech off"_s);
    playDemo();
    EXPECT_EQ(window.connectionButton->accessibleName(), u"Disconnect"_s);
    EXPECT_FALSE(window.ipAddress->isEnabled());
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_TRUE(status().startsWith(u"Connected to Lantern Cove since "_s));

    send("look guide");
    EXPECT_TRUE(outputHas("The guide smiles"));
    EXPECT_EQ(commandLineText(), QString());
    press(commandLine(), Qt::Key_Up);
    EXPECT_EQ(commandLineText(), u"look guide"_s);
    find<QLineEdit>("textToServer").clear();
    EXPECT_TRUE(gameIsReady());

    // The numeric keypad walks while the hands are on the command line, and types nothing there.
    const auto walks = [this](const char* echo, const auto& step) {
        step();
        EXPECT_TRUE(outputHas(echo));
        EXPECT_TRUE(gameIsReady());
        EXPECT_EQ(commandLineText(), QString());
    };
    walks("> north", [&] { press(commandLine(), Qt::Key_8, Qt::KeypadModifier); });
    walks("> south", [&] { typeOnKeypad(commandLine(), Qt::Key_2); });
    window.textFromServer->setFocus();
    walks("> west", [&] { typeOnKeypad(*window.textFromServer, Qt::Key_4); });
    window.mudName->clear();
    typeOnKeypad(*window.mudName, Qt::Key_2);
    EXPECT_EQ(window.mudName->text(), u"2"_s) << "where one types, the keypad types";
    commandLine().setFocus();
    walks("> southWest", [&] { press(find<QPushButton>("southWestButton"), Qt::Key_Space); });
    walks("> up", [&] { press(commandLine(), Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier); });
    action("keypadWalks").trigger();
    press(commandLine(), Qt::Key_8, Qt::KeypadModifier);
    EXPECT_EQ(commandLineText(), u"8"_s);
    find<QLineEdit>("textToServer").clear();

    // What is typed while reading goes to the command line, and the letter that began it is not lost.
    window.textFromServer->setFocus();
    press(*window.textFromServer, Qt::Key_W);
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_EQ(commandLineText(), u"w"_s);

    leaveTheGame();
    EXPECT_EQ(window.connectionButton->accessibleName(), u"Connect"_s);
    EXPECT_TRUE(window.ipAddress->isEnabled());
    EXPECT_FALSE(commandLine().isEnabled());
    EXPECT_TRUE(window.textFromServer->hasFocus()) << "where the last lines can be read";
    EXPECT_EQ(status(), u"Not connected, speech off"_s);
}

TEST_F(ZNTWindowPlay, TheWindowsKeysWorkOnTheCommandLine)
{
    playDemo();
    for (int times = 0; times < 5; ++times)
        send("look guide");
    EXPECT_TRUE(outputHas("number of bytes"));
    EXPECT_TRUE(gameIsReady());
    press(commandLine(), Qt::Key_PageUp);
    EXPECT_FALSE(window.textFromServer->followsEnd());
    press(commandLine(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(window.textFromServer->followsEnd());

    QApplication::clipboard()->setText(u"say one\nsay two\r\nsay three\n"_s);
    press(commandLine(), Qt::Key_V, Qt::ControlModifier);
    press(commandLine(), Qt::Key_Return);
    EXPECT_TRUE(outputHas("You say: three"));
    EXPECT_TRUE(gameIsReady());
    for (const char* line : {"say one\n", "say two\n", "say three\n", "You say: one", "You say: two"})
        EXPECT_TRUE(outputHas(line)) << line;
    EXPECT_EQ(commandLineText(), QString());
    EXPECT_EQ(session().lastCommand(), u"say three");

    press(commandLine(), Qt::Key_F, Qt::ControlModifier);
    type(*QApplication::focusWidget(), "LANTERN sq");
    EXPECT_TRUE(until([&] { return window.textFromServer->selectedText() == u"Lantern Sq"_s; }));
    EXPECT_TRUE(until([&] { return find<QLabel>("findStatus").text() == u"1 of 1"_s; }));
}

TEST_F(ZNTWindowPlay, TheGameBeingPlayedIsNamedWhateverTheFieldsSay)
{
    // The list fills the fields; then the player types another address and leaves the name.
    parts->controller.showZNTMudListController();
    QDialog& sheet = waitForDialog("ZNTMudListView");
    press(find<QTableView>(sheet, "tableView"), Qt::Key_Return);
    EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
    const QString picked = window.mudName->text();
    EXPECT_NE(picked, QString());
    playDemo(nullptr);
    EXPECT_EQ(window.mudName->text(), picked) << "it stays as it was left";
    EXPECT_EQ(window.windowTitle(), u"127.0.0.1 - Zantor"_s);

    fill(*window.mudName, "Another game");
    send("look");
    action("startOrPauseRecording").trigger();
    EXPECT_TRUE(status().startsWith(u"Connected to 127.0.0.1 since "_s)) << status().toStdString();
    EXPECT_TRUE(status().contains(u", recording"_s)) << status().toStdString();
    EXPECT_EQ(window.windowTitle(), u"127.0.0.1 - Zantor"_s);
    leaveTheGame();
    press(*window.connectionButton, Qt::Key_Space);
    EXPECT_TRUE(until([&] { return session().isConnected(); }));
    EXPECT_EQ(window.windowTitle(), u"Another game - Zantor"_s);
}

TEST_F(ZNTWindowPlay, SpeechThatNothingCanSpeakIsNamedInTheStatusAndInNoAlert)
{
    press(window, Qt::Key_F8);
    EXPECT_EQ(status(), u"Not connected, speech on"_s);
    speech.setAvailable(false);
    EXPECT_TRUE(until([&] { return status() == u"Not connected, speech unavailable"_s; }));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    speech.setAvailable(true);
    EXPECT_TRUE(until([&] { return status() == u"Not connected, speech on"_s; }));
}

TEST_F(ZNTWindowPlay, AnAttemptToConnectIsGivenUpByKeyAndMenu)
{
    EXPECT_FALSE(action("stopConnecting").isEnabled());
    fill(*window.ipAddress, "127.0.0.1");
    fill(*window.port, "1");
    const std::vector<std::function<void()>> waysOut{
        [&] { press(*window.port, Qt::Key_Escape); }, [&] { press(*window.mudName, Qt::Key_Escape); },
        [&] { press(*window.port, Qt::Key_F5, Qt::ShiftModifier); }};
    for (const auto& leave : waysOut) {
        press(*window.port, Qt::Key_Return);
        ASSERT_EQ(session().state(), ZNTSessionState::Connecting); // the answer comes on a later turn
        EXPECT_TRUE(action("stopConnecting").isEnabled());
        leave();
        EXPECT_EQ(session().state(), ZNTSessionState::Idle);
        EXPECT_FALSE(action("stopConnecting").isEnabled());
        EXPECT_TRUE(status().startsWith(u"Not connected"_s));
        QTest::qWait(20);
        EXPECT_EQ(dialog("alert"), nullptr);
    }
}

TEST_F(ZNTWindowPlay, WalksAndSoundsAreEndedFromTheMenuAndByKey)
{
    playDemo();
    press(commandLine(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(sounds.timesAllStopped, 1);
    EXPECT_FALSE(action("stopWalking").isEnabled());
    for (const char* walk : {"!20n", "!20s"})
        send(walk);
    EXPECT_TRUE(session().isWalking());
    EXPECT_TRUE(action("stopWalking").isEnabled());
    press(commandLine(), Qt::Key_Period, Qt::ControlModifier);
    EXPECT_FALSE(session().isWalking()) << "both at once";
    EXPECT_FALSE(action("stopWalking").isEnabled());
}

TEST_F(ZNTWindowPlay, TheFontPanelIsForLaterTextAndTheUsualSizeIsThePickedOne)
{
    ZNTOutputView& view = *window.textFromServer;
    const auto shownInBoth = [&] {
        EXPECT_EQ(QFontInfo(commandLine().font()).family(), QFontInfo(view.shownFont()).family());
        EXPECT_EQ(commandLine().font().pointSizeF(), view.pointSize());
        return view.pointSize();
    };
    const auto lastHeight = [&] {
        return view.characterRect(view.store().line(view.store().endLine() - 2).start).height();
    };
    EXPECT_EQ(shownInBoth(), 12);
    playDemo();
    EXPECT_TRUE(gameIsReady());
    const int before = lastHeight();
    press(commandLine(), Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    auto& panel = static_cast<QFontDialog&>(waitForDialog("fontPanel"));
    QFont picked = panel.currentFont();
    EXPECT_EQ(QFontInfo(picked).family(), QFontInfo(view.textFont()).family());
    EXPECT_TRUE(QFontInfo(picked).fixedPitch());
    picked.setPointSizeF(18);
    panel.setCurrentFont(picked);
    press(panel, Qt::Key_Return);
    EXPECT_TRUE(until([] { return dialog("fontPanel") == nullptr; }));
    EXPECT_EQ(shownInBoth(), 18);
    EXPECT_EQ(lastHeight(), before);
    const auto earlier = view.store().endLine() - 2;
    send("look");
    EXPECT_TRUE(until([&] { return view.store().endLine() > earlier + 4; }));
    EXPECT_TRUE(gameIsReady());
    QTest::qWait(50);
    EXPECT_GT(lastHeight(), before);
    for (int times = 0; times < 2; ++times)
        press(commandLine(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(shownInBoth(), 16);
    press(commandLine(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(shownInBoth(), 18);
}

TEST_F(ZNTWindowPlay, ASecondSessionBeginsOnALineOfItsOwn)
{
    playDemo();
    EXPECT_TRUE(gameIsReady());
    leaveTheGame();
    const QString first = output();
    action("connectToServer").trigger();
    EXPECT_TRUE(until([&] { return session().isConnected() && output().size() > first.size() + 20; }));
    const auto& store = window.textFromServer->store();
    const auto at = static_cast<ZNTOutputStore::Position>(first.size());
    EXPECT_EQ(store.line(store.lineAt(at)).start, at);
    EXPECT_TRUE(output().startsWith(first));
    EXPECT_FALSE(first.endsWith(u'\n')) << "the old one ended in a prompt";
}

TEST_F(ZNTWindowPlay, WhatIsDoneWithoutAConnectionSaysSo)
{
    playDemo();
    send("look");
    EXPECT_TRUE(window.runMacro->isEnabled());
    leaveTheGame();
    EXPECT_FALSE(window.runMacro->isEnabled());
    EXPECT_FALSE(action("invokeMacro").isEnabled());

    session().setSpeechOnOffBindingState(1);
    session().zntSpeechSynth().speechOn();
    press(*window.resendLastCommand, Qt::Key_Space);
    EXPECT_TRUE(outputHas("look\n"));
    EXPECT_TRUE(status().startsWith(u"Not connected"_s));
    EXPECT_TRUE(until([&] { return speech.hasSaid(u"Not connected"); }));
    action("startOrPauseRecording").trigger();
    EXPECT_TRUE(until([&] { return speech.hasSaid(u"Recording. Not connected"); }));
    EXPECT_TRUE(status().startsWith(u"Not connected, recording"_s));
}

TEST_F(ZNTWindowPlay, AnAlertSaysThatAGameCannotBeReached)
{
    fill(*window.ipAddress, "127.0.0.1");
    fill(*window.port, "1");
    window.connectionButton->setFocus();
    press(*window.connectionButton, Qt::Key_Space);
    EXPECT_EQ(answerAlert(),
              words("MUD Not Responding", "Please select a new MUD or try again later. The MUD "
                                          "address entered is unavailable."));
    EXPECT_EQ(session().state(), ZNTSessionState::Idle);
    EXPECT_TRUE(window.connectionButton->hasFocus());
    // Return does what the button does, with any number: it is cut to the 16 bits of a port.
    fill(*window.port, " 65537 ");
    press(*window.port, Qt::Key_Return);
    EXPECT_EQ(answerAlert().first, u"MUD Not Responding"_s);
    EXPECT_EQ(window.port->text(), u" 65537 "_s);
}

TEST_F(ZNTWindowPlay, AGameGivenAtTheStartBearsItsNameInTheAddressBookOrElseItsHosts)
{
    ZNTMudList cove;
    cove.name = u"Lantern Cove";
    cove.telnetURL = u"LocalHost";
    cove.port = 1;
    database.addNewRowMudList(cove);
    for (const auto& [host, name] :
         {std::pair{u"127.0.0.1"_s, u"127.0.0.1"_s}, {u"localhost"_s, u"Lantern Cove"_s}}) {
        parts->connection.connectTo(host, 1);
        EXPECT_EQ(window.mudName->text(), name);
        EXPECT_EQ(window.port->text(), u"1"_s);
        answerAlert();
    }
}

TEST_F(ZNTWindowPlay, AMissingDemoGameIsNamedWithWhatHelps)
{
    action("playDemo").trigger(); // not beside this program
    const auto [title, why] = answerAlert();
    EXPECT_EQ(title, u"Demo game"_s);
    EXPECT_TRUE(why.contains(QCoreApplication::applicationDirPath() + u"/zantor-demo: No such file"_s))
        << why.toStdString();
    EXPECT_TRUE(why.contains(u"install Zantor again"_s)) << why.toStdString();
    EXPECT_EQ(session().state(), ZNTSessionState::Idle);
}

TEST_F(ZNTWindowPlay, AMacroIsMadeRunEditedAndRemoved)
{
    playDemo();
    auto& groups = find<QComboBox>("macroComboBoxGroup");
    auto& macros = find<QTableView>("macroTable");
    const auto names = [&] {
        QStringList all;
        for (int row = 0; row < macros.model()->rowCount(); ++row)
            all << macros.model()->index(row, 0).data().toString();
        return all;
    };

    action("addMacro").trigger();
    EXPECT_EQ(answerAlert(), words("Macro does not exist.",
                                   "Please select a Macro Group before trying to add a new Macro."));
    press(commandLine(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(answerAlert(),
              words("Macro does not exist.", "Please select a Macro before trying to edit it."));
    groups.setFocus();
    type(groups, "Greetings");
    press(find<QPushButton>("createNewMacroGroup"), Qt::Key_Space);
    EXPECT_EQ(answerAlert(), words("Macro Group Created!.", "New Macro Grop Added."));
    EXPECT_EQ(groups.count(), 1);
    action("editMacro").trigger(); // none is selected
    EXPECT_EQ(answerAlert().second, u"Please select the macro to edit in the list of macros."_s);
    EXPECT_EQ(dialog("ZNTEditMacroView"), nullptr);

    const auto addsMacro = [&]() -> QDialog& {
        commandLine().setFocus();
        press(commandLine(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
        return waitForDialog("ZNTAddMacroView");
    };
    QDialog& sheet = addsMacro();
    EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
    EXPECT_EQ(find<QLabel>(sheet, "macroGroupNameLabel").text(), u"Greetings"_s);
    type(find<QWidget>(sheet, "macroNameTF"), "gr");
    find<QPushButton>(sheet, "cancelButton").setFocus();
    press(find<QPushButton>(sheet, "cancelButton"), Qt::Key_Return);
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && commandLine().hasFocus(); }));
    EXPECT_TRUE(names().isEmpty()) << "Return on Cancel cancels";
    find<QPushButton>("addMacro").setFocus();
    press(find<QPushButton>("addMacro"), Qt::Key_Return);
    waitForDialog("ZNTAddMacroView");
    press(sheet, Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && window.isActiveWindow(); }));
    addsMacro();
    EXPECT_EQ(find<QLineEdit>(sheet, "macroNameTF").text(), u"gr"_s) << "kept for this time";
    fill(find<QLineEdit>(sheet, "macroNameTF"), "greet");
    type(find<QWidget>(sheet, "commandText"), "say hello %1");
    press(find<QPushButton>(sheet, "doneButton"), Qt::Key_Space);
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && commandLine().hasFocus(); }));
    EXPECT_EQ(names(), QStringList{u"greet"_s});

    send("~greet Bob");
    EXPECT_TRUE(outputHas("You say: hello Bob"));
    macros.setFocus();
    macros.selectRow(0);
    press(macros, Qt::Key_Return);
    EXPECT_TRUE(outputHas("You say: hello %1"));

    press(macros, Qt::Key_E, Qt::ControlModifier);
    QDialog& edit = waitForDialog("ZNTEditMacroView");
    fill(find<QLineEdit>(edit, "macroNameTF"), "wave");
    press(edit, Qt::Key_Return);
    EXPECT_TRUE(until([&] { return !edit.isVisible(); }));
    EXPECT_EQ(names(), QStringList{u"wave"_s});
    EXPECT_TRUE(until([&] { return macros.hasFocus(); }));

    press(find<QPushButton>("removeMacro"), Qt::Key_Space);
    EXPECT_TRUE(names().isEmpty());
    press(find<QPushButton>("deleteMacroGroup"), Qt::Key_Space);
    EXPECT_EQ(buttonsOfAlert(), u"OK (default), Cancel"_s);
    answerAlert(Qt::Key_Escape);
    EXPECT_EQ(groups.count(), 1);
    press(find<QPushButton>("deleteMacroGroup"), Qt::Key_Space);
    answerAlert();
    EXPECT_EQ(groups.count(), 0);
    EXPECT_EQ(groups.currentText(), QString());
}

TEST_F(ZNTWindowPlay, LinesAreRecordedReviewedAndSaved)
{
    playDemo();
    press(commandLine(), Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(status().contains(u", recording"_s));
    send("north");
    send("south");
    press(commandLine(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    QDialog& sheet = waitForDialog("ZNTCommandRecorderView2");
    auto& table = find<QTableView>(sheet, "_theTableView");
    ASSERT_EQ(table.model()->rowCount(), 2);
    editCell(table, 1, 0, "east");
    press(table, Qt::Key_Return);
    ASSERT_EQ(table.model()->rowCount(), 2) << "saving empties the list, so it takes its own button";
    type(find<QWidget>(sheet, "_aliasName"), "stroll");
    type(find<QWidget>(sheet, "_secondsBetweenSendingCommands"), "2 or so");
    press(find<QPushButton>(sheet, "_saveButton"), Qt::Key_Space);
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_EQ(table.model()->rowCount(), 0);
    ASSERT_FALSE(log.lines.empty());
    for (const char* part : {"NAME: stroll", "east", "SECONDS BETWEEN COMMANDS: 2"})
        EXPECT_NE(log.lines.back().find(part), std::string::npos) << part;
    press(sheet, Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && commandLine().hasFocus(); }));
}

TEST_F(ZNTWindowPlay, AnAlertThatComesInTheMiddleOfALineDoesNotTakeTheTyping)
{
    playDemo();
    commandLine().setFocus();
    type(commandLine(), "lo");
    alert.showMessage(u"Speech", u"No speech service answers.");
    QDialog& box = waitForDialog("alert");
    pressHere(Qt::Key_O);
    pressHere(Qt::Key_K);
    EXPECT_EQ(commandLineText(), u"look"_s);
    pressHere(Qt::Key_Return);
    EXPECT_TRUE(outputHas("> look"));
    EXPECT_EQ(dialog("alert"), &box) << "it was closed unread";

    QTest::qWait(ZNTTypingGuard::pause); // the player listens
    pressHere(Qt::Key_Return);
    EXPECT_TRUE(until([] { return dialog("alert") == nullptr; }));
    type(commandLine(), "half a line");
    alert.showMessage(u"Speech", u"No speech service answers.");
    press(waitForDialog("alert"), Qt::Key_Escape);
    EXPECT_TRUE(until([] { return dialog("alert") == nullptr; }));
    EXPECT_EQ(commandLineText(), u"half a line"_s);
}
