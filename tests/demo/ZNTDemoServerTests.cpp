#include "ZNTDemoServer.h"
#include "ZNTDemoSocketPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

TEST(DemoServer, SeatsManyAtOnceTurnsOneTooManyAwayAndFreesASeatThatIsLeft)
{
    VirtualRunLoop loop;
    auto server = ZNTDemoServer::onPort(0, ZNTStringEncoding::Ascii, loop);
    ASSERT_TRUE(server);
    int left = 0;
    server.value()->whenPlayerLeft = [&] { ++left; };
    std::vector<std::unique_ptr<ZNTDemoSocketPlayer>> players;
    const auto join = [&] {
        players.push_back(std::make_unique<ZNTDemoSocketPlayer>(loop, connectionTo(server.value()->port())));
    };
    for (std::size_t i = 0; i <= ZNTDemoServer::mostPlayers; ++i)
        join();
    EXPECT_THAT(players[ZNTDemoServer::mostPlayers - 1]->readUntil("> "), HasSubstr("Welcome"));
    EXPECT_TRUE(players.back()->waitForEnd());
    EXPECT_THAT(players.back()->received, HasSubstr("The village is full"));

    players.front()->hangUp();
    EXPECT_TRUE(loop.runUntil([&] { return left == 1; }));
    join();
    EXPECT_THAT(players.back()->readUntil("> "), HasSubstr("Welcome"));
}
