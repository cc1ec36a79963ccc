#pragma once

#include <string_view>

struct sockaddr;

namespace znt
{

/// Whether an IPv4 or IPv6 address belongs to the public network. False for addresses of this machine, of a
/// private or local network, and reserved ones. An IPv6 address that contains an IPv4 one is judged by the
/// latter. False for any other family.
bool isPublicAddress(const sockaddr& address);

/// The same for an address in numbers ("127.0.0.1", "fe80::1%eth0"). True if the text is no such address.
bool isPublicAddress(std::string_view numericAddress);

/// Whether both are one host's address; an IPv4 address and the IPv6 one that is mapped to it are the same.
bool isSameAddress(const sockaddr& address, std::string_view numericAddress);

} // namespace znt
