#pragma once

#include "ZNTAnnouncer.h"
#include "ZNTConnectionShowing.h"
#include "ZNTFirstStartShowing.h"
#include "ZNTMainMenu.h"
#include "ZNTMainWindow.h"
#include "ZNTMudAppController.h"
#include "ZNTNewsAgain.h"
#include "ZNTSilenceKeys.h"
#include "ZNTStatusLine.h"
#include "ZNTWhatsThisAnnouncer.h"

#include <memory>
#include <string_view>

class ZNTAppearance;
class ZNTChannelHistorySheet;
class ZNTConnectionWiring;
class ZNTHelpWindow;
class ZNTKeypadKeys;
class ZNTMacroWiring;
class ZNTQuitAnywhere;
class ZNTTypingHelp;
class ZNTWebAddressDialogs;

/// Joins the main window's buttons, keys and menus to what they do, and keeps what it shows in step with the
/// session: what changed says which part is looked at again.
class ZNTMainWiring
{
public:
    /// The caller owns what it passes; all of it outlives this.
    ZNTMainWiring(ZNTMainWindow& window, ZNTMainMenu& menu, ZNTMudAppController& controller,
                  ZNTConnectionWiring& connection, ZNTAppearance& appearance);
    ~ZNTMainWiring();

    /// Shows everything, as at the start.
    void showAll();
    /// For a screen reader that comes later than the program: says the keys for speech and for help, unless
    /// speech is on already.
    void welcomeReader();
    /// Says once, in the start that made the player's store, which key sets the client up for listening.
    void offerListening();

private:
    void wireGame();
    void wireDirections();
    void wireRecorder();
    void wireCommandLine();
    void wireTypingHelp();
    void wireEditing();
    void wireSpeech();
    /// `words` live as long as the program.
    void showNothingYet(std::u16string_view words);
    void sayNothingYet(std::u16string_view words);
    void wireChannels();
    [[nodiscard]] std::u16string placeInPreferences(std::string_view setting) const;
    void wireReview();
    void wireView();
    void wireColours();
    void wireHelp();
    void setKeypadWalks(bool walks);
    void wireSidePanel();
    /// Says in the status line how the side panel comes back, once: it has folded away by itself.
    void explainFoldedPanel();
    void showTime();
    void wirePlaces();
    /// What the window shows only to those who look.
    static void say(std::u16string_view news);
    /// For what is done with or without a connection, and is worth little without: adds that there is none.
    void sayDone(std::u16string_view what);
    void setSpeech(bool on);
    void setUpForListening(bool on);
    void showListeningBox();
    [[nodiscard]] bool maySetUpForListening() const;

    void sessionChanged(ZNTSessionChange what);
    void showState();
    void announceConnection();
    [[nodiscard]] QStringList keysOfWelcome() const;
    [[nodiscard]] QString emptyHint() const;
    [[nodiscard]] QString hintOfPickedGame() const;
    void showEmptyHint();
    void showEncoding();
    void showSettings();
    void showNotice(const ZNTSessionNotice& notice);
    void showTyping();
    void sayTyping();
    void showRecording();
    void showWalking();
    void showSpeech();

    ZNTMainWindow& window;
    ZNTMainMenu& menu;
    ZNTMudAppController& controller;
    ZNTConnectionWiring& connection;
    ZNTServerConnectController& session;
    ZNTAppearance& appearance;
    ZNTStatusLine status;
    ZNTNewsAgain newsAgain;
    ZNTConnectionShowing connectionShowing;
    ZNTFirstStartShowing firstStart;
    ZNTSilenceKeys silenceKeys;
    ZNTAnnouncer announcer;
    ZNTWhatsThisAnnouncer whatsThis;
    QString runningRecording;  ///< as it was announced last
    bool wasConnected = false; ///< when the state was last shown
    ZNTStatusFacts::Connection announced = ZNTStatusFacts::Connection::None;
    bool hasPlayed = false;
    bool wasTypingHidden = false;
    bool isTypingSaidHidden = false; ///< what the player was told last
    bool hasOfferedListening = false;
    bool hasExplainedFolding = false;
    std::u16string foldedPanelWords;
    std::unique_ptr<ZNTChannelHistorySheet> channelSheet; ///< made when it is first asked for
    std::unique_ptr<ZNTHelpWindow> help;
    std::unique_ptr<ZNTWebAddressDialogs> webAddresses;
    std::unique_ptr<ZNTTypingHelp> typingHelp;
    std::unique_ptr<ZNTKeypadKeys> keypadKeys;
    std::unique_ptr<ZNTMacroWiring> macros;
    std::unique_ptr<ZNTQuitAnywhere> quitAnywhere;
};
