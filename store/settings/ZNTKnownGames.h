#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"
#include "ZNTSettings.h"

#include <map>
#include <string>
#include <string_view>

/// The settings of the games that are shipped, so that these games play well at once. They come from the
/// resource "known-games", a text that people may edit.
///
/// A line is HOST PORT NAME=VALUE..., separated by blanks. Empty lines and lines that start with "#" mean
/// nothing. A line that is wrong is skipped, and a sentence in the log says why.
class ZNTKnownGames
{
public:
    /// Reads the resource. If there is none, the log says so and no game is known.
    static ZNTKnownGames shipped(const ZNTFilePlaces& places, ZNTPlatformLog& log);
    static ZNTKnownGames fromText(std::string_view text, ZNTPlatformLog& log);

    /// Of the game with that key (`znt::gameKey`); empty if it is not known.
    [[nodiscard]] const ZNTSettingValues& settingsOf(std::string_view key) const;

private:
    ZNTResult<void> addLine(std::string_view line);

    std::map<std::string, ZNTSettingValues, std::less<>> games;
};

namespace znt
{

/// "host port", by which the settings of a game are found. It is made of the text of the fields, never of an
/// address that a name led to. Case and a dot at the end of the host do not count.
std::string gameKey(std::string_view host, std::string_view port);

} // namespace znt
