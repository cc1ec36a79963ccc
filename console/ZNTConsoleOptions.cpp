#include "ZNTConsoleOptions.h"

#include "ZNTProgramArguments.h"

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Colour = ZNTConsoleOptions::Colour;
const std::vector<std::pair<std::string, Colour>> colours{
    {"auto", Colour::Auto}, {"always", Colour::Always}, {"never", Colour::Never}};

std::vector<std::pair<std::string, ZNTStringEncoding>> encodingsByName()
{
    std::vector<std::pair<std::string, ZNTStringEncoding>> encodings;
    for (const auto& row : ZNTStringEncodings)
        encodings.emplace_back(row.name, row.encoding);
    return encodings;
}

} // namespace

std::variant<ZNTConsoleOptions, int> ZNTConsoleOptions::fromArguments(int count, const char* const* arguments)
{
    ZNTConsoleOptions options;
    const std::string program = "zantor-console";
    ZNTProgramArguments parser(program, "Plays MUDs in the terminal. Type /help there to see its commands.");
    auto encoding = ZNTStringEncoding::Ascii;
    bool mccp = false, msp = false, speech = false;
    const auto encodingOption =
        parser.addChoice("--encoding", encoding, encodingsByName(), "the encoding of the game's text");
    parser.addChoice("--colour", options.colour, colours,
                     "when to show colours; auto shows them on a terminal");
    parser.addFlag("--mccp", mccp, "accept compression (MCCP2) if the game offers it");
    parser.addFlag("--msp", msp, "play the sounds of the game (MSP)");
    parser.addFlag("--speech", speech, "speak the game's text");
    parser.addFlag("--reader", options.reader,
                   "for use with a screen reader in the terminal: redraw nothing, show no colours");
    parser.addFlag("--mend-home", options.mendHome, "move a broken database aside, make a new one, and exit");
    options.addTo(parser);
    if (const auto exitCode = parser.parse(count, arguments))
        return *exitCode;
    if (!options.refusedLink.empty()) {
        std::cerr << program << ": " << options.refusedLink << '\n';
        return ZNTProgramArguments::usageError;
    }
    // What --set says wins over these.
    if (encodingOption.isGiven())
        options.settings.emplace("encoding", znt::rowOf(encoding).name);
    for (const auto& [isAsked, name] : {std::pair(mccp, "compression"), {msp, "sounds"}, {speech, "speech"}})
        if (isAsked)
            options.settings.emplace(name, "on");
    return options;
}
