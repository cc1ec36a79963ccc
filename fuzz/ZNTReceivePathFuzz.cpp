#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTBlockDecoder.h"
#include "ZNTHeldBackText.h"
#include "ZNTInflater.h"
#include "ZNTParserUtility.h"
#include "ZNTTelnetScanner.h"

#include <string>

namespace
{

using namespace znt::telnet;

/// What is settled for a run before its first byte.
struct Settings {
    ZNTStringEncoding encoding = ZNTStringEncoding::Ascii;
    bool acceptsSounds = false, acceptsCompression = false, isCompressed = false;
};

/// Whether `text` shows what was held back, with IAC WONT or IAC GA.
bool isRelease(std::u16string_view text)
{
    for (std::size_t at = 0; at + 1 < text.size(); ++at)
        if (text[at] == IAC && (text[at + 1] == WONT || text[at + 1] == GA))
            return true;
    return false;
}

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
class Receiver final : ZNTTelnetListener
{
public:
    explicit Receiver(const Settings& settings)
        : encoding(settings.encoding),
          parser(*this, [](auto tag) { require(tag.starts_with(u"!!"), "a tag begins with two marks"); }),
          isCompressed(settings.isCompressed)
    {
        parser.set_isMspOnOff(settings.acceptsSounds);
        parser.set_isMccpOnOff(settings.acceptsCompression);
        inflater.startStream();
    }

    void receive(std::string_view block)
    {
        if (isCompressed && !block.empty()) {
            const auto inflated = inflate(block);
            take(inflated.empty() ? block : inflated);
        } else {
            take(block);
        }
    }
    void silence() { show(u""); }

private:
    void setIsGoAhead(bool) override {}
    void setEndOfNegotiations(bool) override {}
    void set_mccp(bool isOn) override { isCompressed = isOn; }
    void writeData(std::string_view data, double, long) override
    {
        require(data.size() % 3 == 0, "a reply is whole");
        for (std::size_t at = 0; at < data.size(); at += 3) {
            const auto command = static_cast<unsigned char>(data[at + 1]);
            require(data[at] == '\xFF' && (command == Refusal || command == WONT || command == DO),
                    "a reply is one of the three there are");
        }
        replyBytes += data.size();
    }

    std::string inflate(std::string_view block)
    {
        auto result = inflater.anotherInflate(block);
        require(result.bytes.size() <= ZNTInflater::mostInflated + 8 * block.size(), "a block stays small");
        isCompressed = result.outcome == ZNTInflater::Outcome::GoesOn;
        return std::move(result.bytes);
    }

    void take(std::string_view bytes)
    {
        const auto text = znt::textOfBlock(bytes, encoding);
        require(text.size() <= bytes.size(), "no more units than bytes");
        replyBytes = 0;
        parser.processServerCommands(text);
        require(replyBytes <= bytes.size(), "a reply is no longer than its offer");
        heldUnits += text.size();
        if (isRelease(text))
            show(text);
        else
            heldBack.add(text);
        require(heldBack.size() <= heldUnits, "no more is held back than came in");
    }

    void show(std::u16string_view text)
    {
        checkShown(parser.processIncomingStream(heldBack.releasedWith(text)), heldUnits);
        heldUnits = 0;
    }

    ZNTStringEncoding encoding;
    ZNTParserUtility parser;
    ZNTInflater inflater;
    ZNTHeldBackText heldBack;
    std::size_t heldUnits = 0, replyBytes = 0;
    bool isCompressed;
};

} // namespace

/// A byte of settings, then the network: blocks and silences of the fuzzer's choice. A stage that is not
/// linear shows as a timeout, with -max_len=100000 -timeout=5.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    constexpr ZNTStringEncoding encodings[] = {ZNTStringEncoding::Ascii, ZNTStringEncoding::EucCn,
                                               ZNTStringEncoding::Big5Hkscs};
    const auto choices = input.byte();
    const Settings settings{.encoding = encodings[choices % 3],
                            .acceptsSounds = (choices & 0x10) != 0,
                            .acceptsCompression = (choices & 0x20) != 0,
                            .isCompressed = (choices & 0x80) != 0};
    const std::size_t longestBlock = choices & 0x40 ? 32 : 65536;
    Receiver receiver(settings);
    while (!input.empty()) {
        const auto cut = input.byte();
        receiver.receive(input.take(1 + cut * longestBlock / 255));
        if (cut % 2 != 0)
            receiver.silence();
    }
    return 0;
}
