#include "ZNTTelnetScanner.h"

#include "ZNTTextCutter.h"

#include <unicode/utf16.h>

namespace
{

/// Where the character at `at` ends; a surrogate pair is one character.
std::size_t endOfCharacter(std::u16string_view text, std::size_t at)
{
    const bool isPair = U16_IS_LEAD(text[at]) && at + 1 < text.size() && U16_IS_TRAIL(text[at + 1]);
    return at + (isPair ? 2 : 1);
}

} // namespace

namespace znt::telnet
{

std::u16string_view commandAt(std::u16string_view text, std::size_t start)
{
    std::size_t end = start + 1;
    if (end >= text.size())
        return {};
    end = endOfCharacter(text, end);
    if (end < text.size())
        end = endOfCharacter(text, end);
    return text.substr(start, end - start);
}

void stripCommands(std::u16string& text)
{
    ZNTTextCutter cutter(text);
    for (std::size_t at = 0; (at = findUnit(text, IAC, at)) != std::u16string::npos;) {
        const auto length = commandAt(text, at).size();
        if (length == 0)
            break;
        cutter.cut(at, at + length);
        at += length;
    }
    cutter.finish();
}

bool holdsOnlyCommands(std::u16string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] != IAC)
            return false;
        const auto command = commandAt(text, at);
        if (command.empty())
            return false;
        at += command.size();
    }
    return true;
}

} // namespace znt::telnet
