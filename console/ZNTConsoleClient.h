#pragma once

#include "ZNTConsoleCompletion.h"
#include "ZNTConsoleInput.h"
#include "ZNTConsoleOptions.h"
#include "ZNTConsoleOutput.h"
#include "ZNTConsoleReplies.h"
#include "ZNTConsoleScreen.h"
#include "ZNTConsoleScript.h"
#include "ZNTConsoleTextView.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDemoGame.h"
#include "ZNTHeldAlert.h"
#include "ZNTKeptRecordings.h"
#include "ZNTMacroGroups.h"
#include "ZNTPlatform.h"
#include "ZNTScreenReader.h"
#include "ZNTServerConnectController.h"
#include "ZNTSettingsKeeper.h"
#include "ZNTSoundFactory.h"
#include "ZNTSpeechEngine.h"
#include "ZNTStoredMacros.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

class ZNTConsoleCommands;

/// The terminal client: one session whose screen is a stream of text and whose controls are lines.
///
/// Each line is what a player would type on the command line and end with Return; one that starts with "/"
/// is a command of the client's own, and "//" sends the rest with one slash. `ZNTConsoleScript` says which
/// lines wait.
class ZNTConsoleClient final : private ZNTConsoleReplies
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
        ZNTColourDepth colourDepth = ZNTColourDepth::Sixteen; ///< of the output
        bool errorIsTerminal = false;                         ///< people read what is written to the log
        /// A command that only changes something, and the connection, are confirmed by a line: a player who
        /// listens sees no state.
        bool confirmsChanges = false;
        /// Ends the program with an exit code. Called once.
        std::function<void(int)> exit;
        /// The program that the option --demo starts.
        std::string demoProgram = ZNTDemoGame::executableBesideThisProgram();
    };

    ZNTConsoleClient(Surroundings surroundings, const ZNTConsoleOptions& options);
    ~ZNTConsoleClient() override;

    /// Begins: connects if a game was named, and reads lines.
    void start();

    // For the client's own commands
    [[nodiscard]] ZNTServerConnectController& session() { return controller; }
    [[nodiscard]] ZNTDatabaseHelper& database() { return store; }
    [[nodiscard]] ZNTSoundFactory& sounds() { return surroundings.sounds; }
    [[nodiscard]] ZNTSettingsKeeper& settings() { return keeper; }
    [[nodiscard]] ZNTMacroGroups& macroGroups() { return groups; }
    [[nodiscard]] ZNTKeptRecordings& keptRecordings() { return kept; }
    [[nodiscard]] ZNTAlert& alert() { return platform.alert; }
    [[nodiscard]] const ZNTFilePlaces& places() const { return platform.places; }
    [[nodiscard]] ZNTConsoleReplies& replies() { return *this; }
    void say(std::u16string_view line) override;
    void complain(std::u16string_view sentence) override;
    /// Says what has changed, if that is wanted and nothing has been said since the command was typed.
    void confirm(std::u16string_view sentence);
    /// If there is no connection, says so on stderr, because the last command has reached no game.
    void complainIfNotConnected();
    void connect(std::u16string_view host, int port);
    /// Ends the connection, or gives up the attempt to make one.
    void disconnect();
    void quit();
    /// For the next connection.
    void setStandardTelnet(bool isOn);
    /// Ends recording and shows the recorded lines. If `name` is not empty, saves them as the recorder's
    /// sheet does, with `seconds` between commands.
    void finishRecording(std::u16string_view name, std::u16string_view seconds);

    static constexpr int exitFine = 0, exitBroken = 1;

private:
    void handleLine(const std::string& utf8);
    void silenceAtKey(bool isReturn);
    void carryOut(const std::string& utf8);
    [[nodiscard]] bool isOwnCommand(std::string_view utf8) const;
    void stateChanged();
    void confirmState();
    void useSettingsOfGame();
    void showNotice(const ZNTSessionNotice& notice);
    void noteTerminalSize();
    void startDemo();
    void finish(int exitCode);
    [[nodiscard]] bool isFarewellHeldBack() const;
    ZNTSessionServices services();

    Surroundings surroundings;
    ZNTConsoleOptions options;
    ZNTHeldAlert alerts;
    const ZNTPlatform platform; ///< the surroundings' with `alerts`

    ZNTConsoleTextView outputView;
    ZNTConsoleCompletion completion; ///< stands before the view on a terminal
    ZNTConsoleScreen screen;
    ZNTNoScreenReader screenReader; ///< the reader reads the terminal by itself
    ZNTSettingsKeeper keeper;
    ZNTKeptRecordings kept;
    ZNTDatabaseHelper store;
    ZNTMacroGroups groups; ///< made before the session, so that it is the first to open the store
    ZNTStoredMacros macros;
    ZNTServerConnectController controller;
    ZNTConsoleScript script;
    std::unique_ptr<ZNTConsoleCommands> commands;
    std::unique_ptr<ZNTDemoGame> demoGame;

    bool hasLostLine = false; ///< one could not be sent
    bool hasFinished = false;
    bool isHintShown = false;
    bool hasAnswered = false; ///< the command that is carried out
    ZNTSessionState confirmedState = ZNTSessionState::Idle;
    bool areGameSettingsSaid = false; ///< in this connection
};
