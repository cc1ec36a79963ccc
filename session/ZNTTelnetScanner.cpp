#include "ZNTTelnetScanner.h"

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
    std::size_t written = 0, kept = 0;
    const auto keepUntil = [&](std::size_t end) {
        if (written != kept)
            std::u16string::traits_type::move(text.data() + written, text.data() + kept, end - kept);
        written += end - kept;
    };
    for (std::size_t at = 0; (at = findUnit(text, IAC, at)) != std::u16string::npos;) {
        const auto command = commandAt(text, at);
        if (command.empty())
            break;
        keepUntil(at);
        kept = at += command.size();
    }
    if (kept == 0)
        return;
    keepUntil(text.size());
    text.resize(written);
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
