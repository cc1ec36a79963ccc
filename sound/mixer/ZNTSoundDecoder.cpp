#include "ZNTSoundDecoder.h"

#include <SDL_mixer.h>
#include <algorithm>
#include <cstdlib>
#include <limits>
#include <malloc.h>

namespace
{

/// Bytes at one time for one sound being decoded: its samples stand there up to three times, so this is some
/// 6 minutes of 16-bit stereo at 44.1 kHz.
constexpr std::size_t mostMemoryForDecoding = 192 << 20;
constexpr std::size_t mostBytesKept = 32 << 20;

/// How much memory this thread's decoding may still take. Nothing else is counted.
thread_local std::size_t memoryLeft = std::numeric_limits<std::size_t>::max();
thread_local bool isMemoryWatched = false;

class MemoryWatch
{
public:
    MemoryWatch()
    {
        memoryLeft = mostMemoryForDecoding;
        isMemoryWatched = true;
    }
    ~MemoryWatch() { isMemoryWatched = false; }
    MemoryWatch(const MemoryWatch&) = delete;
    MemoryWatch& operator=(const MemoryWatch&) = delete;
};

bool isTooMuch(std::size_t size) { return isMemoryWatched && size > memoryLeft; }

/// `memory` was just taken, and `before` bytes given back for it.
void* counted(void* memory, std::size_t before = 0)
{
    if (isMemoryWatched && memory != nullptr)
        memoryLeft -= std::min(memoryLeft + before, malloc_usable_size(memory)) - before;
    return memory;
}

void* takeMemory(std::size_t size) { return isTooMuch(size) ? nullptr : counted(std::malloc(size)); }

void* takeZeroedMemory(std::size_t count, std::size_t size)
{
    std::size_t all = 0;
    if (__builtin_mul_overflow(count, size, &all) || isTooMuch(all))
        return nullptr;
    return counted(std::calloc(count, size));
}

void giveMemoryBack(void* memory)
{
    if (isMemoryWatched && memory != nullptr)
        memoryLeft += malloc_usable_size(memory);
    std::free(memory);
}

void* resizeMemory(void* memory, std::size_t size)
{
    const auto before = memory != nullptr ? malloc_usable_size(memory) : 0;
    if (size > before && isTooMuch(size - before))
        return nullptr;
    return counted(std::realloc(memory, size), before);
}

// The open device's format. If no device is open, the library leaves the numbers as they are.

std::size_t bytesPerFrame()
{
    Uint16 format = AUDIO_S16SYS;
    int channels = 2;
    Mix_QuerySpec(nullptr, &format, &channels);
    return static_cast<std::size_t>(SDL_AUDIO_BITSIZE(format) / 8 * channels);
}

double framesPerSecond()
{
    int frequency = 44'100;
    Mix_QuerySpec(&frequency, nullptr, nullptr);
    return frequency;
}

} // namespace

void ZNTSoundDecoder::watchMemory()
{
    // Memory that the library took earlier came from the same malloc, so our functions may free it.
    SDL_SetMemoryFunctions(takeMemory, takeZeroedMemory, resizeMemory, giveMemoryBack);
}

ZNTSoundDecoder::Samples ZNTSoundDecoder::samplesOf(const ZNTSoundSource& source)
{
    auto identity = source.identity();
    const auto found = std::find_if(kept.begin(), kept.end(),
                                    [&](const Kept& candidate) { return candidate.identity == identity; });
    if (found != kept.end()) {
        std::rotate(found, found + 1, kept.end());
        return kept.back().samples;
    }
    const auto bytes = source.bytes();
    if (!znt::startsLikeSound(bytes))
        return {};
    const MemoryWatch watch;
    Samples samples(
        Mix_LoadWAV_RW(SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size())), /*freesrc=*/1),
        [](Mix_Chunk* chunk) {
            if (chunk != nullptr)
                Mix_FreeChunk(chunk);
        });
    if (samples == nullptr || samples->alen < bytesPerFrame())
        return {};
    keep(std::move(identity), samples);
    return samples;
}

ZNTSoundDecoder::Samples ZNTSoundDecoder::samplesFrom(const Samples& samples, double seconds)
{
    if (!(seconds > 0))
        return samples;
    const auto frame = bytesPerFrame();
    const auto frames = samples->alen / frame;
    const auto skipped =
        static_cast<std::size_t>(std::min(seconds * framesPerSecond(), static_cast<double>(frames))) * frame;
    if (skipped >= samples->alen)
        return {};
    auto* rest = Mix_QuickLoad_RAW(samples->abuf + skipped, static_cast<Uint32>(samples->alen - skipped));
    if (rest == nullptr)
        return {};
    return {rest, [samples](Mix_Chunk* chunk) { Mix_FreeChunk(chunk); }};
}

void ZNTSoundDecoder::keep(std::string identity, const Samples& samples)
{
    if (samples->alen > mostBytesKept / 2)
        return;
    kept.push_back({std::move(identity), samples});
    std::size_t bytes = 0;
    auto oldest = kept.end();
    while (oldest != kept.begin() && bytes + std::prev(oldest)->samples->alen <= mostBytesKept)
        bytes += (--oldest)->samples->alen;
    kept.erase(kept.begin(), oldest);
}
