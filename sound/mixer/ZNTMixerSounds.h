#pragma once

#include "RunLoop.h"
#include "ZNTFilePlaces.h"
#include "ZNTSoundDownloads.h"
#include "ZNTSoundFactory.h"

#include <memory>

/// The sounds of the running programs: WAV, Ogg, FLAC and MP3 through ZNTMixer, from files and from URLs.
///
/// If there is no sound device, `play` is refused. The device is looked for again later, each time after
/// twice as long. Threads are started with the first sound that needs them, and none outlives this object.
/// Sounds may outlive it; they no longer play.
class ZNTMixerSounds final : public ZNTSoundFactory
{
public:
    struct Settings {
        double idleSeconds = 5;          ///< until the device is closed, up to twice that
        double missingDeviceSeconds = 5; ///< until a device that was not there is asked for again at first
        double longestMissingDeviceSeconds = 300;
        ZNTSoundDownloadLimits downloads = {};
    };

    /// `runLoop` outlives this object. Fetched sounds are kept below `places.cache`.
    ZNTMixerSounds(RunLoop& runLoop, const ZNTFilePlaces& places, Settings settings);
    ZNTMixerSounds(RunLoop& runLoop, const ZNTFilePlaces& places);
    ~ZNTMixerSounds() override;

    [[nodiscard]] std::shared_ptr<ZNTSoundObject> soundFromFile(ZNTSoundFile file) override;
    [[nodiscard]] std::shared_ptr<ZNTSoundObject> musicFromFile(ZNTSoundFile file) override;
    [[nodiscard]] std::shared_ptr<ZNTSoundObject> soundFromUrl(std::string_view url) override;
    void stopAll() override;
    [[nodiscard]] bool isPlaying() const override;
    void setGameAddress(std::string_view address) override;
    void setMasterVolume(float volume) override;
    [[nodiscard]] float masterVolume() const override;
    void setMuted(bool isMuted) override;
    [[nodiscard]] bool isMuted() const override;

private:
    class Playback;
    class Sound;
    [[nodiscard]] std::shared_ptr<Sound> makeSound(ZNTSoundFile file);
    std::shared_ptr<Playback> playback;
};
