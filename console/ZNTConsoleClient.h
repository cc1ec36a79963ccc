#pragma once

#include "ZNTCommandRecorderView.h"
#include "ZNTConsoleInput.h"
#include "ZNTConsoleOptions.h"
#include "ZNTConsoleOutput.h"
#include "ZNTConsoleTextView.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDemoGame.h"
#include "ZNTHeldAlert.h"
#include "ZNTMacroGroupDropDownController.h"
#include "ZNTMudMacroTableViewController.h"
#include "ZNTPlainElements.h"
#include "ZNTPlatform.h"
#include "ZNTScreenReader.h"
#include "ZNTServerConnectController.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTSoundFactory.h"
#include "ZNTSpeechEngine.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class ZNTConsoleCommands;

/// The terminal client: one session whose screen is a stream of text and whose controls are lines.
///
/// Each line is what a player would type on the command line and end with Return; one that starts with "/"
/// is a command of the client's own, and "//" sends the rest with one slash. Lines that come while a
/// connection is being made wait for it. Lines that do not come from a terminal are sent one by one, each
/// when the answer to the one before has been shown, so that a script reads the same as a session.
class ZNTConsoleClient
{
public:
    /// What the program around the client supplies; all of it outlives the client.
    struct Surroundings {
        const ZNTPlatform& platform;
        ZNTConsoleInput& input;
        bool inputIsTerminal;
        ZNTSoundFactory& sounds;
        ZNTSpeechEngine& speechEngine;
        ZNTStreamFactory streams;
        ZNTConsoleOutput& output;
        bool outputIsTerminal;
        /// Ends the program with an exit code. Called once.
        std::function<void(int)> exit;
        /// The program that the option --demo starts.
        std::string demoProgram = ZNTDemoGame::executableBesideThisProgram();
    };

    ZNTConsoleClient(Surroundings surroundings, const ZNTConsoleOptions& options);
    ~ZNTConsoleClient();

    /// Begins: connects where a game was named, and reads lines.
    void start();

    // What the client's own commands work on.
    [[nodiscard]] ZNTServerConnectController& session() { return controller; }
    [[nodiscard]] ZNTDatabaseHelper& database() { return store; }
    [[nodiscard]] ZNTMacroGroupDropDownController& macroGroups() { return groups; }
    [[nodiscard]] ZNTMudMacroTableViewController& macros() { return macroList; }
    [[nodiscard]] ZNTSoundFactory& sounds() { return surroundings.sounds; }
    [[nodiscard]] ZNTSettingsKeeper& settings() { return keeper; }
    [[nodiscard]] ZNTPlainComboBox& groupBox() { return macroGroupBox; }
    /// Shows a line of the client's own on stdout; it is not part of the game's text and not logged.
    void say(std::u16string_view line);
    /// Tells the player what was wrong with a command, on stderr.
    void complain(std::u16string_view sentence);
    /// Alerts that come until they are released wait, or are dropped.
    void holdAlerts() { alerts.hold(); }
    void releaseAlerts(bool areShown) { alerts.release(areShown); }
    /// For after a change that the store refused.
    void rereadMacroGroups();
    /// Says on stderr, if there is no connection, that what was just done reached no game.
    void complainIfNotConnected();
    void connect(std::u16string_view host, int port);
    /// Ends the connection, or gives up the attempt to make one.
    void disconnect();
    void quit();
    /// Ends recording and shows the recorded lines; given a name, saves them under it as the recorder's sheet
    /// would, with `seconds` between commands.
    void finishRecording(std::u16string_view name, std::u16string_view seconds);

    static constexpr int exitFine = 0, exitBroken = 1;
    /// Lines of a script that are read ahead of the one being sent, about.
    static constexpr std::size_t mostWaitingLines = 1000;

private:
    void handleLine(const std::string& utf8);
    void sendWaitingLines();
    void readOnOrPause();
    void carryOut(const std::string& utf8);
    void inputEnded();
    void sessionChanged();
    void useSettingsOfGame(ZNTSessionState state);
    void textShown();
    void silencePassed();
    void finishAfterLastLine();
    [[nodiscard]] bool isFarewellHeldBack() const;
    void showAlertsAfterFarewell();
    void startDemo();
    void finish(int exitCode);
    [[nodiscard]] bool mustWait() const;
    ZNTSessionScreen screen();
    ZNTSessionServices services();

    Surroundings surroundings;
    ZNTConsoleOptions options;
    ZNTHeldAlert alerts;
    std::unique_ptr<RunLoopTimer> alertTimer;
    const ZNTPlatform platform; ///< the surroundings' with `alerts`

    ZNTConsoleTextView outputView;
    ZNTPlainTextField commandLine, host, port, mudName;
    ZNTPlainButton connectionButton, directionButtons[10];
    ZNTPlainSpinner spinner;
    ZNTPlainTextArea voiceOver;
    ZNTPlainTableView macroTable, recorderTable;
    ZNTPlainComboBox macroGroupBox;
    ZNTPlainTextField recordingName, recordingSeconds;
    ZNTPlainPanel recorderSheet;

    ZNTNoScreenReader screenReader; ///< the reader reads the terminal by itself
    ZNTSettingsKeeper keeper;
    ZNTDatabaseHelper store;
    ZNTMacroGroupDropDownController groups;
    ZNTMudMacroTableViewController macroList;
    ZNTServerConnectController controller;
    ZNTCommandRecorderView _zntCommandRecorderView;
    std::unique_ptr<ZNTConsoleCommands> commands;
    std::unique_ptr<ZNTDemoGame> demoGame;

    std::deque<std::string> waitingLines;
    bool isStartingDemo = false;
    bool isAnswerAwaited = false; ///< of lines from a script: the game has not answered the last one yet
    double lastSent = 0;          ///< the run loop's time
    bool hasLostLine = false;     ///< one could not be sent
    bool hasInputEnded = false;
    bool hasFinished = false;
    ZNTSessionState knownState = ZNTSessionState::Idle;
};
