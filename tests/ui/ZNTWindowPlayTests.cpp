#include "ZNTTypingGuard.h"
#include "ZNTWindowFixture.h"

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
    EXPECT_TRUE(window.textFromServer->accessibleDescription().contains(u"Pick a game with Ctrl+G"_s));
    playDemo();
    EXPECT_EQ(window.textFromServer->accessibleDescription(), QString());
    EXPECT_EQ(window.connectionButton->accessibleName(), u"Disconnect"_s);
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_TRUE(status().startsWith(u"Connected to Lantern Cove, speech off"_s)) << "the row says since when";

    send("look guide");
    EXPECT_TRUE(outputHas("The guide smiles"));
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
    walks("> southWest", [&] { press(find<QPushButton>("southWestButton"), Qt::Key_Space); });
    walks("> up", [&] { press(commandLine(), Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier); });
    action("keypadWalks").trigger();
    press(commandLine(), Qt::Key_8, Qt::KeypadModifier);
    // What is typed while reading goes to the command line, and the letter that began it is not lost.
    window.textFromServer->setFocus();
    press(*window.textFromServer, Qt::Key_W);
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_EQ(commandLineText(), u"8w"_s);

    leaveTheGame();
    EXPECT_EQ(window.connectionButton->accessibleName(), u"Connect"_s);
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

    QApplication::clipboard()->setText(u"say one\nsay two\r\nsay three\n"_s);
    press(commandLine(), Qt::Key_V, Qt::ControlModifier);
    press(commandLine(), Qt::Key_Return);
    EXPECT_TRUE(outputHas("You say: one") && outputHas("You say: two") && outputHas("You say: three"));

    press(commandLine(), Qt::Key_F, Qt::ControlModifier);
    type(*QApplication::focusWidget(), "LANTERN sq");
    EXPECT_TRUE(until([&] { return find<QLabel>("findStatus").text() == u"1 of 1"_s; }));

    sounds.soundFromUrl("http://127.0.0.1/rain.wav")->play();
    press(commandLine(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(sounds.isPlaying());
}

TEST_F(ZNTWindowPlay, KeysWhoseEffectOnlyShowsAnswerAloud)
{
    auto& output = *window.textFromServer;
    EXPECT_TRUE(output.accessibleDescription().contains(u"F8 to have the game read aloud"_s));
    press(window, Qt::Key_F8);
    EXPECT_TRUE(output.accessibleDescription().contains(u"F8 to stop reading"_s)) << "it would stop now";
    playDemo();
    send("!20n");
    EXPECT_TRUE(action("stopWalking").isEnabled());
    press(commandLine(), Qt::Key_Period, Qt::ControlModifier);
    EXPECT_FALSE(session().isWalking() || action("stopWalking").isEnabled());
    press(commandLine(), Qt::Key_L, Qt::ControlModifier);
    for (const char* news : {"Walk stopped", "Command line"})
        EXPECT_TRUE(until([&] { return std::ranges::count(speech.said, news) == 1; })) << news;
}

TEST_F(ZNTWindowPlay, TheGameBeingPlayedIsNamedWhateverTheFieldsSay)
{
    // The list fills the fields; then the player types another address and leaves the name.
    leave(open("showZNTMudListController", "ZNTMudListView"), Qt::Key_Return);
    playDemo(nullptr);
    EXPECT_EQ(window.windowTitle(), u"127.0.0.1 - Zantor"_s);
    fill(*window.mudName, "Another game");
    action("startOrPauseRecording").trigger();
    EXPECT_TRUE(status().startsWith(u"Connected to 127.0.0.1, recording"_s)) << status().toStdString();
    leaveTheGame();
    connectAgain();
    EXPECT_EQ(window.windowTitle(), u"Another game - Zantor"_s);
}

TEST_F(ZNTWindowPlay, WhatIsDoneWithoutAConnectionSaysSo)
{
    playDemo();
    send("look");
    leaveTheGame();
    EXPECT_FALSE(window.runMacro->isEnabled());
    press(window, Qt::Key_F8);
    press(*window.resendLastCommand, Qt::Key_Space);
    action("startOrPauseRecording").trigger();
    for (const char* news : {"Not connected", "Recording. Not connected"})
        EXPECT_TRUE(until([&] { return std::ranges::count(speech.said, news) == 1; })) << news;
    speech.isFound = false;
    speech.availabilityChanged();
    EXPECT_TRUE(until([&] { return status() == u"Not connected, recording, speech unavailable"_s; }));
}

TEST_F(ZNTWindowPlay, AKeyThatHasNothingToSayYetSaysSo)
{
    for (const auto& [key, modifiers, words, isSpoken] :
         {std::tuple(Qt::Key_F7, Qt::NoModifier, "Nothing to replay yet.", false),
          {Qt::Key_Up, Qt::ControlModifier, "No line yet.", true},
          {Qt::Key_F2, Qt::NoModifier, "No line yet.", true}}) {
        speech.said.clear();
        press(window, key, modifiers);
        EXPECT_EQ(speech.said, isSpoken ? std::vector<std::string>{words} : std::vector<std::string>{});
        EXPECT_TRUE(status().endsWith(QLatin1String(words))) << status().toStdString();
    }
    playDemo();
    press(commandLine(), Qt::Key_Up, Qt::ControlModifier);
    EXPECT_NE(speech.said.back(), "No line yet.");
}

TEST_F(ZNTWindowPlay, AMacroIsMadeRunEditedAndRemoved)
{
    playDemo();
    auto& macros = *window.macroTable;
    const auto isGone = [&](QDialog& sheet, const QWidget& focused) {
        return until([&] { return !sheet.isVisible() && focused.hasFocus(); });
    };
    makeMacroGroup("Greetings");
    EXPECT_TRUE(macros.accessibleDescription().contains(u"no macros yet"_s));
    commandLine().setFocus();
    for (const auto& [button, key] :
         {std::pair{"cancelButton", Qt::Key_Return}, {"doneButton", Qt::Key_Space}}) {
        EXPECT_EQ(macros.model()->rowCount(), 0) << "Return on Cancel cancels";
        press(commandLine(), Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
        QDialog& sheet = waitForDialog("ZNTAddMacroView");
        fill(find<QLineEdit>(sheet, "macroNameTF"), "greet");
        if (key == Qt::Key_Space)
            type(find<QWidget>(sheet, "commandText"), "say hello %1");
        find<QPushButton>(sheet, button).setFocus();
        pressHere(key);
        EXPECT_TRUE(isGone(sheet, commandLine()));
    }
    EXPECT_EQ(macros.accessibleDescription(), QString());

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
    EXPECT_TRUE(isGone(edit, macros));
    EXPECT_EQ(macros.model()->index(0, 0).data(), u"wave"_s);

    press(find<QPushButton>("removeMacro"), Qt::Key_Space);
    EXPECT_EQ(macros.model()->rowCount(), 0);
    press(find<QPushButton>("deleteMacroGroup"), Qt::Key_Space);
    answerAlert();
    EXPECT_EQ(find<QComboBox>("macroComboBoxGroup").count(), 0);
}

TEST_F(ZNTWindowPlay, ARecordingIsSavedKeptRunAndStoppedByKeys)
{
    const auto ctrlShift = Qt::ControlModifier | Qt::ShiftModifier;
    playDemo();
    press(commandLine(), Qt::Key_R, ctrlShift);
    send("say one");
    press(commandLine(), Qt::Key_R, ctrlShift);
    press(commandLine(), Qt::Key_K, ctrlShift);
    QDialog& sheet = waitForDialog("ZNTCommandRecorderView2");
    auto& recorded = find<QTableView>(sheet, "_theTableView");
    type(*QApplication::focusWidget(), "stroll");
    press(find<QPushButton>(sheet, "keepButton"), Qt::Key_Space);
    EXPECT_EQ(find<QLabel>(sheet, "answer").text(), u"Kept stroll: 1 command, 1 second between them."_s);
    type(find<QWidget>(sheet, "_secondsBetweenSendingCommands"), "2");
    press(recorded, Qt::Key_Return);
    ASSERT_EQ(recorded.model()->rowCount(), 1) << "keeping copies, and saving takes its own button";
    press(find<QPushButton>(sheet, "_saveButton"), Qt::Key_Space);
    EXPECT_TRUE(log.lines.back().ends_with("NAME: stroll, COMMANDS: (say one), SECONDS BETWEEN COMMANDS: 2"))
        << log.lines.back();
    leave(sheet);

    press(commandLine(), Qt::Key_K, Qt::ControlModifier);
    QDialog& kept = waitForDialog("ZNTKeptRecordingsForm");
    auto& commands = find<QTableView>(kept, "commandsTable");
    press(find<QPushButton>(kept, "renameRecordingButton"), Qt::Key_Space);
    type(*QApplication::focusWidget(), "round");
    pressHere(Qt::Key_Return);
    const auto& recordings = find<QTableView>(kept, "recordingsTable");
    EXPECT_TRUE(until([&] { return recordings.currentIndex().data() == u"round"_s; }));
    press(find<QPushButton>(kept, "addCommandButton"), Qt::Key_Space);
    editCell(commands, 1, 0, "say two", "say two");
    press(find<QPushButton>(kept, "runRecordingAgainButton"), Qt::Key_Space);
    EXPECT_TRUE(status().contains(u"running the recording round"_s));
    EXPECT_TRUE(outputHas("You say: two"));
    press(kept, Qt::Key_Period, Qt::ControlModifier);
    EXPECT_FALSE(status().contains(u"running"_s) || action("stopWalking").isEnabled());
    press(find<QPushButton>(kept, "runRecordingButton"), Qt::Key_Space);
    press(window, Qt::Key_Period, Qt::ControlModifier);
    EXPECT_EQ(session().runningRecording(), u"");
}

TEST_F(ZNTWindowPlay, AnAlertThatComesInTheMiddleOfALineDoesNotTakeTheTyping)
{
    playDemo();
    const auto interrupt = [this] {
        type(commandLine(), "lo");
        alert.showMessage(u"Game", u"Gone.");
        waitForDialog("alert");
        announced.words.clear();
    };
    interrupt();
    for (const auto key : {Qt::Key_O, Qt::Key_K, Qt::Key_Return})
        pressHere(key);
    EXPECT_TRUE(outputHas("> look"));
    EXPECT_NE(dialog("alert"), nullptr) << "it was closed unread";
    QTest::qWait(ZNTTypingGuard::pause); // the player listens
    answerAlert();

    interrupt();
    session().connectToServer(); // ends it
    ASSERT_TRUE(until([&] { return !commandLine().isEnabled(); }));
    for (const auto key : {Qt::Key_O, Qt::Key_K, Qt::Key_X, Qt::Key_Backspace, Qt::Key_Return})
        pressHere(key);
    EXPECT_EQ(commandLineText(), u"look"_s) << "kept after the end of the session, too";
    EXPECT_FALSE(announced.words.contains(u"Game. Gone."_s)) << "the player still types";
    QTest::qWait(ZNTTypingGuard::pause);
    expectAnnounced("Game. Gone.");
    answerAlert();
    press(window, Qt::Key_F5);
    EXPECT_TRUE(until([&] { return commandLine().hasFocus() && commandLineText() == u"look"_s; }));

    interrupt();
    answerAlert(Qt::Key_Escape);
    EXPECT_EQ(commandLineText(), u"looklo"_s);
}
