#pragma once

#include "ZNTDescriptors.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <termios.h>
#include <unistd.h>
#include <utility>
#include <vector>

/// What a person sees who looks at a terminal: the bytes written to it, with the controls of ECMA-48 that the
/// line editor uses on an xterm. Characters from U+4000 to U+9FFF are two columns wide.
class ZNTTerminalScreen
{
public:
    explicit ZNTTerminalScreen(std::size_t columns) : columns(columns) {}

    void write(std::string_view bytes)
    {
        for (std::size_t length; !bytes.empty(); bytes.remove_prefix(length)) {
            length = 1;
            while (length < bytes.size() && (bytes[length] & 0xC0) == 0x80)
                ++length;
            if (bytes.starts_with("\x1b["))
                length = control(bytes);
            else if (bytes[0] == '\r')
                column = 0;
            else if (bytes[0] == '\n')
                ++row;
            else if (bytes[0] == '\b')
                --column;
            else if (bytes[0] != '\a')
                put(bytes.substr(0, length));
            rows.resize(std::max(rows.size(), row + 1));
        }
    }

    /// The rows, without spaces at their ends, and `|` where the cursor is.
    [[nodiscard]] std::string text() const
    {
        std::string text;
        for (std::size_t at = 0; at < rows.size(); ++at) {
            auto cells = rows[at];
            if (at == row) {
                cells.resize(std::max(cells.size(), column), " ");
                cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(column), "|");
            }
            for (const auto& cell : cells)
                text += cell;
            text.erase(text.find_last_not_of(' ') + 1);
            text += '\n';
        }
        return text.erase(text.find_last_not_of('\n') + 1);
    }

private:
    void put(std::string_view character)
    {
        const std::size_t width = character[0] >= '\xE4' && character[0] <= '\xE9' ? 2 : 1;
        if (column + width > columns) { // not before: behind the last column the cursor waits
            column = 0;
            rows.resize(std::max(rows.size(), ++row + 1));
        }
        rows[row].resize(std::max(rows[row].size(), column + width), " ");
        rows[row][column] = character;
        if (width == 2)
            rows[row][column + 1] = "";
        column += width;
    }

    std::size_t control(std::string_view bytes)
    {
        const auto last = bytes.find_first_not_of("0123456789", 2);
        const auto given = static_cast<std::size_t>(std::atoi(bytes.data() + 2));
        const char name = bytes.at(last);
        if (name == 'A')
            row -= std::max<std::size_t>(given, 1);
        else if (name == 'G')
            column = given - 1;
        else if (name == 'J' || name == 'K')
            rows[row].resize(column);
        else
            ADD_FAILURE() << "a control that this screen does not know: " << bytes.substr(1, 8);
        if (name == 'J')
            rows.resize(row + 1);
        return last + 1;
    }

    const std::size_t columns;
    std::size_t row = 0, column = 0;
    std::vector<std::vector<std::string>> rows{1};
};

/// As long as one lives, a terminal of 20 columns stands in for stdin, stdout and stderr. What a failed
/// expectation says still goes to the stdout of before.
class ZNTTestTerminal
{
public:
    ZNTTestTerminal()
    {
        const winsize size{.ws_row = 24, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
        EXPECT_EQ(::openpty(&ours, &theirs, nullptr, nullptr, &size), 0);
        ::fcntl(ours, F_SETFL, O_NONBLOCK);
        ::setenv("TERM", "xterm", 1);
        ::setenv("LC_ALL", "C", 1); // what is shown and typed is UTF-8 all the same
        std::fflush(stdout);
        stdout = ::fdopen(::dup(STDOUT_FILENO), "w"); // glibc allows that
        for (int each = 0; each < 3; ++each) {
            before[each] = ::dup(each);
            ::dup2(theirs, each);
        }
    }
    ~ZNTTestTerminal()
    {
        std::fclose(std::exchange(stdout, stdoutBefore));
        for (int each = 0; each < 3; ++each) {
            ::dup2(before[each], each);
            ::close(before[each]);
        }
        hangUp();
        ::close(theirs);
    }
    ZNTTestTerminal(const ZNTTestTerminal&) = delete;
    ZNTTestTerminal& operator=(const ZNTTestTerminal&) = delete;

    void type(std::string_view keys) const { EXPECT_TRUE(znt::writeAll(ours, keys)); }
    std::string screen()
    {
        char bytes[4096];
        for (ssize_t count; (count = ::read(ours, bytes, sizeof bytes)) > 0;)
            shown.write({bytes, static_cast<std::size_t>(count)});
        return shown.text();
    }
    /// Whether it shows by itself what is typed.
    [[nodiscard]] bool echoes() const
    {
        termios modes{};
        EXPECT_EQ(::tcgetattr(theirs, &modes), 0);
        return (modes.c_lflag & ECHO) != 0;
    }
    /// The person has closed the window.
    void hangUp() { ::close(std::exchange(ours, -1)); }

    static constexpr unsigned short columns = 20;

private:
    std::FILE* const stdoutBefore = stdout;
    int ours = -1, theirs = -1, before[3] = {};
    ZNTTerminalScreen shown{columns};
};
