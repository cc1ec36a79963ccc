#include "ZNTStandardReceiver.h"

#include "ZNTInflater.h"
#include "ZNTTelnetMessages.h"

#include <algorithm>
#include <utility>

using namespace znt::telnet;

namespace
{

constexpr std::u16string_view brokenStream =
    u"What the game sends is compressed and was damaged on its way. Connect again to go on.";

} // namespace

ZNTStandardReceiver::ZNTStandardReceiver(const ZNTStandardChoices& choices) { setChoices(choices); }

void ZNTStandardReceiver::setChoices(const ZNTStandardChoices& newChoices)
{
    choices = newChoices;
    negotiation.setAccepted(ZNTOptionSwitch::Compression, choices.compression);
    negotiation.setAccepted(ZNTOptionSwitch::Sounds, choices.sounds);
}

void ZNTStandardReceiver::startStream()
{
    inflater.stop();
    reader.start();
    negotiation.start();
    terminalType.start();
    windowSize.start();
    charset.start();
    readyText.start();
    decoder.reset();
    agreedEncoding.reset();
    isBroken = false;
}

// The way of a block

ZNTReceived ZNTStandardReceiver::read(std::string_view block, ZNTStringEncoding encoding)
{
    sessionEncoding = encoding;
    inflatedBytes = 0;
    if (isBroken)
        return {};
    useEncoding();
    if (!inflater.isInflating())
        received.text.reserve(received.text.size() + block.size());
    readBytes(block);
    return takeReceived();
}

ZNTReceived ZNTStandardReceiver::readText(std::u16string text)
{
    if (text.empty())
        readyText.noteQuiet();
    received.text += text;
    return takeReceived();
}

ZNTReceived ZNTStandardReceiver::takeReceived()
{
    const auto mark = std::exchange(endOfPrompt, std::nullopt);
    const auto ready = readyText.readyUnits(received.text, mark);
    received.isRelease = ready.has_value();
    received.ready = ready.value_or(0);
    return std::exchange(received, {});
}

void ZNTStandardReceiver::readBytes(std::string_view bytes)
{
    while (!bytes.empty() && !isBroken)
        if (inflater.isInflating())
            readCompressed(bytes);
        else
            bytes.remove_prefix(reader.read(bytes));
}

/// Inflates to the end of the stream, or of the input.
void ZNTStandardReceiver::readCompressed(std::string_view& bytes)
{
    const auto textBefore = received.text.size();
    for (;;) {
        const auto piece = inflater.next(bytes);
        inflatedBytes += piece.bytes.size();
        const bool isTooMuch = inflatedBytes > ZNTInflater::mostInflated;
        if (piece.outcome == ZNTStreamInflater::Outcome::Damaged || isTooMuch)
            return isTooMuch ? giveUp(textBefore) : readWhatDidNotInflate(piece.bytes, textBefore);
        readInflated(piece.bytes);
        if (piece.outcome == ZNTStreamInflater::Outcome::NeedsInput)
            return;
        if (piece.outcome == ZNTStreamInflater::Outcome::Ended)
            return negotiation.noteDone(ZNTOptionSide::Server, option::CompressionV2, /*on=*/false,
                                        received.replies);
    }
}

void ZNTStandardReceiver::readInflated(std::string_view piece)
{
    isReadingInflated = true;
    reader.read(piece);
    isReadingInflated = false;
}

/// A server that was told DONT may have stopped compressing without ending the stream.
void ZNTStandardReceiver::readWhatDidNotInflate(std::string_view lastPiece, std::size_t textBefore)
{
    const bool mayBePlain = !negotiation.isWanted(ZNTOptionSide::Server, option::CompressionV2);
    const auto plain = mayBePlain ? inflater.takeBytesThatDidNotInflate() : std::nullopt;
    if (!plain)
        return giveUp(textBefore);
    readInflated(lastPiece);
    negotiation.noteDone(ZNTOptionSide::Server, option::CompressionV2, /*on=*/false, received.replies);
    readBytes(*plain);
}

void ZNTStandardReceiver::giveUp(std::size_t textBefore)
{
    inflater.stop();
    isBroken = true;
    received.failure = brokenStream;
    received.text.resize(textBefore);
    if (endOfPrompt)
        endOfPrompt = std::min(*endOfPrompt, textBefore);
}

// What telnet's reader finds

void ZNTStandardReceiver::onText(std::string_view bytes) { decoder.decode(bytes, received.text); }

void ZNTStandardReceiver::onCommand(unsigned char command)
{
    if (command != GA && command != EOR)
        return;
    endOfPrompt = received.text.size();
    received.isGoAhead = true;
}

