#pragma once

#include <optional>
#include <sys/ioctl.h>
#include <unistd.h>

namespace znt
{

/// In characters.
struct TerminalSize {
    int columns, rows;
};

/// Of the terminal that stdout is; none if it is no terminal, or one that does not know its size.
inline std::optional<TerminalSize> terminalSize()
{
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0)
        return std::nullopt;
    return TerminalSize{size.ws_col, size.ws_row};
}

} // namespace znt
