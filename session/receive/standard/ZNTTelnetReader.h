#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What a telnet reader finds, in the order of the bytes.
class ZNTTelnetListener
{
public:
    virtual ~ZNTTelnetListener() = default;

    /// Bytes of text: IAC IAC is one byte 255, CR NUL a bare CR. One text may come in several parts.
    virtual void onText(std::string_view bytes) = 0;
    /// A command of two bytes: every one but SB, WILL, WONT, DO and DONT.
    virtual void onCommand(unsigned char command) = 0;
    /// `verb` is WILL, WONT, DO or DONT.
    virtual void onOption(unsigned char verb, unsigned char option) = 0;

    enum class AfterSubnegotiation { GoOn, StopReading };
    /// `content` is without the option, and IAC IAC in it is one byte. StopReading: the bytes that follow are
    /// to be read in another way.
    virtual AfterSubnegotiation onSubnegotiation(unsigned char option, std::string_view content) = 0;
};

/// Takes telnet (RFC 854, RFC 855) out of a connection's bytes, which may be cut anywhere.
///
/// A subnegotiation whose content is longer than `longestSubnegotiation` is read to its end and dropped. One
/// without an end (IAC and then neither IAC nor SE) ends there and is dropped, and the command is read as
/// one: otherwise a server that forgets IAC SE would lose all its text up to the next one.
class ZNTTelnetReader
{
public:
    static constexpr std::size_t longestSubnegotiation = std::size_t{64} << 10; ///< bytes, with the option

    /// The caller owns `listener`, which outlives the reader.
    explicit ZNTTelnetReader(ZNTTelnetListener& listener) : listener(listener) {}

    /// Forgets what is unfinished; for a new connection.
    void start();
    /// Reads all of `bytes`, or up to a subnegotiation after which the listener stops it. Answers how many
    /// bytes it has read. Linear.
    std::size_t read(std::string_view bytes);

private:
    enum class State { Text, Command, Option, Subnegotiation, SubnegotiationCommand };

    std::size_t readText(std::string_view bytes, std::size_t from, std::size_t searchFrom);
    std::size_t readContent(std::string_view bytes, std::size_t from);
    void readCommand(unsigned char command);
    void giveText(std::string_view text);
    void addContent(std::string_view bytes);
    ZNTTelnetListener::AfterSubnegotiation endSubnegotiation();

    ZNTTelnetListener& listener;
    State state = State::Text;
    unsigned char verb = 0;
    bool endsWithCarriageReturn = false; ///< the text so far; commands do not part CR and NUL
    std::string content;                 ///< of a subnegotiation; its option first
    bool isContentTooLong = false;
};
