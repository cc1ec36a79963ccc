#include "ZNTUpdater.h"

#include "ZNTPrivateFiles.h"

#include <filesystem>

void ZNTUpdater::createSoundFolder()
{
    const auto sample = soundPath + "dying_groan.wav";
    std::error_code ignored;
    if (std::filesystem::exists(sample, ignored))
        return;
    static_cast<void>(znt::makePrivateFolder(soundPath)); // the copy fails then, too
    if (const auto copied = znt::copyToPrivateFile(places.resource("dying_groan.wav"), sample); !copied)
        log.log("File copy issue " + copied.error().description);
}
