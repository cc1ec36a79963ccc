#include "ZNTTelnetMessages.h"

#include "ZNTTelnetCodes.h"

#include <algorithm>
#include <utility>

std::string znt::telnet::offer(unsigned char verb, unsigned char option)
{
    return {static_cast<char>(IAC), static_cast<char>(verb), static_cast<char>(option)};
}

std::string znt::telnet::subnegotiation(unsigned char option, std::string_view content)
{
    std::string message{static_cast<char>(IAC), static_cast<char>(SB), static_cast<char>(option)};
    message += doubledIac(std::string(content));
    message += {static_cast<char>(IAC), static_cast<char>(SE)};
    return message;
}

std::string znt::telnet::doubledIac(std::string data)
{
    constexpr char iac = static_cast<char>(IAC);
    const auto count = static_cast<std::size_t>(std::ranges::count(data, iac));
    if (count == 0)
        return data;
    std::string doubled;
    doubled.reserve(data.size() + count);
    for (const char byte : data)
        doubled.append(byte == iac ? 2 : 1, byte);
    return doubled;
}
