#pragma once

#include "ZNTAttributedText.h"
#include "ZNTColourParser.h"

#include <functional>
#include <string>
#include <string_view>

/// What the parser tells, and asks of, the session that it works for.
class ZNTTelnetListener
{
public:
    virtual ~ZNTTelnetListener() = default;
    virtual void setIsGoAhead(bool isGoAhead) = 0;
    virtual void setEndOfNegotiations(bool isEnd) = 0;
    /// From the next block on, what comes in is compressed (or is not).
    virtual void set_mccp(bool isCompressed) = 0;
    /// Sends `data` as it stands; a write that takes longer than `timeout` seconds ends the connection.
    virtual void writeData(std::string_view data, double timeout, long tag) = 0;
};

/// Understands what servers mix into their text. Its telnet half (RFC 854, RFC 855) answers offers from a
/// fixed table; it is no state machine: each command is answered by itself, an offer made twice is answered
/// twice, and DO, DONT, WONT and subnegotiations get no answer. Its colour half is ZNTColourParser. Belongs
/// to the run loop's thread, so that it works on one text at a time.
class ZNTParserUtility
{
public:
    /// `processSound` is handed the first sound tag of each text while sounds are on.
    ZNTParserUtility(ZNTTelnetListener& session, std::function<void(std::u16string_view tag)> processSound);

    /// Acts on every command of a received block, in order. All that they are answered goes out in one write:
    /// a flood of offers must not become a queue of as many writes, behind which a typed line would wait.
    void processServerCommands(std::u16string_view text);
    /// Acts on one command, as `znt::telnet::commandAt` delimits it.
    void processServerCommand(std::u16string_view command);
    /// Answers the WILL in `command`, whose third character is the option; one without it is ignored.
    void processServerOptionForWill(std::u16string_view command);
    void sendCommand(char16_t command, char16_t option);
    /// Whether a command ends a prompt. A WILL is answered on the way and is none.
    bool isGoAhead(std::u16string_view command);

    /// Takes out telnet commands and sound tags, and turns SGR sequences into attributes.
    ZNTAttributedText processIncomingStream(std::u16string text);

    /// Whether compression and sound are accepted when the server offers them.
    void set_isMccpOnOff(bool on) { _isMccpOnOff_ = on; }
    void set_isMspOnOff(bool on) { _isMspOnOff_ = on; }
    [[nodiscard]] bool _isMccpOnOff() const { return _isMccpOnOff_; }
    [[nodiscard]] bool _isMspOnOff() const { return _isMspOnOff_; }

    /// The tag of all that `writeData` is handed.
    static constexpr long replyTag = 1;

    [[nodiscard]] ZNTColourParser& colours() { return colourParser; }

    /// For a log: each UTF-16 unit as a blank and its decimal value.
    static std::string charCodeString(std::u16string_view text);

private:
    ZNTTelnetListener& _zntServerConnectController;
    std::function<void(std::u16string_view)> processSound;
    ZNTColourParser colourParser;
    bool areRepliesGathered = false;
    std::string gatheredReplies;
    bool _isMspOnOff_ = false;
    bool _isMccpOnOff_ = false;
};
