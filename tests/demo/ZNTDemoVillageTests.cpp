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
    void showFlood(int) override {}
    [[nodiscard]] bool hearsSounds() const override { return false; }
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
