#include "ZNTNotedOutput.h"

#include <gtest/gtest.h>

TEST(ZNTConsoleColours, ATerminalIsGivenTheNearestColourThatItHasAndEveryStyle)
{
    ZNTAttributedText text;
    text.text = u"abc";
    text.runs = {{0, 0}, {1, 1}, {2, 2}};
    text.sets.resize(3);
    text.sets[0].foreground = ZNTColour{255, 135, 9};
    text.sets[0].background = ZNTColour{9, 9, 9};
    text.sets[1].foreground = znt::colours::red;
    text.sets[1].background = znt::colours::brightRed;
    text.sets[2].styles = 0x3F;
    const struct {
        const char *colorterm, *term, *nearest;
    } rows[]{{"24bit", "xterm-256color", ";38;2;255;135;9;48;2;9;9;9"},
             {"", "screen-256color", ";38;5;208;48;5;232"},
             {"yes", "xterm", ";91;40"}};
    for (const auto& [colorterm, term, nearest] : rows) {
        ZNTNotedTerminal terminal(ZNTConsoleColour::Always, znt::colourDepth(colorterm, term));
        terminal.append(text);
        EXPECT_EQ(terminal.written,
                  "\x1b[0" + std::string(nearest) + "ma\x1b[0;31;101mb\x1b[0;2;3;5;7;8;9mc\x1b[0m");
    }
}
