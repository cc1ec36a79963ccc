#pragma once

#include "ZNTFilePlaces.h"
#include "ZNTResult.h"
#include "ZNTSound.h"
#include "ZNTSoundFactory.h"
#include "ZNTSoundFolder.h"
#include "ZNTSoundTagReading.h"
#include "ZNTTagPatterns.h"

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Turns the tags of the MUD Sound Protocol, !!SOUND(file parameters) and !!MUSIC(file parameters), into
/// playback on two channels with at most one sound each, and plays the sounds of triggers beside them.
///
/// A tag names a file of the sound folder, without regard to case and diacritics and with wildcards, or a
/// URL. No file outside the folder is opened. Belongs to the run loop's thread.
class ZNTMSPProcessor
{
public:
    /// `sounds` outlives the processor.
    ZNTMSPProcessor(const ZNTFilePlaces& places, ZNTSoundFactory& sounds);
    ~ZNTMSPProcessor();
    ZNTMSPProcessor(const ZNTMSPProcessor&) = delete;
    ZNTMSPProcessor& operator=(const ZNTMSPProcessor&) = delete;

    /// Whether later tags are read as the protocol's text says (`znt::standardTagReading`). Not at first.
    void setStandardTags(bool areStandard)
    {
        reading = areStandard ? &znt::standardTagReading : &znt::settledTagReading;
    }
    /// Carries out one tag. A tag that cannot be understood changes nothing, and the error says why.
    ZNTResult<void> processSound(std::u16string_view tag);
    /// Plays the file whose path is the sound folder's, followed directly by `fileName`: at once, beside all
    /// other sounds, and to its end. A file that is missing or cannot be read plays nothing.
    void playTriggerSound(std::u16string_view fileName);

    /// Ends all sounds: both channels with all repetitions that are left, the sounds of triggers, and sounds
    /// that are still being fetched. The next tag plays as usual.
    void stopAllSounds();

    /// The finish notice of a sound: plays counted repetitions again.
    void soundDidFinishPlaying(ZNTSoundObject& sound, bool finished);

    /// Whether the tag is for the sound channel. Every word but SOUND means the music channel.
    [[nodiscard]] bool isSound(std::u16string_view tag);
    /// The last match of `commandString`, an ICU pattern, without its first `remove` units.
    [[nodiscard]] std::optional<std::u16string>
    processCommand(std::u16string_view tag, const std::u16string& commandString, std::size_t remove);
    /// Takes quotes off: if the first character is one, the last character goes too. An empty text, also one
    /// between quotes, is an error.
    [[nodiscard]] static ZNTResult<std::optional<std::u16string>>
    removeCrapData(std::optional<std::u16string> text);
    /// The entries of `path`, a folder, that are called `name`, in the folder's own order. Links that lead
    /// out of the sound folder are among them; they are not played.
    [[nodiscard]] std::vector<std::string> findMatchingFile(std::u16string_view name,
                                                            const std::string& path) const;
    /// The same for a name in which "*" stands for any characters and "?" for one.
    [[nodiscard]] std::vector<std::string> findFilesWithAWildcard(std::u16string_view pattern,
                                                                  const std::string& path) const;
    /// Kept as part of the interface: a sound of the top of the folder, picked at random from `names`.
    [[nodiscard]] std::shared_ptr<ZNTSoundObject>
    getSoundFromSoundFileArray(const std::vector<std::u16string>& names);

    /// Kept as part of the interface: what is on the two channels, and the requests that were accepted last.
    [[nodiscard]] const std::shared_ptr<ZNTSoundObject>& _music() const { return _music_; }
    void set_music(std::shared_ptr<ZNTSoundObject> music) { _music_ = std::move(music); }
    [[nodiscard]] const std::shared_ptr<ZNTSoundObject>& _sounds() const { return _sounds_; }
    void set_sounds(std::shared_ptr<ZNTSoundObject> sounds) { _sounds_ = std::move(sounds); }
    [[nodiscard]] const std::shared_ptr<ZNTSound>& _zntSound() const { return _zntSound_; }
    void set_zntSound(std::shared_ptr<ZNTSound> request) { _zntSound_ = std::move(request); }
    [[nodiscard]] const std::shared_ptr<ZNTSound>& _zntMusic() const { return _zntMusic_; }
    void set_zntMusic(std::shared_ptr<ZNTSound> request) { _zntMusic_ = std::move(request); }

private:
    /// What a tag asks for.
    struct Request {
        bool isSound = true;
        bool isStop = false;
        std::u16string file; ///< folder/name
        std::shared_ptr<ZNTSound> sound;
    };
    /// An accepted request whose sound is still being fetched. It does not count on its channel yet.
    struct Fetch {
        Request request;
        std::shared_ptr<ZNTSoundObject> sound;
    };
    class Delegate;

    ZNTResult<Request> requestFromTag(std::u16string_view tag);
    /// Reads the parameters of one letter into `sound`, all but the URL.
    ZNTResult<void> readParameters(std::u16string_view tag, ZNTSound& sound);
    [[nodiscard]] std::shared_ptr<ZNTSoundObject> soundForRequest(const Request& request);
    void fetch(Request request, const std::shared_ptr<ZNTSoundObject>& sound);
    void fetched(bool isSound, bool isLoaded);
    /// Cancels the fetch for the channel.
    void giveUpFetch(bool isSound);
    void begin(const Request& request, const std::shared_ptr<ZNTSoundObject>& sound);
    /// Whether the sound that plays on the channel of `request` has at least its priority.
    [[nodiscard]] bool isOutranked(const Request& request) const;
    /// Stops the sound that plays on the channel. False if `request` is outranked.
    bool makeWayFor(const Request& request);
    void startPlaying(const Request& request, ZNTSoundObject* sound);
    void playRepeatedly(ZNTSoundObject& sound, std::u16string name);

    ZNTSoundFolder folder;
    const std::u16string folderPath; ///< the same for the records of requests
    ZNTSoundFactory& sounds;
    ZNTTagPatterns patterns;
    const ZNTSoundTagReading* reading = &znt::settledTagReading;
    std::mt19937 random{std::random_device{}()};
    std::shared_ptr<Delegate> delegate;

    std::optional<Fetch> musicFetch, soundFetch;

    std::shared_ptr<ZNTSoundObject> _music_, _sounds_;
    std::int32_t _currentSoundCounter = 0, _currentMusicCounter = 0;
    /// Every accepted request, music too, is kept as `_zntSound`; `_zntMusic` stays empty, and what is read
    /// from it counts as 0.
    std::shared_ptr<ZNTSound> _zntSound_, _zntMusic_;
    /// The next finish notice on the channel comes from a stop by priority and is ignored.
    bool _soundStopped = false, _musicStopped = false;
    std::int32_t _priority = 50;
};
