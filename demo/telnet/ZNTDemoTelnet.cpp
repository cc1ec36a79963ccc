#include "ZNTDemoTelnet.h"

#include <utility>

namespace znt::demo::telnet
{

std::string command(unsigned char verb, unsigned char option)
{
    return {static_cast<char>(IAC), static_cast<char>(verb), static_cast<char>(option)};
}

std::string subnegotiation(unsigned char option, std::string_view content)
{
    return command(SB, option) + doubled(content) + static_cast<char>(IAC) + static_cast<char>(SE);
}

std::string startOfCompression() { return subnegotiation(option::CompressionV2, {}); }

std::string endOfPrompt(bool isRecord)
{
    return {static_cast<char>(IAC), static_cast<char>(isRecord ? EOR : GA)};
}

std::string doubled(std::string_view bytes)
{
    std::string result;
    result.reserve(bytes.size());
    for (const char byte : bytes) {
        result += byte;
        if (static_cast<unsigned char>(byte) == IAC)
            result += byte;
    }
    return result;
}

} // namespace znt::demo::telnet

using namespace znt::demo;

std::size_t ZNTDemoTelnetInput::receive(std::string_view bytes)
{
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        switch (state) {
        case State::Text:
            if (takeLineEnd(byte))
                return at + 1;
            takeText(byte);
            break;
        case State::Command:
            takeCommand(byte);
            break;
        case State::Option:
            state = State::Text;
            listener.onOption(verb, byte);
            break;
        case State::SubnegotiationOption:
            option = byte;
            content.clear();
            state = State::Subnegotiation;
            break;
        case State::Subnegotiation:
            if (byte == telnet::IAC)
                state = State::SubnegotiationCommand;
            else
                takeContent(byte);
            break;
        case State::SubnegotiationCommand:
            takeSubnegotiationCommand(byte);
            break;
        }
    }
    return bytes.size();
}

bool ZNTDemoTelnetInput::takeLineEnd(unsigned char byte)
{
    // CR LF and CR NUL are one line end (RFC 854), and so is either alone.
    const bool followed = std::exchange(followsCarriageReturn, byte == '\r');
    if (followed && (byte == '\n' || byte == '\0'))
        return false;
    if (byte != '\r' && byte != '\n')
        return false;
    const auto whole = std::exchange(line, {});
    if (std::exchange(isTooLong, false))
        listener.onLineTooLong();
    else
        listener.onLine(whole);
    return true;
}

void ZNTDemoTelnetInput::takeText(unsigned char byte)
{
    if (byte == telnet::IAC) {
        state = State::Command;
        return;
    }
    if (byte == '\n' || byte == '\0')
        return; // the second half of a line end
    takeLetter(byte);
}

void ZNTDemoTelnetInput::takeLetter(unsigned char byte)
{
    if (line.size() >= longestLine) {
        isTooLong = true;
        line.clear();
    }
    if (!isTooLong)
        line.push_back(static_cast<char>(byte));
}

void ZNTDemoTelnetInput::takeCommand(unsigned char byte)
{
    switch (byte) {
    case telnet::WILL:
    case telnet::WONT:
    case telnet::DO:
    case telnet::DONT:
    case telnet::Refusal:
        verb = byte;
        state = State::Option;
        break;
    case telnet::SB:
        state = State::SubnegotiationOption;
        break;
    case telnet::IAC: // a doubled 255 is one as data
        state = State::Text;
        takeLetter(byte);
        break;
    default: // commands of two bytes
        state = State::Text;
        break;
    }
}

void ZNTDemoTelnetInput::takeContent(unsigned char byte)
{
    if (content.size() <= longestSubnegotiation)
        content.push_back(static_cast<char>(byte));
}

void ZNTDemoTelnetInput::takeSubnegotiationCommand(unsigned char byte)
{
    state = byte == telnet::SE ? State::Text : State::Subnegotiation;
    if (byte == telnet::IAC)
        takeContent(byte);
    else if (byte == telnet::SE && content.size() <= longestSubnegotiation)
        listener.onSubnegotiation(option, content);
}
