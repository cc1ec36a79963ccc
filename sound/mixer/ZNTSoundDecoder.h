#pragma once

#include "ZNTSoundSource.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

struct Mix_Chunk; // SDL2_mixer's

/// Turns encoded sounds into samples in the open device's format, and keeps the ones used last. Used by the
/// mixer's own thread, while the device is open.
class ZNTSoundDecoder
{
public:
    using Samples = std::shared_ptr<Mix_Chunk>;

    /// Call it once, before any other call of the library. The library then takes its memory from us, so that
    /// a small file that claims to hold days of silence cannot use up the machine's memory.
    static void watchMemory();

    /// Null if the bytes are damaged, in a format that we do not play, or too long when decoded.
    Samples samplesOf(const ZNTSoundSource& source);
    /// The same samples without their first `seconds`. Null if none are left.
    static Samples samplesFrom(const Samples& samples, double seconds);
    /// All samples have to be gone before the device is closed.
    void forgetAll() { kept.clear(); }

private:
    struct Kept {
        std::string identity;
        Samples samples;
    };
    void keep(std::string identity, const Samples& samples);

    std::vector<Kept> kept; ///< the one used last at the end
};
