#include "ZNTDemoConnection.h"

#include "ZNTDemoWords.h"
#include "ZNTText.h"

#include <array>
#include <cerrno>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

using namespace znt::demo;

namespace
{

constexpr std::size_t mostReadAtOnce = 64 * 1024;
/// If more bytes than this wait for the player, his next lines and his flood wait too.
constexpr std::size_t enoughWaiting = 128 * 1024;
/// If more bytes than this wait, he is dropped. Only other players can cause so many.
constexpr std::size_t tooMuchWaiting = 2 * 1024 * 1024;
constexpr std::size_t floodPiece = 32 * 1024;

/// Long enough for a client to read the start of compression by itself. Some clients take all bytes of the
/// same read for plain text.
constexpr double secondsBeforeCompression = 0.1;
/// How long a client may take to close its side after ours.
constexpr double secondsForGoodbye = 2;

} // namespace

ZNTDemoConnection::ZNTDemoConnection(const Game& game, int descriptor,
                                     std::function<void(ZNTDemoConnection&)> whenOver)
    : game(game),
      descriptor(descriptor),
      whenOver(std::move(whenOver)),
      telnetInput(*this),
      options(*this),
      traits(game.encoding == ZNTStringEncoding::Utf8)
{
    const int on = 1;
    setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    watch = game.runLoop.watchDescriptor(descriptor, RunLoopInterest::Readable,
                                         [this](RunLoopInterest ready) { onReady(ready); });
    options.offer(ZNTDemoOfferTime::AtOnce);
    player = &game.village.enter(*this);
    if (!watch)
        finish();
}

ZNTDemoConnection::~ZNTDemoConnection()
{
    isOver = true;
    watch.reset();
    game.village.leave(*player);
    close(descriptor);
}

void ZNTDemoConnection::showParagraph(std::u16string_view text)
{
    // The line break at the front ends the prompt that stands there; a client that takes the byte after a
    // go-ahead with it loses nothing but a carriage return.
    std::u16string paragraph = u"\n";
    if (!text.empty())
        paragraph.append(text).append(u"\n");
    write(encodedPrompt(paragraph));
}

void ZNTDemoConnection::showFlood(int lines)
{
    floodLine = 0;
    floodLines = lines;
    writeText(u"\n");
    continueFlood();
}

void ZNTDemoConnection::continueFlood()
{
    while (floodLine < floodLines && output.waiting().size() + held.size() < enoughWaiting) {
        std::u16string lines;
        while (floodLine < floodLines && lines.size() < floodPiece)
            lines += filled(game.texts.phrase(ZNTDemoPhrase::FloodLine), znt::decimalText(++floodLine),
                            znt::decimalText(floodLines)) +
                     u"\n";
        if (floodLine < floodLines)
            writeText(lines);
        else
            write(encodedPrompt(lines));
    }
}

ZNTDemoScreen ZNTDemoConnection::screen() const
{
    auto screen = traits.screen();
    screen.canHideTyping = options.isTelnetSpoken();
    return screen;
}

/// A client does not show what is typed while the game says that it does that itself (RFC 857).
void ZNTDemoConnection::hideTyping(bool hide) { options.want(telnet::option::Echo, hide); }

bool ZNTDemoConnection::wantsSounds() const { return options.isOn(telnet::option::Sound); }

void ZNTDemoConnection::endCompression()
{
    options.want(telnet::option::CompressionV2, false);
    output.endCompression();
    watchForWhatMatters();
}

void ZNTDemoConnection::hangUp(std::u16string_view farewell)
{
    if (isHangingUp)
        return;
    writeText(u"\n" + std::u16string(farewell) + u"\n");
    if (compressionDelay)
        beginCompression();
    output.endCompression();
    isHangingUp = true;
    watchForWhatMatters();
}

void ZNTDemoConnection::onLine(std::string_view bytes)
{
    const auto text = znt::decodedText(bytes, encoding());
    // If the bytes are no text in this encoding, they are decoded one by one, so that every line gets an
    // answer.
    game.commands.handleLine(
        *player,
        withoutControls(text ? *text : znt::decodedText(bytes, ZNTStringEncoding::Ascii).value_or(u"")));
}

void ZNTDemoConnection::onLineTooLong() { game.commands.handleTooLongLine(*player); }

void ZNTDemoConnection::onOption(unsigned char verb, unsigned char option) { options.receive(verb, option); }

void ZNTDemoConnection::onSubnegotiation(unsigned char option, std::string_view content)
{
    write(traits.receive(option, content));
}

void ZNTDemoConnection::sendCommand(unsigned char verb, unsigned char option)
{
    write(telnet::command(verb, option));
}

void ZNTDemoConnection::onOptionSwitched(const ZNTDemoOption& option, unsigned char verb)
{
    if (option.code == telnet::option::CompressionV2)
        switchCompression(verb);
    else if (option.code == telnet::option::TerminalType && verb == telnet::WILL)
        write(traits.askForTerminalType());
    else if (option.code == telnet::option::Charset && verb == telnet::DO)
        write(traits.askForUnicode());
}

void ZNTDemoConnection::switchCompression(unsigned char verb)
{
    if (verb == telnet::DO)
        announceCompression();
    else
        refuseCompression(verb);
}

