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
    /// `url` is UTF-8. It is fetched when the sound is first played, off the run loop's thread. Null where it
    /// cannot be fetched for sure.
    [[nodiscard]] virtual std::shared_ptr<ZNTSoundObject> soundFromUrl(std::string_view url) = 0;

    /// Stops every sound that it made and that plays or is being fetched.
    virtual void stopAll() = 0;
    /// Whether any of them plays or is being fetched.
    [[nodiscard]] virtual bool isPlaying() const = 0;

    /// Whether the game is on this machine or on its network. Only such a game may have sounds fetched from
    /// there. False until told otherwise.
    virtual void setGameIsLocal(bool isLocal) = 0;

    /// For all sounds together, those that play too: 0 to 1, 1 at first.
    virtual void setMasterVolume(float volume) = 0;
    [[nodiscard]] virtual float masterVolume() const = 0;
    /// Muted sounds go on unheard.
    virtual void setMuted(bool isMuted) = 0;
    [[nodiscard]] virtual bool isMuted() const = 0;
};
