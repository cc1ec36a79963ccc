#include "ZNTDemoClientTraits.h"

#include "ZNTDemoTelnet.h"

#include <algorithm>
#include <charconv>
#include <utility>

using namespace znt::demo;

namespace
{

/// Narrower lines cannot be read, wider ones are read by nobody.
constexpr unsigned narrowest = 20, widest = 250;

/// The third answer comes again after it. One question more than there are answers sees that.
constexpr int mostTerminalTypeQuestions = 4;
constexpr std::string_view mttsStart = "MTTS ";
/// Bits of the number after it.
constexpr unsigned ansiBit = 1, twoHundredFiftySixBit = 8, trueColourBit = 256;

constexpr std::string_view unicode = "UTF-8";
/// A client asks once. One that asks for ever gets no more answers than this.
constexpr int mostCharsetAnswers = 20;

char upperCased(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - ('a' - 'A')) : letter;
}

std::string upperCased(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char each) { return upperCased(each); });
    return result;
}

/// A subnegotiation whose content begins with a code.
std::string subnegotiation(unsigned char option, unsigned char code, std::string_view rest = {})
{
    return telnet::subnegotiation(option, static_cast<char>(code) + std::string(rest));
}

ZNTDemoColours coloursOfBits(unsigned bits)
{
    if ((bits & trueColourBit) != 0)
        return ZNTDemoColours::True;
    if ((bits & twoHundredFiftySixBit) != 0)
        return ZNTDemoColours::TwoHundredFiftySix;
    return (bits & ansiBit) != 0 ? ZNTDemoColours::Eight : ZNTDemoColours::None;
}

} // namespace

std::string ZNTDemoClientTraits::askForTerminalType()
{
    lastTerminalType.clear();
    terminalTypeQuestions = 0;
    return nextTerminalTypeQuestion();
}

std::string ZNTDemoClientTraits::nextTerminalTypeQuestion()
{
    ++terminalTypeQuestions;
    isAskedForTerminalType = true;
    return subnegotiation(telnet::option::TerminalType, telnet::terminaltype::Send);
}

std::string ZNTDemoClientTraits::askForUnicode()
{
    isAskedForUnicode = true;
    return subnegotiation(telnet::option::Charset, telnet::charset::Request, ";" + std::string(unicode));
}

std::string ZNTDemoClientTraits::receive(unsigned char option, std::string_view content)
{
    switch (option) {
    case telnet::option::TerminalType:
        return receiveTerminalType(content);
    case telnet::option::WindowSize:
        receiveWindowSize(content);
        return {};
    case telnet::option::Charset:
        return receiveCharset(content);
    default:
        return {};
    }
}

std::string ZNTDemoClientTraits::receiveTerminalType(std::string_view content)
{
    if (content.empty() || content.front() != telnet::terminaltype::Is ||
        !std::exchange(isAskedForTerminalType, false))
        return {};
    const auto name = upperCased(content.substr(1));
    takeTerminalType(name);
    const bool isLast = name == std::exchange(lastTerminalType, name) || name.starts_with(mttsStart) ||
                        terminalTypeQuestions == mostTerminalTypeQuestions;
    return isLast ? std::string() : nextTerminalTypeQuestion();
}

void ZNTDemoClientTraits::takeTerminalType(std::string_view name)
{
    if (name.starts_with(mttsStart)) {
        unsigned bits = 0;
        name.remove_prefix(mttsStart.size());
        const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), bits);
        if (error == std::errc{})
            shown.colours = coloursOfBits(bits);
    } else if (name.ends_with("TRUECOLOR")) {
        shown.colours = ZNTDemoColours::True;
    } else if (name.ends_with("256COLOR")) {
        shown.colours = ZNTDemoColours::TwoHundredFiftySix;
    }
}

void ZNTDemoClientTraits::receiveWindowSize(std::string_view content)
{
    if (content.size() != 4)
        return;
    const unsigned width =
        static_cast<unsigned char>(content[0]) * 256U + static_cast<unsigned char>(content[1]);
    // Zero says that the client does not know (RFC 1073).
    shown.columns = width == 0 ? ZNTDemoScreen().columns : std::clamp(width, narrowest, widest);
}

std::string ZNTDemoClientTraits::receiveCharset(std::string_view content)
{
    if (content.empty())
        return {};
    const auto code = static_cast<unsigned char>(content.front());
    content.remove_prefix(1);
    switch (code) {
    case telnet::charset::Accepted:
        if (std::exchange(isAskedForUnicode, false) && upperCased(content) == unicode)
            shown.hasEveryCharacter = true;
        return {};
    case telnet::charset::Rejected:
        isAskedForUnicode = false;
        return {};
    case telnet::charset::Request:
        return charsetAnswers++ < mostCharsetAnswers ? answerToCharsets(content) : std::string();
    default: // tables are asked for by nobody here
        return {};
    }
}

std::string ZNTDemoClientTraits::answerToCharsets(std::string_view list)
{
    auto rejection = subnegotiation(telnet::option::Charset, telnet::charset::Rejected);
    // If both sides ask at once, the server rejects and its own request stands (RFC 2066).
    if (isAskedForUnicode)
        return rejection;
    constexpr std::string_view tableOffer = "[TTABLE ]";
    if (list.starts_with(tableOffer))
        list.remove_prefix(std::min(tableOffer.size() + 1, list.size())); // a version follows it
    while (!list.empty()) {
        // The first character is the separator of all names.
        const char separator = list.front();
        list.remove_prefix(1);
        const auto name = list.substr(0, list.find(separator));
        list.remove_prefix(name.size());
        if (upperCased(name) != unicode)
            continue;
        shown.hasEveryCharacter = true;
        return subnegotiation(telnet::option::Charset, telnet::charset::Accepted, name);
    }
    return rejection;
}
