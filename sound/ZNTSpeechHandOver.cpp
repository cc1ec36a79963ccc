#include "ZNTSpeechHandOver.h"

#include <system_error>
#include <utility>

ZNTSpeechHandOver::~ZNTSpeechHandOver()
{
    for (auto& speaker : speakers)
        speaker.thread.join();
}

void ZNTSpeechHandOver::speakOnNewThread(std::u16string text)
{
    joinThreadsThatAreDone();
    bool isFlooded = false;
    {
        const std::lock_guard lock(waitingMutex);
        waiting.push_back({std::move(text), synth.stopCount()});
        isFlooded = waiting.size() > mostWaiting;
    }
    if (isFlooded)
        handOverAllThatWaits(nullptr);
    else if (speakers.size() < mostThreads)
        startThread();
}

void ZNTSpeechHandOver::startThread()
{
    auto& speaker = speakers.emplace_back();
    try {
        speaker.thread = std::thread([this, &speaker] { handOverAllThatWaits(&speaker); });
    } catch (const std::system_error&) {
        // The machine has no thread left to give.
        speakers.pop_back();
        handOverAllThatWaits(nullptr);
    }
}

void ZNTSpeechHandOver::handOverAllThatWaits(Speaker* speaker)
{
    for (;;) {
        const std::lock_guard order(orderMutex);
        Chunk chunk;
        {
            const std::lock_guard lock(waitingMutex);
            if (waiting.empty()) {
                // Told in the same breath as seeing the end, so that no chunk relies on a thread that leaves.
                if (speaker != nullptr)
                    speaker->isDone = true;
                return;
            }
            chunk = std::move(waiting.front());
            waiting.pop_front();
        }
        synth.speakLine(std::move(chunk.text), chunk.stopCount);
    }
}

void ZNTSpeechHandOver::joinThreadsThatAreDone()
{
    std::list<Speaker> done;
    {
        const std::lock_guard lock(waitingMutex);
        for (auto speaker = speakers.begin(); speaker != speakers.end();) {
            const auto here = speaker++;
            if (here->isDone)
                done.splice(done.end(), speakers, here);
        }
    }
    for (auto& speaker : done)
        speaker.thread.join();
}
