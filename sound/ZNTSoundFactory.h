#pragma once

#include "ZNTSoundFile.h"
#include "ZNTSoundObject.h"

#include <memory>
#include <string_view>

/// Makes the sounds of a session. Belongs to the run loop's thread. Objects that play through the factory
/// must not outlive it.
class ZNTSoundFactory
{
public:
    virtual ~ZNTSoundFactory() = default;

    /// Null if the file holds no sound that we play.
    [[nodiscard]] virtual std::shared_ptr<ZNTSoundObject> soundFromFile(ZNTSoundFile file) = 0;
    /// The same for music, which may be of any length: one such sound at a time is decoded only as it plays.
    [[nodiscard]] virtual std::shared_ptr<ZNTSoundObject> musicFromFile(ZNTSoundFile file)
    {
        return soundFromFile(std::move(file));
    }
    /// `url` is UTF-8. The sound must be loaded before it can be played. Null if the URL can never be
    /// fetched.
    [[nodiscard]] virtual std::shared_ptr<ZNTSoundObject> soundFromUrl(std::string_view url) = 0;

    /// Stops every sound of this factory that plays or is being fetched.
    virtual void stopAll() = 0;
    /// Whether any of them plays or is being fetched.
    [[nodiscard]] virtual bool isPlaying() const = 0;

    /// The numeric address of the game's host. It is the only address of this machine and its private network
    /// that may be asked for sounds. Empty (as at first) means none.
    virtual void setGameAddress(std::string_view address) = 0;

    /// For all sounds together, also those that play already: 0 to 1, 1 at first.
    virtual void setMasterVolume(float volume) = 0;
    [[nodiscard]] virtual float masterVolume() const = 0;
    /// Muted sounds go on playing, silently.
    virtual void setMuted(bool isMuted) = 0;
    [[nodiscard]] virtual bool isMuted() const = 0;
};
