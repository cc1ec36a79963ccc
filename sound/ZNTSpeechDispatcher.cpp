#include "ZNTSpeechDispatcher.h"

#include "ZNTSpeechConnection.h"
#include "ZNTText.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>

namespace
{

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// How long a service that died is waited for before what it owes counts as lost.
constexpr auto patienceWithLostService = 5s;
/// Between two attempts at it, and between two looks at whether it still lives.
constexpr auto lookInterval = 100ms;
constexpr int timesLostAtMost = 3;
/// How long texts are refused without another attempt after no service answered.
constexpr auto restAfterFailure = 5s;

constexpr std::u16string_view unavailableText =
    u"Speech is unavailable: no speech service answers. Please install the Debian package "
    u"\"speech-dispatcher\" and a voice for it, such as \"speech-dispatcher-espeak-ng\".";

/// When a message whose end was never told counts as said. No voice is that slow, and messages of other
/// programs may come first; but a service that loses an end must not silence the game for ever.
Clock::time_point latestEnd(const std::string& utf8) { return Clock::now() + 30s + utf8.size() * 400ms; }

/// A write to a service that just died must fail and not end the program.
void blockBrokenPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

/// What the run loop's thread, the worker thread and the library's thread share.
class ZNTSpeechDispatcher::Worker : public std::enable_shared_from_this<Worker>
{
public:
    Worker(RunLoop& runLoop, Unavailable onUnavailable, ZNTSpeechServiceStart serviceStart)
        : runLoop(runLoop),
          onUnavailable(std::move(onUnavailable)),
          serviceStart(serviceStart)
    {
    }

    [[nodiscard]] bool isSpeaking() const;
    void say(std::string utf8);
    void stop();
    void quit();

private:
    using Lock = std::unique_lock<std::mutex>;
    struct Message {
        std::string utf8;
        int timesLost = 0;
        Clock::time_point latestEnd{};
    };

    void run();
    void work(Lock& lock);
    void connect(Lock& lock);
    void giveUp();
    void sayFirst(Lock& lock);
    void takeBack(Message message);
    void takeBackFromLostService(Lock& lock);
    void forgetOverdue();
    void heard(std::size_t message, ZNTSpeechEvent event);

    RunLoop& runLoop;
    Unavailable onUnavailable;
    const ZNTSpeechServiceStart serviceStart;
    std::thread thread;

