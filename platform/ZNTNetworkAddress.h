#pragma once

#include <string_view>

struct sockaddr;

namespace znt
{

/// Whether an IPv4 or IPv6 address is one of the public network: not of this machine, of a private or local
/// network, or reserved, neither plainly nor inside an IPv6 address that stands for an IPv4 one. Of another
/// family: false.
bool isPublicAddress(const sockaddr& address);

/// The same for an address in numbers ("127.0.0.1", "fe80::1%eth0"). True for what is no such address.
bool isPublicAddress(std::string_view numericAddress);

/// Whether both are one host's address; an IPv4 address and the IPv6 one that is mapped to it are the same.
bool isSameAddress(const sockaddr& address, std::string_view numericAddress);

} // namespace znt
