#include "ZNTStatusButtons.h"
#include "ZNTTurningRing.h"
#include "ZNTWindowFixture.h"

using ZNTWindowConnection = ZNTWindowFixture;

TEST_F(ZNTWindowConnection, WhilePlayingTheFieldsAreOneLineUntilAKeyBringsThemBack)
{
    const QString key = window.connectionButton->accessibleDescription();
    EXPECT_EQ(key, u"F5"_s);
    playDemo();
    const auto& line = find<QLabel>("connectionLine");
    EXPECT_TRUE(line.isVisible());
    EXPECT_TRUE(line.text().startsWith(u"Lantern Cove, 127.0.0.1:"_s)) << line.text().toStdString();
    EXPECT_EQ(window.connectionButton->accessibleDescription(), line.text());
    EXPECT_FALSE(window.mudName->isVisible() || window.ipAddress->isVisible() || window.port->isVisible());
    EXPECT_TRUE(window.connectionButton->isVisible());

    EXPECT_FALSE(status().contains(u"since"_s)) << "once is enough";
    action("showConnectionRow").trigger(); // the whole row goes, and the key brings the fields all the same
    EXPECT_TRUE(status().startsWith(u"Connected to Lantern Cove since "_s)) << status().toStdString();
    press(commandLine(), Qt::Key_F9, Qt::ControlModifier);
    EXPECT_TRUE(window.port->isVisible() && !line.isVisible());
    EXPECT_TRUE(status().startsWith(u"Connected to Lantern Cove since "_s)) << status().toStdString();
    EXPECT_FALSE(window.ipAddress->isEnabled() || window.port->isEnabled());
    EXPECT_TRUE(commandLine().hasFocus());
    window.mudName->setFocus();
    press(*window.mudName, Qt::Key_F9, Qt::ControlModifier);
    EXPECT_TRUE(line.isVisible() && commandLine().hasFocus()) << "the field with the focus has gone";

    leaveTheGame();
    EXPECT_TRUE(window.ipAddress->isVisible() && window.ipAddress->isEnabled());
    EXPECT_EQ(window.connectionButton->accessibleDescription(), key) << "else readers say the tool tip";
}

TEST_F(ZNTWindowConnection, AnEndSaysWhyAndTheSameGameIsOneKeyAway)
{
    auto& again = *window.statusButtons->connectAgain;
    EXPECT_FALSE(again.isVisible()) << "there was no game yet";
    playDemo();
    const QString port = window.port->text();
    send("quit");
    EXPECT_EQ(answerAlert(), u"MUD Not Responding"_s);
    const QRegularExpression closed(u"^Not connected: closed by the game at \\d\\d:\\d\\d, speech off$"_s);
    EXPECT_TRUE(closed.match(status()).hasMatch()) << status().toStdString();
    EXPECT_TRUE(again.isVisible());

    fill(*window.mudName, "Another game");
    fill(*window.port, " 65537 "); // any number is taken, and cut to the 16 bits of a port
    window.connectionButton->setFocus();
    pressHere(Qt::Key_Space);
    EXPECT_EQ(answerAlert(), u"MUD Not Responding"_s);
    EXPECT_TRUE(window.connectionButton->hasFocus());
    EXPECT_EQ(status(), u"Not connected: connection refused, speech off"_s);

    fill(*window.mudName, "Lantern Cove");
    fill(*window.port, port.toLatin1().constData());
    connectAgain();
    EXPECT_FALSE(again.isVisible());
    leaveTheGame();
    EXPECT_EQ(status(), u"Not connected, speech off"_s) << "the player knows why";
    fill(*window.ipAddress, "nowhere.invalid");
    again.setFocus();
    press(again, Qt::Key_Space);
    ASSERT_TRUE(until([&] { return session().isConnected(); }));
    EXPECT_EQ(window.port->text(), port);
    EXPECT_EQ(window.windowTitle(), u"Lantern Cove - Zantor"_s);
}

TEST_F(ZNTWindowConnection, AnAttemptTurnsARingAndIsGivenUpByKeyMenuAndButton)
{
    fill(*window.ipAddress, "127.0.0.1");
    fill(*window.port, "1");
    auto& ring = static_cast<ZNTTurningRing&>(*window.myProgressIndicator);
    auto& stop = *window.statusButtons->stopConnecting;
    for (const auto& giveUp : std::initializer_list<std::function<void()>>{
             [&] { press(*window.mudName, Qt::Key_Escape); },
             [&] { press(*window.mudName, Qt::Key_F5, Qt::ShiftModifier); },
             [&] { stop.setFocus(), pressHere(Qt::Key_Space); }}) {
        EXPECT_FALSE(ring.isVisible() || ring.isTurning() || stop.isVisible());
        press(*window.port, Qt::Key_Return); // the answer comes on a later turn
        EXPECT_TRUE(ring.isVisible() && stop.isVisible() && action("stopConnecting").isEnabled());
        giveUp();
        EXPECT_EQ(session().state(), ZNTSessionState::Idle);
    }
    EXPECT_FALSE(ring.isVisible() || ring.isTurning() || stop.isVisible());
    EXPECT_TRUE(window.statusButtons->connectAgain->hasFocus()) << "what takes its place takes the focus";
}

TEST_F(ZNTWindowConnection, TheFirstStartIsPlayedFromItsCard)
{
    ZNTFirstStart& card = *window.firstStart;
    card.firstStartRemember->setFocus();
    pressHere(Qt::Key_Space);
    EXPECT_TRUE(parts->controller.settings().isRemembering());
    auto& listening = *window.listeningBox;
    EXPECT_TRUE(listening.isVisible());
    listening.setFocus();
    pressHere(Qt::Key_Space);
    EXPECT_TRUE(action("setUpForListening").isChecked());
    EXPECT_TRUE(listening.isChecked() && !listening.isVisible())
        << "a reader asks for the mark after it has gone";
    EXPECT_TRUE(window.ipAddress->hasFocus());
    action("setUpForListening").trigger();
    EXPECT_TRUE(listening.isVisible() && !listening.isChecked());
    card.firstStartGames->setFocus();
    pressHere(Qt::Key_Return);
    press(find<QTableView>(waitForDialog("ZNTMudListView"), "tableView"), Qt::Key_Return);
    EXPECT_TRUE(until([&] { return window.connectionButton->hasFocus(); }));
    EXPECT_EQ(card.firstStartWords->text(), u"Press Return to connect to Aardwolf"_s);
    EXPECT_TRUE(window.textFromServer->accessibleDescription().startsWith(u"Press Return"_s));
    fill(*window.ipAddress, "127.0.0.1");
    fill(*window.port, "0");
    window.connectionButton->setFocus();
    pressHere(Qt::Key_Return);
    EXPECT_TRUE(window.port->hasFocus()) << "Return on the button connects, if there is where to";
    window.ipAddress->clear();
    press(*window.connectionButton, Qt::Key_Space);
    EXPECT_TRUE(window.ipAddress->hasFocus());

    playDemo();
    EXPECT_TRUE(commandLine().hasFocus());
    EXPECT_FALSE(card.isVisible());
    leaveTheGame();
    session().clearScreen();
    EXPECT_FALSE(card.isVisible()) << "not a newcomer any more";
}