    mutable std::mutex mutex;
    std::condition_variable changed;
    /// What the service does not have yet.
    std::deque<Message> waiting;
    /// What it has, by its numbers, which grow.
    std::map<std::size_t, Message> unfinished;
    /// Messages that ended before the call that queued them returned.
    std::set<std::size_t> endedEarly;
    bool isHandingOver = false;
    bool mustCancel = false;
    bool mustQuit = false;
    bool hasQuit = false;
    bool wasReported = false;
    /// Counts the stops, so that a text on its way to the service is known to be overtaken by one.
    unsigned stops = 0;
    Clock::time_point refusesUntil{};
    /// Until when a service that was there is waited for.
    Clock::time_point patientUntil{};
    std::shared_ptr<ZNTSpeechConnection> connection;
};

bool ZNTSpeechDispatcher::Worker::isSpeaking() const
{
    const std::lock_guard lock(mutex);
    return isHandingOver || !waiting.empty() || !unfinished.empty();
}

void ZNTSpeechDispatcher::Worker::say(std::string utf8)
{
    const std::lock_guard lock(mutex);
    if (Clock::now() < refusesUntil)
        return;
    waiting.push_back({std::move(utf8)});
    if (!thread.joinable())
        thread = std::thread([self = shared_from_this()] { self->run(); });
    changed.notify_all();
}

void ZNTSpeechDispatcher::Worker::stop()
{
    const std::lock_guard lock(mutex);
    waiting.clear();
    unfinished.clear();
    isHandingOver = false;
    mustCancel = true;
    ++stops;
    changed.notify_all();
}

void ZNTSpeechDispatcher::Worker::quit()
{
    stop();
    Lock lock(mutex);
    onUnavailable = nullptr;
    mustQuit = true;
    changed.notify_all();
    if (!thread.joinable())
        return;
    const auto isOver = [this] { return hasQuit; };
    if (!changed.wait_for(lock, 500ms, isOver) && connection)
        connection->breakOff();
    // A service that takes connections and answers none holds the library for good; it then keeps what the
    // thread needs, and the program may end.
    const bool isDone = changed.wait_for(lock, 1s, isOver);
    lock.unlock();
    if (isDone)
        thread.join();
    else
        thread.detach();
}

void ZNTSpeechDispatcher::Worker::run()
{
    blockBrokenPipeSignal();
    Lock lock(mutex);
    while (!mustQuit) {
        work(lock);
        const auto isNeeded = [this] { return mustQuit || mustCancel || !waiting.empty(); };
        if (!unfinished.empty())
            changed.wait_for(lock, lookInterval, isNeeded);
        else
            changed.wait(lock, isNeeded);
    }
    if (connection && mustCancel) {
        lock.unlock();
        connection->cancel();
        lock.lock();
    }
    auto closing = std::move(connection);
    lock.unlock();
    closing.reset();
    lock.lock();
    hasQuit = true;
    changed.notify_all();
}

void ZNTSpeechDispatcher::Worker::work(Lock& lock)
{
    if (connection && !connection->isAlive())
        takeBackFromLostService(lock);
    if (std::exchange(mustCancel, false) && connection) {
        lock.unlock();
        connection->cancel();
        lock.lock();
    }
    forgetOverdue();
    if (waiting.empty() || mustCancel || mustQuit)
        return;
    if (connection)
        sayFirst(lock);
    else
        connect(lock);
}

void ZNTSpeechDispatcher::Worker::connect(Lock& lock)
{
    lock.unlock();
    std::shared_ptr<ZNTSpeechConnection> opened = ZNTSpeechConnection::open(
        serviceStart, [this](std::size_t message, ZNTSpeechEvent event) { heard(message, event); });
    lock.lock();
    if (opened)
        connection = std::move(opened);
    else if (Clock::now() < patientUntil)
        changed.wait_for(lock, lookInterval, [this] { return mustQuit; });
    else
        giveUp();
}

void ZNTSpeechDispatcher::Worker::giveUp()
{
    waiting.clear();
    refusesUntil = Clock::now() + restAfterFailure;
    if (std::exchange(wasReported, true) || !onUnavailable)
        return;
    runLoop.post([self = weak_from_this()] {
        const auto worker = self.lock();
        if (!worker)
            return;
        Unavailable tell;
        {
            const std::lock_guard lock(worker->mutex);
            tell = worker->onUnavailable;
        }
        if (tell)
            tell(unavailableText);
    });
}

void ZNTSpeechDispatcher::Worker::sayFirst(Lock& lock)
{
    auto text = std::move(waiting.front());
    waiting.pop_front();
    const auto stopsBefore = stops;
    isHandingOver = true;
    lock.unlock();
    const auto message = connection->say(text.utf8);
    const bool isAlive = message || connection->isAlive();
    lock.lock();
    const bool wasStopped = stops != stopsBefore;
    if (!wasStopped) {
        isHandingOver = false;
        if (!isAlive) {
            takeBack(std::move(text));
        } else if (message && endedEarly.count(*message) == 0) {
            text.latestEnd = latestEnd(text.utf8);
            unfinished[*message] = std::move(text);
        }
    }
    endedEarly.clear();
}

void ZNTSpeechDispatcher::Worker::takeBack(Message message)
{
    // The text may be what the service dies of.
    if (++message.timesLost < timesLostAtMost)
        waiting.push_front(std::move(message));
}

void ZNTSpeechDispatcher::Worker::takeBackFromLostService(Lock& lock)
{
    for (auto message = unfinished.rbegin(); message != unfinished.rend(); ++message)
        takeBack(std::move(message->second));
    unfinished.clear();
    patientUntil = Clock::now() + patienceWithLostService;
    auto lost = std::exchange(connection, nullptr);
    lock.unlock();
    lost.reset();
    lock.lock();
    // One that dies as soon as it is spoken to is not to keep the machine busy.
    changed.wait_for(lock, lookInterval, [this] { return mustQuit; });
}

void ZNTSpeechDispatcher::Worker::forgetOverdue()
{
    const auto now = Clock::now();
    std::erase_if(unfinished, [now](const auto& message) { return message.second.latestEnd < now; });
}

void ZNTSpeechDispatcher::Worker::heard(std::size_t message, ZNTSpeechEvent event)
{
    const std::lock_guard lock(mutex);
    if (event == ZNTSpeechEvent::Begin) {
        if (const auto found = unfinished.find(message); found != unfinished.end())
            found->second.latestEnd = latestEnd(found->second.utf8);
    } else if (unfinished.erase(message) == 0 && isHandingOver) {
        endedEarly.insert(message);
    }
}

ZNTSpeechDispatcher::ZNTSpeechDispatcher(RunLoop& runLoop, Unavailable onUnavailable,
                                         ZNTSpeechServiceStart serviceStart)
    : worker(std::make_shared<Worker>(runLoop, std::move(onUnavailable), serviceStart))
{
}

ZNTSpeechDispatcher::~ZNTSpeechDispatcher() { worker->quit(); }

bool ZNTSpeechDispatcher::isSpeaking() const { return worker->isSpeaking(); }

void ZNTSpeechDispatcher::startSpeaking(std::u16string_view text)
{
    // The library blocks for ever on the call after an empty text.
    if (!znt::trimmedOfWhitespace(text).empty())
        worker->say(znt::utf8FromText(text));
}

void ZNTSpeechDispatcher::stopSpeaking() { worker->stop(); }
