#pragma once

#include "ZNTAttributedText.h"
#include "ZNTColourParser.h"

#include <optional>
#include <string>
#include <string_view>

/// What the telnet commands of one block lead to.
struct ZNTTelnetAnswers {
    std::string replies;              ///< bytes for the server, in the order of what they answer
    bool isGoAhead = false;           ///< GA, EOR or an offer of EOR. Only noted: `isRelease` releases
    bool isEndOfNegotiations = false; ///< IAC SE
    bool isRelease = false;           ///< IAC GA, or IAC WONT, which servers send before a password
};

/// Understands what servers mix into their text. Its telnet half (RFC 854, RFC 855) answers offers from a
/// fixed table; it is no state machine: each command is answered by itself, an offer made twice is answered
/// twice, and DO, DONT, WONT and subnegotiations get no answer. Its colour half is ZNTColourParser. Belongs
/// to the run loop's thread, so that it works on one text at a time.
class ZNTParserUtility
{
public:
    /// Acts on every command of a received block, in order. The replies leave in one write: a flood of offers
    /// must not become a queue of as many writes, behind which a typed line would wait.
    ZNTTelnetAnswers processServerCommands(std::u16string_view text);
    /// Acts on one command, as `znt::telnet::commandAt` delimits it, and adds to `answers`.
    void processServerCommand(std::u16string_view command);
    /// Answers the WILL in `command`, whose third character is the option; one without it is ignored.
    void processServerOptionForWill(std::u16string_view command);
    /// Adds the three bytes of a command to the replies. The session sends them with `replyTimeout` and
    /// `replyTag`.
    void sendCommand(char16_t command, char16_t option);
    /// The replies that wait to be sent. None are left.
    [[nodiscard]] std::string takeReplies();
    /// Kept as part of the interface: a classifier of commands. The receive path does not ask it. A WILL is
    /// answered, and the answer is false.
    bool isGoAhead(std::u16string_view command);

    /// The sound tag that `text` sets going: its first one, while sounds are on. To be asked before
    /// `processIncomingStream`, which takes all of them out.
    [[nodiscard]] std::optional<std::u16string_view> soundTag(std::u16string_view text) const;
    /// Takes out telnet commands and sound tags, and turns SGR sequences into attributes.
    [[nodiscard]] ZNTAttributedText processIncomingStream(std::u16string text) const;
    /// The first step of `processIncomingStream` alone.
    static void stripCommands(std::u16string& text);

    /// Whether compression and sound are accepted when the server offers them.
    void set_isMccpOnOff(bool on) { _isMccpOnOff_ = on; }
    void set_isMspOnOff(bool on) { _isMspOnOff_ = on; }
    [[nodiscard]] bool _isMccpOnOff() const { return _isMccpOnOff_; }
    [[nodiscard]] bool _isMspOnOff() const { return _isMspOnOff_; }

    static constexpr double replyTimeout = 0.1; ///< seconds; a reply that takes longer ends the connection
    static constexpr long replyTag = 1;

    [[nodiscard]] ZNTColourParser& colours() { return colourParser; }

    /// Kept as part of the interface: for a log, each UTF-16 unit as a blank and its decimal value.
    static std::string charCodeString(std::u16string_view text);

private:
    ZNTColourParser colourParser;
    ZNTTelnetAnswers answers; ///< of the block at hand
    bool _isMspOnOff_ = false;
    bool _isMccpOnOff_ = false;
};
