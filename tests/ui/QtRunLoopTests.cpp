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
