#include "ZNTWholeLines.h"

#include "ZNTTelnetCodes.h"
#include "ZNTTextCutter.h"
#include "ZNTTextScan.h"

#include <algorithm>
#include <utility>

namespace
{

using namespace znt::telnet;

constexpr unsigned char lowestCommand = 236; // EOF (RFC 1184)

/// How many units the command at an IAC takes; 0 if the text ends before the command does. An IAC before
/// anything that is no command goes alone: it was a letter of the game's own alphabet.
std::size_t commandLength(std::u16string_view text, std::size_t start)
{
    const auto length = text.size() - start;
    if (length < 2)
        return 0;
    const auto command = text[start + 1];
    if (command < lowestCommand || command > IAC)
        return 1;
    if (!isFollowedByOption(static_cast<unsigned char>(command)))
        return 2;
    return length < 3 ? 0 : 3;
}

bool endsPrompt(char16_t command) { return command == GA || command == EOR || command == WONT; }

} // namespace

std::u16string ZNTWholeLines::withWholeCommands(std::u16string text)
{
    text.insert(0, std::exchange(cutCommand, {}));
    for (std::size_t at = 0; (at = znt::findUnit(text, IAC, at)) != text.npos;) {
        const auto length = commandLength(text, at);
        if (length == 0) {
            cutCommand = text.substr(at);
            text.resize(at);
            break;
        }
        at += length;
    }
    return text;
}

void ZNTWholeLines::release(ZNTReceived& received)
{
    auto& text = received.text;
    std::optional<std::size_t> endOfPrompt;
    std::size_t unitsCut = 0;
    ZNTTextCutter cutter(text);
    for (std::size_t at = 0; (at = znt::findUnit(text, IAC, at)) != text.npos;) {
        const auto length = std::max<std::size_t>(commandLength(text, at), 1);
        if (length > 1 && endsPrompt(text[at + 1]))
            endOfPrompt = at - unitsCut;
        cutter.cut(at, at + length);
        unitsCut += length;
        at += length;
    }
    cutter.finish();
    const auto ready = readyText.readyUnits(text, endOfPrompt);
    received.isRelease = ready.has_value();
    received.ready = ready.value_or(0);
}
