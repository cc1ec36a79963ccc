#pragma once

#include "ZNTPlayArguments.h"

#include <variant>

/// The command line of the window. Without a host the window opens with the address book's default.
struct ZNTWindowOptions : ZNTPlayArguments {
    /// The first argument that only asks for an answer, as --help does; null if there is none.
    static const char* question(int count, const char* const* arguments);

    /// The number of arguments that Qt may look at: those before "--", because Qt does not know that options
    /// end there.
    static int countForQt(int count, const char* const* arguments);

    /// The options, or the exit code after a usage error (2) or an answer (0), whose words are written
    /// already.
    static std::variant<ZNTWindowOptions, int> fromArguments(int count, const char* const* arguments);
};
