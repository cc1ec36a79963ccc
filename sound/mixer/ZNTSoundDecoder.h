#pragma once

#include "ZNTSoundSource.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

struct Mix_Chunk; // SDL2_mixer's

/// Turns encoded sounds into samples as the open device wants them, and keeps those used last. To be used by
/// the mixer's own thread while the device is open.
class ZNTSoundDecoder
{
public:
    using Samples = std::shared_ptr<Mix_Chunk>;

    /// To be called once before anything else of the library: lets it ask us for memory, so that a few
    /// kilobytes which say that they hold days of silence cannot take it all.
    static void watchMemory();

    /// Null where the bytes are damaged, in a format we don't play, or too long when decoded.
    Samples samplesOf(const ZNTSoundSource& source);
    /// The same without their first `seconds`. Null where nothing is left.
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
