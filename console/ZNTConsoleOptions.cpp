#include "ZNTConsoleOptions.h"

#include <CLI/CLI.hpp>
#include <map>
#include <utility>
#include <vector>

namespace
{

constexpr int usageError = 2;

using Colour = ZNTConsoleOptions::Colour;
const std::map<std::string, Colour> colours{
    {"auto", Colour::Auto}, {"always", Colour::Always}, {"never", Colour::Never}};

std::map<std::string, ZNTStringEncoding> encodingsByName()
{
    std::map<std::string, ZNTStringEncoding> encodings;
    for (const auto& row : ZNTStringEncodings)
        encodings.emplace(row.name, row.encoding);
    return encodings;
}

} // namespace

std::variant<ZNTConsoleOptions, int> ZNTConsoleOptions::fromArguments(int count, const char* const* arguments)
{
    ZNTConsoleOptions options;
    CLI::App app("Plays MUDs in the terminal. Type /help there for the client's own commands.",
                 "zantor-console");
    auto encoding = ZNTStringEncoding::Ascii;
    bool mccp = false, msp = false, speech = false;
    auto* encodingOption =
        app.add_option("--encoding", encoding, "the game's encoding: " + znt::encodingNames(", ", " or "))
            ->transform(CLI::CheckedTransformer(encodingsByName(), CLI::ignore_case).description(""));
    app.add_option("--colour", options.colour, "auto (colours on a terminal), always or never")
        ->transform(CLI::CheckedTransformer(colours, CLI::ignore_case).description(""));
    app.add_flag("--mccp", mccp, "accept compression (MCCP2) when the game offers it");
    app.add_flag("--msp", msp, "accept sounds (MSP) when the game offers them");
    app.add_flag("--speech", speech, "speak what the game says");
    app.add_flag("--reader", options.reader,
                 "for a screen reader of the terminal: draw nothing again, and use no colours");
    std::vector<std::string> assignments;
    app.add_option("--set", assignments, "change a setting; /set lists them")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(CLI::Validator(znt::complaintAboutAssignment, ""));
    auto* demo = app.add_flag("--demo", options.demo, "play the demo game");
    app.add_flag("--mend-home", options.mendHome, "put a broken database aside, make a new one, and end");
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
    if (encodingOption->count() > 0)
        options.settings.emplace("encoding", znt::rowOf(encoding).name);
    for (const auto& [isAsked, name] : {std::pair(mccp, "compression"), {msp, "sounds"}, {speech, "speech"}})
        if (isAsked)
            options.settings.emplace(name, "on");
    for (const auto& assignment : assignments)
        static_cast<void>(znt::addAssignment(options.settings, assignment)); // checked above
    return options;
}
