#pragma once

#include "ZNTSoundFactory.h"

/// Makes no sounds: for tests and for programs without a sound device.
class ZNTSilentSounds : public ZNTSoundFactory
{
public:
    [[nodiscard]] std::shared_ptr<ZNTSoundObject> soundFromFile(ZNTSoundFile) override { return {}; }
    [[nodiscard]] std::shared_ptr<ZNTSoundObject> soundFromUrl(std::string_view) override { return {}; }
    void stopAll() override {}
    [[nodiscard]] bool isPlaying() const override { return false; }
    void setGameAddress(std::string_view) override {}
    void setMasterVolume(float volume) override { masterVolume_ = volume; }
    [[nodiscard]] float masterVolume() const override { return masterVolume_; }
    void setMuted(bool isMuted) override { isMuted_ = isMuted; }
    [[nodiscard]] bool isMuted() const override { return isMuted_; }

private:
    float masterVolume_ = 1;
    bool isMuted_ = false;
};
