#include "ZNTConsoleOutput.h"
#include "ZNTTerminalInput.h"

#include "VirtualRunLoop.h"
#include "ZNTNotedOutput.h"
#include "ZNTTestTerminal.h"

#include <gmock/gmock.h>

/// For the leak checker of the sanitizers' build, which asks for it by this name. The line editor's library
/// never frees its copies of the names of a command that a program adds to it (EL_ADDFN).
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:wcsdup\n"; }

namespace
{

/// A player at a terminal, and a game that writes to it through the client's output.
struct ZNTTerminalInputTest : testing::Test {
    struct Sink final : ZNTTextSink {
        void write(std::string_view utf8, To) override { EXPECT_TRUE(znt::writeAll(STDOUT_FILENO, utf8)); }
        [[nodiscard]] bool hasWrittenAll() const override { return true; }
        void waitUntilWritten() override {}
        [[nodiscard]] bool isFull() const override { return false; }
    };

    ZNTTerminalInputTest()
    {
        EXPECT_TRUE(input.start({.line =
                                     [this](std::string line) {
                                         lines.push_back(line);
                                         whenTyped(line);
                                     },
                                 .end = [this] { ++ends; },
                                 .catchUp = [this] { output.catchUp(); },
                                 .keyTyped = [this] { ++keys; },
                                 .complete = [this](std::string_view before) { return complete(before); }}));
    }
    void game(const std::string& text, const std::string& prompt = "> ")
    {
        output.write(text + prompt);
        output.setUnfinishedLine(prompt);
        loop.runPosted();
    }
    /// What is on the screen when it has become `expected`, or after a while.
    std::string screen(const std::string& expected)
    {
        loop.runUntil([&] { return terminal.screen() == expected; }, 2);
        return terminal.screen();
    }
    void waitForLines(std::size_t count)
    {
        EXPECT_TRUE(loop.runUntil([&] { return lines.size() == count; }));
    }

