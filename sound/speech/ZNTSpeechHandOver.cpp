#include "ZNTSpeechHandOver.h"

#include <system_error>
#include <utility>

ZNTSpeechHandOver::~ZNTSpeechHandOver()
{
    for (auto& speaker : speakers)
        speaker.thread.join();
}

void ZNTSpeechHandOver::speakOnNewThread(std::u16string text, ZNTSpeechQueue::Source source)
{
    joinThreadsThatAreDone();
    bool isFlooded = false, needsSpeaker = false;
    {
        const std::lock_guard lock(waitingMutex);
        waiting.push_back({std::move(text), synth.stopCount(), synth.now(), source});
        isFlooded = waiting.size() > mostWaiting;
        // A thread that has not set `isDone` by now looks at `waiting` again and finds this chunk.
        needsSpeaker = !isFlooded && livingSpeakers < mostThreads;
        livingSpeakers += needsSpeaker ? 1 : 0;
    }
    if (isFlooded)
        handOverAllThatWaits(nullptr);
    else if (needsSpeaker)
        startSpeaker();
}

void ZNTSpeechHandOver::startSpeaker()
{
    auto& speaker = speakers.emplace_back();
    try {
        speaker.thread = std::thread([this, &speaker] { handOverAllThatWaits(&speaker); });
    } catch (const std::system_error&) {
        // The machine allows no further thread, so the run loop's thread does the work.
        handOverAllThatWaits(&speaker);
        speakers.pop_back();
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
                // Clear the flag under the same lock as the empty check; otherwise a chunk added in between
                // is lost: its sender would still count this thread as alive and start no other.
                if (speaker != nullptr) {
                    speaker->isDone = true;
                    --livingSpeakers;
                }
                return;
            }
            chunk = std::move(waiting.front());
            waiting.pop_front();
        }
        synth.speakLine(std::move(chunk.text), chunk.stopCount, chunk.arrival, chunk.source);
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
