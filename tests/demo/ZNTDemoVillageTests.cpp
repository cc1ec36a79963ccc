#include "ZNTDemoCommands.h"
#include "ZNTDemoVillage.h"
#include "ZNTDemoWords.h"

#include "VirtualRunLoop.h"
#include "ZNTText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace znt::demo;
using testing::HasSubstr;
using testing::Not;

namespace
{

struct Screen final : ZNTDemoAudience {
    /// What was shown since it was last looked at, as UTF-8.
    std::string shown;

    void showParagraph(std::u16string_view text) override { shown += znt::utf8FromText(text) + "\n"; }
    ZNTDemoScreen traits;
    bool isHiding = false;

    void showFlood(int) override {}
    [[nodiscard]] ZNTDemoScreen screen() const override { return traits; }
    void hideTyping(bool hide) override { isHiding = hide; }
    [[nodiscard]] bool wantsSounds() const override { return false; }
    [[nodiscard]] bool isCompressed() const override { return false; }
    void endCompression() override {}
    void hangUp(std::u16string_view) override {}

    std::string take() { return std::exchange(shown, {}); }
};

class DemoVillage : public testing::Test
{
protected:
    VirtualRunLoop loop;
    const ZNTDemoTexts& texts = ZNTDemoTexts::forEncoding(ZNTStringEncoding::Ascii);
    ZNTDemoVillage village{loop, texts};
    ZNTDemoCommands commands{village, texts};
    Screen ashsScreen, birchsScreen;
    ZNTDemoPlayer& ash = village.enter(ashsScreen);

    std::string answerTo(std::u16string_view line)
    {
        ashsScreen.take();
        commands.handleLine(ash, line);
        return ashsScreen.take();
    }
};

} // namespace

TEST_F(DemoVillage, AnswersTheFirstCommandsOfEveryPlayer)
{
    EXPECT_THAT(ashsScreen.take(), testing::AllOf(HasSubstr("Welcome"), HasSubstr("Lantern Square")));
    for (const auto& [line, answer] : {std::pair(u"look", "All the\nlanes"),
                                       {u"  NORTH  ", "The Harbour"},
                                       {u"exits", "Exits: south, east and west."},
                                       {u"up", "no way up"},
                                       {u"xyzzy now", "The word xyzzy means nothing"}})
        EXPECT_THAT(answerTo(line), HasSubstr(answer));
    EXPECT_EQ(answerTo(u" "), "\n") << "an empty line brings the prompt";
}

TEST_F(DemoVillage, PlayersInARoomSeeEachOtherComeSpeakAndGoAndNobodyElseDoes)
{
    auto& birch = village.enter(birchsScreen);
    EXPECT_THAT(ashsScreen.take(), HasSubstr("Birch arrives."));
    EXPECT_THAT(birchsScreen.take(), HasSubstr("Ash is here."));
    EXPECT_THAT(answerTo(u"say hello %1"), HasSubstr("You say: hello %1"));
    EXPECT_THAT(birchsScreen.take(), HasSubstr("Ash says: hello %1"));
    commands.handleLine(birch, u"n");
    EXPECT_THAT(ashsScreen.take(), HasSubstr("Birch leaves north."));
    birchsScreen.take();
    answerTo(u"say anybody there?");
    EXPECT_EQ(birchsScreen.take(), "");
    EXPECT_THAT(answerTo(u"who"), HasSubstr("Ash, that is you and Birch"));
}

TEST_F(DemoVillage, TheGoblinKicksWhoStandsThereAndBeingKickedBackDoesNotGoOnForEver)
{
    answerTo(u"se");
    loop.advance(11.9);
    EXPECT_EQ(ashsScreen.take(), "");
    loop.advance(0.1);
    EXPECT_THAT(ashsScreen.take(), HasSubstr("A goblin kicks you hard!"));
    EXPECT_THAT(answerTo(u"kick goblin"), Not(HasSubstr("kicks you hard")));
    EXPECT_THAT(answerTo(u"poke goblin"), HasSubstr("A goblin kicks you hard!"));
    answerTo(u"nw");
    loop.advance(60);
    EXPECT_THAT(ashsScreen.take(), Not(HasSubstr("kicks"))) << "nobody is kicked anywhere else";
}

