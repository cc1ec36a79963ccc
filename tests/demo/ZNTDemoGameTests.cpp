#include "ZNTDemoGame.h"
#include "ZNTDemoSocketPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace
{

ZNTResult<std::uint16_t> started(VirtualRunLoop& loop, ZNTDemoGame& game, ZNTStringEncoding encoding)
{
    std::optional<ZNTResult<std::uint16_t>> outcome;
    game.start(encoding, [&](ZNTResult<std::uint16_t> result) { outcome = std::move(result); });
    EXPECT_FALSE(outcome) << "the answer comes from the loop";
    EXPECT_TRUE(loop.runUntil([&] { return outcome.has_value(); }));
    return outcome.value_or(ZNTError{"test", 0, "no answer"});
}

} // namespace

TEST(DemoGame, StartsInTheLanguageAskedForAndEndsWithItsOwner)
{
    VirtualRunLoop loop;
    for (const auto encoding : {ZNTStringEncoding::Ascii, ZNTStringEncoding::Big5Hkscs}) {
        auto game = std::make_unique<ZNTDemoGame>(loop, ZANTOR_DEMO_PROGRAM);
        const auto port = started(loop, *game, encoding);
        ASSERT_TRUE(port) << port.error().description;
        ZNTDemoSocketPlayer player(loop, connectionTo(port.value()));
        const bool isEnglish = encoding == ZNTStringEncoding::Ascii;
        EXPECT_EQ(player.readUntil("> ").find("Welcome") != std::string::npos, isEnglish);
        if (!isEnglish) {
            const auto hello = znt::encodedText(u"你好", encoding);
            player.send("say \xB0\x80\x81 ok\r\nsay " + hello + "\r\n");
            EXPECT_THAT(player.readUntil(hello),
                        testing::AllOf(testing::HasSubstr("ok"), testing::EndsWith(hello)))
                << "a damaged line is answered, too";
        }
        game.reset();
        EXPECT_TRUE(player.waitForEnd());
        EXPECT_EQ(connectionTo(port.value()), -1);
    }
}

TEST(DemoGame, SaysWhyThereIsNoGame)
{
    VirtualRunLoop loop;
    const std::pair<const char*, const char*> programs[] = {
        {"/nowhere/zantor-demo", "/nowhere/zantor-demo: No such file"},
        {"/bin/false", "ended before"},
        {"/bin/echo", "something else than a port"}};
    for (const auto& [program, why] : programs) {
        SCOPED_TRACE(program);
        ZNTDemoGame game(loop, program);
        const auto port = started(loop, game, ZNTStringEncoding::Ascii);
        ASSERT_FALSE(port);
        EXPECT_THAT(port.error().description, testing::HasSubstr(why));
    }
}
