#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"
#include "ZNTSettings.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What a player has asked to remember: a property list beside the folder of logs, readable by the user
/// alone. That the file exists is the player's wish to remember; without the file nothing is read or written.
///
/// The dictionary "player" holds values for all games, "games" one dictionary for each game, "window" what
/// the windows look like. Names that this version does not know stay in the file. Every change is written in
/// one step. Before it, the file is read again, because another window may have changed it.
class ZNTSettingsFile
{
public:
    /// `log` outlives this.
    ZNTSettingsFile(const ZNTFilePlaces& places, ZNTPlatformLog& log);

    [[nodiscard]] bool exists() const;
    /// Makes a file without values, unless there is a file.
    void begin();
    void remove();

    struct Content {
        ZNTSettingValues player;
        std::map<std::string, ZNTSettingValues, std::less<>> games;
        ZNTSettingValues looks; ///< a node that holds no text is an empty one
    };
    /// Puts a damaged file aside, with a line in the log, and begins a new one. Nothing if there is no file.
    Content read();
    /// Stores the values in one step: for `game`, or for all games if that is empty. Does nothing if there is
    /// no file.
    void store(std::string_view game, const ZNTSettingValues& values);
    /// The same for what the windows look like. A value without text is removed.
    void storeLooks(const ZNTSettingValues& values);
    /// Takes the value of one setting of `game` out of the file.
    void forget(std::string_view game, std::string_view name);

private:
    using Keys = std::vector<std::string>;
    void storeUnder(const Keys& keys, const ZNTSettingValues& values);
    void change(const Keys& keys, const std::function<void(void* dictionary)>& change);
    void putAside();
    void write(const std::string& content);

    std::string path;
    ZNTPlatformLog& log;
};
