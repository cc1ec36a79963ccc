#pragma once

#include "ZNTSettings.h"

#include <string>
#include <variant>

/// The options on the command line of the window.
struct ZNTWindowOptions {
    std::string host; ///< empty: the window opens with the address book's default
    int port = 0;
    bool demo = false;
    ZNTSettingValues settings; ///< of --set

    /// Whether `--help` is among them. It is answered before a display is opened, since there may be none.
    static bool isHelpAsked(int count, const char* const* arguments);
    /// The options, or the exit code after a usage error (2) or `--help` (0), whose words are written
    /// already.
    static std::variant<ZNTWindowOptions, int> fromArguments(int count, const char* const* arguments);
};
