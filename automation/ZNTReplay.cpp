#include "ZNTReplay.h"

#include <utility>

void ZNTReplay::start(ZNTKeptRecording given, Times givenTimes)
{
    recording = std::move(given);
    times = givenTimes;
    next = 0;
    ++starts;
    timer = runLoop.startTimer(recording.seconds, RunLoopRepeat::Forever, [this] { sendNext(); });
    tellOfChange();
    sendNext();
}

void ZNTReplay::stop()
{
    if (std::exchange(timer, nullptr))
        tellOfChange();
}

void ZNTReplay::sendNext()
{
    // A server that reads nothing would otherwise make the queue grow without bound.
    if (!isRunning() || !sender.hasRoom())
        return;
    const auto command = recording.commands[next]; // copied, since sending it may end the recording
    const bool isLast = ++next == recording.commands.size();
    if (isLast)
        next = 0;
    const auto start = starts;
    sender.sendMessageToServer(command, /*ignoreSpecials=*/false);
    if (isLast && times == Times::Once && start == starts)
        stop();
}

void ZNTReplay::tellOfChange() const
{
    if (runningChanged)
        runningChanged();
}
