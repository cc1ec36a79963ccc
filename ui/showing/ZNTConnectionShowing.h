#pragma once

#include "ZNTStatusWords.h"

#include <QString>

class ZNTMainMenu;
class ZNTMainWindow;
class ZNTNewsAgain;

/// Shows the state of the connection: the row of fields or the one line in its place, and the buttons of the
/// status line. It announces why a connection has ended.
class ZNTConnectionShowing
{
public:
    /// A game as the player has connected to it.
    struct Game {
        QString host, port, name;
    };

    /// The caller owns all three, and they outlive this.
    ZNTConnectionShowing(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTNewsAgain& newsAgain);

    /// `game` is the one that is played or was tried last; without a host there was none yet.
    void show(const ZNTStatusFacts& now, const Game& game);

private:
    void wireFields();
    void showRow();
    void showButtons();
    void announceEnd();

    ZNTMainWindow& window;
    ZNTMainMenu& menu;
    ZNTNewsAgain& newsAgain;
    QString endInWords; ///< as it was announced last
    ZNTStatusFacts facts;
    Game game;
};
