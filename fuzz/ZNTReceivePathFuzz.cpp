#include "FuzzInput.h"
#include "FuzzRequire.h"
#include "ZNTBlockDecoder.h"
#include "ZNTHeldBackText.h"
#include "ZNTInflater.h"
#include "ZNTParserUtility.h"
#include "ZNTTelnetScanner.h"

#include <algorithm>
#include <string>
#include <vector>

namespace
{

using namespace znt::telnet;

/// What is settled for a run before its first byte.
struct Settings {
    ZNTStringEncoding encoding = ZNTStringEncoding::Ascii;
    bool acceptsSounds = false, acceptsCompression = false, isCompressed = false;
};

/// The first IAC WONT or IAC GA, which shows what was held back; npos where there is none.
std::size_t releaseIn(std::u16string_view text)
{
    for (std::size_t at = 0; at + 1 < text.size(); ++at)
        if (text[at] == IAC && (text[at + 1] == WONT || text[at + 1] == GA))
            return at;
    return text.npos;
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
          parser(*this, [this](auto tag) { tags.emplace_back(tag); }),
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

    std::vector<ZNTAttributedText> shown;
    std::vector<std::u16string> tags;
    std::string replies;
    bool isGoAhead = false;

private:
    void setIsGoAhead(bool) override { isGoAhead = true; }
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
        replies += data;
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
        const auto repliedBefore = replies.size();
        parser.processServerCommands(text);
        require(replies.size() - repliedBefore <= bytes.size(), "a reply is no longer than its offer");
        heldUnits += text.size();
        if (releaseIn(text) != text.npos)
            show(text);
        else
            heldBack.add(text);
        require(heldBack.size() <= heldUnits, "no more is held back than came in");
    }

    void show(std::u16string_view text)
    {
        auto result = parser.processIncomingStream(heldBack.releasedWith(text));
        checkShown(result, heldUnits);
        heldUnits = 0;
        if (!result.empty())
            shown.push_back(std::move(result));
    }

    ZNTStringEncoding encoding;
    ZNTParserUtility parser;
    ZNTInflater inflater;
    ZNTHeldBackText heldBack;
    std::size_t heldUnits = 0;
    bool isCompressed;
};

/// Where an ASCII text can be cut and mean the same: not within a command, since none is recognised across
/// two blocks; not beside a blank, since those at the ends of a block held back are trimmed; not behind what
/// shows the text at once, nor behind the end of a subnegotiation, which starts compression.
std::vector<bool> placesToCut(std::string_view bytes)
{
    const auto text = znt::textOfBlock(bytes, ZNTStringEncoding::Ascii);
    const auto isBlank = [&](std::size_t at) { return text[at] == u' ' || text[at] == u'\t'; };
    std::vector<bool> mayCut(bytes.size(), false);
    const auto release = releaseIn(text);
    const bool isTrimmed = release == text.npos || text.empty() || !isBlank(0);
    for (std::size_t at = 1; at < text.size(); ++at)
        mayCut[at] = isTrimmed && at <= release && !isBlank(at - 1) && !isBlank(at);
    auto end = text.size();
    forEachCommand(text, [&](std::u16string_view command) {
        const auto start = static_cast<std::size_t>(command.data() - text.data());
        if (command[1] == SE)
            end = std::min(end, start + 1);
        for (std::size_t at = start + 1; at < start + command.size(); ++at)
            mayCut[at] = false;
    });
    std::fill(mayCut.begin() + static_cast<std::ptrdiff_t>(std::min(end, mayCut.size())), mayCut.end(),
              false);
    return mayCut;
}

void requireTheSame(const Receiver& whole, const Receiver& cut)
{
    require(whole.replies == cut.replies, "the same is replied, whole and cut");
    require(whole.isGoAhead == cut.isGoAhead, "the same go-ahead is seen, whole and cut");
    require(whole.tags == cut.tags, "the same sound is played, whole and cut");
    require(whole.shown.size() == cut.shown.size(), "as much is shown, whole and cut");
    for (std::size_t at = 0; at < whole.shown.size(); ++at) {
        require(whole.shown[at].text == cut.shown[at].text, "the same text is shown, whole and cut");
        require(whole.shown[at].runs == cut.shown[at].runs && whole.shown[at].sets == cut.shown[at].sets,
                "the same attributes are shown, whole and cut");
    }
}

/// Whole, cut everywhere, and cut as the fuzzer chooses.
void compareWholeAndCut(Settings settings, std::string_view bytes, FuzzInput cuts)
{
    settings.encoding = ZNTStringEncoding::Ascii;
    settings.isCompressed = false;
    Receiver whole(settings), everywhere(settings), chosen(settings);
    whole.receive(bytes);
    const auto mayCut = placesToCut(bytes);
    std::size_t start = 0, chosenStart = 0, wanted = 1 + cuts.byte() % 32;
    for (std::size_t at = 1; at < bytes.size(); ++at) {
        if (!mayCut[at])
            continue;
        everywhere.receive(bytes.substr(start, at - start));
        start = at;
        if (at < wanted)
            continue;
        chosen.receive(bytes.substr(chosenStart, at - chosenStart));
        chosenStart = at;
        wanted = at + 1 + cuts.byte() % 32;
    }
    everywhere.receive(bytes.substr(start));
    chosen.receive(bytes.substr(chosenStart));
    for (auto* receiver : {&whole, &everywhere, &chosen})
        receiver->silence();
    requireTheSame(whole, everywhere);
    requireTheSame(whole, chosen);
}

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
    compareWholeAndCut(settings, input.rest(), FuzzInput(data, size));

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
