#include "ZNTWindowOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>
#include <vector>

namespace
{
constexpr int usageError = 2;
}

bool ZNTWindowOptions::isHelpAsked(int count, const char* const* arguments)
{
    return std::any_of(arguments + 1, arguments + count,
                       [](std::string_view each) { return each == "--help" || each == "-h"; });
}

std::variant<ZNTWindowOptions, int> ZNTWindowOptions::fromArguments(int count, const char* const* arguments)
{
    ZNTWindowOptions options;
    CLI::App app("Plays MUDs in a window and reads them aloud.", "zantor");
    auto* demo = app.add_flag("--demo", options.demo, "play the demo game");
    std::vector<std::string> assignments;
    app.add_option("--set", assignments, "change a setting")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(CLI::Validator(znt::complaintAboutAssignment, ""));
    auto* host = app.add_option("HOST", options.host, "the game's host name or address")->excludes(demo);
    auto* port = app.add_option("PORT", options.port, "its port")->check(CLI::Range(1, 65535));
    host->needs(port);
    port->needs(host);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        const bool isHelp = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
        app.exit(error);
        return isHelp ? 0 : usageError;
    }
    for (const auto& assignment : assignments)
        static_cast<void>(znt::addAssignment(options.settings, assignment)); // checked above
    return options;
}
