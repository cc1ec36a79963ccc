#pragma once

#include "ZNTCharsetNegotiation.h"
#include "ZNTOptionNegotiation.h"
#include "ZNTReadyText.h"
#include "ZNTReceiver.h"
#include "ZNTStreamInflater.h"
#include "ZNTTelnetReader.h"
#include "ZNTTerminalType.h"
#include "ZNTTextDecoder.h"
#include "ZNTWindowSize.h"

#include <optional>

/// What the player has chosen, as far as it changes what the server is told.
struct ZNTStandardChoices {
    bool compression = false;       ///< offers of MCCP2 are accepted
    bool sounds = false;            ///< offers of MSP are accepted
    bool isEncodingNamed = false;   ///< the player named the encoding: the server cannot change it
    bool fullColours = false;       ///< the view shows 256 and 24-bit colours
    bool tellsScreenReader = false; ///< the server may know that a screen reader is in use

    friend bool operator==(const ZNTStandardChoices&, const ZNTStandardChoices&) = default;
};

/// The receiver that reads telnet as its standards say, byte by byte: compressed streams are inflated where
/// they begin and end (MCCP2), then telnet is taken out, and what is left is decoded. However the network
/// cuts the bytes, text and replies are the same.
///
/// Linear in what comes in; the replies to one connection are bounded (ZNTOptionNegotiation). A broken
/// compressed stream ends the connection: `ZNTReceived` says so, shows nothing of what it inflated to in that
/// block, and nothing is read any more. A block that inflates past `ZNTInflater::mostInflated` counts as
/// broken.
class ZNTStandardReceiver final : public ZNTReceiver, private ZNTTelnetListener
{
public:
    explicit ZNTStandardReceiver(const ZNTStandardChoices& choices);
    ZNTStandardReceiver(const ZNTStandardReceiver&) = delete;
    ZNTStandardReceiver& operator=(const ZNTStandardReceiver&) = delete;

    /// Sends nothing: what was agreed stays.
    void setChoices(const ZNTStandardChoices& newChoices);

    void startStream() override;
    /// `encoding` is that of the session. An encoding that was agreed on in this connection beats it, unless
    /// the player named it.
    ZNTReceived read(std::string_view block, ZNTStringEncoding encoding) override;
    /// An empty text says that the session has shown everything after a time of quiet.
    ZNTReceived readText(std::u16string text) override;

    [[nodiscard]] bool keepsBlanks() const override { return true; }
    /// Servers that agreed to suppress go-aheads, and those that never send any, leave a prompt without a
    /// mark: so short a quiet shows it.
    [[nodiscard]] double secondsOfQuiet() const override { return 0.1; }
    void stripCommands(std::u16string&) const override {} // none are in the text
    /// The encoding may be wider than the settled one (GBK). A byte 255 is doubled.
    [[nodiscard]] std::string encodedLine(std::u16string_view line,
                                          ZNTStringEncoding encoding) const override;
    [[nodiscard]] bool isEchoedByServer() const override;
    [[nodiscard]] bool isCloseAnError() const override { return false; }
    std::string windowSizeChanged(int columns, int rows) override;

    /// Nothing is said if the server has been told already, or has agreed.
    std::string switchCompression(bool on) override;
    std::string switchSounds(bool on) override;
    void acceptCompressionOffers(bool accept) override;

    /// Switched off, it goes on until the server ends the stream.
    [[nodiscard]] bool isInflating() const override { return inflater.isInflating(); }
    void stopInflating() override { inflater.stop(); }

private:
    void onText(std::string_view bytes) override;
    void onCommand(unsigned char command) override;
    void onOption(unsigned char verb, unsigned char option) override;
    AfterSubnegotiation onSubnegotiation(unsigned char option, std::string_view content) override;

    void readBytes(std::string_view bytes);
    void readCompressed(std::string_view& bytes);
    void readInflated(std::string_view piece);
    void readWhatDidNotInflate(std::string_view lastPiece, std::size_t textBefore);
    void giveUp(std::size_t textBefore);
    AfterSubnegotiation beginCompression(std::string_view content);
    void receiveCharset(std::string_view content);

    std::string switchOption(ZNTOptionSwitch what, unsigned char option, bool on);
    [[nodiscard]] ZNTStringEncoding encodingInUse() const;
    [[nodiscard]] std::optional<ZNTStringEncoding> namedEncoding() const;
    [[nodiscard]] ZNTTerminalType::Abilities abilities() const;
    void useEncoding();
    ZNTReceived takeReceived();

    ZNTStandardChoices choices;
    ZNTStreamInflater inflater;
    ZNTTelnetReader reader{*this};
    ZNTOptionNegotiation negotiation;
    ZNTTerminalType terminalType;
    ZNTWindowSize windowSize;
    ZNTCharsetNegotiation charset;
    ZNTReadyText readyText;

    ZNTStringEncoding sessionEncoding = ZNTStringEncoding::Ascii;
    std::optional<ZNTStringEncoding> agreedEncoding;
    ZNTTextDecoder decoder{ZNTStringEncoding::Ascii};
    bool isBroken = false; ///< the compressed stream of this connection

    // The block at hand.
    ZNTReceived received;
    std::optional<std::size_t> endOfPrompt; ///< in its text
    std::size_t inflatedBytes = 0;
    bool isReadingInflated = false;
};
