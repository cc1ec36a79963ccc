#pragma once

#include "ZNTSoundFile.h"
#include "ZNTSoundObject.h"

#include <memory>
#include <string_view>

/// Makes the sounds of a session. Belongs to the run loop's thread and outlives whoever plays through it.
class ZNTSoundFactory
{
public:
    virtual ~ZNTSoundFactory() = default;

    /// Null where no sound can be made of it.
    [[nodiscard]] virtual std::shared_ptr<ZNTSoundObject> soundFromFile(ZNTSoundFile file) = 0;
    /// The same for music, which may be of any length: one such sound at a time is decoded only as it plays.
    [[nodiscard]] virtual std::shared_ptr<ZNTSoundObject> musicFromFile(ZNTSoundFile file)
    {
        return soundFromFile(std::move(file));
    }
    /// `url` is UTF-8. The sound is to be loaded before it can be played. Null where it cannot be fetched for
    /// sure.
    [[nodiscard]] virtual std::shared_ptr<ZNTSoundObject> soundFromUrl(std::string_view url) = 0;

    /// Stops every sound that it made and that plays or is being fetched.
    virtual void stopAll() = 0;
    /// Whether any of them plays or is being fetched.
    [[nodiscard]] virtual bool isPlaying() const = 0;

    /// The address, in numbers, of the host that the game is on. Of this machine and of its network nothing
    /// but that host may be asked for sounds. Empty, as at first, for none.
    virtual void setGameAddress(std::string_view address) = 0;

    /// For all sounds together, those that play too: 0 to 1, 1 at first.
    virtual void setMasterVolume(float volume) = 0;
    [[nodiscard]] virtual float masterVolume() const = 0;
    /// Muted sounds go on unheard.
    virtual void setMuted(bool isMuted) = 0;
    [[nodiscard]] virtual bool isMuted() const = 0;
};
