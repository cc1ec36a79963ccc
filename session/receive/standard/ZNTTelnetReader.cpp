#include "ZNTTelnetReader.h"

#include "ZNTTelnetCodes.h"

#include <algorithm>

namespace
{

using namespace znt::telnet;

constexpr char iacByte = static_cast<char>(IAC);

} // namespace

void ZNTTelnetReader::start()
{
    state = State::Text;
    endsWithCarriageReturn = isContentTooLong = false;
    content.clear();
}

std::size_t ZNTTelnetReader::read(std::string_view bytes)
{
    std::size_t at = 0;
    while (at < bytes.size()) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        switch (state) {
        case State::Text:
            at = readText(bytes, at, at);
            break;
        case State::Command:
            if (byte == IAC) { // it is the first byte of the text that follows
                state = State::Text;
                at = readText(bytes, at, at + 1);
            } else {
                readCommand(byte);
                ++at;
            }
            break;
        case State::Option:
            state = State::Text;
            ++at;
            listener.onOption(verb, byte);
            break;
        case State::Subnegotiation:
            at = readContent(bytes, at);
            break;
        case State::SubnegotiationCommand:
            ++at;
            if (byte == IAC) {
                state = State::Subnegotiation;
                addContent({&iacByte, 1});
            } else if (byte != SE) {
                readCommand(byte);
            } else if (endSubnegotiation() == ZNTTelnetListener::AfterSubnegotiation::StopReading) {
                return at;
            }
            break;
        }
    }
    return at;
}

/// Gives the text from `from` up to the first IAC at or after `searchFrom`.
std::size_t ZNTTelnetReader::readText(std::string_view bytes, std::size_t from, std::size_t searchFrom)
{
    const auto end = std::min(bytes.find(iacByte, searchFrom), bytes.size());
    giveText(bytes.substr(from, end - from));
    if (end == bytes.size())
        return end;
    state = State::Command;
    return end + 1;
}

void ZNTTelnetReader::giveText(std::string_view text)
{
    // A search for NUL is faster than one for CR, of which there is one in each line.
    std::size_t start = 0;
    for (auto nul = text.find('\0'); nul != text.npos; nul = text.find('\0', nul + 1)) {
        const bool followsReturn = nul > start ? text[nul - 1] == '\r' : nul == 0 && endsWithCarriageReturn;
        if (!followsReturn)
            continue;
        if (nul > start)
            listener.onText(text.substr(start, nul - start));
        start = nul + 1;
    }
    if (start < text.size())
        listener.onText(text.substr(start));
    endsWithCarriageReturn = text.empty() ? endsWithCarriageReturn : text.back() == '\r';
}

void ZNTTelnetReader::readCommand(unsigned char command)
{
    if (command == SB) {
        state = State::Subnegotiation;
        content.clear();
        isContentTooLong = false;
    } else if (isFollowedByOption(command)) {
        state = State::Option;
        verb = command;
    } else {
        state = State::Text;
        listener.onCommand(command);
    }
}

std::size_t ZNTTelnetReader::readContent(std::string_view bytes, std::size_t from)
{
    const auto end = std::min(bytes.find(iacByte, from), bytes.size());
    addContent(bytes.substr(from, end - from));
    if (end == bytes.size())
        return end;
    state = State::SubnegotiationCommand;
    return end + 1;
}

void ZNTTelnetReader::addContent(std::string_view bytes)
{
    isContentTooLong |= bytes.size() > longestSubnegotiation - content.size();
    if (isContentTooLong)
        content.clear();
    else
        content += bytes;
}

ZNTTelnetListener::AfterSubnegotiation ZNTTelnetReader::endSubnegotiation()
{
    state = State::Text;
    if (isContentTooLong || content.empty())
        return ZNTTelnetListener::AfterSubnegotiation::GoOn;
    return listener.onSubnegotiation(static_cast<unsigned char>(content.front()),
                                     std::string_view(content).substr(1));
}
