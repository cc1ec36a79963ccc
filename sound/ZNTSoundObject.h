#pragma once

#include <functional>
#include <memory>
#include <string>

class ZNTSoundObject;

/// Is called when a sound has come to its end.
class ZNTSoundDelegate
{
public:
    virtual ~ZNTSoundDelegate() = default;
    /// `finished` is true at the natural end, false after a stop or if the sound could not be played. May
    /// play the sound again.
    virtual void soundDidFinishPlaying(ZNTSoundObject& sound, bool finished) = 0;
};

/// One sound that can be played, over and over. Belongs to the run loop's thread.
///
/// Each play that began (`play` returned true) gives the delegate one notice on a later turn of the run loop,
/// at its end or after a stop. A sound that plays stays alive until then, also without another owner.
class ZNTSoundObject
{
public:
    virtual ~ZNTSoundObject() = default;

    /// False for the sound of a URL until `load` has fetched it. Only a loaded sound can be played.
    [[nodiscard]] virtual bool isLoaded() const = 0;
    /// Fetches a sound that is not loaded. `loaded` is called once, on a later turn of the run loop, with
    /// false if the sound could not be fetched; after a `stop` it is not called.
    virtual void load(std::function<void(bool isLoaded)> loaded) = 0;

    /// True from `play` until the end was noticed or `stop`.
    [[nodiscard]] virtual bool isPlaying() const = 0;
    /// False, and no notice follows, if the sound plays already or cannot be played: not loaded, no sound
    /// device, a damaged file, too many sounds at once.
    virtual bool play() = 0;
    /// False if it did not play. If the sound is being fetched, the fetch is cancelled.
    virtual bool stop() = 0;
    /// Of the next play. 1 is the sound as recorded. Values below 0 count as 0 and values above 1 as 1.
    virtual void setVolume(float volume) = 0;
    /// Where the next play begins, in seconds. Each end sets it back to 0.
    virtual void setCurrentTime(double seconds) = 0;
    /// Whether plays from now on repeat until stopped.
    virtual void setLoops(bool loops) = 0;
    virtual void setDelegate(std::weak_ptr<ZNTSoundDelegate> delegate) = 0;

    void setName(std::u16string name) { name_ = std::move(name); }
    [[nodiscard]] const std::u16string& name() const { return name_; }

private:
    std::u16string name_;
};
