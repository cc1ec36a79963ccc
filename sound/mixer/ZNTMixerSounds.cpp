#include "ZNTMixerSounds.h"

#include "ZNTMixer.h"
#include "ZNTQuietLibraries.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

/// Lists what plays and what is being fetched. Lives as long as the factory, on the run loop's thread.
class ZNTMixerSounds::Playback : public std::enable_shared_from_this<Playback>
{
public:
    Playback(RunLoop& runLoop, const ZNTFilePlaces& places, const Settings& settings)
        : runLoop(runLoop),
          cacheFolder(places.cache + "/sounds"),
          settings(settings)
    {
    }

    /// The number of the play, or 0 if it is refused.
    std::uint64_t begin(const std::shared_ptr<Sound>& sound);
    /// Stops the play; the notice follows.
    void stop(std::uint64_t play);
    /// The number of the fetch.
    std::uint64_t fetch(const std::shared_ptr<Sound>& sound);
    void giveUp(std::uint64_t fetch);
    void stopAll();
    [[nodiscard]] bool isPlaying() const { return !playing.empty() || !beingFetched.empty(); }
    void updateLoudness();

    std::string gameAddress;
    bool isMuted = false;
    float masterVolume = 1;

private:
    void ended(std::uint64_t play, ZNTMixer::Ending ending);
    void noteDevice(bool isThere);
    ZNTMixer& mixer();
    ZNTSoundDownloads& downloads();

    RunLoop& runLoop;
    const std::string cacheFolder;
    const Settings settings;
    std::uint64_t lastNumber = 0;
    double deviceRest = 0;         ///< seconds; 0 while there is a device, as far as is known
    double deviceIsAskedForAt = 0; ///< on the run loop's clock
    std::map<std::uint64_t, std::shared_ptr<Sound>> playing, beingFetched;
    // The last fields: they are destroyed first, so their threads end while all else is still there.
    std::unique_ptr<ZNTSoundDownloads> downloads_;
    std::unique_ptr<ZNTMixer> mixer_;
};

class ZNTMixerSounds::Sound final : public ZNTSoundObject, public std::enable_shared_from_this<Sound>
{
public:
    Sound(const std::shared_ptr<Playback>& playback, std::shared_ptr<const ZNTSoundSource> source,
          std::string url)
        : source(std::move(source)),
          url(std::move(url)),
          playback(playback)
    {
    }

    [[nodiscard]] bool isLoaded() const override { return source != nullptr; }
    void load(std::function<void(bool isLoaded)> loaded) override
    {
        const auto player = playback.lock();
        if (isLoaded() || currentFetch != 0 || player == nullptr)
            return;
        whenLoaded = std::move(loaded);
        currentFetch = player->fetch(shared_from_this());
    }

    [[nodiscard]] bool isPlaying() const override { return currentPlay != 0; }
    bool play() override
    {
        const auto player = playback.lock();
        if (!isLoaded() || isPlaying() || isUnplayable || player == nullptr)
            return false;
        currentPlay = player->begin(shared_from_this());
        return isPlaying();
    }
    bool stop() override
    {
        const auto player = playback.lock();
        if (player == nullptr)
            return false;
        player->giveUp(std::exchange(currentFetch, 0));
        if (!isPlaying())
            return false;
        const auto stopped = currentPlay;
        end();
        player->stop(stopped);
        return true;
    }
    void setVolume(float newVolume) override { volume = newVolume; }
    void setCurrentTime(double seconds) override { startTime = seconds; }
    void setLoops(bool newLoops) override { loops = newLoops; }
    void setDelegate(std::weak_ptr<ZNTSoundDelegate> newDelegate) override
    {
        delegate = std::move(newDelegate);
    }

    void wasFetched(const ZNTSoundDownloads::Content& content)
    {
        currentFetch = 0;
        if (content)
            source = std::make_shared<ZNTFetchedSoundSource>(url, content);
        if (const auto loaded = std::exchange(whenLoaded, {}))
            loaded(isLoaded());
    }
    void end()
    {
        currentPlay = 0;
        startTime = 0;
    }
    void notice(bool finished)
    {
        if (const auto listener = delegate.lock())
            listener->soundDidFinishPlaying(*this, finished);
    }

    /// Null until the URL has been fetched.
    std::shared_ptr<const ZNTSoundSource> source;
    const std::string url;
    float volume = 1;
    double startTime = 0;
    bool loops = false;
    bool isUnplayable = false;
    bool isStreamed = false;

private:
    std::weak_ptr<Playback> playback;
    std::weak_ptr<ZNTSoundDelegate> delegate;
    std::function<void(bool isLoaded)> whenLoaded;
    std::uint64_t currentPlay = 0, currentFetch = 0;
};

std::uint64_t ZNTMixerSounds::Playback::begin(const std::shared_ptr<Sound>& sound)
{
    if (runLoop.now() < deviceIsAskedForAt)
        return 0;
    if (playing.size() >= ZNTMixer::mostAtOnce)
        return 0;
    const auto play = ++lastNumber;
    playing[play] = sound;
    mixer().play({play, sound->source, sound->volume, sound->loops, sound->startTime, sound->isStreamed});
    return play;
}

