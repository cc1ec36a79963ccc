#pragma once

#include "ZNTTelnetCodes.h"

#include <array>
#include <cstdint>
#include <string>

/// Who carries an option out: the server (it offers with WILL) or the client (it is asked with DO).
enum class ZNTOptionSide : std::uint8_t { Server, Client };

/// What an option depends on beside the server's wish.
enum class ZNTOptionSwitch : std::uint8_t { Always, Compression, Sounds };

struct ZNTAcceptedOption {
    ZNTOptionSide side;
    unsigned char option;
    ZNTOptionSwitch when = ZNTOptionSwitch::Always;
};

/// Every option that is accepted. All others are refused.
inline constexpr std::array ZNTAcceptedOptions{
    ZNTAcceptedOption{ZNTOptionSide::Server, znt::telnet::option::Echo},
    ZNTAcceptedOption{ZNTOptionSide::Server, znt::telnet::option::SuppressGoAhead},
    ZNTAcceptedOption{ZNTOptionSide::Server, znt::telnet::option::EndOfRecord},
    ZNTAcceptedOption{ZNTOptionSide::Server, znt::telnet::option::Charset},
    ZNTAcceptedOption{ZNTOptionSide::Server, znt::telnet::option::CompressionV2,
                      ZNTOptionSwitch::Compression},
    ZNTAcceptedOption{ZNTOptionSide::Server, znt::telnet::option::Sound, ZNTOptionSwitch::Sounds},
    ZNTAcceptedOption{ZNTOptionSide::Client, znt::telnet::option::TerminalType},
    ZNTAcceptedOption{ZNTOptionSide::Client, znt::telnet::option::WindowSize},
    ZNTAcceptedOption{ZNTOptionSide::Client, znt::telnet::option::Charset},
};

/// Which options client and server have agreed on, by the Q method of RFC 1143: only changes are answered, so
/// that two sides that both do so cannot loop.
///
/// A side that does loop is met with silence in the end: a refused offer that comes again is refused again,
/// but `mostRefusals` times at most, and of the changes of an agreement `mostAnswers` are answered. What
/// comes later still counts, so the state stays true. So the replies of one connection are bounded, whatever
/// the server sends.
class ZNTOptionNegotiation
{
public:
    using Side = ZNTOptionSide;

    static constexpr int mostRefusals = 20;  ///< for each option and side
    static constexpr int mostAnswers = 1000; ///< likewise; a game asks for far fewer passwords

    ZNTOptionNegotiation() { setAccepted(ZNTOptionSwitch::Always, true); }

    /// Begins a new connection: nothing is agreed.
    void start() { states = {}; }

    /// Whether offers of the options that depend on `what` are accepted from now on. Nothing is sent, and
    /// what is agreed stays.
    void setAccepted(ZNTOptionSwitch what, bool accepted);

    /// The server sent `verb` (WILL, WONT, DO or DONT) and `option`. Adds the answer to `replies`. Returns
    /// whether that answer agrees to an offer.
    bool receive(unsigned char verb, unsigned char option, std::string& replies);

    /// Asks for a change by our own wish. Adds nothing if it is asked for already, or agreed.
    void request(Side side, unsigned char option, bool on, std::string& replies);

    /// The server does or ends something without a word of its own, as several do with compression. If we
    /// have asked for it, that is the answer.
    void noteDone(Side side, unsigned char option, bool on, std::string& replies);

    [[nodiscard]] bool isAgreed(Side side, unsigned char option) const
    {
        return entry(side, option).state == State::Yes;
    }
    /// Whether our last word on the option was WILL or DO.
    [[nodiscard]] bool isWanted(Side side, unsigned char option) const
    {
        return entry(side, option).isWanted;
    }
    /// Whether the server may take the option for agreed: it may not have read our last word.
    [[nodiscard]] bool canBeInUse(Side side, unsigned char option) const
    {
        return entry(side, option).state != State::No || isWanted(side, option);
    }

private:
    /// Want...: we have asked, and the answer has not come.
    enum class State : std::uint8_t { No, Yes, WantNo, WantYes };
    struct Entry {
        State state = State::No;
        /// In WantNo: it is to be asked for again as soon as the answer has come.
        bool isQueued = false;
        bool isWanted = false;
        std::uint8_t refusals = 0;
        std::uint16_t answers = 0;
    };

    [[nodiscard]] const Entry& entry(Side side, unsigned char option) const
    {
        return states[static_cast<std::size_t>(side)][option];
    }
    bool receiveOn(Side side, unsigned char option, std::string& replies);
    void receiveOff(Side side, unsigned char option, std::string& replies);
    void say(Side side, unsigned char option, bool on, std::string& replies);
    bool answer(Side side, unsigned char option, bool on, std::string& replies);

    std::array<std::array<Entry, 256>, 2> states{};
    std::array<std::array<bool, 256>, 2> isAccepted{}; ///< by side and option, as `states`
};
