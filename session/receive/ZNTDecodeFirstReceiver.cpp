#include "ZNTDecodeFirstReceiver.h"

#include "ZNTParserUtility.h"
#include "ZNTTelnetScanner.h"

#include <utility>

namespace
{

using namespace znt::telnet;

/// A block that cannot even be decoded is no announcement of compression.
bool isBareCommands(std::string_view block, ZNTStringEncoding encoding)
{
    if (static_cast<unsigned char>(block.front()) != IAC)
        return false;
    const auto text = znt::decodedText(block, encoding);
    return text && holdsOnlyCommands(*text);
}

} // namespace

ZNTReceived ZNTDecodeFirstReceiver::read(std::string_view block, ZNTStringEncoding encoding)
{
    return readBlock(decoded(block, encoding));
}

void ZNTDecodeFirstReceiver::setWholeLines(bool wanted)
{
    if (wanted != wholeLines.has_value())
        wholeLines = wanted ? std::optional<ZNTWholeLines>(std::in_place) : std::nullopt;
}

std::u16string ZNTDecodeFirstReceiver::decoded(std::string_view block, ZNTStringEncoding encoding)
{
    if (!_mccp || block.empty() || isBareCommands(block, encoding))
        return decoder.textOfBlock(block, encoding);
    auto inflated = mccp2.anotherInflate(block);
    if (inflated.outcome != ZNTInflater::Outcome::GoesOn) {
        // The end of a stream and damage are one case: compression is refused, what comes next is plain.
        _mccp = false;
        parser.sendCommand(Refusal, option::CompressionV2);
        parser.sendCommand(Refusal, option::CompressionV1);
    }
    if (wholeLines) // the zeros behind the text would stand in a command or a line that is cut there
        inflated.bytes.resize(inflated.bytes.find_last_not_of('\0') + 1);
    return decoder.textOfBlock(inflated.bytes, encoding);
}

/// An empty text is a time of quiet.
ZNTReceived ZNTDecodeFirstReceiver::readText(std::u16string text)
{
    if (wholeLines && text.empty())
        wholeLines->noteQuiet();
    return readBlock(std::move(text));
}

ZNTReceived ZNTDecodeFirstReceiver::readBlock(std::u16string text)
{
    if (!wholeLines)
        return answered(std::move(text));
    auto received = answered(wholeLines->withWholeCommands(std::move(text)));
    wholeLines->release(received);
    return received;
}

ZNTReceived ZNTDecodeFirstReceiver::answered(std::u16string text)
{
    auto answers = parser.processServerCommands(text);
    // The only subnegotiation that is ever agreed to is the start of MCCP2.
    if (answers.isEndOfNegotiations)
        _mccp = true;
    ZNTReceived received{.text = std::move(text),
                         .replies = std::move(answers.replies),
                         .isGoAhead = answers.isGoAhead,
                         .isEndOfNegotiations = answers.isEndOfNegotiations,
                         .isRelease = answers.isRelease};
    constexpr char refused[] = {static_cast<char>(IAC), static_cast<char>(Refusal)};
    received.isRefusal = received.replies.find(std::string_view(refused, 2)) != std::string::npos;
    received.ready = received.isRelease ? received.text.size() : 0;
    return received;
}

void ZNTDecodeFirstReceiver::stripCommands(std::u16string& text) const { parser.stripCommands(text); }

std::string ZNTDecodeFirstReceiver::encodedLine(std::u16string_view line, ZNTStringEncoding encoding) const
{
    return znt::encodedText(line, encoding);
}

std::string ZNTDecodeFirstReceiver::switchCompression(bool on)
{
    parser.set_isMccpOnOff(on);
    _mccp = on;
    parser.sendCommand(on ? DO : Refusal, option::CompressionV2);
    return parser.takeReplies();
}

std::string ZNTDecodeFirstReceiver::switchSounds(bool on)
{
    parser.set_isMspOnOff(on);
    parser.sendCommand(on ? DO : Refusal, option::Sound);
    return parser.takeReplies();
}

void ZNTDecodeFirstReceiver::acceptCompressionOffers(bool accept) { parser.set_isMccpOnOff(accept); }
