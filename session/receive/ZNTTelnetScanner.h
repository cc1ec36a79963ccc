#pragma once

#include "ZNTTelnetCodes.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Telnet bytes in decoded text (RFC 854 and the options built on it): each is the character of its value.
namespace znt::telnet
{
/// The command that starts at the IAC at `start`, as the expression "\xFF(..?)" finds it with dots that
/// match any one character, line ends too: IAC and the one or two characters that follow. Empty where nothing
/// follows.
std::u16string_view commandAt(std::u16string_view text, std::size_t start);

/// Calls `handle` with every command of `text`, in order.
template <typename Handler>
void forEachCommand(std::u16string_view text, Handler handle);

/// Takes every command out of `text`.
void stripCommands(std::u16string& text);

/// True where stripping would leave nothing.
bool holdsOnlyCommands(std::u16string_view text);

} // namespace znt::telnet

#include "ZNTTextScan.h"

template <typename Handler>
void znt::telnet::forEachCommand(std::u16string_view text, Handler handle)
{
    for (std::size_t at = 0; (at = findUnit(text, IAC, at)) != text.npos;) {
        const auto command = commandAt(text, at);
        if (command.empty())
            return;
        handle(command);
        at += command.size();
    }
}
