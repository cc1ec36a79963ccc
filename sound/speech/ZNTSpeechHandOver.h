#pragma once

#include "ZNTSpeechSynth.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <list>
#include <mutex>
#include <string>
#include <thread>

/// Hands received chunks to the speech queue on threads of their own, so that the run loop waits for nobody.
///
/// Each chunk starts a thread, and each thread hands over the oldest chunk that waits, so lines stay in the
/// order of their chunks whatever order the threads run in. Once `mostThreads` are alive a chunk joins those
/// that wait for them, so a flood starts no more. No thread outlives this object: the end waits for them.
class ZNTSpeechHandOver
{
public:
    static constexpr std::size_t mostThreads = 8;
    /// Chunks. Past it the run loop's thread hands over too, so that what waits stays bounded.
    static constexpr std::size_t mostWaiting = 256;

    /// The caller owns `synth`, which outlives this.
    explicit ZNTSpeechHandOver(ZNTSpeechSynth& synth) : synth(synth) {}
    ~ZNTSpeechHandOver();
    ZNTSpeechHandOver(const ZNTSpeechHandOver&) = delete;
    ZNTSpeechHandOver& operator=(const ZNTSpeechHandOver&) = delete;

    /// For the run loop's thread. Text handed over before a stop is not spoken after it.
    void speakOnNewThread(std::u16string text);

private:
    struct Chunk {
        std::u16string text;
        std::uint64_t stopCount;
    };
    struct Speaker {
        std::thread thread;
        bool isDone = false;
    };

    void startSpeaker();
    void handOverAllThatWaits(Speaker* speaker);
    void joinThreadsThatAreDone();

    ZNTSpeechSynth& synth;
    /// Guards what waits, who is done and how many are not; held for moments only.
    std::mutex waitingMutex;
    std::deque<Chunk> waiting;
    std::list<Speaker> speakers;
    std::size_t livingSpeakers = 0; ///< those that are not done, which is fewer than were not joined
    /// Held from taking a chunk until the synth has it: what keeps the order.
    std::mutex orderMutex;
};
