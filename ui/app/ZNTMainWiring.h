#pragma once

#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTMudAppController.h"
#include "ZNTStatusWords.h"

#include <memory>
#include <optional>
#include <string_view>

class ZNTAppearance;
class ZNTDemoGame;
class ZNTHelpWindow;
class ZNTKeypadKeys;
class ZNTQuitAnywhere;

/// Joins the main window's buttons, keys and menus to what they do, and keeps what it shows in step with the
/// session.
class ZNTMainWiring
{
public:
    /// The caller owns what it passes; all of it outlives this.
    ZNTMainWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller,
                  ZNTAppearance& appearance);
    ~ZNTMainWiring();

    /// Fills the connection fields and connects. Without a name it is the one in the address book, or else
    /// the host's.
    void connectTo(const QString& host, int port, const QString& name = {});
    /// Starts the demo game and connects to it. Does nothing while there is a connection.
    void playDemo();
    /// Shows what the session and the sounds answer now.
    void refresh();

private:
    [[nodiscard]] QString nameInAddressBook(const QString& host, int port) const;
    void wireConnection();
    void wirePlaying();
    void wireCommandLine();
    void wireEditing();
    void wireMacros();
    void wireSpeech();
    void wireView();
    void wireColours();
    void wireHelp();
    void go(ZNTDirection direction);
    /// What the button, the menu and the key do.
    void connectOrDisconnect();
    /// False unless there was an attempt to connect.
    bool giveUpConnecting();
    /// The name in the fields where it belongs to their address and port, else the host.
    [[nodiscard]] QString gameInFields() const;
    void rememberNamedGame();
    /// Without an address and a port there is no attempt, and no word of it but this.
    void goToWhatIsMissing();
    void chooseFont();
    void zoomControls(double points);
    /// What the status line shows to those who look.
    void sayToListeners(std::u16string_view news);
    /// The same for what is done with or without a connection, and is worth little without.
    void sayDone(std::u16string_view what);
    void sayStatus();
    void enableActions(bool isConnected);
    [[nodiscard]] ZNTStatusFacts facts() const;

    ZNTMainWindow& window;
    ZNTMainMenu& menu;
    ZNTMudAppController& controller;
    ZNTServerConnectController& session;
    ZNTAppearance& appearance;
    std::unique_ptr<ZNTDemoGame> demoGame;
    std::unique_ptr<ZNTHelpWindow> help;
    std::unique_ptr<ZNTKeypadKeys> keypadKeys;
    std::unique_ptr<ZNTQuitAnywhere> quitAnywhere;
    std::optional<ZNTStatusFacts> shownFacts;
    /// Which address and port a name stands for.
    struct NamedGame {
        QString name, host;
        int port = 0;
    };
    /// What was last picked, filled in or connected to: as long as the name is left as it was then, it names
    /// that address alone.
    NamedGame namedGame;
};
