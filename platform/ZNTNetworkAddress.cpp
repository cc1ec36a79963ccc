#include "ZNTNetworkAddress.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <optional>
#include <string>
#include <sys/socket.h>

namespace
{

/// An IPv6 address; an IPv4 one is mapped into it (RFC 4291, 2.5.5.2).
using Bytes = std::array<std::uint8_t, 16>;

constexpr Bytes mapped(std::uint8_t a, std::uint8_t b = 0, std::uint8_t c = 0, std::uint8_t d = 0)
{
    return {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff, a, b, c, d};
}

constexpr Bytes address6(unsigned a, unsigned b = 0, unsigned c = 0)
{
    const auto high = [](unsigned word) { return static_cast<std::uint8_t>(word >> 8U); };
    const auto low = [](unsigned word) { return static_cast<std::uint8_t>(word); };
    return {high(a), low(a), high(b), low(b), high(c), low(c)};
}

constexpr unsigned ipv4 = 96; ///< bits before those of a mapped address
constexpr int notPublic = -1;

struct Block {
    Bytes start;
    unsigned bits;
    /// The byte at which the contained IPv4 address starts. That address decides.
    int embeddedAt = notPublic;
};

/// The blocks that are not of the public network: those of IANA's special-purpose address registries
/// (https://www.iana.org/assignments/iana-ipv4-special-registry and iana-ipv6-special-registry; RFC 6890)
/// that are not globally reachable as a whole, multicast, and addresses that contain an IPv4 one. Beside each
/// block is the document that reserves it.
constexpr Block blocks[] = {
    {mapped(0), ipv4 + 8},             // this network (RFC 791)
    {mapped(10), ipv4 + 8},            // private (RFC 1918)
    {mapped(100, 64), ipv4 + 10},      // behind a carrier's translation (RFC 6598)
    {mapped(127), ipv4 + 8},           // loopback (RFC 1122)
    {mapped(169, 254), ipv4 + 16},     // link-local (RFC 3927)
    {mapped(172, 16), ipv4 + 12},      // private (RFC 1918)
    {mapped(192, 0, 0), ipv4 + 24},    // protocol assignments (RFC 6890)
    {mapped(192, 0, 2), ipv4 + 24},    // documentation (RFC 5737)
    {mapped(192, 88, 99), ipv4 + 24},  // relays to 6to4, given up (RFC 7526)
    {mapped(192, 168), ipv4 + 16},     // private (RFC 1918)
    {mapped(198, 18), ipv4 + 15},      // benchmarks (RFC 2544)
    {mapped(198, 51, 100), ipv4 + 24}, // documentation (RFC 5737)
    {mapped(203, 0, 113), ipv4 + 24},  // documentation (RFC 5737)
    {mapped(224), ipv4 + 3},           // multicast (RFC 5771), reserved (RFC 1112), broadcast (RFC 919)
    {address6(0), 96, 12},             // compatible with IPv4, unspecified and loopback (RFC 4291)
    {address6(0x64, 0xff9b), 96, 12},  // translated (RFC 6052)
    {address6(0x64, 0xff9b, 1), 48},   // translated within a network (RFC 8215)
    {address6(0x100), 16},             // discard-only (RFC 6666), dummy prefix (RFC 9780)
    {address6(0x2001), 23},            // protocol assignments, Teredo among them (RFC 2928)
    {address6(0x2001, 0xdb8), 32},     // documentation (RFC 3849)
    {address6(0x2002), 16, 2},         // 6to4 (RFC 3056)
    {address6(0x3fff), 20},            // documentation (RFC 9637)
    {address6(0x5f00), 16},            // segment routing (RFC 9602)
    {address6(0xfc00), 7},             // unique local (RFC 4193)
    {address6(0xfe80), 10},            // link-local (RFC 4291)
    {address6(0xfec0), 10},            // site-local (RFC 3879)
    {address6(0xff00), 8},             // multicast (RFC 4291)
};

bool covers(const Block& block, const Bytes& address)
{
    const auto wholeBytes = block.bits / 8, restOfBits = block.bits % 8;
    const auto isSame = [&](unsigned at, unsigned unusedBits) {
        return block.start.at(at) >> unusedBits == address.at(at) >> unusedBits;
    };
    return std::equal(address.begin(), address.begin() + wholeBytes, block.start.begin()) &&
           (restOfBits == 0 || isSame(wholeBytes, 8 - restOfBits));
}

bool isPublic(const Bytes& address)
{
    const auto* const block = std::find_if(std::begin(blocks), std::end(blocks), [&](const Block& candidate) {
        return covers(candidate, address);
    });
    if (block == std::end(blocks))
        return true;
    if (block->embeddedAt == notPublic)
        return false;
    const auto at = static_cast<std::size_t>(block->embeddedAt);
    return isPublic(mapped(address.at(at), address.at(at + 1), address.at(at + 2), address.at(at + 3)));
}

struct HostAddress {
    Bytes bytes{};
    std::uint32_t interface = 0; ///< of a link-local address: each network has its own hosts
    friend bool operator==(const HostAddress&, const HostAddress&) = default;
};

std::optional<HostAddress> hostAddress(const sockaddr& address)
{
    HostAddress host;
    if (address.sa_family == AF_INET) {
        sockaddr_in plain;
        std::memcpy(&plain, &address, sizeof plain);
        host.bytes = mapped(0);
        std::memcpy(&host.bytes[12], &plain.sin_addr, sizeof plain.sin_addr);
        return host;
    }
    if (address.sa_family == AF_INET6) {
        sockaddr_in6 plain;
        std::memcpy(&plain, &address, sizeof plain);
        std::memcpy(host.bytes.data(), &plain.sin6_addr, sizeof plain.sin6_addr);
        host.interface = plain.sin6_scope_id;
        return host;
    }
    return {};
}

std::optional<HostAddress> hostAddress(std::string_view numericAddress)
{
    addrinfo wanted{};
    wanted.ai_flags = AI_NUMERICHOST;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(std::string(numericAddress).c_str(), nullptr, &wanted, &found) != 0)
        return {};
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owned(found, freeaddrinfo);
    return hostAddress(*found->ai_addr);
}

} // namespace

bool znt::isPublicAddress(const sockaddr& address)
{
    const auto host = hostAddress(address);
    return host && isPublic(host->bytes);
}

bool znt::isPublicAddress(std::string_view numericAddress)
{
    const auto host = hostAddress(numericAddress);
    return !host || isPublic(host->bytes);
}

bool znt::isSameAddress(const sockaddr& address, std::string_view numericAddress)
{
    const auto host = hostAddress(address);
    return host && host == hostAddress(numericAddress);
}
