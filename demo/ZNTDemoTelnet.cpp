#include "ZNTDemoTelnet.h"

#include <utility>

namespace znt::demo::telnet
{

std::string command(unsigned char verb, unsigned char option)
{
    return {static_cast<char>(IAC), static_cast<char>(verb), static_cast<char>(option)};
}

std::string startOfCompression()
{
    return command(SB, option::CompressionV2) + static_cast<char>(IAC) + static_cast<char>(SE);
}

std::string endOfPrompt() { return {static_cast<char>(IAC), static_cast<char>(GA)}; }

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
        case State::Subnegotiation:
            if (byte == telnet::IAC)
                state = State::SubnegotiationCommand;
            break;
        case State::SubnegotiationCommand:
            state = byte == telnet::SE ? State::Text : State::Subnegotiation;
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
        state = State::Subnegotiation;
        break;
    default: // commands of two bytes, and the escaped 255, which is no letter in any of our languages
        state = State::Text;
        break;
    }
}
