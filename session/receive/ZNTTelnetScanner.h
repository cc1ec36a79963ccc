#pragma once

#include "ZNTTelnetCodes.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Telnet bytes in decoded text (RFC 854 and the options built on it): each is the character of its value.
namespace znt::telnet
{
/// The command that starts at the IAC at `start`, as the expression "\xFF(..?)" finds it with dots that
/// match any one character, line ends too: IAC and the two characters that follow, or one at the text's end.
/// Empty if nothing follows. The second character may be game text: IAC GA takes the character after it.
std::u16string_view commandAt(std::u16string_view text, std::size_t start);

/// Calls `handle` with every command of `text`, in order. Returns whether held-back text is released with
/// this one: at IAC GA, and at IAC WONT, which servers send before a password.
///
/// One search, two questions that see different things: commands follow one another without overlap, while a
/// release is any IAC before GA or WONT, also inside a command (IAC IAC GA releases).
template <typename Handler>
bool forEachCommand(std::u16string_view text, Handler handle);

/// Takes every command out of `text`, with the characters that `commandAt` counts to it.
void stripCommands(std::u16string& text);

/// True where stripping would leave nothing.
bool holdsOnlyCommands(std::u16string_view text);

} // namespace znt::telnet

#include "ZNTTextScan.h"

template <typename Handler>
bool znt::telnet::forEachCommand(std::u16string_view text, Handler handle)
{
    bool isRelease = false;
    std::size_t endOfCommand = 0;
    for (std::size_t at = 0; (at = findUnit(text, IAC, at)) != text.npos && at + 1 < text.size(); ++at) {
        isRelease |= text[at + 1] == WONT || text[at + 1] == GA;
        if (at < endOfCommand)
            continue;
        const auto command = commandAt(text, at);
        endOfCommand = at + command.size();
        handle(command);
    }
    return isRelease;
}
