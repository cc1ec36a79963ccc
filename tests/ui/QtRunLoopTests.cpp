#include "QtRunLoop.h"
#include "RunLoopContract.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace
{

struct QtDriver {
    int argumentCount = 1;
    std::string name = "tests";
    char* arguments[2]{name.data(), nullptr};
    QCoreApplication application{argumentCount, arguments};
    std::unique_ptr<QtRunLoop> runLoop = std::make_unique<QtRunLoop>();

    void holdUp(double seconds) const
    {
        for (const double end = runLoop->now() + seconds; runLoop->now() < end;)
            continue;
    }
    bool turnUntil(const std::function<bool()>& condition, double seconds = 5)
    {
        const double end = runLoop->now() + seconds;
        QEventLoop turning;
        bool holds = false;
        const auto look = runLoop->startTimer(0.001, RunLoopRepeat::Forever, [&] {
            holds = condition();
            if (holds || runLoop->now() > end)
                turning.quit();
        });
        turning.exec();
        return holds;
    }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(QtRunLoop, RunLoopContract, QtDriver);

namespace
{

TEST(QtRunLoop, ATaskThatPostsItselfForEverLeavesRoomForTimers)
{
    QtDriver driver;
    bool fired = false;
    std::function<void()> again = [&] {
        if (!fired)
            driver.runLoop->post(again);
    };
    driver.runLoop->post(again);
    const auto timer = driver.runLoop->startTimer(0.01, RunLoopRepeat::Once, [&] { fired = true; });
    EXPECT_TRUE(driver.turnUntil([&] { return fired; }));
}

TEST(QtRunLoop, APeerThatNeverStopsSendingLeavesRoomForRepeatingTimers)
{
    QtDriver driver;
    int ends[2]{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
    ASSERT_EQ(::write(ends[1], "x", 1), 1); // never read: always ready
    int reads = 0, ticks = 0;
    {
        const auto watch = driver.runLoop->watchDescriptor(ends[0], RunLoopInterest::Readable,
                                                           [&](RunLoopInterest) { ++reads; });
        const auto timer = driver.runLoop->startTimer(0.005, RunLoopRepeat::Forever, [&] { ++ticks; });
        EXPECT_TRUE(driver.turnUntil([&] { return ticks >= 5; }));
        EXPECT_GT(reads, 20);
    }
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(QtRunLoop, TimersBeyondWhatQtCountsNeitherFireEarlyNorUpsetTheLoop)
{
    QtDriver driver;
    bool fired = false;
    const auto timer = driver.runLoop->startTimer(1e9, RunLoopRepeat::Once, [&] { fired = true; });
    driver.turnUntil([] { return false; }, 0.05);
    EXPECT_FALSE(fired);
}

} // namespace
