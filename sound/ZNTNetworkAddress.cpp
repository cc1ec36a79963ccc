#include "ZNTNetworkAddress.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstdint>
#include <cstring>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>

namespace
{

struct Range4 {
    std::uint32_t start;
    unsigned bits;
};

constexpr std::uint32_t address4(unsigned a, unsigned b = 0, unsigned c = 0, unsigned d = 0)
{
    return a << 24U | b << 16U | c << 8U | d;
}

constexpr Range4 notPublic4[] = {
    {address4(0), 8},             // this network (RFC 791)
    {address4(10), 8},            // private (RFC 1918)
    {address4(100, 64), 10},      // behind a carrier's translation (RFC 6598)
    {address4(127), 8},           // loopback (RFC 1122)
    {address4(169, 254), 16},     // link-local (RFC 3927)
    {address4(172, 16), 12},      // private (RFC 1918)
    {address4(192, 0, 0), 24},    // protocol assignments (RFC 6890)
    {address4(192, 0, 2), 24},    // documentation (RFC 5737)
    {address4(192, 168), 16},     // private (RFC 1918)
    {address4(198, 18), 15},      // benchmarks (RFC 2544)
    {address4(198, 51, 100), 24}, // documentation (RFC 5737)
    {address4(203, 0, 113), 24},  // documentation (RFC 5737)
    {address4(224), 3},           // multicast (RFC 5771), reserved (RFC 1112), broadcast
};

struct Range6 {
    std::array<std::uint8_t, 4> start;
    unsigned bits;
};

constexpr Range6 notPublic6[] = {
    {{0xfc}, 7},                    // unique local (RFC 4193)
    {{0xfe, 0x80}, 10},             // link-local (RFC 4291)
    {{0xfe, 0xc0}, 10},             // site-local (RFC 3879)
    {{0xff}, 8},                    // multicast (RFC 4291)
    {{0x01, 0x00}, 16},             // discard-only (RFC 6666)
    {{0x20, 0x01, 0x00, 0x00}, 23}, // protocol assignments, Teredo among them (RFC 2928)
    {{0x20, 0x01, 0x0d, 0xb8}, 32}, // documentation (RFC 3849)
};

/// Leading bytes of the IPv6 addresses that carry an IPv4 one, and where it stands.
struct Embedding {
    std::array<std::uint8_t, 12> start;
    std::size_t length, offset;
};

constexpr Embedding embeddings[] = {
    {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff}, 12, 12}, // mapped (RFC 4291)
    {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 12, 12},       // compatible, unspecified and loopback (RFC 4291)
    {{0x00, 0x64, 0xff, 0x9b}, 12, 12},                   // translated (RFC 6052)
    {{0x20, 0x02}, 2, 2},                                 // 6to4 (RFC 3056)
};

bool isPublic4(std::uint32_t address)
{
    return std::none_of(std::begin(notPublic4), std::end(notPublic4), [&](const Range4& range) {
        return (address ^ range.start) >> (32U - range.bits) == 0;
    });
}

std::uint32_t bigEndian(const std::uint8_t* bytes)
{
    return address4(bytes[0], bytes[1], bytes[2], bytes[3]);
}

bool isPublic6(const std::uint8_t* address)
{
    for (const auto& embedding : embeddings)
        if (std::equal(embedding.start.begin(),
                       embedding.start.begin() + static_cast<std::ptrdiff_t>(embedding.length), address))
            return isPublic4(bigEndian(address + embedding.offset));
    return std::none_of(std::begin(notPublic6), std::end(notPublic6), [&](const Range6& range) {
        return (bigEndian(address) ^ bigEndian(range.start.data())) >> (32U - range.bits) == 0;
    });
}

} // namespace

bool znt::isPublicAddress(const sockaddr& address)
{
    if (address.sa_family == AF_INET) {
        sockaddr_in ipv4;
        std::memcpy(&ipv4, &address, sizeof ipv4);
        return isPublic4(ntohl(ipv4.sin_addr.s_addr));
    }
    if (address.sa_family == AF_INET6) {
        sockaddr_in6 ipv6;
        std::memcpy(&ipv6, &address, sizeof ipv6);
        return isPublic6(ipv6.sin6_addr.s6_addr);
    }
    return false;
}

bool znt::isPublicAddress(std::string_view numericAddress)
{
    const std::string text(numericAddress.substr(0, numericAddress.find('%')));
    in_addr ipv4{};
    if (inet_pton(AF_INET, text.c_str(), &ipv4) == 1)
        return isPublic4(ntohl(ipv4.s_addr));
    in6_addr ipv6{};
    if (inet_pton(AF_INET6, text.c_str(), &ipv6) == 1)
        return isPublic6(ipv6.s6_addr);
    return true;
}
