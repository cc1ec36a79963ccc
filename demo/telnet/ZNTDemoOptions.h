#pragma once

#include "ZNTTelnetCodes.h"

#include <array>
#include <cstdint>
#include <string_view>

/// Who does what an option names: the game after its WILL, or the client after the game's DO.
enum class ZNTDemoOptionSide : std::uint8_t { Game, Client };

/// When the game speaks of an option by itself.
enum class ZNTDemoOfferTime : std::uint8_t {
    AtOnce,
    OnceTelnetIsSpoken, ///< when the client has answered a DO, as some clients never do
    IfAsked,            ///< never, but it agrees
    WhenNeeded          ///< when the village wants it; it does not agree by itself
};

struct ZNTDemoOption {
    unsigned char code;
    ZNTDemoOptionSide side;
    ZNTDemoOfferTime offered;
};

namespace znt::demo
{

/// Every option that the game knows, in the order of the offers. All others are refused.
///
/// The requests come before the offers: so a client's answers to them come first, and the game knows how to
/// start the compression when it is asked to.
inline constexpr std::array options{
    ZNTDemoOption{telnet::option::WindowSize, ZNTDemoOptionSide::Client, ZNTDemoOfferTime::AtOnce},
    ZNTDemoOption{telnet::option::TerminalType, ZNTDemoOptionSide::Client, ZNTDemoOfferTime::AtOnce},
    ZNTDemoOption{telnet::option::CompressionV2, ZNTDemoOptionSide::Game, ZNTDemoOfferTime::AtOnce},
    ZNTDemoOption{telnet::option::Sound, ZNTDemoOptionSide::Game, ZNTDemoOfferTime::AtOnce},
    ZNTDemoOption{telnet::option::EndOfRecord, ZNTDemoOptionSide::Game, ZNTDemoOfferTime::OnceTelnetIsSpoken},
    ZNTDemoOption{telnet::option::Charset, ZNTDemoOptionSide::Game, ZNTDemoOfferTime::OnceTelnetIsSpoken},
    ZNTDemoOption{telnet::option::Charset, ZNTDemoOptionSide::Client, ZNTDemoOfferTime::IfAsked},
    ZNTDemoOption{telnet::option::Echo, ZNTDemoOptionSide::Game, ZNTDemoOfferTime::WhenNeeded},
};

} // namespace znt::demo

/// Sends what the negotiation says, and learns what it led to.
class ZNTDemoOptionsListener
{
public:
    virtual ~ZNTDemoOptionsListener() = default;
    virtual void sendCommand(unsigned char verb, unsigned char option) = 0;
    /// The client has switched `option` on (DO, WILL) or off (DONT, WONT, or the odd refusal). Called after
    /// the answer, if there is one, was sent.
    virtual void onOptionSwitched(const ZNTDemoOption& option, unsigned char verb) = 0;
};

/// Negotiates options by the method of RFC 1143: a command that changes nothing gets no answer, so that no
/// loop can begin.
///
/// Some clients refuse with three bytes that telnet does not know (IAC 25 OPTION), never answer DO, and
/// accept an earlier offer at any later time. For them the offer stays open after that refusal.
class ZNTDemoOptions
{
public:
    explicit ZNTDemoOptions(ZNTDemoOptionsListener& listener) : listener(listener) {}

    /// Makes the offers for which the time has come.
    void offer(ZNTDemoOfferTime time);
    /// `verb` is WILL, WONT, DO, DONT or the odd refusal.
    void receive(unsigned char verb, unsigned char code);
    /// Offers what the game can do (WILL), or takes it back (WONT). `code` must be in the table.
    void want(unsigned char code, bool on);

    [[nodiscard]] bool isOn(unsigned char code) const; ///< on the game's side
    /// Whether the client has answered a DO, with WILL or with WONT.
    [[nodiscard]] bool isTelnetSpoken() const { return telnetIsSpoken; }

    static constexpr int mostRefusals = 20; ///< of one option in one session; a peer's loop ends there

private:
    /// The states of RFC 1143. "But" stands for its queue bit: the opposite is wanted after the answer.
    enum class State : std::uint8_t { No, Yes, WantNo, WantNoButYes, WantYes, WantYesButNo };

    [[nodiscard]] static std::size_t rowOf(unsigned char code, ZNTDemoOptionSide side);
    void takeAgreement(std::size_t row, unsigned char verb);
    void takeDenial(std::size_t row, unsigned char verb);
    void takeOddRefusal(std::size_t row);
    void refuse(unsigned char code, ZNTDemoOptionSide side);
    void send(std::size_t row, bool on);
    void enable(std::size_t row);
    void disable(std::size_t row);

    ZNTDemoOptionsListener& listener;
    std::array<State, znt::demo::options.size()> states{};
    std::array<std::array<std::uint8_t, 256>, 2> refusals{};
    bool telnetIsSpoken = false;
};
