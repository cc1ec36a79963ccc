#include "ZNTNotedOutput.h"

#include <gtest/gtest.h>

namespace
{

TEST(ZNTConsoleColours, ATerminalIsGivenTheNearestColourThatItHasAndEveryStyle)
{
    const struct {
        const char *colorterm, *term, *exact;
    } rows[]{
        {"truecolor", "dumb", ";38;2;255;135;9;48;2;9;9;9"},
        {"24bit", "xterm-256color", ";38;2;255;135;9;48;2;9;9;9"},
        {"", "screen-256color", ";38;5;208;48;5;232"},
        {"yes", "xterm", ";91;40"},
    };
    ZNTAttributedText text;
    text.text = u"abc";
    text.runs = {{0, 0}, {1, 1}, {2, 2}};
    text.sets.resize(3);
    text.sets[0].foreground = ZNTColour{255, 135, 9};
    text.sets[0].background = ZNTColour{9, 9, 9};
    text.sets[1].foreground = znt::colours::red;
    text.sets[1].background = znt::colours::brightRed;
    text.sets[2].font = ZNTFont{u"Hack-Bold"};
    text.sets[2].underline = 1;
    text.sets[2].styles = 0x3F;
    const std::string esc = "\x1b[0";
    for (const auto& row : rows) {
        ZNTNotedTerminal terminal(ZNTConsoleColour::Always, znt::colourDepth(row.colorterm, row.term));
        terminal.append(text);
        EXPECT_EQ(terminal.written,
                  esc + row.exact + "ma" + esc + ";31;101mb" + esc + ";1;2;3;4;5;7;8;9mc" + esc + "m");
        ZNTNotedTerminal plain(ZNTConsoleColour::Never, znt::colourDepth(row.colorterm, row.term));
        plain.append(text);
        EXPECT_EQ(plain.written, "abc");
    }
}

} // namespace