    ZNTTestTerminal terminal;
    VirtualRunLoop loop;
    ZNTTerminalInput input{loop};
    Sink sink;
    ZNTConsoleOutput output{loop, input, sink};
    std::vector<std::string> lines;
    int ends = 0, keys = 0;
    std::function<void(const std::string&)> whenTyped = [](auto&) {};
    std::function<std::optional<std::string>(std::string_view)> complete = [](auto) { return std::nullopt; };
};

#define EXPECT_SCREEN(expected) EXPECT_EQ(screen(expected), expected)

TEST_F(ZNTTerminalInputTest, TheLineBeingTypedIsShownAgainBelowTheTextThatComes)
{
    game("Lantern Square\n");
    EXPECT_SCREEN("Lantern Square\n> |");
    terminal.type("say hi");
    EXPECT_SCREEN("Lantern Square\n> say hi|");
    game("A troll.\n");
    EXPECT_SCREEN("Lantern Square\n> A troll.\n> say hi|");
    terminal.type("\x1b[D\x1b[Dc");
    EXPECT_SCREEN("Lantern Square\n> A troll.\n> say c|hi");
    game("It waves.\n");
    loop.advance(1);
    EXPECT_SCREEN("Lantern Square\n> A troll.\n> It waves.\n> say c|hi");
    terminal.type("\r");
    waitForLines(1);
    EXPECT_EQ(lines, (std::vector<std::string>{"say chi"}));
    EXPECT_EQ(keys, 10);
}

TEST_F(ZNTTerminalInputTest, ALineOfSeveralRowsIsTakenAwayWhole)
{
    game("", "\xC3\xA9\xE4\xBD\xA0> "); // five columns
    terminal.type("0123456789abcd");
    EXPECT_SCREEN("\xC3\xA9\xE4\xBD\xA0> 0123456789abcd|");
    game("A troll.\n", "\xC3\xA9\xE4\xBD\xA0> ");
    EXPECT_SCREEN("\xC3\xA9\xE4\xBD\xA0> A troll.\n\xC3\xA9\xE4\xBD\xA0> 0123456789abcd|");
    terminal.type("e");
    EXPECT_SCREEN("\xC3\xA9\xE4\xBD\xA0> A troll.\n\xC3\xA9\xE4\xBD\xA0> 0123456789abcde\n|");
    game("It waves.\n");
    loop.advance(1);
    EXPECT_SCREEN("\xC3\xA9\xE4\xBD\xA0> A troll.\n\xC3\xA9\xE4\xBD\xA0> It waves.\n> 0123456789abcde|");
    terminal.type("fghijklmnopqrstuvwxyz\x1b[D\x1b[D");
    EXPECT_SCREEN("\xC3\xA9\xE4\xBD\xA0> A troll.\n\xC3\xA9\xE4\xBD\xA0> It waves.\n> 0123456789abcdefgh\n"
                  "ijklmnopqrstuvwx|yz");
    game("Bye.\n");
    loop.advance(1);
    EXPECT_SCREEN(
        "\xC3\xA9\xE4\xBD\xA0> A troll.\n\xC3\xA9\xE4\xBD\xA0> It waves.\n> Bye.\n> 0123456789abcdefgh\n"
        "ijklmnopqrstuvwx|yz");
}

TEST_F(ZNTTerminalInputTest, APromptMayTakeMoreThanARow)
{
    game("", "20 columns. The end>");
    EXPECT_SCREEN("20 columns. The end>\n|");
    terminal.type("look");
    EXPECT_SCREEN("20 columns. The end>\nlook|");
    game("\n", "A prompt that goes on: ");
    EXPECT_SCREEN("20 columns. The end>\nA prompt that goes o\nn: look|");
    terminal.type("!");
    EXPECT_SCREEN("20 columns. The end>\nA prompt that goes o\nn: look!|");
    output.writeAside("Saved.\n");
    loop.advance(1);
    EXPECT_SCREEN("20 columns. The end>\nSaved.\nA prompt that goes o\nn: look!|");
}

TEST_F(ZNTTerminalInputTest, AnAsideTakesALineOfItsOwn)
{
    output.writeAside("Saved.\n");
    EXPECT_SCREEN("Saved.\n|");
    game("Hi\n");
    output.writeAside("Saved.\n");
    EXPECT_SCREEN("Saved.\nHi\nSaved.\n> |");
    terminal.type("look");
    EXPECT_SCREEN("Saved.\nHi\nSaved.\n> look|");
    output.writeAside("Again.\n");
    EXPECT_SCREEN("Saved.\nHi\nSaved.\nAgain.\n> look|");
    whenTyped = [this](const std::string&) { output.writeAside("Not sent.\n"); };
    terminal.type("\r");
    EXPECT_SCREEN("Saved.\nHi\nSaved.\nAgain.\n> look\nNot sent.\n> |");
    output.write("A troll");
    output.setUnfinishedLine("> A troll");
    output.writeAside("Again.\n");
    loop.runPosted();
    EXPECT_SCREEN("Saved.\nHi\nSaved.\nAgain.\n> look\nNot sent.\n> A troll\nAgain.\n> A troll|");
}

TEST_F(ZNTTerminalInputTest, ATypedLineCanBeTakenBackByTheTextThatShowsIt)
{
    whenTyped = [this](const std::string& line) {
        EXPECT_TRUE(input.takeBackTypedLine());
        output.write(line + "!\n");
    };
    game("Hi\n");
    terminal.type("look\r");
    EXPECT_SCREEN("Hi\n> look!\n> |");
    game("A square.\n");
    EXPECT_SCREEN("Hi\n> look!\n> A square.\n> |");
    terminal.type("\x1b[A");
    EXPECT_SCREEN("Hi\n> look!\n> A square.\n> look|");
    whenTyped = [this](const std::string& line) { output.write("[" + line + "]\n"); };
    terminal.type("\r");
    EXPECT_SCREEN("Hi\n> look!\n> A square.\n> look\n[look]\n> |");
}

TEST_F(ZNTTerminalInputTest, WhatIsTypedInSecretIsShownNowhere)
{
    game("", "Password: ");
    terminal.type("se");
    EXPECT_SCREEN("Password: se|");
    input.setTypingHidden(true);
    EXPECT_FALSE(terminal.echoes());
    EXPECT_SCREEN("Password: |");
    terminal.type("cret\n");
    waitForLines(1);
    EXPECT_EQ(lines.back(), "secret");
    input.setTypingHidden(false);
    game("\nHi\n");
    EXPECT_SCREEN("Password:\nHi\n> |");
    terminal.type("\x1b[Aa");
    EXPECT_SCREEN("Password:\nHi\n> a|");
    input.setTypingHidden(false);
    terminal.type("b");
    EXPECT_SCREEN("Password:\nHi\n> ab|");
}

TEST_F(ZNTTerminalInputTest, APromptThatIsNoUtf8IsDrawnAgainWithoutItsCharacters)
{
    game("", "\xC3> ");
    terminal.type("a");
    EXPECT_SCREEN("\xC3> a|");
    output.writeAside("Saved.\n");
    EXPECT_SCREEN("Saved.\n?> a|");
}

TEST_F(ZNTTerminalInputTest, TabPutsWhatCompletesInPlaceOfWhatStandsBeforeTheCursor)
{
    complete = [](std::string_view before) {
        return before == "\xC3\xA9 wan" ? std::optional<std::string>("\xC3\xA9 wandering") : std::nullopt;
    };
    game("");
    terminal.type("\xC3\xA9 wan!\x1b[D\t");
    EXPECT_SCREEN("> \xC3\xA9 wandering|!");
    terminal.type("\t");
    EXPECT_SCREEN("> \xC3\xA9 wandering|!");
}

TEST(ZNTConsoleInput, ATerminalMayEditItsLinesByItselfAndHidesThemWhenItIsAsked)
{
    ZNTTestTerminal terminal;
    VirtualRunLoop loop;
    EXPECT_TRUE(dynamic_cast<ZNTTerminalInput*>(ZNTConsoleInput::forStandardInput(loop, false).get()));
    const auto cooked = ZNTConsoleInput::forStandardInput(loop, true);
    EXPECT_FALSE(dynamic_cast<ZNTTerminalInput*>(cooked.get()));
    EXPECT_TRUE(cooked->isTerminal());
    EXPECT_TRUE(cooked->sharesStandardError());
    cooked->setTypingHidden(true);
    EXPECT_FALSE(terminal.echoes());
    cooked->setTypingHidden(false);
    EXPECT_TRUE(terminal.echoes());
}

TEST_F(ZNTTerminalInputTest, TheEndComesOnceByAKeyOrWhenTheTerminalIsGone)
{
    terminal.type("a\x04\x7f\x04"); // only on an empty line
    EXPECT_TRUE(loop.runUntil([&] { return ends == 1; }));
    EXPECT_TRUE(terminal.echoes()) << "the terminal is given back";
}

TEST_F(ZNTTerminalInputTest, ATerminalThatGoesAwayEndsTheInput)
{
    terminal.hangUp();
    EXPECT_TRUE(loop.runUntil([&] { return ends == 1; }));
    loop.turn(3);
    EXPECT_EQ(ends, 1);
}

} // namespace
