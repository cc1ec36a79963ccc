#pragma once

#include "ZNTBlockDecoder.h"
#include "ZNTInflater.h"
#include "ZNTReceiver.h"
#include "ZNTWholeLines.h"

#include <optional>

class ZNTParserUtility;

/// The receiver that decodes first: bytes are inflated, decoded to text, and telnet commands are looked for
/// in that text. Each block is read by itself; a command or a character that two blocks share is not joined
/// (in UTF-8 a character is).
///
/// Kept quirks: any IAC SE switches inflating on, beginning with the next block. A block that consists of
/// bare telnet commands is not inflated, since servers announce compression with commands that are not
/// compressed.
class ZNTDecodeFirstReceiver final : public ZNTReceiver
{
public:
    /// `parser` answers the offers. The caller owns it; it outlives the receiver.
    explicit ZNTDecodeFirstReceiver(ZNTParserUtility& parser) : parser(parser) {}

    void startStream() override
    {
        mccp2.startStream();
        decoder.startStream();
        if (wholeLines)
            wholeLines->start();
    }
    /// Whether finished lines are ready at once, as ZNTWholeLines says; from the next block on. Else a block
    /// is ready as a whole or not at all.
    void setWholeLines(bool wanted);
    ZNTReceived read(std::string_view block, ZNTStringEncoding encoding) override;
    ZNTReceived readText(std::u16string text) override;

    [[nodiscard]] bool keepsBlanks() const override { return wholeLines.has_value(); }
    [[nodiscard]] double secondsOfQuiet() const override { return 0.5; }
    [[nodiscard]] bool isCloseAnError() const override { return true; }
    void stripCommands(std::u16string& text) const override;
    [[nodiscard]] std::string encodedLine(std::u16string_view line,
                                          ZNTStringEncoding encoding) const override;

    /// Switched on, the very next block is taken as compressed.
    std::string switchCompression(bool on) override;
    std::string switchSounds(bool on) override;
    void acceptCompressionOffers(bool accept) override;

    [[nodiscard]] bool isInflating() const override { return _mccp; }
    void stopInflating() override { _mccp = false; }

private:
    [[nodiscard]] std::u16string decoded(std::string_view block, ZNTStringEncoding encoding);
    ZNTReceived readBlock(std::u16string text);
    ZNTReceived answered(std::u16string text);

    ZNTParserUtility& parser;
    ZNTInflater mccp2;
    ZNTBlockDecoder decoder;
    std::optional<ZNTWholeLines> wholeLines;
    bool _mccp = false;
};
