#include "ZNTGameAddress.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <charconv>
#include <optional>

namespace
{

constexpr std::string_view scheme = "telnet:", afterScheme = "//";
constexpr std::uint16_t telnetPort = 23;     // RFC 4248
constexpr std::size_t longestHostName = 253; // RFC 1035, as text

ZNTError refusal(std::string why)
{
    return {"ZNTGameAddress", 0, std::move(why) + " A link to a game looks like telnet://mud.example:4000."};
}

bool isLetterOrDigit(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

/// RFC 1123, and the underscore that some hosts have.
bool isHostName(std::string_view text)
{
    const auto mayStandInName = [](char character) {
        return isLetterOrDigit(character) || character == '-' || character == '.' || character == '_';
    };
    return !text.empty() && text.size() <= longestHostName && isLetterOrDigit(text.front()) &&
           std::ranges::all_of(text, mayStandInName) && text.find("..") == text.npos &&
           text.find(".-") == text.npos;
}

bool isIPv6(const std::string& text)
{
    std::array<unsigned char, sizeof(in6_addr)> address{};
    return ::inet_pton(AF_INET6, text.c_str(), address.data()) == 1;
}

std::optional<std::uint16_t> portIn(std::string_view text)
{
    if (text.empty())
        return telnetPort;
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || port == 0)
        return std::nullopt;
    return port;
}

/// What links of other kinds may have and ours may not, with the sentence that says so.
struct Refused {
    bool (*isMet)(char character);
    const char* why;
};
constexpr std::array<Refused, 4> refusedCharacters{{
    {[](char each) { return each == ' ' || static_cast<unsigned char>(each) < ' ' || each == '\x7F'; },
     "The link contains a blank or a control character."},
    {[](char each) { return each == '%'; }, "The link contains a percent sign, and Zantor takes no escapes."},
    {[](char each) { return each == '@'; },
     "The link contains a name or a password. Zantor takes none from a link; type them in the game."},
    {[](char each) { return each == '/' || each == '?' || each == '#' || each == '\\'; },
     "The link has more after its host and port."},
}};

} // namespace

bool ZNTGameAddress::isLink(std::string_view text)
{
    const auto lower = [](char each) {
        return each >= 'A' && each <= 'Z' ? static_cast<char>(each + 32) : each;
    };
    return text.size() >= scheme.size() &&
           std::ranges::equal(text.substr(0, scheme.size()), scheme, {}, lower);
}

ZNTResult<ZNTGameAddress> ZNTGameAddress::fromLink(std::string_view link)
{
    if (!isLink(link) || !link.substr(scheme.size()).starts_with(afterScheme))
        return refusal("The link does not start with telnet://.");
    auto rest = link.substr(scheme.size() + afterScheme.size());
    if (rest.ends_with('/'))
        rest.remove_suffix(1);
    for (const auto& refused : refusedCharacters)
        if (std::ranges::any_of(rest, refused.isMet))
            return refusal(refused.why);

    ZNTGameAddress address;
    const bool isBracketed = rest.starts_with('[');
    if (isBracketed)
        rest.remove_prefix(1);
    const auto hostEnd = rest.find(isBracketed ? ']' : ':');
    const bool isClosed = !isBracketed || hostEnd != rest.npos;
    address.host = rest.substr(0, hostEnd);
    rest.remove_prefix(std::min(hostEnd, rest.size()));
    if (!isClosed || !(isBracketed ? isIPv6(address.host) : isHostName(address.host)))
        return refusal("The link names no host that can be looked up.");
    if (isBracketed)
        rest.remove_prefix(1);
    if (!rest.empty() && rest.front() != ':')
        return refusal("The link has more after its host and port.");
    const auto port = portIn(rest.substr(rest.empty() ? 0 : 1));
    if (!port)
        return refusal("The link's port is not a number from 1 to 65535.");
    address.port = *port;
    return address;
}
