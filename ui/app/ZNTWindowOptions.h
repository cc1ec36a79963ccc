#pragma once

#include <string>
#include <variant>

/// What the command line of the window asks for.
struct ZNTWindowOptions {
    std::string host; ///< empty: the window opens with the address book's default
    int port = 0;
    bool demo = false;

    /// Whether `--help` is among them. That is answered before there is a display, which may be missing.
    static bool isHelpAsked(int count, const char* const* arguments);
    /// The options, or the exit code after a usage error (2) or `--help` (0), which has been said already.
    static std::variant<ZNTWindowOptions, int> fromArguments(int count, const char* const* arguments);
};
