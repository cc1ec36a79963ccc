#include "ZNTTerminalInput.h"

#include "VirtualRunLoop.h"
#include "ZNTConsoleOutput.h"

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <optional>
#include <pty.h>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace
{

constexpr unsigned short columns = 20;

struct DirectSink final : ZNTTextSink {
    void write(std::string_view utf8, To) override
    {
        EXPECT_EQ(::write(STDOUT_FILENO, utf8.data(), utf8.size()), static_cast<ssize_t>(utf8.size()));
    }
    [[nodiscard]] bool hasWrittenAll() const override { return true; }
    void waitUntilWritten() override {}
    [[nodiscard]] bool isFull() const override { return false; }
};

/// Standard input and output on a terminal of 20 columns. There is one test of it, for the line editor keeps
/// the first terminal that it meets.
class ZNTTerminalInputTest : public testing::Test
{
protected:
    ZNTTerminalInputTest()
    {
        ::setenv("TERM", "xterm", 1);
        ::setenv("LC_ALL", "C", 1);
        const winsize size{24, columns, 0, 0};
        int theirs = -1;
        EXPECT_EQ(::openpty(&ours, &theirs, nullptr, nullptr, &size), 0);
        ::fcntl(ours, F_SETFL, O_NONBLOCK);
        std::fflush(stdout);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO}) {
            saved[static_cast<std::size_t>(standard)] = ::dup(standard);
            ::dup2(theirs, standard);
        }
        ::close(theirs);
        input.emplace(loop);
        output.emplace(loop, *input, sink);
        EXPECT_TRUE(input->start({.line = [this](std::string line) { lines.push_back(std::move(line)); },
                                  .end = [] {},
                                  .catchUp = [this] { output->catchUp(); }}));
    }
    ~ZNTTerminalInputTest() override
    {
        output.reset();
        input.reset();
        std::fflush(stdout);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO}) {
            ::dup2(saved[static_cast<std::size_t>(standard)], standard);
            ::close(saved[static_cast<std::size_t>(standard)]);
        }
        ::close(ours);
    }

    /// What is drawn until the terminal is quiet.
    std::string drawn()
    {
        std::string text;
        for (int quietTurns = 0; quietTurns < 20; ++quietTurns) {
            loop.turn(2);
            std::array<char, 4096> piece;
            if (const auto count = ::read(ours, piece.data(), piece.size()); count > 0) {
                text.append(piece.data(), static_cast<std::size_t>(count));
                quietTurns = 0;
            }
        }
        return text;
    }
    std::string drawnAfterTyping(std::string_view keys)
    {
        EXPECT_EQ(::write(ours, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
        return drawn();
    }
    std::string drawnAfterGameSays(std::string_view text, std::string_view prompt)
    {
        output->write(text);
        output->write(prompt);
        output->setUnfinishedLine(prompt);
        return drawn();
    }

    int ours = -1;
    std::array<int, 2> saved{-1, -1};
    VirtualRunLoop loop;
    DirectSink sink;
    std::optional<ZNTTerminalInput> input;
    std::optional<ZNTConsoleOutput> output;
    std::vector<std::string> lines;
};

TEST_F(ZNTTerminalInputTest, TheTypedLineIsDrawnAgainBelowTheGamesText)
{
    const std::string prompt = "\xC3\xA9\xC3\xA9> "; // four columns, which a locale without UTF-8 cannot read
    drawnAfterGameSays("", prompt);
    EXPECT_THAT(drawnAfterTyping("say"), EndsWith("say"));
    auto passed = drawnAfterGameSays("A troll.\n", prompt);
    EXPECT_THAT(passed, HasSubstr("\r\x1b[J" + prompt + "A troll.")) << "the typed line steps aside";
    EXPECT_THAT(passed, EndsWith(prompt + "say"));
    drawnAfterTyping("\r");
    EXPECT_EQ(lines, std::vector<std::string>{"say"});
    EXPECT_THAT(drawnAfterGameSays("A gull.\n", prompt), Not(HasSubstr("say")));

    drawnAfterTyping(std::string(columns - 5, 'x'));
    EXPECT_THAT(drawnAfterGameSays("one row\n", prompt), Not(HasSubstr("\x1b[1A")));
    drawnAfterTyping("x");
    EXPECT_THAT(drawnAfterGameSays("two rows\n", prompt), HasSubstr("\x1b[1A\r\x1b[J"));

    std::setlocale(LC_CTYPE, "C"); // as on a system that has no locale with UTF-8
    EXPECT_THAT(drawnAfterGameSays("", prompt), HasSubstr("???"
                                                          "?> xx"));
}

} // namespace
