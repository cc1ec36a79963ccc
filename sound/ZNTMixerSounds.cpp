#include "ZNTMixerSounds.h"

#include "ZNTMixer.h"

#include <algorithm>
#include <map>
#include <optional>

/// Keeps book of what plays, on the run loop's thread, for as long as the factory lives.
class ZNTMixerSounds::Playback : public std::enable_shared_from_this<Playback>
{
public:
    Playback(RunLoop& runLoop, const ZNTFilePlaces& places, const Settings& settings)
        : runLoop(runLoop),
          cacheFolder(places.cache + "/sounds"),
          settings(settings)
    {
    }

    /// The number of the play, or 0 where it is refused.
    std::uint64_t begin(const std::shared_ptr<Sound>& sound);
    /// Stops the play; the notice follows.
    void stop(std::uint64_t play);
    void stopAll();
    [[nodiscard]] bool isPlaying() const { return !playing.empty(); }
    void setVolume(std::uint64_t play, float volume);
    void updateLoudness();

    bool gameIsLocal = false, isMuted = false;
    float masterVolume = 1;

private:
    void startWhenFetched(std::uint64_t play, const std::string& url);
    void start(std::uint64_t play, const Sound& sound);
    void ended(std::uint64_t play, ZNTMixer::Ending ending);
    ZNTMixer& mixer();
    ZNTSoundDownloads& downloads();

    RunLoop& runLoop;
    const std::string cacheFolder;
    const Settings settings;
    std::uint64_t lastPlay = 0;
    std::optional<double> deviceWasMissing; ///< when, on the run loop's clock
    std::map<std::uint64_t, std::shared_ptr<Sound>> playing;
    // Last, so that their threads end before anything else does.
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

    [[nodiscard]] bool isPlaying() const override { return currentPlay != 0; }
    bool play() override
    {
        const auto player = playback.lock();
        if (isPlaying() || isUnplayable || player == nullptr)
            return false;
        currentPlay = player->begin(shared_from_this());
        return isPlaying();
    }
    bool stop() override
    {
        const auto player = playback.lock();
        if (!isPlaying() || player == nullptr)
            return false;
        const auto stopped = currentPlay;
        end();
        player->stop(stopped);
        return true;
    }
    void setVolume(float newVolume) override
    {
        volume = newVolume;
        const auto player = playback.lock();
        if (isPlaying() && player != nullptr)
            player->setVolume(currentPlay, volume);
    }
    void setCurrentTime(double seconds) override { startTime = seconds; }
    void setLoops(bool newLoops) override { loops = newLoops; }
    void setDelegate(std::weak_ptr<ZNTSoundDelegate> newDelegate) override
    {
        delegate = std::move(newDelegate);
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

    /// Absent as long as a URL has not been fetched.
    std::shared_ptr<const ZNTSoundSource> source;
    const std::string url;
    float volume = 1;
    double startTime = 0;
    bool loops = false;
    bool isUnplayable = false;

private:
    std::weak_ptr<Playback> playback;
    std::weak_ptr<ZNTSoundDelegate> delegate;
    std::uint64_t currentPlay = 0;
};

std::uint64_t ZNTMixerSounds::Playback::begin(const std::shared_ptr<Sound>& sound)
{
    if (deviceWasMissing && runLoop.now() - *deviceWasMissing < settings.missingDeviceSeconds)
        return 0;
    if (playing.size() >= ZNTMixer::mostAtOnce)
        return 0;
    const auto play = ++lastPlay;
    playing[play] = sound;
    if (sound->source)
        start(play, *sound);
    else
        startWhenFetched(play, sound->url);
    return play;
}

void ZNTMixerSounds::Playback::start(std::uint64_t play, const Sound& sound)
{
    mixer().play({play, sound.source, sound.volume, sound.loops, sound.startTime});
}

void ZNTMixerSounds::Playback::startWhenFetched(std::uint64_t play, const std::string& url)
{
    const auto hosts = gameIsLocal ? ZNTSoundHosts::Any : ZNTSoundHosts::Public;
    downloads().fetch(play, url, hosts, [this, play, url](const ZNTSoundDownloads::Content& content) {
        const auto found = playing.find(play);
        if (found == playing.end())
            return;
        if (content == nullptr) {
            ended(play, ZNTMixer::Ending::Damaged);
            return;
        }
        found->second->source = std::make_shared<ZNTFetchedSoundSource>(url, content);
        start(play, *found->second);
    });
}

void ZNTMixerSounds::Playback::stop(std::uint64_t play)
{
    const auto found = playing.find(play);
    if (found == playing.end())
        return;
    const auto sound = std::move(found->second);
    playing.erase(found);
    if (downloads_)
        downloads_->cancel(play);
    if (mixer_)
        mixer_->stop(play);
    runLoop.post([weak = weak_from_this(), sound] {
        if (!weak.expired())
            sound->notice(/*finished=*/false);
    });
}

void ZNTMixerSounds::Playback::stopAll()
{
    // Each stop takes its play out of the book.
    for (const auto& [play, sound] : std::map(playing))
        sound->stop();
}

void ZNTMixerSounds::Playback::setVolume(std::uint64_t play, float volume)
{
    if (mixer_)
        mixer_->setVolume(play, volume);
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
        return; // stopped while the word of its end was on its way
    const auto sound = std::move(found->second);
    playing.erase(found);
    sound->end();
    if (ending == ZNTMixer::Ending::Damaged)
        sound->isUnplayable = true;
    if (ending == ZNTMixer::Ending::NoDevice)
        deviceWasMissing = runLoop.now();
    else
        deviceWasMissing.reset();
    sound->notice(ending == ZNTMixer::Ending::Natural);
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
}

ZNTMixerSounds::ZNTMixerSounds(RunLoop& runLoop, const ZNTFilePlaces& places)
    : ZNTMixerSounds(runLoop, places, Settings{})
{
}

ZNTMixerSounds::~ZNTMixerSounds() = default;

std::shared_ptr<ZNTSoundObject> ZNTMixerSounds::soundFromFile(ZNTSoundFile file)
{
    auto source = std::make_shared<ZNTFileSoundSource>(std::move(file));
    if (!znt::startsLikeSound(source->start()))
        return {};
    return std::make_shared<Sound>(playback, std::move(source), "");
}

std::shared_ptr<ZNTSoundObject> ZNTMixerSounds::soundFromUrl(std::string_view url)
{
    if (!ZNTSoundDownloads::canFetch(url))
        return {};
    return std::make_shared<Sound>(playback, nullptr, std::string(url));
}

void ZNTMixerSounds::stopAll() { playback->stopAll(); }

bool ZNTMixerSounds::isPlaying() const { return playback->isPlaying(); }

void ZNTMixerSounds::setGameIsLocal(bool isLocal) { playback->gameIsLocal = isLocal; }

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
