#pragma once

#include "RunLoop.h"
#include "ZNTPlatformLog.h"
#include "ZNTSpeechConnection.h"
#include "ZNTSpeechMessages.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>

enum class ZNTSpeechServiceStart;

/// The thread that talks to the speech service, and the state that it shares with the run loop's thread. The
/// thread owns the connection.
///
/// `mutex` is held for moments only: the worker thread gives it up (`Lock& lock`) before it waits for the
/// service or for events, and reads the shared fields again afterwards, because a stop may have come
/// meanwhile.
class ZNTSpeechWorker : public std::enable_shared_from_this<ZNTSpeechWorker>
{
public:
    /// Both outlive the call of `quit`.
    ZNTSpeechWorker(RunLoop& runLoop, ZNTPlatformLog& log, ZNTSpeechServiceStart serviceStart);
    ~ZNTSpeechWorker();
    ZNTSpeechWorker(const ZNTSpeechWorker&) = delete;
    ZNTSpeechWorker& operator=(const ZNTSpeechWorker&) = delete;

    [[nodiscard]] bool isSpeaking() const;
    /// Not empty. The first text starts the thread.
    void say(std::string utf8);
    void stop();
    /// Ends the thread, or leaves it alone if it does not end in time. Nothing else may be called after it.
    void quit();

    // Of the run loop's thread only.
    bool isAvailable = true;
    bool hasEnded = false; ///< the thread itself may live on
    std::function<void()> availabilityChanged;
    std::function<void()> allIsSaid;
    double refusesUntil = 0; ///< by the run loop's clock

private:
    using Lock = std::unique_lock<std::mutex>;
    void run();
    /// Waits until there is something to do, or `time` has passed.
    void wait(Lock& lock, std::chrono::milliseconds time);
    void cancelIfDue(Lock& lock);
    void noteCancel();
    [[nodiscard]] bool hasTexts() const;
    void reportEnd();
    void connect(Lock& lock);
    static void signal(int descriptor);
    static void clear(int descriptor);
    void wakeUp() const { signal(wakeUpDescriptor); }
    void giveUp();
    /// Reports to the run loop whether a service was found.
    void passOn(bool isFound);
    void setAvailable(bool isFound);
    void sayFirst(Lock& lock);
    void takeBack(ZNTSpeechMessage message);
    void takeBackFromLostService(Lock& lock);
    void heard(std::size_t message, ZNTSpeechEvent event);

    RunLoop& runLoop;
    ZNTPlatformLog& log;
    const ZNTSpeechServiceStart serviceStart;
    std::thread thread;

    mutable std::mutex mutex;
    std::condition_variable quitting;
    /// Readable when the thread has something new to look at.
    const int wakeUpDescriptor;
    /// Readable while `mustCancel` is set: it interrupts a text that is on its way to the service.
    const int interruption;
    /// Texts that the service does not have yet.
    std::deque<ZNTSpeechMessage> waiting;
    ZNTSpeechMessages unfinished;
    /// Messages that ended before the call that queued them returned.
    std::set<std::size_t> endedEarly;
    bool isHandingOver = false;
    bool owesEnd = false; ///< texts came since the last end that was reported, and no stop
    /// Whether the service was given a text since the last cancel.
    bool hasSomethingToCancel = false;
    bool mustCancel = false;
    bool mustQuit = false;
    bool hasQuit = false;
    /// Counts the stops. If it changes while a text is on its way to the service, the text is outdated.
    unsigned stops = 0;
    /// Until when we wait for a service that was there before.
    ZNTSpeechMessages::Time patientUntil{};
    std::shared_ptr<ZNTSpeechConnection> connection;
};
