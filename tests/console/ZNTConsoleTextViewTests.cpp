#include "ZNTNotedOutput.h"

#include <gtest/gtest.h>

namespace
{

using View = ZNTNotedTerminal;

TEST(ZNTConsoleTextView, EveryLineEndIsOneLineFeedWhereverItIsCut)
{
    const std::u16string text = u"a\r\nb\n\rc\rd\ne\r\r\n\nf\n\r\n";
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        SCOPED_TRACE(cut);
        View view;
        view << text.substr(0, cut) << text.substr(cut);
        EXPECT_EQ(view.written, "a\nb\nc\nd\ne\n\n\nf\n\n");
    }
}

TEST(ZNTConsoleTextView, ACharacterCutInTwoIsOneCharacterAndHalfOfOneIsMarked)
{
    View view;
    view << u"x\xD83D" << u"\xDE00y";
    EXPECT_EQ(view.written, "x\xF0\x9F\x98\x80y");
    view.written.clear();
    view << u"\xD83D" << u"z\xD83D\xD83D\xDE00\xDE00.";
    EXPECT_EQ(view.written, "\xEF\xBF\xBDz\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD.");
}

TEST(ZNTConsoleTextView, ALineThatTheTerminalShowsIsNotWrittenAgain)
{
    View view;
    view << u"> ";
    view.view.setLineOnScreen(u"look");
    view << u"look\r" << u"\nYou";
    EXPECT_EQ(view.written, "> You");
    EXPECT_EQ(view.input.prompt, "You") << "its line has ended";
    view.view.setLineOnScreen(u"look");
    view << u" see\n" << u"look\n";
    EXPECT_EQ(view.written, "> You see\nlook\n") << "it was not the next text";
}

TEST(ZNTConsoleTextView, ColoursAreSequencesOfOurOwnAndEndWithTheText)
{
    ZNTAttributedText text;
    text.text = u"plain red\r\nbold";
    text.sets = {ZNTAttributeSet{}, ZNTAttributeSet{}, ZNTAttributeSet{}};
    text.sets[1].foreground = znt::colours::red;
    text.sets[1].background = znt::colours::blue;
    text.sets[2].font = ZNTFont{u"Menlo-Bold"};
    text.runs = {{0, 0}, {6, 1}, {11, 2}};
    View always(ZNTConsoleColour::Always);
    always.append(text);
    EXPECT_EQ(always.input.prompt, "bold");
    EXPECT_EQ(always.written, "plain \x1b[0;31;44mred\n\x1b[0;1mbold\x1b[0m");
}

} // namespace
