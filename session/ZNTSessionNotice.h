#pragma once

#include <string_view>

/// A sentence for the player that is neither game text nor an alert. The window shows it in the status line,
/// the terminal client on stderr.
struct ZNTSessionNotice {
    enum class Kind {
        Fact, ///< something has happened
        End,  ///< the connection has ended; a front end that shows why need not show it
        Hint  ///< a setting could make this game play better; a front end that knows better need not show it
    };
    Kind kind;
    std::u16string_view sentence;
    bool comesUnasked = false; ///< it answers no key, so the next key must not cut it off
};

namespace znt::notices
{

inline constexpr ZNTSessionNotice gameClosed{ZNTSessionNotice::Kind::End, u"The game closed the connection.",
                                             true};
inline constexpr ZNTSessionNotice standardTelnetMayHelp{
    ZNTSessionNotice::Kind::Hint,
    u"If the game refuses your name, switch on Standard telnet and connect again.", true};

/// It comes a while after the line that started the walk.
inline constexpr ZNTSessionNotice walkWithoutStep{ZNTSessionNotice::Kind::Fact, u"The walk had no step.",
                                                  true};

/// The answer to a player who switches standard telnet while a connection stands, or while none does.
inline constexpr ZNTSessionNotice standardTelnetSwitched(bool isOn, bool isConnected)
{
    constexpr std::u16string_view sentences[2][2] = {
        {u"Standard telnet is off.", u"Standard telnet is off from the next connection on."},
        {u"Standard telnet is on.", u"Standard telnet is on from the next connection on."}};
    return {ZNTSessionNotice::Kind::Fact, sentences[isOn ? 1 : 0][isConnected ? 1 : 0]};
}

/// The answer to a player who sets the client up for listening, or takes that back.
inline constexpr ZNTSessionNotice setUpForListening(bool isOn)
{
    return {ZNTSessionNotice::Kind::Fact,
            isOn ? u"Listening is set up." : u"The settings for listening have their defaults again."};
}

} // namespace znt::notices