void ZNTDemoConnection::announceCompression()
{
    if (output.isCompressing() || compressionDelay)
        return;
    write(telnet::startOfCompression());
    if (options.isTelnetSpoken()) {
        output.startCompressionVisibly();
        return;
    }
    compressionDelay = game.runLoop.startTimer(secondsBeforeCompression, RunLoopRepeat::Once,
                                               [this] { beginCompression(); });
}

void ZNTDemoConnection::beginCompression()
{
    compressionDelay.reset();
    output.startCompression();
    write(std::exchange(held, {}));
}

void ZNTDemoConnection::refuseCompression(unsigned char verb)
{
    // A client that sends DONT inflates until the stream ends. A client that sends the odd refusal has
    // already stopped.
    if (verb == telnet::DONT && compressionDelay)
        beginCompression();
    compressionDelay.reset();
    if (verb == telnet::DONT)
        output.endCompression();
    else
        output.dropCompression();
    write(std::exchange(held, {}));
}

void ZNTDemoConnection::writeText(std::u16string_view text) { write(encoded(text)); }

std::string ZNTDemoConnection::encoded(std::u16string_view text) const
{
    std::u16string lines;
    lines.reserve(text.size() + text.size() / 16);
    for (const char16_t unit : text) {
        if (unit == u'\n')
            lines += u'\r';
        // A client that does not speak telnet would take the letter of this number for a command.
        if (unit != telnet::IAC || options.isTelnetSpoken() || encoding() == ZNTStringEncoding::Utf8)
            lines += unit;
    }
    if (traits.screen().colours == ZNTDemoColours::None)
        lines = withoutColours(lines);
    return telnet::doubled(znt::encodedText(lines, encoding()));
}

std::string ZNTDemoConnection::encodedPrompt(std::u16string_view before) const
{
    return encoded(std::u16string(before).append(game.texts.phrase(ZNTDemoPhrase::Prompt))) +
           telnet::endOfPrompt(options.isOn(telnet::option::EndOfRecord));
}

ZNTStringEncoding ZNTDemoConnection::encoding() const
{
    return traits.screen().hasEveryCharacter ? ZNTStringEncoding::Utf8 : game.encoding;
}

void ZNTDemoConnection::write(std::string_view bytes)
{
    if (isOver || isHangingUp)
        return;
    if (compressionDelay)
        held += bytes;
    else if (!bytes.empty())
        output.write(bytes);
    if (output.waiting().size() + held.size() > tooMuchWaiting)
        finish();
    watchForWhatMatters();
}

void ZNTDemoConnection::watchForWhatMatters()
{
    if (isOver || !watch)
        return;
    // Text is sent from the loop, so that all of a turn's text travels together.
    auto interest = RunLoopInterest::None;
    if (unhandled.empty())
        interest = interest | RunLoopInterest::Readable;
    if (!output.waiting().empty() || (isHangingUp && !isShutDown))
        interest = interest | RunLoopInterest::Writable;
    watch->setInterest(interest);
}

void ZNTDemoConnection::onReady(RunLoopInterest ready)
{
    if (includes(ready, RunLoopInterest::Readable))
        receive();
    answer();
    watchForWhatMatters();
}

/// Text leaves in the turn that made it. If sending makes room, the lines that waited are handled.
void ZNTDemoConnection::answer()
{
    send();
    do {
        handleInput();
        send();
    } while (!unhandled.empty() && output.waiting().empty() && held.empty() && !isOver);
}

void ZNTDemoConnection::receive()
{
    std::array<char, mostReadAtOnce> bytes;
    const auto count = recv(descriptor, bytes.data(), bytes.size(), 0);
    if (count > 0) {
        if (!isHangingUp)
            unhandled.append(bytes.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        finish();
    }
}

void ZNTDemoConnection::handleInput()
{
    std::size_t handled = 0;
    while (handled < unhandled.size() && !isOver && floodLine == floodLines &&
           output.waiting().size() + held.size() < enoughWaiting)
        handled += telnetInput.receive(std::string_view(unhandled).substr(handled));
    unhandled.erase(0, handled);
    if (isHangingUp)
        unhandled.clear();
}

void ZNTDemoConnection::send()
{
    while (!isOver && !output.waiting().empty()) {
        const auto waiting = output.waiting();
        const auto count = ::send(descriptor, waiting.data(), waiting.size(), MSG_NOSIGNAL);
        if (count < 0) {
            if (errno != EAGAIN && errno != EINTR)
                finish();
            return;
        }
        output.consume(static_cast<std::size_t>(count));
        continueFlood();
    }
    if (isHangingUp && !isShutDown && !isOver) {
        isShutDown = true;
        shutdown(descriptor, SHUT_WR);
        lastWait = game.runLoop.startTimer(secondsForGoodbye, RunLoopRepeat::Once, [this] { finish(); });
    }
}

void ZNTDemoConnection::finish()
{
    if (std::exchange(isOver, true))
        return;
    if (watch)
        watch->setInterest(RunLoopInterest::None);
    compressionDelay.reset();
    lastWait.reset();
    whenOver(*this);
}
