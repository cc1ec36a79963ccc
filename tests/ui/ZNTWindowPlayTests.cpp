#include "ZNTCommandLine.h"
#include "ZNTRecorder.h"
#include "ZNTSpeechSynth.h"
#include "ZNTTypingGuard.h"
#include "ZNTWindowFixture.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QFontDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <array>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using ZNTWindowPlay = ZNTWindowFixture;

namespace
{

/// On loopback, but neither takes a connection nor refuses it: its queue is full.
struct SilentHost {
    SilentHost()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* generic = reinterpret_cast<sockaddr*>(&address);
        for (int& each : sockets)
            each = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        ::bind(sockets[0], generic, size);
        ::listen(sockets[0], 0);
        ::getsockname(sockets[0], generic, &size);
        port = ntohs(address.sin_port);
        for (std::size_t client = 1; client < sockets.size(); ++client)
            ::connect(sockets[client], generic, size);
    }
    ~SilentHost()
    {
        for (const int each : sockets)
            ::close(each);
    }
    SilentHost(const SilentHost&) = delete;
    SilentHost& operator=(const SilentHost&) = delete;

    std::array<int, 4> sockets{}; // the listening one, and clients that fill its queue
    int port = 0;
};

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
    EXPECT_EQ(find<QLabel>("statusText").text(), QStringLiteral("Not connected, speech off"));
    playDemo();
    EXPECT_EQ(window.connectionButton->accessibleName(), QStringLiteral("Disconnect"));
    EXPECT_FALSE(window.ipAddress->isEnabled());
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_TRUE(
        find<QLabel>("statusText").text().startsWith(QStringLiteral("Connected to Lantern Cove since ")));

    send("look guide");
    EXPECT_TRUE(outputHas("The guide smiles"));
    EXPECT_EQ(commandLineText(), QString());
    press(commandLine(), Qt::Key_Up);
    EXPECT_EQ(commandLineText(), QStringLiteral("look guide"));
    find<QLineEdit>("textToServer").clear();

    EXPECT_TRUE(gameIsReady());

    // The numeric keypad walks while the hands are on the command line, and types nothing there.
    press(commandLine(), Qt::Key_8, Qt::KeypadModifier);
    EXPECT_TRUE(outputHas("> north"));
    EXPECT_TRUE(gameIsReady());
    typeOnKeypad(commandLine(), Qt::Key_2);
    EXPECT_TRUE(outputHas("> south"));
    EXPECT_TRUE(gameIsReady());
    window.textFromServer->setFocus();
    typeOnKeypad(*window.textFromServer, Qt::Key_4);
    EXPECT_TRUE(outputHas("> west"));
    EXPECT_TRUE(gameIsReady());
    EXPECT_EQ(commandLineText(), QString());
    window.mudName->clear();
    typeOnKeypad(*window.mudName, Qt::Key_2);
    EXPECT_EQ(window.mudName->text(), QStringLiteral("2")) << "where one types, the keypad types";
    commandLine().setFocus();
    press(find<QPushButton>("southWestButton"), Qt::Key_Space);
    EXPECT_TRUE(outputHas("> southWest"));
    EXPECT_TRUE(gameIsReady());
    press(commandLine(), Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_TRUE(outputHas("> up"));
    parts->menu["keypadWalks"]->trigger();
    press(commandLine(), Qt::Key_8, Qt::KeypadModifier);
    EXPECT_EQ(commandLineText(), QStringLiteral("8"));
    find<QLineEdit>("textToServer").clear();

    // What is typed while reading goes to the command line, and the letter that began it is not lost.
    window.textFromServer->setFocus();
    press(*window.textFromServer, Qt::Key_W);
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_EQ(commandLineText(), QStringLiteral("w"));

    press(commandLine(), Qt::Key_F5);
    EXPECT_TRUE(until([&] { return !session().isConnected(); }));
    EXPECT_EQ(window.connectionButton->accessibleName(), QStringLiteral("Connect"));
    EXPECT_TRUE(window.ipAddress->isEnabled());
    EXPECT_FALSE(commandLine().isEnabled());
    EXPECT_TRUE(window.textFromServer->hasFocus()) << "where the last lines can be read";
    EXPECT_EQ(find<QLabel>("statusText").text(), QStringLiteral("Not connected, speech off"));
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

    QApplication::clipboard()->setText(QStringLiteral("say one\nsay two\r\nsay three\n"));
    press(commandLine(), Qt::Key_V, Qt::ControlModifier);
    press(commandLine(), Qt::Key_Return);
    EXPECT_TRUE(outputHas("You say: three"));
    EXPECT_TRUE(gameIsReady());
    for (const char* line : {"say one\n", "say two\n", "say three\n", "You say: one", "You say: two"})
        EXPECT_TRUE(outputHas(line)) << line;
    EXPECT_EQ(commandLineText(), QString());
    EXPECT_EQ(session().lastCommand(), u"say three");

    press(commandLine(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(answerAlert().first, QStringLiteral("Macro does not exist."));

    press(commandLine(), Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    QDialog& panel = waitForDialog("fontPanel");
    const auto offered = static_cast<QFontDialog&>(panel).currentFont();
    EXPECT_EQ(QFontInfo(offered).family(), QFontInfo(window.textFromServer->textFont()).family());
    EXPECT_TRUE(QFontInfo(offered).fixedPitch());
    press(panel, Qt::Key_Escape);
}

TEST_F(ZNTWindowPlay, TheStatusNamesTheGameBeingPlayedWhateverTheFieldsSay)
{
    playDemo();
    const QString title = window.windowTitle();
    fill(*window.mudName, "Another game");
    send("look");
    parts->menu["startOrPauseRecording"]->trigger();
    const QString status = find<QLabel>("statusText").text();
    EXPECT_TRUE(status.startsWith(QStringLiteral("Connected to Lantern Cove since ")))
        << status.toStdString();
    EXPECT_TRUE(status.contains(QStringLiteral(", recording"))) << status.toStdString();
    EXPECT_EQ(window.windowTitle(), title);
    press(commandLine(), Qt::Key_F5);
    EXPECT_TRUE(until([&] { return !session().isConnected(); }));
    press(*window.connectionButton, Qt::Key_Space);
    EXPECT_TRUE(until([&] { return session().isConnected(); }));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Another game - Zantor"));
}

TEST_F(ZNTWindowPlay, SpeechThatNothingCanSpeakIsNamedInTheStatusAndInNoAlert)
{
    press(window, Qt::Key_F8);
    EXPECT_EQ(find<QLabel>("statusText").text(), QStringLiteral("Not connected, speech on"));
    speech.setAvailable(false);
    EXPECT_TRUE(until([&] {
        return find<QLabel>("statusText").text() == QStringLiteral("Not connected, speech unavailable");
    }));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    speech.setAvailable(true);
    EXPECT_TRUE(until(
        [&] { return find<QLabel>("statusText").text() == QStringLiteral("Not connected, speech on"); }));
}

TEST_F(ZNTWindowPlay, AnAttemptToConnectIsGivenUpByKeyAndMenu)
{
    const SilentHost host;
    EXPECT_FALSE(parts->menu["stopConnecting"]->isEnabled());
    fill(*window.ipAddress, "127.0.0.1");
    const std::vector<std::function<void()>> waysOut{
        [&] { press(*window.port, Qt::Key_Escape); }, [&] { press(*window.mudName, Qt::Key_Escape); },
        [&] { press(*window.port, Qt::Key_F5, Qt::ShiftModifier); }};
    for (const auto& leave : waysOut) {
        fill(*window.port, std::to_string(host.port).c_str());
        press(*window.port, Qt::Key_Return);
        QTest::qWait(20);
        ASSERT_EQ(session().state(), ZNTSessionState::Connecting);
        EXPECT_TRUE(parts->menu["stopConnecting"]->isEnabled());
        leave();
        EXPECT_EQ(session().state(), ZNTSessionState::Idle);
        EXPECT_FALSE(parts->menu["stopConnecting"]->isEnabled());
        EXPECT_TRUE(window.statusText->text().startsWith(QStringLiteral("Not connected")));
        EXPECT_EQ(dialog("alert"), nullptr);
    }
}

TEST_F(ZNTWindowPlay, WalksAndSoundsAreEndedFromTheMenuAndByKey)
{
    playDemo();
    press(commandLine(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(sounds.timesAllStopped, 1);
    EXPECT_FALSE(parts->menu["stopWalking"]->isEnabled());
    for (const char* walk : {"!20n", "!20s"})
        send(walk);
    EXPECT_TRUE(session().isWalking());
    EXPECT_TRUE(parts->menu["stopWalking"]->isEnabled());
    press(commandLine(), Qt::Key_Period, Qt::ControlModifier);
    EXPECT_FALSE(session().isWalking()) << "both at once";
    EXPECT_FALSE(parts->menu["stopWalking"]->isEnabled());
}

TEST_F(ZNTWindowPlay, ANameThatBelongsToAnotherAddressIsNotTheGames)
{
    // As the list leaves the fields: a game picked, and then another address typed over it.
    parts->controller.showZNTMudListController();
    QDialog& sheet = waitForDialog("ZNTMudListView");
    press(find<QTableView>(sheet, "tableView"), Qt::Key_Return);
    EXPECT_TRUE(until([&] { return !sheet.isVisible(); }));
    const QString picked = window.mudName->text();
    EXPECT_NE(picked, QString());
    playDemo(nullptr);
    EXPECT_EQ(window.mudName->text(), picked) << "it stays as it was left";
    EXPECT_EQ(window.windowTitle(), QStringLiteral("127.0.0.1 - Zantor"));
    EXPECT_TRUE(window.statusText->text().startsWith(QStringLiteral("Connected to 127.0.0.1 since ")))
        << window.statusText->text().toStdString();
}

TEST_F(ZNTWindowPlay, TheFontPanelIsForLaterTextAndTheUsualSizeIsThePickedOne)
{
    ZNTOutputView& view = *window.textFromServer;
    const auto shownInBoth = [&] {
        EXPECT_EQ(QFontInfo(commandLine().font()).family(), QFontInfo(view.shownFont()).family());
        EXPECT_EQ(commandLine().font().pointSizeF(), view.pointSize());
        return view.pointSize();
    };
    EXPECT_EQ(shownInBoth(), 12);
    playDemo();
    EXPECT_TRUE(gameIsReady());
    const QRect before = view.characterRect(view.store().line(view.store().endLine() - 2).start);
    parts->menu["changeFont"]->trigger();
    auto& panel = static_cast<QFontDialog&>(waitForDialog("fontPanel"));
    QFont picked = panel.currentFont();
    picked.setPointSizeF(18);
    panel.setCurrentFont(picked);
    press(panel, Qt::Key_Return);
    EXPECT_TRUE(until([] { return dialog("fontPanel") == nullptr; }));
    EXPECT_EQ(shownInBoth(), 18);
    const auto earlier = view.store().endLine() - 2;
    EXPECT_EQ(view.characterRect(view.store().line(earlier).start).height(), before.height());
    send("look");
    EXPECT_TRUE(until([&] { return view.store().endLine() > earlier + 4; }));
    EXPECT_TRUE(gameIsReady());
    QTest::qWait(50);
    EXPECT_GT(view.characterRect(view.store().line(view.store().endLine() - 2).start).height(),
              before.height());
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
    press(commandLine(), Qt::Key_F5);
    EXPECT_TRUE(until([&] { return !session().isConnected(); }));
    const QString first = output();
    parts->menu["connectToServer"]->trigger();
    EXPECT_TRUE(until([&] { return session().isConnected() && output().size() > first.size() + 20; }));
    const auto& store = window.textFromServer->store();
    const auto at = static_cast<ZNTOutputStore::Position>(first.size());
    EXPECT_EQ(store.line(store.lineAt(at)).start, at);
    EXPECT_TRUE(output().startsWith(first));
    EXPECT_FALSE(first.endsWith(QLatin1Char('\n'))) << "the old one ended in a prompt";
}

TEST_F(ZNTWindowPlay, WhatIsDoneWithoutAConnectionSaysSo)
{
    playDemo();
    send("look");
    EXPECT_TRUE(window.runMacro->isEnabled());
    press(commandLine(), Qt::Key_F5);
    EXPECT_TRUE(until([&] { return !session().isConnected(); }));
    EXPECT_FALSE(window.runMacro->isEnabled());
    EXPECT_FALSE(parts->menu["invokeMacro"]->isEnabled());

    session().setSpeechOnOffBindingState(1);
    session().zntSpeechSynth().speechOn();
    press(*window.resendLastCommand, Qt::Key_Space);
    EXPECT_TRUE(outputHas("look\n"));
    EXPECT_TRUE(window.statusText->text().startsWith(QStringLiteral("Not connected")));
    EXPECT_TRUE(until([&] { return speech.hasSaid(u"Not connected"); }));
    parts->menu["startOrPauseRecording"]->trigger();
    EXPECT_TRUE(until([&] { return speech.hasSaid(u"Recording. Not connected"); }));
    EXPECT_TRUE(window.statusText->text().startsWith(QStringLiteral("Not connected, recording")));
}

TEST_F(ZNTWindowPlay, AGameThatCannotBeReachedIsTold)
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
    EXPECT_EQ(answerAlert().first, QStringLiteral("MUD Not Responding"));
    EXPECT_EQ(window.port->text(), QStringLiteral(" 65537 "));
    // An empty host is no attempt at all.
    window.ipAddress->clear();
    press(*window.connectionButton, Qt::Key_Space);
    QTest::qWait(50);
    EXPECT_EQ(dialog("alert"), nullptr);
}

TEST_F(ZNTWindowPlay, AGameGivenAtTheStartBearsItsNameInTheAddressBookOrElseItsHosts)
{
    parts->connection.connectTo(QStringLiteral("127.0.0.1"), 1);
    EXPECT_EQ(window.mudName->text(), QStringLiteral("127.0.0.1"));
    EXPECT_EQ(window.port->text(), QStringLiteral("1"));
    answerAlert();

    ZNTMudList cove;
    cove.name = u"Lantern Cove";
    cove.telnetURL = u"LocalHost";
    cove.port = 1;
    database.addNewRowMudList(cove);
    parts->connection.connectTo(QStringLiteral("localhost"), 1);
    EXPECT_EQ(window.mudName->text(), QStringLiteral("Lantern Cove"));
    answerAlert();
}

TEST_F(ZNTWindowPlay, AMissingDemoGameIsNamedWithWhatHelps)
{
    parts->menu["playDemo"]->trigger(); // not beside this program
    const auto [title, why] = answerAlert();
    EXPECT_EQ(title, QStringLiteral("Demo game"));
    EXPECT_TRUE(
        why.contains(QCoreApplication::applicationDirPath() + QStringLiteral("/zantor-demo: No such file")))
        << why.toStdString();
    EXPECT_TRUE(why.contains(QStringLiteral("install Zantor again"))) << why.toStdString();
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

    parts->menu["addMacro"]->trigger();
    EXPECT_EQ(answerAlert(), words("Macro does not exist.",
                                   "Please select a Macro Group before trying to add a new Macro."));
    parts->menu["editMacro"]->trigger();
    EXPECT_EQ(answerAlert(),
              words("Macro does not exist.", "Please select a Macro before trying to edit it."));
    press(find<QPushButton>("createNewMacroGroup"), Qt::Key_Space);
    EXPECT_EQ(answerAlert(), words("Please input a Macro Group name.",
                                   "You need to have at least 1 character for a macro name."));
    press(find<QPushButton>("deleteMacroGroup"), Qt::Key_Space);
    EXPECT_EQ(answerAlert(),
              words("Delete Macro.", "Please select a macro before trying to delete one ^_^."));

    groups.setFocus();
    type(groups, "Greetings");
    press(find<QPushButton>("createNewMacroGroup"), Qt::Key_Space);
    EXPECT_EQ(answerAlert(), words("Macro Group Created!.", "New Macro Grop Added."));
    EXPECT_EQ(groups.count(), 1);
    press(find<QPushButton>("createNewMacroGroup"), Qt::Key_Space);
    EXPECT_EQ(answerAlert(),
              words("Macro Name taken", "You can not name 2 macro groups with the same name."));

    parts->menu["editMacro"]->trigger(); // none is selected
    EXPECT_EQ(answerAlert().second, QStringLiteral("Please select the macro to edit in the list of macros."));
    EXPECT_EQ(dialog("ZNTEditMacroView"), nullptr);

    commandLine().setFocus();
    press(commandLine(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QDialog& sheet = waitForDialog("ZNTAddMacroView");
    EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
    EXPECT_EQ(find<QLabel>(sheet, "macroGroupNameLabel").text(), QStringLiteral("Greetings"));
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
    commandLine().setFocus();
    press(commandLine(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    waitForDialog("ZNTAddMacroView");
    EXPECT_EQ(find<QLineEdit>(sheet, "macroNameTF").text(), QStringLiteral("gr")) << "kept for this time";
    fill(find<QLineEdit>(sheet, "macroNameTF"), "greet");
    type(find<QWidget>(sheet, "commandText"), "say hello %1");
    press(find<QPushButton>(sheet, "doneButton"), Qt::Key_Space);
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && commandLine().hasFocus(); }));
    EXPECT_EQ(names(), QStringList{QStringLiteral("greet")});

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
    EXPECT_EQ(names(), QStringList{QStringLiteral("wave")});
    EXPECT_TRUE(until([&] { return macros.hasFocus(); }));

    press(find<QPushButton>("removeMacro"), Qt::Key_Space);
    EXPECT_TRUE(names().isEmpty());
    press(find<QPushButton>("deleteMacroGroup"), Qt::Key_Space);
    EXPECT_EQ(buttonsOfAlert(), QStringLiteral("OK (default), Cancel"));
    EXPECT_EQ(answerAlert(Qt::Key_Escape),
              words("Delete Macro.", "Are you sure you want to delete this macro?."));
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
    EXPECT_TRUE(find<QLabel>("statusText").text().contains(QStringLiteral(", recording")));
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
    EXPECT_NE(log.lines.back().find("NAME: stroll"), std::string::npos);
    EXPECT_NE(log.lines.back().find("east"), std::string::npos);
    EXPECT_NE(log.lines.back().find("SECONDS BETWEEN COMMANDS: 2"), std::string::npos);
    press(sheet, Qt::Key_Escape);
    EXPECT_TRUE(until([&] { return !sheet.isVisible() && commandLine().hasFocus(); }));
}

TEST_F(ZNTWindowPlay, TextIsFoundInTheOutputAndEscapeComesBack)
{
    playDemo();
    press(commandLine(), Qt::Key_F, Qt::ControlModifier);
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    type(*field, "LANTERN sq");
    EXPECT_TRUE(until([&] { return window.textFromServer->selectedText() == QStringLiteral("Lantern Sq"); }));
    EXPECT_TRUE(until([&] { return find<QLabel>("findStatus").text() == QStringLiteral("1 of 1"); }));
    press(*field, Qt::Key_Escape);
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_FALSE(field->isVisible());
}

TEST_F(ZNTWindowPlay, ClosingQuitsEvenWhileConnected)
{
    playDemo();
    bool closed = false;
    const auto timer = runLoop.startTimer(0, RunLoopRepeat::Once, [&] { closed = window.close(); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(closed);
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
    EXPECT_EQ(commandLineText(), QStringLiteral("look"));
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
    EXPECT_EQ(commandLineText(), QStringLiteral("half a line"));
}
