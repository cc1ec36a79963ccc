#pragma once

#include "ZNTSoundSource.h"

#include <SDL_mixer.h>
#include <memory>

/// A long sound that is decoded while it plays, a few kilobytes ahead, so that its length costs no memory.
/// Made and destroyed while the device is open.
class ZNTSoundStream
{
public:
    /// Null if the sound is short, of unknown length or damaged. The caller then decodes it whole.
    static std::unique_ptr<ZNTSoundStream> open(const std::shared_ptr<const ZNTSoundSource>& source);
    ~ZNTSoundStream();
    ZNTSoundStream(const ZNTSoundStream&) = delete;
    ZNTSoundStream& operator=(const ZNTSoundStream&) = delete;

    /// The library plays one of them at a time.
    [[nodiscard]] Mix_Music* music() const { return music_; }

private:
    explicit ZNTSoundStream(Mix_Music* music) : music_(music) {}
    Mix_Music* music_;
};
