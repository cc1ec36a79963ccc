#include "QtRunLoop.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr double longestInterval = 1 << 30; // milliseconds; a QTimer counts them in an int

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// The owner of a timer or a watch may destroy it while its Qt object emits. So the Qt object is silenced at
/// once and deleted by the loop. If the loop ends first, its parent deletes it.
void retire(QObject* object)
{
    object->disconnect();
    object->deleteLater();
}

class Timer final : public RunLoopTimer
{
public:
    Timer(QObject* context, double seconds, RunLoopRepeat repeat, RunLoop::Task task)
        : timer(new QTimer(context))
    {
        timer->setTimerType(Qt::PreciseTimer);
        if (!std::isfinite(seconds))
            return;
        const double asked = std::ceil(std::max(seconds * 1000, 0.0));
        const bool repeats = repeat == RunLoopRepeat::Forever;
        const double interval = repeats ? std::max(asked, 1.0) : asked;
        timer->setSingleShot(!repeats);
        if (interval <= longestInterval) {
            // The task is copied for the call: it may destroy this timer, and with it the connection.
            QObject::connect(timer, &QTimer::timeout, context, [task = std::move(task)] {
                const auto survivesCancelling = task;
                survivesCancelling();
            });
            timer->start(static_cast<int>(interval));
            return;
        }
        waitInSteps(context, interval, repeats, std::move(task));
    }
    ~Timer() override
    {
        if (!timer)
            return;
        timer->stop();
        retire(timer);
    }

private:
    void waitInSteps(QObject* context, double interval, bool repeats, RunLoop::Task task)
    {
        timer->setSingleShot(false);
        const auto step = [object = timer.data(), interval, repeats, task = std::move(task),
                           due = secondsNow() + interval / 1000]() mutable {
            if (secondsNow() < due)
                return;
            due += interval / 1000;
            if (!repeats)
                object->stop();
            const auto survivesCancelling = task;
            survivesCancelling();
        };
        QObject::connect(timer, &QTimer::timeout, context, step);
        timer->start(static_cast<int>(longestInterval));
    }

    QPointer<QTimer> timer;
};

class Watch final : public RunLoopWatch
{
public:
    Watch(QObject* context, int descriptor, RunLoopInterest interest, RunLoop::ReadyHandler handler)
        : readable(new QSocketNotifier(descriptor, QSocketNotifier::Read, context)),
          writable(new QSocketNotifier(descriptor, QSocketNotifier::Write, context))
    {
        const auto hear = [context, &handler](QSocketNotifier* notifier, RunLoopInterest direction) {
            QObject::connect(notifier, &QSocketNotifier::activated, context, [handler, direction] {
                const auto survivesCancelling = handler;
                survivesCancelling(direction);
            });
        };
        hear(readable, RunLoopInterest::Readable);
        hear(writable, RunLoopInterest::Writable);
        setInterest(interest);
    }
    ~Watch() override
    {
        setInterest(RunLoopInterest::None);
        for (const auto& notifier : {readable, writable})
            if (notifier)
                retire(notifier);
    }
    void setInterest(RunLoopInterest interest) override
    {
        if (readable)
            readable->setEnabled(includes(interest, RunLoopInterest::Readable));
        if (writable)
            writable->setEnabled(includes(interest, RunLoopInterest::Writable));
    }

private:
    QPointer<QSocketNotifier> readable, writable;
};

/// Files, folders and devices such as /dev/null are always ready. epoll refuses them, so this loop refuses
/// them, too: callers get the same answer from every loop.
bool canBeWatched(int descriptor)
{
    struct stat about {
    };
    if (::fstat(descriptor, &about) != 0)
        return false;
    return S_ISSOCK(about.st_mode) || S_ISFIFO(about.st_mode) ||
           (S_ISCHR(about.st_mode) && ::isatty(descriptor)) ||
           (about.st_mode & S_IFMT) == 0; // eventfd, timerfd and the like have no type
}

} // namespace

QtRunLoop::QtRunLoop() : context(std::make_unique<QObject>()) {}
QtRunLoop::~QtRunLoop() = default;

void QtRunLoop::post(Task task)
{
    QMetaObject::invokeMethod(
        context.get(), [task = std::move(task)] { task(); }, Qt::QueuedConnection);
}

std::unique_ptr<RunLoopTimer> QtRunLoop::startTimer(double seconds, RunLoopRepeat repeat, Task task)
{
    return std::make_unique<Timer>(context.get(), seconds, repeat, std::move(task));
}

std::unique_ptr<RunLoopWatch> QtRunLoop::watchDescriptor(int descriptor, RunLoopInterest interest,
                                                         ReadyHandler handler)
{
    if (!canBeWatched(descriptor))
        return nullptr;
    return std::make_unique<Watch>(context.get(), descriptor, interest, std::move(handler));
}

double QtRunLoop::now() const { return secondsNow(); }
