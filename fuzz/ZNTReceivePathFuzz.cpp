#include "FuzzInput.h"
#include "ZNTBlockDecoder.h"
#include "ZNTHeldBackText.h"
#include "ZNTInflater.h"
#include "ZNTParserUtility.h"
#include "ZNTTelnetScanner.h"

#include <cstdlib>
#include <string>

namespace
{

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The session's end of telnet: every reply is whole, and one that the option table can give.
struct RecordedSession final : ZNTTelnetListener {
    std::size_t repliedBytes = 0;
    bool isCompressed = false;
    void setIsGoAhead(bool) override {}
    void setEndOfNegotiations(bool) override {}
    void set_mccp(bool isOn) override { isCompressed = isOn; }
    void writeData(std::string_view data, double, long) override
    {
        require(data.size() % 3 == 0);
        for (std::size_t at = 0; at < data.size(); at += 3) {
            const auto command = static_cast<unsigned char>(data[at + 1]);
            require(data[at] == '\xFF' && (command == 25 || command == 252 || command == 253));
        }
        repliedBytes += data.size();
    }
};

void checkShown(const ZNTAttributedText& shown, std::size_t mostUnits)
{
    require(shown.text.size() <= mostUnits);
    const auto command = shown.text.find(znt::telnet::IAC);
    require(command == std::u16string::npos || command + 1 == shown.text.size());
    require(shown.empty() || (!shown.runs.empty() && shown.runs.front().offset == 0));
    for (std::size_t at = 0; at < shown.runs.size(); ++at) {
        require(shown.runs[at].offset < shown.text.size() && shown.runs[at].set < shown.sets.size());
        require(at == 0 || shown.runs[at - 1].offset < shown.runs[at].offset);
    }
}

} // namespace

/// The way of a byte from the network to the view, in blocks and flushes of the fuzzer's choice. What comes
/// out is never longer than what came in, holds no telnet command, and its runs are in order; a reply never
/// is longer than its offer. Run with -max_len=100000 -timeout=5: a stage that is not linear shows there.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    constexpr ZNTStringEncoding encodings[] = {ZNTStringEncoding::Ascii, ZNTStringEncoding::EucCn,
                                               ZNTStringEncoding::Big5Hkscs};
    const auto choices = input.byte();
    const auto encoding = encodings[choices % 3];
    const std::size_t longestBlock = choices & 0x40 ? 32 : 65536;

    RecordedSession session;
    std::size_t tagsHeard = 0;
    ZNTParserUtility parser(session, [&](auto tag) { require(tag.size() >= 4 && ++tagsHeard > 0); });
    parser.set_isMspOnOff((choices & 0x10) != 0);
    parser.set_isMccpOnOff((choices & 0x20) != 0);
    ZNTInflater inflater;
    inflater.startStream();
    ZNTHeldBackText heldBack;
    std::size_t heldUnits = 0;
    session.isCompressed = (choices & 0x80) != 0;
    while (!input.empty()) {
        const auto cut = input.byte();
        const auto block = input.take(1 + cut * longestBlock / 255);
        std::string inflated;
        if (session.isCompressed && !block.empty()) {
            auto result = inflater.anotherInflate(block);
            require(result.bytes.size() <= ZNTInflater::mostInflated + 8 * block.size());
            session.isCompressed = result.outcome == ZNTInflater::Outcome::GoesOn;
            inflated = std::move(result.bytes);
        }
        const std::string_view bytes = inflated.empty() ? block : inflated;
        const auto text = znt::textOfBlock(bytes, encoding);
        require(text.size() <= bytes.size());
        session.repliedBytes = 0;
        parser.processServerCommands(text);
        require(session.repliedBytes <= bytes.size());
        if (cut % 2 == 0) {
            heldBack.add(text);
            heldUnits += text.size();
            require(heldBack.size() <= heldUnits);
            continue;
        }
        checkShown(parser.processIncomingStream(heldBack.releasedWith(text)), heldUnits + text.size());
        heldUnits = 0;
    }
    return 0;
}
