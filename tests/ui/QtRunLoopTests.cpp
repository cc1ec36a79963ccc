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

INSTANTIATE_TYPED_TEST_SUITE_P(QtRunLoop, RunLoopContract, QtDriver);

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

} // namespace
