#pragma once

#include "ZNTResult.h"
#include "ZNTSettings.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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
    /// Takes the host and port out of a link. Returns what is wrong with the two, else nothing.
    std::string readAddress(bool hasPort);

    std::vector<std::string> assignments;
};

namespace znt
{

/// The arguments with which a further instance plays a game, for ZNTPlayArguments to read. The error is a
/// sentence for the player about the address (UTF-8) or the port.
ZNTResult<std::vector<std::string>> argumentsForGame(std::string_view host, std::int64_t port);

} // namespace znt
