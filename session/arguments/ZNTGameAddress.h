#pragma once

#include "ZNTResult.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The host and port of a game.
struct ZNTGameAddress {
    std::string host; ///< a name or an address in numbers, without brackets
    std::uint16_t port = 0;

    /// Whether the text starts with "telnet:", in any case.
    static bool isLink(std::string_view text);

    /// Reads "telnet://HOST:PORT", with or without the port (it is 23 then) and a slash at the end (RFC
    /// 4248). An IPv6 address stands in brackets (RFC 3986). Everything else that a link may have is refused:
    /// a name and password, because what stands before "@" can pass for the host; a path; percent escapes.
    /// The error's description is a sentence for the player, without anything of the link.
    static ZNTResult<ZNTGameAddress> fromLink(std::string_view link);

    friend bool operator==(const ZNTGameAddress&, const ZNTGameAddress&) = default;
};