TEST_F(DemoVillage, WaysAndNamesAreUnderstoodInChineseAsWell)
{
    const auto& chinese = ZNTDemoTexts::forEncoding(ZNTStringEncoding::EucCn);
    ZNTDemoVillage town(loop, chinese);
    ZNTDemoCommands words(town, chinese);
    auto& birch = town.enter(birchsScreen);
    words.handleLine(birch, u"东南");
    EXPECT_EQ(birch.room, ZNTDemoRoom::GoblinDitch);
    for (const auto* line : {u"kick 妖精", u"kick goblin"}) {
        birchsScreen.take();
        words.handleLine(birch, line);
        EXPECT_THAT(birchsScreen.take(), HasSubstr("你踢了妖精一脚"));
    }
}

TEST_F(DemoVillage, ANameBelongsToItsPasswordUntilTheGameEnds)
{
    ashsScreen.traits.canHideTyping = true;
    for (const auto& [line, answer, isHidingAfter] :
         {std::tuple(u"name Oak", "Choose a password for the name Oak", true),
          {u"", "You are still called Ash", false},
          {u"name Oak", "Choose a password", true},
          {u" quit", "You are called Oak", false}, // a password, and the blank is part of it
          {u"name Elm", "Choose", true},
          {u"x", "You are called Elm", false},
          {u"name OAK", "What is the password of OAK?", true},
          {u"quit", "not the password of OAK", false},
          {u"who", "Elm, that is you", false},
          {u"name oak", "What is the password", true},
          {u" quit", "You are called oak", false},
          {u"name Goblin", "Somebody else is called that", false},
          {u"name Yew", "Choose", true},
          {u"00000000001111111111222222222233333333334444444444555555555566666", "at most 64", false}}) {
        SCOPED_TRACE(znt::utf8FromText(line));
        EXPECT_THAT(answerTo(line), HasSubstr(answer));
        EXPECT_EQ(ashsScreen.isHiding, isHidingAfter);
    }
    auto& birch = village.enter(birchsScreen);
    birchsScreen.take();
    commands.handleLine(birch, u"name Elm");
    EXPECT_THAT(birchsScreen.take(), HasSubstr("The name Elm has a password"))
        << "his client shows what he types";
}

TEST_F(DemoVillage, LinesFitANarrowScreen)
{
    ashsScreen.traits = {.columns = 20, .colours = ZNTDemoColours::True, .hasEveryCharacter = true};
    for (const auto* line : {u"look", u"help", u"look guide", u"who", u"sound", u"w", u"u", u"exits"}) {
        const auto answer = withoutColours(znt::textFromUtf8(answerTo(line)));
        std::size_t start = 0;
        for (auto end = answer.find(u'\n'); end != answer.npos; end = answer.find(u'\n', start = end + 1))
            EXPECT_LE(end - start, 20U) << znt::utf8FromText(answer.substr(start, end - start));
    }
}

TEST_F(DemoVillage, TheGalleryShowsWhatTheScreenCanAndSaysWhatIsThere)
{
    answerTo(u"w");
    answerTo(u"u");
    using Row = std::tuple<ZNTDemoScreen, const char*, const char*>;
    for (const auto& [screen, there, missing] :
         {Row{{}, "rainbow in 5 shades", "48;"},
          {{}, "dawn in 5 shades", "48;"},
          {{}, "have not agreed on UTF-8", "море"},
          {{.colours = ZNTDemoColours::None}, "no colours", "\x1b[4"},
          {{.colours = ZNTDemoColours::TwoHundredFiftySix}, "\x1b[48;5;196m", "more shades"},
          {{.colours = ZNTDemoColours::True}, "rainbow in 72 shades", "48;5"},
          {{.colours = ZNTDemoColours::True}, "\x1b[48;2;255;0;0m ", "more shades"},
          {{.hasEveryCharacter = true}, "\U0001F30A", "UTF-8"}}) {
        ashsScreen.traits = screen;
        EXPECT_THAT(answerTo(u"look"), testing::AllOf(HasSubstr(there), Not(HasSubstr(missing))));
    }
}
