#pragma once

#include "ZNTSpeechSynth.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <list>
#include <mutex>
#include <string>
#include <thread>

/// Hands received chunks to the speech queue on threads of their own, so that the run loop never waits.
///
/// Each chunk starts a thread, and each thread hands over the oldest chunk that waits. So lines stay in the
/// order of their chunks, in whatever order the threads run. If `mostThreads` are alive, a chunk waits for
/// one of them, so a flood starts no more threads. No thread outlives this object: its end waits for them.
class ZNTSpeechHandOver
{
public:
    static constexpr std::size_t mostThreads = 8;
    /// Chunks. If more wait, the run loop's thread hands over too, so that the memory stays bounded.
    static constexpr std::size_t mostWaiting = 256;

    /// The caller owns `synth`, which outlives this.
    explicit ZNTSpeechHandOver(ZNTSpeechSynth& synth) : synth(synth) {}
    ~ZNTSpeechHandOver();
    ZNTSpeechHandOver(const ZNTSpeechHandOver&) = delete;
    ZNTSpeechHandOver& operator=(const ZNTSpeechHandOver&) = delete;

    /// Call it on the run loop's thread. Text handed over before a stop is not spoken after it.
    void speakOnNewThread(std::u16string text, ZNTSpeechQueue::Source source = ZNTSpeechQueue::Source::Game);

private:
    struct Chunk {
        std::u16string text;
        std::uint64_t stopCount;
        double arrival; ///< by the run loop's clock
        ZNTSpeechQueue::Source source;
    };
    struct Speaker {
        std::thread thread;
        bool isDone = false;
    };

    void startSpeaker();
    void handOverAllThatWaits(Speaker* speaker);
    void joinThreadsThatAreDone();

    ZNTSpeechSynth& synth;
    /// Guards `waiting`, each `isDone` and `livingSpeakers`. Never held while a chunk is handed over.
    std::mutex waitingMutex;
    std::deque<Chunk> waiting;
    std::list<Speaker> speakers;
    std::size_t livingSpeakers = 0; ///< speakers that are not done; some that are done are not joined yet
    /// Held from taking a chunk until the synth has it. This keeps the order: without it, a second thread
    /// could take the next chunk and be faster. Taken before `waitingMutex`.
    std::mutex orderMutex;
};
