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
    int flood = 0;
    bool sounds = false, compressed = false, hungUp = false;

    void showParagraph(std::u16string_view text) override { shown += znt::utf8FromText(text) + "\n"; }
    void showFlood(int lines) override { flood = lines; }
    [[nodiscard]] bool hearsSounds() const override { return sounds; }
    [[nodiscard]] bool isCompressed() const override { return compressed; }
    void endCompression() override { compressed = false; }
    void hangUp(std::u16string_view) override { hungUp = true; }

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
    std::string nameOf(ZNTDemoRoom room) { return znt::utf8FromText(texts.roomName(room)); }
};

} // namespace

TEST_F(DemoVillage, GreetsWithTheRoomAndAnswersTheFirstCommandsOfEveryPlayer)
{
    EXPECT_THAT(ashsScreen.take(), testing::AllOf(HasSubstr("Welcome"), HasSubstr("Lantern Square")));
    EXPECT_THAT(answerTo(u"look"), HasSubstr("All the\nlanes"));
    EXPECT_THAT(answerTo(u"  NORTH  "), HasSubstr("The Harbour"));
    EXPECT_THAT(answerTo(u"exits"), HasSubstr("Exits: south, east and west."));
    EXPECT_THAT(answerTo(u"up"), HasSubstr("no way up"));
    EXPECT_THAT(answerTo(u"xyzzy now"), HasSubstr("The word xyzzy means nothing"));
    EXPECT_EQ(answerTo(u" "), "\n") << "an empty line brings the prompt";
    for (const auto* line : {u"help", u"who", u"i", u"say", u"look guide", u"kick", u"get", u"drop", u"name",
                             u"flood", u"colours", u"sound", u"compress", u"look at the moon"})
        EXPECT_FALSE(answerTo(line).empty()) << znt::utf8FromText(line);
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
    answerTo(u"n");
    EXPECT_THAT(birchsScreen.take(), HasSubstr("Ash arrives."));
    village.leave(birch);
    EXPECT_THAT(ashsScreen.take(), HasSubstr("Birch goes home."));
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

TEST_F(DemoVillage, BobComesRoundAndComesWhenCalled)
{
    loop.advance(20);
    EXPECT_THAT(ashsScreen.take(), HasSubstr("Bob leaves north."));
    loop.advance(60);
    EXPECT_THAT(ashsScreen.take(), HasSubstr("Bob arrives."));
    EXPECT_THAT(answerTo(u"call bob"), HasSubstr("here already"));
    answerTo(u"w");
    EXPECT_THAT(answerTo(u"call bob"), HasSubstr("Bob arrives."));
    loop.advance(20);
    EXPECT_THAT(ashsScreen.take(), HasSubstr("Bob leaves east.")) << "he takes up his walk again";
}

TEST_F(DemoVillage, SoundsEndALineAndAreForThoseWhoAskedForThem)
{
    const std::u16string walk[] = {u"sw", u"d"};
    const auto tag = "!!SOUND(/dying_groan.wav V=80 P=50)\n";
    for (const bool sounds : {false, true}) {
        ashsScreen.sounds = sounds;
        ash.room = firstRoom;
        answerTo(walk[0]);
        const auto crypt = answerTo(walk[1]);
        EXPECT_EQ(crypt.find(tag) != std::string::npos, sounds);
        EXPECT_EQ(crypt.find("!!") != std::string::npos, sounds);
    }
}

TEST(DemoVillageInChinese, WaysAndNamesAreUnderstoodInBothLanguages)
{
    VirtualRunLoop loop;
    const auto& texts = ZNTDemoTexts::forEncoding(ZNTStringEncoding::EucCn);
    ZNTDemoVillage village(loop, texts);
    ZNTDemoCommands commands(village, texts);
    Screen screen;
    auto& player = village.enter(screen);
    commands.handleLine(player, u"东南");
    EXPECT_EQ(player.room, ZNTDemoRoom::GoblinDitch);
    screen.take();
    for (const auto* line : {u"kick 妖精", u"kick goblin"}) {
        commands.handleLine(player, line);
        EXPECT_THAT(screen.take(), HasSubstr("你踢了妖精一脚"));
    }
    commands.handleLine(player, u"get coin");
    EXPECT_THAT(screen.take(), HasSubstr("你拿起一枚银币"));
    commands.handleLine(player, u"drop 银币");
    EXPECT_THAT(screen.take(), HasSubstr("你放下一枚银币"));
}
