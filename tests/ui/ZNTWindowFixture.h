#pragma once

#include "QtRunLoop.h"
#include "ZNTAnnounced.h"
#include "ZNTApplicationWindow.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDemoGame.h"
#include "ZNTFirstStart.h"
#include "ZNTHintedTable.h"
#include "ZNTOutputView.h"
#include "ZNTQtAlert.h"
#include "ZNTQtText.h"
#include "ZNTRecordedSounds.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTScreenReader.h"
#include "ZNTSocketStream.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTTestPlatform.h"

#include <QTest>
#include <QtWidgets>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

/// How long a test waits for what must come, in milliseconds. A busy machine needs seconds for the pictures
/// of a dense screen, and layouts settle over half a dozen of them.
inline constexpr int patience = 30'000;

/// The whole window over a home of its own, with keys pressed and widgets read as a player would.
class ZNTWindowFixture : public testing::Test
{
protected:
    ZNTWindowFixture()
    {
        alert.setMainWindow(&window);
        window.show();
        window.activateWindow(); // there is no window manager here
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window, patience));
        announced.words.clear();
    }

    static bool until(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, patience); }

    template <typename Widget>
    static Widget& find(QWidget& in, const char* name)
    {
        if (auto* found = in.findChild<Widget*>(QString::fromLatin1(name)))
            return *found;
        throw std::runtime_error(std::string("no widget ") + name);
    }
    template <typename Widget>
    Widget& find(const char* name)
    {
        return find<Widget>(window, name);
    }

    static void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&widget, key, modifiers);
    }
    /// To whatever has the focus, as a keyboard would.
    static void pressHere(Qt::Key key) { press(*QApplication::focusWidget(), key); }
    static void type(QWidget& widget, const char* text)
    {
        QTest::keyClicks(&widget, QString::fromUtf8(text));
    }
    /// Types a line on the command line and sends it.
    void send(const char* line)
    {
        type(commandLine(), line);
        press(commandLine(), Qt::Key_Return);
    }
    static void fill(QLineEdit& field, const char* text)
    {
        field.setFocus();
        field.selectAll();
        type(field, text);
    }

    /// Types into the cell and ends with Return; the view takes what it allows of the text on a later turn.
    static void editCell(QTableView& table, int row, int column, const char* text, const char* taken)
    {
        const QModelIndex cell = table.model()->index(row, column);
        table.setFocus();
        table.setCurrentIndex(cell);
        press(table, Qt::Key_F2);
        type(*QApplication::focusWidget(), text);
        pressHere(Qt::Key_Return);
        EXPECT_TRUE(until([&] { return cell.data().toString() == QLatin1String(taken); }));
    }

    /// The dialog of that name that is on the screen, or null.
    static QDialog* dialog(const char* name)
    {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->isVisible() && each->objectName() == QLatin1String(name))
                return qobject_cast<QDialog*>(each);
        return nullptr;
    }
    QDialog& waitForDialog(const char* name)
    {
        if (!until([&] { return dialog(name) != nullptr && dialog(name)->isActiveWindow(); }))
            throw std::runtime_error(std::string("no dialog ") + name);
        return *dialog(name);
    }
    QDialog& open(ZNTActionName opener, const char* name)
    {
        action(opener).trigger();
        return waitForDialog(name);
    }
    QDialog& openPreferences() { return open("showPreferencesView", "PreferencesView"); }
    /// Closes it with the key, until the window has the focus again.
    void leave(QDialog& sheet, Qt::Key key = Qt::Key_Escape)
    {
        const QByteArray name = sheet.objectName().toLatin1();
        press(sheet, key);
        EXPECT_TRUE(until([&] { return dialog(name.constData()) == nullptr && window.isActiveWindow(); }));
    }
    /// The title of the alert on the screen, which is answered with `key`.
    QString answerAlert(Qt::Key key = Qt::Key_Return)
    {
        auto& box = static_cast<QMessageBox&>(waitForDialog("alert"));
        const QString said = box.text();
        press(box, key);
        EXPECT_TRUE(
            until([] { return dialog("alert") == nullptr && QApplication::activeWindow() != nullptr; }));
        return said;
    }
    /// Connects to a demo game through the fields and the keyboard. Null leaves the name as it stands.
    void playDemo(const char* name = "Lantern Cove")
    {
        std::uint16_t port = 0;
        game = std::make_unique<ZNTDemoGame>(runLoop, ZANTOR_DEMO_PROGRAM);
        game->start(ZNTStringEncoding::Ascii, [&](ZNTResult<std::uint16_t> started) {
            ASSERT_TRUE(started);
            port = started.value();
        });
        ASSERT_TRUE(until([&] { return port != 0; }));
        if (name)
            fill(*window.mudName, name);
        fill(*window.ipAddress, "127.0.0.1");
        fill(*window.port, std::to_string(port).c_str());
        press(*window.port, Qt::Key_Return);
        ASSERT_TRUE(until([&] { return session().isConnected(); }));
        ASSERT_TRUE(outputHas("Lantern Square"));
    }
    /// Ends the connection with its key.
    void leaveTheGame()
    {
        press(window, Qt::Key_F5);
        EXPECT_TRUE(until([&] { return session().state() == ZNTSessionState::Idle; }));
    }
    /// Connects with the key, to what the fields say.
    void connectAgain()
    {
        press(window, Qt::Key_F5);
        ASSERT_TRUE(until([&] { return session().isConnected(); }));
    }
    void makeMacroGroup(const char* name)
    {
        find<QComboBox>("macroComboBoxGroup").setEditText(QString::fromUtf8(name));
        find<QPushButton>("createNewMacroGroup").click();
        answerAlert();
    }
    /// Fills in the sheet and ends it with its button.
    void addMacro(const char* name, const char* text = "", QKeyCombination key = Qt::Key_unknown)
    {
        QDialog& sheet = open("addMacro", "ZNTAddMacroView");
        auto& field = find<QLineEdit>(sheet, "macroKeyField");
        EXPECT_TRUE(field.text().isEmpty()) << "of the macro before";
        if (key.key() != Qt::Key_unknown)
            press(field, key.key(), key.keyboardModifiers());
        fill(find<QLineEdit>(sheet, "macroNameTF"), name);
        type(find<QWidget>(sheet, "commandText"), text);
        find<QPushButton>(sheet, "doneButton").click();
        EXPECT_TRUE(until([&] { return !sheet.isVisible() && window.isActiveWindow(); }));
    }
    void expectAnnounced(const char* what)
    {
        EXPECT_TRUE(until([&] { return announced.words.contains(QString::fromUtf8(what)); }))
            << what << " is not among: " << announced.words.join(u"; ").toStdString();
        announced.words.clear();
    }
    QAction& action(ZNTActionName name) { return *parts->menu[name]; }
    QString status() { return window.statusText->text(); }
    static QString textOf(const ZNTOutputView& view)
    {
        return znt::qtText(view.store().text(view.store().start(), view.store().end()));
    }
    QString output() { return textOf(*window.textFromServer); }
    bool outputHas(const char* text)
    {
        return until([&] { return output().contains(QString::fromUtf8(text)); });
    }
    /// Until the game has answered and asks for the next command.
    bool gameIsReady()
    {
        return until([&] { return output().endsWith(u"> "_s); });
    }
    /// The program's next start in the same home, over the same window.
    void startAgain()
    {
        parts.reset();
        parts = std::make_unique<ZNTApplicationWindow>(window, services());
    }
    ZNTWindowServices services()
    {
        return {platform, database, sounds, speech, screenReader, socketStreams(runLoop)};
    }
    ZNTServerConnectController& session() { return parts->controller.serverConnectController(); }
    QWidget& commandLine() { return find<QWidget>("textToServer"); }
    QString commandLineText() { return find<QLineEdit>("textToServer").text(); }

    ZNTTemporaryFolder home;
    QtRunLoop runLoop;
    ZNTSystemClock clock;
    ZNTRecordedLog log;
    ZNTNotificationCenter notifications;
    ZNTQtAlert alert;
    ZNTPlatform platform{
        runLoop,       clock, log,
        notifications, alert, {home.path(), ZNTFilePlaces::forThisProcess().resources, home.path(".cache")}};
    ZNTDatabaseHelper database{platform.places, log};
    ZNTRecordedSounds sounds;
    ZNTRecordedSpeech speech;
    ZNTNoScreenReader screenReader;
    ZNTMainWindow window;
    std::unique_ptr<ZNTApplicationWindow> parts = std::make_unique<ZNTApplicationWindow>(window, services());
    std::unique_ptr<ZNTDemoGame> game;
    ZNTAnnounced announced;
};
