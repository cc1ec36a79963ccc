#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTPlatformLog.h"

#include <cstdint>
#include <string>

/// Puts the folder of sound files in place, with a sample in it.
class ZNTUpdater
{
public:
    /// Both outlive this.
    ZNTUpdater(const ZNTFilePlaces& places, ZNTPlatformLog& log)
        : places(places),
          log(log),
          soundPath(places.soundFolder())
    {
    }

    /// Makes the folder and copies the sample there, unless the sample is there already.
    void createSoundFolder();
    /// Ends with a slash.
    [[nodiscard]] const std::string& getSoundPath() const { return soundPath; }

private:
    const ZNTFilePlaces& places;
    ZNTPlatformLog& log;
    std::string soundPath;
    /// Kept as part of the interface: the version of the shipped data; there is one version so far.
    [[maybe_unused]] std::int32_t dataVersion = 0;
};
