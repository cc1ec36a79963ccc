#pragma once

#include <string>
#include <string_view>

/// Where the program's files are. Paths are UTF-8 without a trailing slash unless said otherwise.
struct ZNTFilePlaces {
    /// The player's home: `$HOME`, or that of the user database if `$HOME` is unset or relative. All user
    /// data is below it.
    std::string home;
    /// Holds the shipped resources ("zantorDB.db", "database_properties.plist", "dying_groan.wav", icons).
    std::string resources;
    /// Holds what may be thrown away ($XDG_CACHE_HOME/zantor, else ~/.cache/zantor).
    std::string cache;

    /// The places of the running program: resources beside the executable (../share/zantor), else those
    /// that the build names: of the build tree, or of an installed system.
    static ZNTFilePlaces forThisProcess();

    [[nodiscard]] std::string resource(std::string_view fileName) const;
    /// The folder of sound files, with its trailing slash: home/Music/Zantor/sounds/
    [[nodiscard]] std::string soundFolder() const;
};
