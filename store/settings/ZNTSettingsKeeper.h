#pragma once

#include "ZNTSettingsFile.h"

#include <string>
#include <string_view>

/// Knows every value that was chosen for a setting and which of them is in force. One for each session, on
/// the run loop's thread.
///
/// A choice of this session wins over a value for the game that is played, that one over a value for all
/// games, that one over the default. The values of the command line win over all of them until the player
/// chooses again; they are never stored.
class ZNTSettingsKeeper
{
public:
    /// Reads the file if there is one. `log` outlives this.
    ZNTSettingsKeeper(const ZNTFilePlaces& places, ZNTPlatformLog& log, ZNTSettingValues ofCommandLine = {});

    [[nodiscard]] const ZNTSettings& settings() const { return inForce; }

    /// A choice of the player, by name. The error is a sentence for people.
    ZNTResult<void> choose(std::string_view name, std::string_view text);
    /// The same for choices that the player has made on the session itself: each value that is not in force.
    void noteChoices(const ZNTSettings& ofSession);

    /// From now on the values for this game count, too, and choices about a game are remembered for it.
    void beginGame(std::string_view host, std::string_view port);
    void endGame();

    [[nodiscard]] bool isRemembering() const { return file.exists(); }
    /// Begins the file, with the choices of this session, or deletes it.
    void setRemembering(bool isToRemember);

private:
    void store(const ZNTSettingRow& row, std::string_view text);
    void weigh();

    ZNTSettingsFile file;
    ZNTSettingsFile::Content remembered;
    ZNTSettingValues chosen;
    ZNTSettingValues ofCommandLine;
    std::string game; ///< "HOST PORT"; empty while none is played
    ZNTSettings inForce;
};
