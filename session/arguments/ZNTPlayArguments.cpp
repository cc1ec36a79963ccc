#include "ZNTPlayArguments.h"

#include "ZNTGameAddress.h"
#include "ZNTProgramArguments.h"
#include "ZNTText.h"

#include <algorithm>
#include <limits>

void ZNTPlayArguments::addTo(ZNTProgramArguments& arguments)
{
    std::vector<std::string> beginnings;
    for (const auto& row : ZNTSettingsTable)
        beginnings.push_back(std::string(row.name) + "=");
    arguments.addRepeated("--set", assignments, "NAME=VALUE", znt::complaintAboutAssignment,
                          std::move(beginnings), "change a setting; may be given more than once");
    const auto demoFlag = arguments.addFlag("--demo", demo, "play the demo game");
    auto hostOption = arguments.addText("HOST", host,
                                        "the address of the game, such as mud.example.org, or a link such as "
                                        "telnet://mud.example.org:4000");
    hostOption.exclude(demoFlag);
    auto portOption = arguments.addPort("PORT", port, ZNTProgramArguments::Zero::Refused,
                                        "the port of the game, from 1 to 65535");
    portOption.need(hostOption);
    arguments.whenRead([this, hostOption, portOption] {
        for (const auto& assignment : assignments)
            static_cast<void>(znt::addAssignment(settings, assignment)); // checked above
        return hostOption.isGiven() ? readAddress(portOption.isGiven()) : std::string();
    });
}

std::string ZNTPlayArguments::readAddress(bool hasPort)
{
    if (!ZNTGameAddress::isLink(host))
        return hasPort ? "" : "HOST requires PORT";
    if (hasPort)
        return "PORT: a link names its port itself";
    const auto address = ZNTGameAddress::fromLink(host);
    if (!address) {
        refusedLink = address.error().description;
        host.clear();
        return {};
    }
    host = address.value().host;
    port = address.value().port;
    return {};
}

ZNTResult<std::vector<std::string>> znt::argumentsForGame(std::string_view host, std::int64_t port)
{
    const auto isBlank = [](char each) { return static_cast<unsigned char>(each) <= ' ' || each == '\x7F'; };
    host = znt::trimmedOf(host, isBlank);
    if (host.empty() || std::ranges::any_of(host, isBlank) || ZNTGameAddress::isLink(host))
        return ZNTError{"ZNTPlayArguments", 0, "The game needs an address such as mud.example.org."};
    if (port < 1 || port > std::numeric_limits<std::uint16_t>::max())
        return ZNTError{"ZNTPlayArguments", 0, "The game needs a port from 1 to 65535."};
    // A host that begins with a hyphen is no option.
    return std::vector<std::string>{"--", std::string(host), std::to_string(port)};
}
