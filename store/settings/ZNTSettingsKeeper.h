#pragma once

#include "ZNTKnownGames.h"
#include "ZNTSettingsFile.h"

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// Knows every value that was chosen for a setting and which of them is in force. One for each session, on
/// the run loop's thread.
///
/// A choice of this session wins over the player's value for the game that is played, that one over the value
/// that is shipped for the game, that one over the player's value for all games, that one over the default.
/// The values of the command line win over all of them until the player chooses again; they are never stored.
/// Only a choice of this session for one game alone, as in its sheet, wins over those as well.
///
/// A row of the table may follow another one. Then it has that one's value while no value was chosen for it.
/// While a connection stands, it has the value with which the connection began.
class ZNTSettingsKeeper
{
public:
    /// Reads the file if there is one, and the shipped games. `log` outlives this.
    ZNTSettingsKeeper(const ZNTFilePlaces& places, ZNTPlatformLog& log, ZNTSettingValues ofCommandLine = {});

    [[nodiscard]] const ZNTSettings& settings() const { return inForce; }

    /// A choice of the player, by name. The error is a sentence for people. What `znt::listening` stands for
    /// is always chosen for all games.
    ZNTResult<void> choose(std::string_view name, std::string_view text);
    /// The same for all games, also while one is played. The player's choice of this session ends.
    ZNTResult<void> chooseForAllGames(std::string_view name, std::string_view text);
    /// What a game has for which nothing else was chosen.
    [[nodiscard]] ZNTSettings settingsForAllGames() const;

    // The settings of one game, also while it is not played. `game` is its key (`znt::gameKey`), `name` a
    // setting whose scope is the game.

    /// A choice for that game alone. It holds until the program ends, and longer if it is remembered. A later
    /// choice while that game is played takes its place. An empty text takes the choice back.
    ZNTResult<void> chooseForGame(const std::string& game, std::string_view name, std::string_view text);
    /// What was chosen for that game alone; empty if nothing was.
    [[nodiscard]] std::string chosenForGame(const std::string& game, std::string_view name) const;
    /// What that game has where nothing was chosen for it alone.
    [[nodiscard]] ZNTSettings usualSettingsOf(const std::string& game) const;
    /// The same for choices that the player has made on the session itself: each value that is not in force.
    void noteChoices(const ZNTSettings& ofSession);

    /// From now on the values for this game count, too, and choices about a game are remembered for it.
    void beginGame(std::string_view host, std::string_view port);
    /// That is the address of the demo game in this run. Each start gives it another port, so it has one key
    /// of its own, under which its settings are found again.
    void noteDemoGame(std::string_view host, std::string_view port);
    /// The connection stands; what follows another setting stays as it is until the game ends.
    void gameConnected();
    void endGame();
    /// Whether the game is played with a value of its own.
    [[nodiscard]] bool hasSettingsForGame() const { return hasSettingsForGame_; }
    /// Whether the player may not know of standard telnet: nothing says whether this game is to have it.
    [[nodiscard]] bool mayNeedHint() const;

    [[nodiscard]] bool isRemembering() const { return file.exists(); }
    /// Begins the file, with the choices of this session, or deletes it.
    void setRemembering(bool isToRemember);
    /// Called when the file has begun or was there already, for what is kept besides settings. Optional.
    std::function<void()> whenRemembering;

    /// What the windows of an earlier run have left, by name.
    [[nodiscard]] const ZNTSettingValues& looks() const { return remembered.looks; }
    void keepLooks(const ZNTSettingValues& values) { file.storeLooks(values); }

private:
    /// Whose value it is, from the weakest word to the strongest.
    enum Layer { AllGames, AllGamesNow, KnownGame, OwnOfGame, Session, CommandLine, OwnOfGameNow };
    using Layers = std::array<const ZNTSettingValues*, 7>;
    using NamedBy = std::map<std::string, Layer, std::less<>>; ///< the strongest layer with a good value

    [[nodiscard]] Layers layers(std::string_view game) const;
    [[nodiscard]] ZNTSettings weighed(const Layers& all, NamedBy& namedBy) const;
    void store(std::string_view whose, const ZNTSettingValues& values);
    void store(const ZNTSettingRow& row, std::string_view text);
    void weigh();

    ZNTSettingsFile file;
    ZNTSettingsFile::Content remembered;
    ZNTKnownGames known;
    ZNTSettingValues chosen, chosenForAllGames;                          ///< in this session
    std::map<std::string, ZNTSettingValues, std::less<>> chosenForGames; ///< in this session
    ZNTSettingValues ofCommandLine;
    std::string game;                     ///< its key; empty while none is played
    std::string demoAddress;              ///< as the key of any other game; empty if there is no demo game
    std::optional<ZNTSettings> atConnect; ///< while a connection stands
    NamedBy namedBy;
    bool hasSettingsForGame_ = false;
    ZNTSettings inForce;
};
