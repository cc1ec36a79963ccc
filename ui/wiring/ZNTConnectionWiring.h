#pragma once

#include "ZNTConnectionShowing.h"
#include "ZNTGameFields.h"

#include <functional>
#include <memory>

class ZNTDemoGame;
class ZNTMainMenu;
class ZNTMudAppController;
class ZNTServerConnectController;

/// Joins the connection row and its actions to the session: connecting, giving up, disconnecting, the demo
/// game.
class ZNTConnectionWiring
{
public:
    /// The caller owns what it passes; all of it outlives this.
    ZNTConnectionWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller);
    ~ZNTConnectionWiring();

    /// Fills the connection fields and connects. Without a name it is the one in the address book, or else
    /// the host's. Does nothing while there is a connection.
    void connectTo(const QString& host, int port, const QString& name = {});
    /// Starts the demo game and connects to it. Does nothing while there is a connection.
    void playDemo();

    [[nodiscard]] bool isDemoPlayed() const;
    /// The game that is played, or to which the player tried to connect last.
    [[nodiscard]] const ZNTConnectionShowing::Game& lastGame() const { return lastGame_; }
    /// The name of the game that was picked from the list and waits for the player to connect; else empty.
    [[nodiscard]] const QString& pickedGame() const { return pickedGame_; }

    /// Called when the session's state is to be looked at again.
    std::function<void()> whenStateChanges;
    ZNTGameFields fields;

private:
    void wireActions();
    void wireFields();
    /// What the button, the menu and the key do.
    void connectOrDisconnect();
    /// To the last game, whatever the fields say; without one, to the game in the fields.
    void connectAgain();
    void gamePicked();
    /// False unless there was an attempt to connect.
    bool giveUpConnecting();
    /// Goes to the field that is empty: without an address and a port there is no attempt, and nothing else
    /// says so.
    void goToWhatIsMissing();
    void lookAtState();
    /// Says the games' list and the demo game at the address field, until the player has chosen a game.
    void explainAddress();

    ZNTMainWindow& window;
    ZNTMainMenu& menu;
    ZNTMudAppController& controller;
    ZNTServerConnectController& session;
    std::unique_ptr<ZNTDemoGame> demoGame;
    ZNTConnectionShowing::Game lastGame_;
    QString pickedGame_;
    bool hasChosenGame = false; ///< picked one, or tried to connect
    QString demoPort;           ///< of the demo game that was started last
};
