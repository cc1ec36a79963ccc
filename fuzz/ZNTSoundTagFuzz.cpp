#include "FuzzInput.h"
#include "ZNTMSPProcessor.h"
#include "ZNTRecordedSounds.h"
#include "ZNTSoundTagScanner.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTText.h"

#include <cmath>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace fs = std::filesystem;

namespace
{

constexpr std::size_t longestText = 300; ///< UTF-16 units: ICU takes the cube of it for "!!(" repeated

/// Looks at each file that was opened for a sound, and at each volume.
struct CheckedSounds final : ZNTRecordedSounds {
    std::shared_ptr<ZNTSoundObject> soundFromFile(ZNTSoundFile file) override
    {
        struct stat status {
        };
        require(fstat(file.descriptor(), &status) == 0 && S_ISREG(status.st_mode),
                "a sound is a regular file");
        const auto opened = fs::read_symlink("/proc/self/fd/" + std::to_string(file.descriptor())).string();
        require(opened.starts_with(folder), "no file outside the sound folder is opened");
        return ZNTRecordedSounds::soundFromFile(std::move(file));
    }
    /// Everything that is being fetched arrives; then all sounds are forgotten.
    void finishRound()
    {
        for (const auto& sound : std::exchange(made, {})) {
            require(std::isfinite(sound->volume), "a volume is a number");
            sound->arrive();
        }
        made.clear();
        stopped.clear();
    }
    std::string folder;
};

/// A player's home with sounds, and with ways out of the sound folder for those who look for them.
struct Home {
    ZNTTemporaryFolder folder;
    ZNTFilePlaces places{folder.path(), "", folder.path("cache")};
    CheckedSounds sounds;

    Home()
    {
        for (const auto* name : {"weather/rain.wav", "battle/hit", "dying_groan.wav", "a/b.wav)",
                                 "weather/Donner \xC3\x9C.wav", "weather/re\xCC\x81gen.WAV"})
            folder.write(std::string("Music/Zantor/sounds/").append(name), "sound");
        folder.write("secret.wav", "not for games");
        folder.write("Music/Zantor/sounds2/secret.wav", "a folder whose name begins like ours");
        const auto place = places.soundFolder();
        fs::create_symlink(folder.path("secret.wav"), place + "weather/link.wav");
        fs::create_symlink("../../..", place + "out");
        fs::create_symlink("loop", place + "loop");
        fs::create_symlink("weather/rain.wav", place + "inside.wav");
        mkfifo((place + "pipe.wav").c_str(), S_IRWXU);
        sounds.folder = fs::canonical(place).string() + "/";
        sounds.urlsTakeTime = true;
    }
};

void processTag(Home& home, std::u16string_view tag)
{
    ZNTMSPProcessor processor(home.places, home.sounds);
    static_cast<void>(processor.processSound(tag));
    static_cast<void>(processor.processSound(tag)); // it meets itself on its channel
    home.sounds.finishRound();
    processor.playTriggerSound(tag);
    const auto bracket = tag.find(u'(');
    if (bracket != tag.npos)
        processor.playTriggerSound(tag.substr(bracket + 1, tag.find(u' ') - bracket - 1));
}

} // namespace

/// One text of a game's, in UTF-8, with sound tags in it or without.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Home home;
    const auto text = znt::textFromUtf8(FuzzInput(data, size).rest()).substr(0, longestText);
    for (std::u16string_view rest = text; const auto tag = znt::nextSoundTag(rest);) {
        require(tag->starts_with(u"!!") && tag->ends_with(u')'), "a tag is whole");
        processTag(home, *tag);
        rest.remove_prefix(static_cast<std::size_t>(tag->data() + tag->size() - rest.data()));
    }
    processTag(home, text);
    return 0;
}