std::uint64_t ZNTMixerSounds::Playback::fetch(const std::shared_ptr<Sound>& sound)
{
    const auto number = ++lastNumber;
    beingFetched[number] = sound;
    downloads().fetch(number, sound->url, gameAddress,
                      [this, number](const ZNTSoundDownloads::Content& content) {
                          if (const auto found = beingFetched.extract(number))
                              found.mapped()->wasFetched(content);
                      });
    return number;
}

void ZNTMixerSounds::Playback::giveUp(std::uint64_t fetch)
{
    if (beingFetched.erase(fetch) > 0)
        downloads().cancel(fetch);
}

void ZNTMixerSounds::Playback::stop(std::uint64_t play)
{
    const auto found = playing.find(play);
    if (found == playing.end())
        return;
    const auto sound = std::move(found->second);
    playing.erase(found);
    if (mixer_)
        mixer_->stop(play);
    runLoop.post([weak = weak_from_this(), sound] {
        if (!weak.expired())
            sound->notice(/*finished=*/false);
    });
}

void ZNTMixerSounds::Playback::stopAll()
{
    // Each stop removes its entry from the list, so copies are walked.
    for (const auto& book : {playing, beingFetched})
        for (const auto& [number, sound] : book)
            sound->stop();
}

void ZNTMixerSounds::Playback::updateLoudness()
{
    if (mixer_)
        mixer_->setMasterVolume(isMuted ? 0 : masterVolume);
}

void ZNTMixerSounds::Playback::ended(std::uint64_t play, ZNTMixer::Ending ending)
{
    if (mixer_)
        mixer_->stop(play);
    const auto found = playing.find(play);
    if (found == playing.end())
        return; // it was stopped while the news of its end was on its way
    const auto sound = std::move(found->second);
    playing.erase(found);
    sound->end();
    if (ending == ZNTMixer::Ending::Damaged)
        sound->isUnplayable = true;
    noteDevice(ending != ZNTMixer::Ending::NoDevice);
    sound->notice(ending == ZNTMixer::Ending::Natural);
}

void ZNTMixerSounds::Playback::noteDevice(bool isThere)
{
    if (isThere) {
        deviceRest = deviceIsAskedForAt = 0;
    } else if (runLoop.now() >= deviceIsAskedForAt) { // else another play already noted this failure
        deviceRest = deviceRest == 0 ? settings.missingDeviceSeconds
                                     : std::min(2 * deviceRest, settings.longestMissingDeviceSeconds);
        deviceIsAskedForAt = runLoop.now() + deviceRest;
    }
}

ZNTMixer& ZNTMixerSounds::Playback::mixer()
{
    if (!mixer_) {
        mixer_ = std::make_unique<ZNTMixer>(
            [&loop = runLoop, weak = weak_from_this()](std::uint64_t play, ZNTMixer::Ending ending) {
                loop.post([weak, play, ending] {
                    if (const auto playback = weak.lock())
                        playback->ended(play, ending);
                });
            },
            settings.idleSeconds);
        updateLoudness();
    }
    return *mixer_;
}

ZNTSoundDownloads& ZNTMixerSounds::Playback::downloads()
{
    if (!downloads_)
        downloads_ = std::make_unique<ZNTSoundDownloads>(runLoop, cacheFolder, settings.downloads);
    return *downloads_;
}

ZNTMixerSounds::ZNTMixerSounds(RunLoop& runLoop, const ZNTFilePlaces& places, Settings settings)
    : playback(std::make_shared<Playback>(runLoop, places, settings))
{
    znt::keepSoundLibrariesQuiet();
}

ZNTMixerSounds::ZNTMixerSounds(RunLoop& runLoop, const ZNTFilePlaces& places)
    : ZNTMixerSounds(runLoop, places, Settings{})
{
}

ZNTMixerSounds::~ZNTMixerSounds() = default;

std::shared_ptr<ZNTMixerSounds::Sound> ZNTMixerSounds::makeSound(ZNTSoundFile file)
{
    auto source = std::make_shared<ZNTFileSoundSource>(std::move(file));
    if (!znt::startsLikeSound(source->start()))
        return {};
    return std::make_shared<Sound>(playback, std::move(source), "");
}

std::shared_ptr<ZNTSoundObject> ZNTMixerSounds::soundFromFile(ZNTSoundFile file)
{
    return makeSound(std::move(file));
}

std::shared_ptr<ZNTSoundObject> ZNTMixerSounds::musicFromFile(ZNTSoundFile file)
{
    auto music = makeSound(std::move(file));
    if (music)
        music->isStreamed = true;
    return music;
}

std::shared_ptr<ZNTSoundObject> ZNTMixerSounds::soundFromUrl(std::string_view url)
{
    if (!ZNTSoundDownloads::canFetch(url))
        return {};
    return std::make_shared<Sound>(playback, nullptr, std::string(url));
}

void ZNTMixerSounds::stopAll() { playback->stopAll(); }

bool ZNTMixerSounds::isPlaying() const { return playback->isPlaying(); }

void ZNTMixerSounds::setGameAddress(std::string_view address) { playback->gameAddress = address; }

void ZNTMixerSounds::setMasterVolume(float volume)
{
    playback->masterVolume = volume > 0 ? std::min(volume, 1.0F) : 0;
    playback->updateLoudness();
}

float ZNTMixerSounds::masterVolume() const { return playback->masterVolume; }

void ZNTMixerSounds::setMuted(bool isMuted)
{
    playback->isMuted = isMuted;
    playback->updateLoudness();
}

bool ZNTMixerSounds::isMuted() const { return playback->isMuted; }
