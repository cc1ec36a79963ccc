#include "ZNTSpeechWorker.h"

#include "ZNTSpeechDispatcher.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <poll.h>
#include <string_view>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace
{

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// How long we wait for a service that died, before its unfinished texts count as lost.
constexpr auto patienceWithLostService = 5s;
/// Between two attempts to connect, and between two checks for messages whose end is overdue.
constexpr std::chrono::milliseconds lookInterval = 100ms;
constexpr std::chrono::milliseconds forEver{-1};
/// At the end of the program: the wait for a quiet end, and then the wait for a forced one.
constexpr auto patienceAtTheEnd = 500ms;
constexpr int timesLostAtMost = 3;
/// How long texts are refused without another attempt after no service answered.
constexpr double restAfterFailure = 5;

constexpr std::string_view unavailableText =
    "Speech is unavailable: no speech service answers. Please install the Debian package "
    "\"speech-dispatcher\" and a voice for it, such as \"speech-dispatcher-espeak-ng\".";

} // namespace

ZNTSpeechWorker::ZNTSpeechWorker(RunLoop& runLoop, ZNTPlatformLog& log, ZNTSpeechServiceStart serviceStart)
    : runLoop(runLoop),
      log(log),
      serviceStart(serviceStart),
      wakeUpDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      interruption(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

ZNTSpeechWorker::~ZNTSpeechWorker()
{
    close(wakeUpDescriptor);
    close(interruption);
}

bool ZNTSpeechWorker::isSpeaking() const
{
    const std::lock_guard lock(mutex);
    return hasTexts();
}

bool ZNTSpeechWorker::hasTexts() const { return isHandingOver || !waiting.empty() || !unfinished.isEmpty(); }

void ZNTSpeechWorker::say(std::string utf8)
{
    if (runLoop.now() < refusesUntil)
        return;
    const std::lock_guard lock(mutex);
    waiting.push_back({std::move(utf8)});
    owesEnd = true;
    if (!thread.joinable())
        thread = std::thread([self = shared_from_this()] { self->run(); });
    wakeUp();
}

void ZNTSpeechWorker::stop()
{
    const std::lock_guard lock(mutex);
    waiting.clear();
    unfinished.clear();
    isHandingOver = owesEnd = false;
    ++stops;
    // While speech is off, every chunk of the game calls stop again. One cancel is enough.
    if (!hasSomethingToCancel)
        return;
    mustCancel = true;
    signal(interruption);
    wakeUp();
}

void ZNTSpeechWorker::quit()
{
    hasEnded = true;
    stop();
    Lock lock(mutex);
    mustQuit = true;
    wakeUp();
    if (!thread.joinable())
        return;
    const auto isOver = [this] { return hasQuit; };
    if (!quitting.wait_for(lock, patienceAtTheEnd, isOver) && connection)
        connection->breakOff();
    // Only libspeechd's start of a service has no time limit. If the thread is still in it, it is left alone:
    // it owns this object, so the program may end.
    const bool isDone = quitting.wait_for(lock, patienceAtTheEnd, isOver);
    lock.unlock();
    if (isDone)
        thread.join();
    else
        thread.detach();
}

void ZNTSpeechWorker::run()
{
    Lock lock(mutex);
    while (!mustQuit) {
        if (connection && connection->isLost())
            takeBackFromLostService(lock);
        cancelIfDue(lock);
        unfinished.forgetOverdue(Clock::now());
        reportEnd();
        if (waiting.empty())
            wait(lock, unfinished.isEmpty() ? forEver : lookInterval);
        else if (connection)
            sayFirst(lock);
        else
            connect(lock);
    }
    cancelIfDue(lock);
    hasQuit = true;
    quitting.notify_all();
}

void ZNTSpeechWorker::reportEnd()
{
    // After `quit` the run loop may be gone.
    if (!owesEnd || hasTexts() || mustQuit)
        return;
    owesEnd = false;
    runLoop.post([weak = weak_from_this()] {
        const auto worker = weak.lock();
        if (worker && !worker->hasEnded && worker->allIsSaid)
            worker->allIsSaid();
    });
}

void ZNTSpeechWorker::signal(int descriptor)
{
    const std::uint64_t one = 1;
    // The write fails only if the counter is full, and then the descriptor is readable anyway.
    [[maybe_unused]] const auto written = write(descriptor, &one, sizeof one);
}

void ZNTSpeechWorker::clear(int descriptor)
{
    std::uint64_t count;
    [[maybe_unused]] const auto taken = read(descriptor, &count, sizeof count);
}

void ZNTSpeechWorker::wait(Lock& lock, std::chrono::milliseconds time)
{
    // An earlier wait may have consumed the wake-up that `quit` sent.
    if (mustQuit)
        return;
    const auto served = connection;
    lock.unlock();
    pollfd watched[] = {{wakeUpDescriptor, POLLIN, 0}, {served ? served->descriptor() : -1, POLLIN, 0}};
    poll(watched, std::size(watched), static_cast<int>(time.count()));
    clear(wakeUpDescriptor);
    if (served)
        served->takeEvents();
    lock.lock();
}

void ZNTSpeechWorker::cancelIfDue(Lock& lock)
{
    // A stop that comes during the wait must not interrupt a text that came after it.
    while (mustCancel) {
        noteCancel();
        if (!connection)
            return;
        lock.unlock();
        connection->cancel();
        lock.lock();
    }
}

void ZNTSpeechWorker::noteCancel()
{
    mustCancel = hasSomethingToCancel = false;
    clear(interruption);
}

void ZNTSpeechWorker::connect(Lock& lock)
{
    const auto onEvent = [this](std::size_t message, ZNTSpeechEvent event) { heard(message, event); };
    lock.unlock();
    auto opened = ZNTSpeechConnection::open(onEvent);
    if (!opened && serviceStart == ZNTSpeechServiceStart::WhenNeeded) {
        ZNTSpeechConnection::startService();
        opened = ZNTSpeechConnection::open(onEvent);
    }
    lock.lock();
    // From here on `quit` can break the connection off.
    connection = opened;
    lock.unlock();
    const bool answers = opened && opened->greet();
    lock.lock();
    if (answers) {
        passOn(/*isFound=*/true);
        return;
    }
    connection = nullptr;
    if (Clock::now() < patientUntil)
        wait(lock, lookInterval);
    else
        giveUp();
}

void ZNTSpeechWorker::giveUp()
{
    waiting.clear();
    passOn(/*isFound=*/false);
}

void ZNTSpeechWorker::passOn(bool isFound)
{
    // After `quit` the run loop may be gone.
    if (mustQuit)
        return;
    runLoop.post([weak = weak_from_this(), isFound] {
        const auto worker = weak.lock();
        if (worker && !worker->hasEnded)
            worker->setAvailable(isFound);
    });
}

void ZNTSpeechWorker::setAvailable(bool isFound)
{
    if (!isFound)
        refusesUntil = runLoop.now() + restAfterFailure;
    if (std::exchange(isAvailable, isFound) == isFound)
        return;
    if (!isFound)
        log.log(unavailableText);
    if (availabilityChanged)
        availabilityChanged();
}

void ZNTSpeechWorker::sayFirst(Lock& lock)
{
    auto text = std::move(waiting.front());
    waiting.pop_front();
    const auto stopsBefore = stops;
    isHandingOver = hasSomethingToCancel = true;
    lock.unlock();
    const auto said = connection->say(text.utf8, interruption);
    lock.lock();
    if (said.wasCancelled)
        noteCancel();
    if (stops == stopsBefore) {
        isHandingOver = false;
        if (connection->isLost()) {
            takeBack(std::move(text));
        } else if (said.message && endedEarly.count(*said.message) == 0) {
            unfinished.add(*said.message, std::move(text), Clock::now());
        }
    }
    endedEarly.clear();
}

void ZNTSpeechWorker::takeBack(ZNTSpeechMessage message)
{
    // This text may be the reason why the service dies, so it is not repeated for ever.
    if (++message.timesLost < timesLostAtMost)
        waiting.push_front(std::move(message));
}

void ZNTSpeechWorker::takeBackFromLostService(Lock& lock)
{
    auto owed = unfinished.takeAll();
    std::for_each(owed.rbegin(), owed.rend(), [this](auto& message) { takeBack(std::move(message)); });
    patientUntil = Clock::now() + patienceWithLostService;
    connection = nullptr;
    // Do not busy the machine with a service that crashes on its first command.
    wait(lock, lookInterval);
}

void ZNTSpeechWorker::heard(std::size_t message, ZNTSpeechEvent event)
{
    const std::lock_guard lock(mutex);
    if (event == ZNTSpeechEvent::Begin)
        unfinished.noteBegin(message, Clock::now());
    else if (!unfinished.noteEnd(message) && isHandingOver)
        endedEarly.insert(message);
}
