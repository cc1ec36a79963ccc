#pragma once

#include "ZNTSettings.h"

#include <cstdint>
#include <string>

class ZNTProgramArguments;

/// What the command line says about the game to play.
struct ZNTPlayArguments {
    std::string host; ///< empty if none was given
    std::uint16_t port = 0;
    bool demo = false;
    ZNTSettingValues settings; ///< of --set
    /// Why a link to a game was refused, as a sentence for the player; empty if none was.
    std::string refusedLink;

    /// Adds HOST, PORT, --demo and --set. This value must outlive the parsing, which fills it in.
    void addTo(ZNTProgramArguments& arguments);

private:
    /// Takes the host out of a link, and asks for a port otherwise.
    void readAddress(bool hasPort);

    std::vector<std::string> assignments;
};
