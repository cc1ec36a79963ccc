#include "RunLoopContract.h"
#include "UvRunLoop.h"
#include "VirtualRunLoop.h"

namespace
{

struct UvDriver {
    std::unique_ptr<UvRunLoop> runLoop = UvRunLoop::open().value();
    void holdUp(double seconds) const
    {
        for (const double end = runLoop->now() + seconds; runLoop->now() < end;)
            continue;
    }
    bool turnUntil(const std::function<bool()>& condition, double seconds = 5)
    {
        const double end = runLoop->now() + seconds;
        bool holds = false;
        const auto look = runLoop->startTimer(0.001, RunLoopRepeat::Forever, [&] {
            holds = condition();
            if (holds || runLoop->now() > end)
                runLoop->stop();
        });
        runLoop->run();
        return holds;
    }
};

/// Its time moves by a millisecond whenever nothing is left to do, or what is left goes on for ever.
struct VirtualDriver {
    std::unique_ptr<VirtualRunLoop> runLoop = std::make_unique<VirtualRunLoop>();
    void holdUp(double) const {}
    bool turnUntil(const std::function<bool()>& condition, double seconds = 5)
    {
        const double end = runLoop->now() + seconds;
        while (runLoop->now() < end) {
            if (runLoop->runUntil(condition, 0))
                return true;
            runLoop->advance(0.001, /*mostTurns=*/1);
        }
        return false;
    }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(UvRunLoop, RunLoopContract, UvDriver);
INSTANTIATE_TYPED_TEST_SUITE_P(VirtualRunLoop, RunLoopContract, VirtualDriver);

TEST(UvRunLoop, StopsAfterTheTurnAndRunsAgain)
{
    const auto loop = UvRunLoop::open().value();
    std::string order;
    loop->post([&] {
        loop->stop();
        loop->post([&] {
            order += 'b';
            loop->stop();
        });
        order += 'a';
    });
    loop->run();
    EXPECT_EQ(order, "a");
    loop->run();
    EXPECT_EQ(order, "ab");
    const auto kept = loop->startTimer(1, RunLoopRepeat::Once, [] {});
    loop->stop(); // and is then destroyed without running again
}
