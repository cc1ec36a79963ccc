#include "ZNTConnectionWiring.h"

#include "ZNTActionWiring.h"
#include "ZNTAnnouncement.h"
#include "ZNTDemoGame.h"
#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTMudAppController.h"
#include "ZNTPlainKeys.h"
#include "ZNTQtText.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace znt;

ZNTConnectionWiring::ZNTConnectionWiring(ZNTMainWindow& window, ZNTMainMenu& menu,
                                         ZNTMudAppController& controller)
    : fields(window, controller.services().database),
      window(window),
      menu(menu),
      controller(controller),
      session(controller.serverConnectController())
{
    wireActions();
    wireFields();
    controller.whenGamePicked = [this] { gamePicked(); };
}

ZNTConnectionWiring::~ZNTConnectionWiring() { controller.whenGamePicked = nullptr; }

void ZNTConnectionWiring::wireActions()
{
    joinButton(window.connectionButton, menu["connectToServer"]);
    whenTriggered(menu["connectToServer"], [this] { connectOrDisconnect(); });
    whenTriggered(menu["stopConnecting"], [this] { giveUpConnecting(); });
    whenTriggered(menu["connectAgain"], [this] { connectAgain(); });
    whenTriggered(menu["showZNTMudListController"], [this] { controller.showZNTMudListController(); });
    whenTriggered(menu["playDemo"], [this] { playDemo(); });
}

void ZNTConnectionWiring::wireFields()
{
    QAction* connects = menu["connectToServer"];
    for (QLineEdit* field : {window.mudName, window.ipAddress, window.port})
        QObject::connect(field, &QLineEdit::returnPressed, connects, [this, connects] {
            if (session.state() == ZNTSessionState::Idle)
                connects->trigger();
        });
    // The button has the focus when a game was picked.
    new ZNTPlainKeys(*window.connectionButton, {Qt::Key_Return, Qt::Key_Enter}, [this, connects] {
        if (session.state() != ZNTSessionState::Idle)
            return false;
        connects->trigger();
        return true;
    });
    for (QWidget* widget : std::initializer_list<QWidget*>{window.mudName, window.ipAddress, window.port,
                                                           window.connectionButton})
        new ZNTPlainKeys(*widget, {Qt::Key_Escape}, [this] { return giveUpConnecting(); });
    QObject::connect(window.ipAddress, &QLineEdit::textChanged, connects, [this] { explainAddress(); });
    explainAddress();
}

/// The first words that a screen reader says to a newcomer. Later they would be said at each visit.
void ZNTConnectionWiring::explainAddress()
{
    const QString words = menu["showZNTMudListController"]->shortcut().toString() +
                          QStringLiteral(" lists games, ") + menu["playDemo"]->shortcut().toString() +
                          QStringLiteral(" plays the demo game");
    const bool isNeeded = !hasChosenGame || window.ipAddress->text().isEmpty();
    window.ipAddress->setAccessibleDescription(isNeeded ? words : QString());
}

void ZNTConnectionWiring::connectOrDisconnect()
{
    const bool wasIdle = session.state() == ZNTSessionState::Idle;
    if (!session.isConnected()) {
        hasChosenGame = !window.ipAddress->text().isEmpty();
        explainAddress();
        const QString game = fields.game();
        controller.setPlayedGame(game);
        lastGame_ = {window.ipAddress->text().trimmed(), window.port->text().trimmed(), game};
        pickedGame_.clear();
        if (game == window.mudName->text())
            fields.remember();
    }
    session.connectToServer();
    lookAtState();
    if (wasIdle && session.state() == ZNTSessionState::Idle)
        goToWhatIsMissing();
}

void ZNTConnectionWiring::connectAgain()
{
    if (session.state() != ZNTSessionState::Idle)
        return;
    if (!lastGame_.host.isEmpty())
        fields.fill(lastGame_.host, lastGame_.port.toInt(), lastGame_.name);
    connectOrDisconnect();
}

/// Then Return connects: once the list has closed and given the focus back, it is in a field or on the
/// button.
void ZNTConnectionWiring::gamePicked()
{
    fields.remember();
    hasChosenGame = true;
    explainAddress();
    announce(ZNTAnnouncement::GamePicked,
             {window.mudName->text(), menu["connectToServer"]->shortcut().toString()});
    if (session.state() != ZNTSessionState::Idle)
        return;
    pickedGame_ = window.mudName->text();
    lookAtState();
    QTimer::singleShot(0, window.connectionButton, [this] {
        const QWidget* focused = window.focusWidget();
        if (!focused || !window.connectionRow->isAncestorOf(focused))
            window.connectionButton->setFocus(Qt::OtherFocusReason);
    });
}

bool ZNTConnectionWiring::giveUpConnecting()
{
    if (session.state() != ZNTSessionState::Connecting)
        return false;
    session.stopConnecting();
    lookAtState();
    announce(ZNTAnnouncement::News, {QStringLiteral("Not connected")});
    return true;
}

void ZNTConnectionWiring::goToWhatIsMissing()
{
    if (window.ipAddress->text().isEmpty()) {
        window.ipAddress->setFocus(Qt::OtherFocusReason);
        announce(ZNTAnnouncement::News, {QStringLiteral("No address")});
    } else if (window.port->text().toInt() <= 0) {
        window.port->setFocus(Qt::OtherFocusReason);
        announce(ZNTAnnouncement::News, {QStringLiteral("No port")});
    }
}

/// Shows the state at once: the session may say on a later turn only that an attempt has ended.
void ZNTConnectionWiring::lookAtState()
{
    if (whenStateChanges)
        whenStateChanges();
}

void ZNTConnectionWiring::connectTo(const QString& host, int port, const QString& name)
{
    if (session.state() != ZNTSessionState::Idle)
        return;
    fields.fill(host, port, name);
    connectOrDisconnect();
}

void ZNTConnectionWiring::playDemo()
{
    if (session.state() != ZNTSessionState::Idle)
        return;
    const ZNTPlatform& platform = controller.services().platform;
    demoGame = std::make_unique<ZNTDemoGame>(platform.runLoop);
    demoGame->start(session.cfStringEncoding(), [this, &platform](const ZNTResult<std::uint16_t>& started) {
        if (started) {
            demoPort = QString::number(started.value());
            controller.settings().noteDemoGame("127.0.0.1", demoPort.toStdString());
            connectTo(QStringLiteral("127.0.0.1"), started.value(), QStringLiteral("Demo game"));
        } else {
            platform.alert.showMessage(u"Demo game",
                                       textOfQt(QString::fromStdString(started.error().description)));
        }
    });
}

bool ZNTConnectionWiring::isDemoPlayed() const { return demoGame && window.port->text() == demoPort; }
