#pragma once

#include "ZNTTelnetCodes.h"

#include <string>
#include <string_view>

namespace znt::demo::telnet
{

using namespace znt::telnet;

std::string command(unsigned char verb, unsigned char option);
/// A 255 in `content` is doubled.
std::string subnegotiation(unsigned char option, std::string_view content);
std::string startOfCompression();
/// IAC EOR (RFC 885) or IAC GA (RFC 854).
std::string endOfPrompt(bool isRecord);
/// `bytes` with each 255 doubled, as data must travel.
std::string doubled(std::string_view bytes);

} // namespace znt::demo::telnet

/// Gets the lines and options that a player's bytes contain.
class ZNTDemoTelnetListener
{
public:
    virtual ~ZNTDemoTelnetListener() = default;
    /// Without its line end and without telnet's bytes.
    virtual void onLine(std::string_view bytes) = 0;
    /// A line past `ZNTDemoTelnetInput::longestLine` has ended; nothing of it was kept.
    virtual void onLineTooLong() = 0;
    /// `verb` is one of WILL, WONT, DO, DONT, and the byte with which some clients refuse an option in place
    /// of DONT or WONT.
    virtual void onOption(unsigned char verb, unsigned char option) = 0;
    /// Without telnet's bytes. One that is longer than `ZNTDemoTelnetInput::longestSubnegotiation` is
    /// skipped.
    virtual void onSubnegotiation(unsigned char option, std::string_view content) = 0;
};

/// Takes what a player's client sends apart, in pieces of any size. Keeps at most one line
/// and one subnegotiation.
class ZNTDemoTelnetInput
{
public:
    static constexpr std::size_t longestLine = 1024;          // bytes
    static constexpr std::size_t longestSubnegotiation = 512; // bytes, of its content

    explicit ZNTDemoTelnetInput(ZNTDemoTelnetListener& listener) : listener(listener) {}

    /// Reads up to the end of the first line in `bytes` and answers how many bytes that took, so that the
    /// caller can leave the rest for later.
    std::size_t receive(std::string_view bytes);

private:
    enum class State { Text, Command, Option, SubnegotiationOption, Subnegotiation, SubnegotiationCommand };

    void takeText(unsigned char byte);
    void takeCommand(unsigned char byte);
    void takeLetter(unsigned char byte);
    void takeContent(unsigned char byte);
    void takeSubnegotiationCommand(unsigned char byte);
    bool takeLineEnd(unsigned char byte);

    ZNTDemoTelnetListener& listener;
    State state = State::Text;
    unsigned char verb = 0;
    std::string line;
    bool isTooLong = false;
    unsigned char option = 0; ///< of the subnegotiation
    std::string content;      ///< of the subnegotiation; one byte more than the longest is too long
    bool followsCarriageReturn = false;
};
