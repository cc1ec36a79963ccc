#pragma once

#include "ZNTPlayArguments.h"

#include <string_view>
#include <variant>

/// What the command line of the terminal client says. Its settings are also those of --encoding, --mccp,
/// --msp and
/// --speech.
struct ZNTConsoleOptions : ZNTPlayArguments {
    enum class Colour { Auto, Always, Never };

    Colour colour = Colour::Auto;
    bool reader = false;   ///< for a screen reader that reads the terminal
    bool mendHome = false; ///< put a broken store aside, then end

    /// Whether text is coloured on an output that is, or is not, a terminal.
    [[nodiscard]] bool isInColour(bool outputIsTerminal) const
    {
        return colour == Colour::Always || (colour == Colour::Auto && outputIsTerminal);
    }

    /// Whether text is only appended: nothing on the terminal is drawn again, and the terminal edits the
    /// lines that are typed. `term` is the environment's TERM, empty if it is not set.
    [[nodiscard]] bool appendsOnly(std::string_view term) const
    {
        return reader || term.empty() || term == "dumb" || term == "unknown";
    }

    /// The options, or the exit code of a program that has said all it has to: 0 after the help, 2 after a
    /// mistake, which stderr then explains.
    static std::variant<ZNTConsoleOptions, int> fromArguments(int count, const char* const* arguments);
};
