#include "FuzzInput.h"
#include "ZNTDecodeFirstReceiver.h"
#include "ZNTHeldBackText.h"
#include "ZNTParserUtility.h"
#include "ZNTTelnetScanner.h"

#include <string>

namespace
{

using namespace znt::telnet;

constexpr std::size_t refusalsOfCompression = 6; ///< bytes, sent unasked
constexpr std::size_t mostWaitingUnits = 1;      ///< of a character that the block before cut off

void checkShown(const ZNTAttributedText& shown, std::size_t mostUnits)
{
    require(shown.text.size() <= mostUnits, "no more is shown than came in");
    const auto command = shown.text.find(IAC);
    require(command == std::u16string::npos || command + 1 == shown.text.size(), "no command is shown");
    require(shown.empty() || (!shown.runs.empty() && shown.runs.front().offset == 0), "all text has a run");
    for (std::size_t at = 0; at < shown.runs.size(); ++at) {
        require(shown.runs[at].offset < shown.text.size() && shown.runs[at].set < shown.sets.size(),
                "a run lies within the text and has attributes");
        require(at == 0 || shown.runs[at - 1].offset < shown.runs[at].offset, "runs are in order");
    }
}

/// The way of a byte from the network to the view.
class Receiver
{
public:
    /// `choices` settle the encoding and what is accepted before the first byte.
    explicit Receiver(std::uint8_t choices)
        : encoding(ZNTStringEncodings[choices % ZNTStringEncodings.size()].encoding)
    {
        receiver.startStream();
        parser.set_isMspOnOff((choices & 0x10) != 0);
        receiver.acceptCompressionOffers((choices & 0x20) != 0);
        if (choices & 0x80)
            static_cast<void>(receiver.switchCompression(true));
    }

    void receive(std::string_view block)
    {
        const auto mostUnits = receiver.isInflating() ? ZNTInflater::mostInflated + 8 * block.size()
                                                      : block.size() + mostWaitingUnits;
        const auto received = receiver.read(block, encoding);
        require(received.text.size() <= mostUnits, "a block stays small");
        require(received.replies.size() <= mostUnits + refusalsOfCompression,
                "a reply is no longer than its offer");
        heldUnits += received.text.size();
        if (auto released = heldBack.take(received.text, received.isRelease, received.ready))
            show(std::move(released->text));
        require(heldBack.size() <= heldUnits, "no more is held back than came in");
    }
    void silence()
    {
        if (auto released = heldBack.take(u"", /*isRelease=*/true, 0))
            show(std::move(released->text));
    }

private:
    void show(std::u16string text)
    {
        if (const auto tag = parser.soundTag(text))
            require(tag->starts_with(u"!!"), "a tag begins with two marks");
        checkShown(parser.processIncomingStream(std::move(text)), heldUnits);
        heldUnits = 0;
    }

    ZNTStringEncoding encoding;
    ZNTParserUtility parser;
    ZNTDecodeFirstReceiver receiver{parser};
    ZNTHeldBackText heldBack;
    std::size_t heldUnits = 0;
};

} // namespace

/// A byte of settings, then the network: blocks and silences of the fuzzer's choice. A stage that is not
/// linear shows as a timeout, with -max_len=100000 -timeout=5.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const auto choices = input.byte();
    const std::size_t longestBlock = choices & 0x40 ? 32 : 65536;
    Receiver receiver(choices);
    while (!input.empty()) {
        const auto cut = input.byte();
        receiver.receive(input.take(1 + cut * longestBlock / 255));
        if (cut % 2 != 0)
            receiver.silence();
    }
    return 0;
}