void ZNTStandardReceiver::onOption(unsigned char verb, unsigned char option)
{
    const bool isNewlyAgreed = negotiation.receive(verb, option, received.replies);
    if (!isNewlyAgreed || verb != DO)
        return;
    // What we have just agreed to say is said behind the WILL.
    switch (option) {
    case option::TerminalType:
        received.replies += terminalType.agree(abilities());
        break;
    case option::WindowSize:
        windowSize.start();
        received.replies += windowSize.report();
        break;
    case option::Charset:
        received.replies += charset.request(namedEncoding());
        break;
    default:
        break;
    }
}

ZNTTelnetListener::AfterSubnegotiation ZNTStandardReceiver::onSubnegotiation(unsigned char option,
                                                                             std::string_view content)
{
    received.isEndOfNegotiations = true;
    switch (option) {
    case option::CompressionV2:
        return beginCompression(content);
    case option::TerminalType:
        if (content.size() == 1 && content.front() == terminaltype::Send)
            received.replies +=
                terminalType.ask(negotiation.isAgreed(ZNTOptionSide::Client, option), abilities());
        break;
    case option::Charset:
        receiveCharset(content);
        break;
    default:
        break;
    }
    return AfterSubnegotiation::GoOn;
}

/// The next byte is compressed. A start within a stream that goes on, or without our DO, means nothing.
ZNTTelnetListener::AfterSubnegotiation ZNTStandardReceiver::beginCompression(std::string_view content)
{
    if (!content.empty() || isReadingInflated ||
        !negotiation.canBeInUse(ZNTOptionSide::Server, option::CompressionV2))
        return AfterSubnegotiation::GoOn;
    negotiation.noteDone(ZNTOptionSide::Server, option::CompressionV2, /*on=*/true, received.replies);
    inflater.begin();
    return AfterSubnegotiation::StopReading;
}

void ZNTStandardReceiver::receiveCharset(std::string_view content)
{
    // The side that has offered proposes. Some servers say DO and then propose themselves.
    if (!negotiation.isAgreed(ZNTOptionSide::Server, option::Charset) &&
        !negotiation.isAgreed(ZNTOptionSide::Client, option::Charset))
        return;
    const auto result = charset.receive(content, namedEncoding());
    received.replies += result.reply;
    if (!result.agreed)
        return;
    agreedEncoding = received.agreedEncoding = result.agreed;
    useEncoding();
}

// Encodings

ZNTStringEncoding ZNTStandardReceiver::encodingInUse() const
{
    return choices.isEncodingNamed ? sessionEncoding : agreedEncoding.value_or(sessionEncoding);
}

std::optional<ZNTStringEncoding> ZNTStandardReceiver::namedEncoding() const
{
    return choices.isEncodingNamed ? std::optional(sessionEncoding) : std::nullopt;
}

void ZNTStandardReceiver::useEncoding()
{
    if (decoder.encoding() == encodingInUse())
        return;
    decoder.finish(received.text);
    decoder = ZNTTextDecoder(encodingInUse());
}

std::string ZNTStandardReceiver::encodedLine(std::u16string_view line, ZNTStringEncoding encoding) const
{
    return doubledIac(znt::encodedLeniently(line, encoding));
}

// What the player changes

std::string ZNTStandardReceiver::switchCompression(bool on)
{
    choices.compression = on;
    return switchOption(ZNTOptionSwitch::Compression, option::CompressionV2, on);
}

std::string ZNTStandardReceiver::switchSounds(bool on)
{
    choices.sounds = on;
    return switchOption(ZNTOptionSwitch::Sounds, option::Sound, on);
}

std::string ZNTStandardReceiver::switchOption(ZNTOptionSwitch what, unsigned char option, bool on)
{
    std::string replies;
    negotiation.setAccepted(what, on);
    negotiation.request(ZNTOptionSide::Server, option, on, replies);
    return replies;
}

void ZNTStandardReceiver::acceptCompressionOffers(bool accept)
{
    choices.compression = accept;
    negotiation.setAccepted(ZNTOptionSwitch::Compression, accept);
}

std::string ZNTStandardReceiver::windowSizeChanged(int columns, int rows)
{
    windowSize.setSize(columns, rows);
    const bool isAgreed = negotiation.isAgreed(ZNTOptionSide::Client, option::WindowSize);
    return isAgreed ? windowSize.report() : std::string();
}

bool ZNTStandardReceiver::isEchoedByServer() const
{
    return negotiation.isAgreed(ZNTOptionSide::Server, option::Echo);
}

ZNTTerminalType::Abilities ZNTStandardReceiver::abilities() const
{
    return {.fullColours = choices.fullColours,
            .isUtf8 = encodingInUse() == ZNTStringEncoding::Utf8,
            .hasScreenReader = choices.tellsScreenReader};
}
