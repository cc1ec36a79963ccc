#include "ZNTMixer.h"

#include "ZNTQuietLibraries.h"
#include "ZNTSoundDecoder.h"
#include "ZNTSoundStream.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

namespace
{

constexpr int frequency = 44'100, channels = 2, framesPerBuffer = 1'024;
/// The library plays one stream beside its channels; it gets the next number.
constexpr int streamChannel = ZNTMixer::mostAtOnce;

int mixerVolume(float volume)
{
    if (!(volume > 0))
        return 0;
    return static_cast<int>(std::lround(std::min(volume, 1.0F) * MIX_MAX_VOLUME));
}

void halt(int channel)
{
    if (channel == streamChannel)
        Mix_HaltMusic();
    else
        Mix_HaltChannel(channel);
}

bool openDevice()
{
    // The program's own signal handlers stay.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Zantor");
    znt::keepDeviceSearchQuiet();
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return false;
    if (Mix_OpenAudio(frequency, AUDIO_S16SYS, channels, framesPerBuffer) != 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    Mix_AllocateChannels(ZNTMixer::mostAtOnce);
    return true;
}

void closeDevice()
{
    Mix_CloseAudio();
    // The next opening then looks for a device again.
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

} // namespace

class ZNTMixer::State
{
public:
    State(Finished finished, double idleSeconds)
        : finished(std::move(finished)),
          idleTime(idleSeconds),
          thread([this] { run(); })
    {
    }
    ~State()
    {
        {
            const std::lock_guard hold(mutex);
            isEnding = true;
        }
        changed.notify_one();
        thread.join();
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void play(Request request);
    void stop(std::uint64_t play);
    void setMasterVolume(float volume);

private:
    struct Play {
        float volume;
        int channel; ///< -1 until it sounds
    };

    using Lock = std::unique_lock<std::mutex>;
    void run();
    /// Takes the requests that wait, one by one. Gives the lock up while it carries one out.
    void carryOutWaiting(Lock& hold);
    void carryOut(const Request& request);
    bool open();
    void closeIfOpen();
    bool startOnChannel(const Request& request, const ZNTSoundDecoder::Samples& samples);
    /// False if the sound has to be decoded whole.
    bool startAsStream(const Request& request);
    void setChannelVolume(int channel, float volume);
    [[nodiscard]] int freeChannel() const;
    void dropEndedSamples();
    static void channelFinished(int channel);
    static void streamFinished() { channelFinished(streamChannel); }

    /// The library's callback has no context argument, so it finds the mixer here.
    static std::atomic<State*> current;

    const Finished finished;
    const std::chrono::duration<double> idleTime;

    // Guards the fields below up to `plays`, which the run loop's thread and our thread share. The order of
    // the locks is: this one first, then the library's, because we call the library while we hold this one.
    // SDL's thread holds the library's lock when it calls `channelFinished`. If the callback took this mutex,
    // each thread could wait for the other for ever; so it reads the atomics below and nothing else.
    std::mutex mutex;
    std::condition_variable changed;
    bool isEnding = false, isOpen = false;
    float masterVolume = 1, streamVolume = 1;
    std::deque<Request> waiting;
    std::map<std::uint64_t, Play> plays;
    /// The play whose end each channel has to report, or 0. `stop` and the callback both exchange it for 0;
    /// the one that finds the number there reports or halts the play, so it happens once.
    std::array<std::atomic<std::uint64_t>, mostAtOnce + 1> playOnChannel{};

    // Of our thread only.
    std::array<ZNTSoundDecoder::Samples, mostAtOnce> samplesOnChannel;
    ZNTSoundDecoder decoder;
    std::unique_ptr<ZNTSoundStream> stream;
    std::thread thread;
};

std::atomic<ZNTMixer::State*> ZNTMixer::State::current = nullptr;

void ZNTMixer::State::play(Request request)
{
    {
        const std::lock_guard hold(mutex);
        plays[request.play] = {request.volume, -1};
        waiting.push_back(std::move(request));
    }
    changed.notify_one();
}

void ZNTMixer::State::stop(std::uint64_t play)
{
    const std::lock_guard hold(mutex);
    const auto found = plays.find(play);
    if (found == plays.end())
        return;
    const int channel = found->second.channel;
    plays.erase(found);
    if (channel >= 0 && playOnChannel.at(static_cast<std::size_t>(channel)).compare_exchange_strong(play, 0))
        halt(channel);
}

void ZNTMixer::State::setMasterVolume(float volume)
{
    const std::lock_guard hold(mutex);
    masterVolume = volume;
    if (!isOpen)
        return;
    Mix_MasterVolume(mixerVolume(volume));
    setChannelVolume(streamChannel, streamVolume);
}

void ZNTMixer::State::setChannelVolume(int channel, float volume)
{
    if (channel != streamChannel) {
        Mix_Volume(channel, mixerVolume(volume));
        return;
    }
    // The library's master volume is for the channels alone.
    streamVolume = volume;
    Mix_VolumeMusic(mixerVolume(volume * masterVolume));
}

void ZNTMixer::State::run()
{
    static std::once_flag memoryIsWatched;
    std::call_once(memoryIsWatched, ZNTSoundDecoder::watchMemory);
    bool wasIdle = false;
    Lock hold(mutex);
    while (!isEnding) {
        const auto hasNews = [this] { return isEnding || !waiting.empty(); };
        if (!isOpen) {
            changed.wait(hold, hasNews);
        } else if (!changed.wait_for(hold, idleTime, hasNews)) {
            dropEndedSamples();
            const bool isIdle = Mix_Playing(-1) == 0 && Mix_PlayingMusic() == 0;
            if (isIdle && wasIdle) {
                // closeIfOpen takes the lock itself, and closing the device is slow.
                hold.unlock();
                closeIfOpen();
                hold.lock();
            }
            wasIdle = isIdle;
            continue;
        }
        wasIdle = false;
        dropEndedSamples();
        carryOutWaiting(hold);
    }
    hold.unlock();
    closeIfOpen();
    SDL_Quit(); // frees what the library keeps for this thread, and its settings
}

void ZNTMixer::State::carryOutWaiting(Lock& hold)
{
    while (!isEnding && !waiting.empty()) {
        const auto request = std::move(waiting.front());
        waiting.pop_front();
        if (!plays.contains(request.play))
            continue; // it was stopped while it waited
        // Opening the device and decoding take long; the run loop's thread must not wait for them.
        hold.unlock();
        carryOut(request);
        hold.lock();
    }
}

void ZNTMixer::State::carryOut(const Request& request)
{
    if (!open()) {
        finished(request.play, Ending::NoDevice);
        return;
    }
    if (request.isStreamed && startAsStream(request))
        return;
    auto samples = decoder.samplesOf(*request.source);
    if (samples && !request.loops)
        samples = ZNTSoundDecoder::samplesFrom(samples, request.start);
    if (!samples || !startOnChannel(request, samples))
        finished(request.play, Ending::Damaged);
}

bool ZNTMixer::State::open()
{
    // Only this thread changes `isOpen`, so it may read it without the lock.
    if (isOpen)
        return true;
    if (!openDevice())
        return false;
    current = this;
    Mix_ChannelFinished(channelFinished);
    Mix_HookMusicFinished(streamFinished);
    const std::lock_guard hold(mutex);
    isOpen = true;
    Mix_MasterVolume(mixerVolume(masterVolume));
    return true;
}

void ZNTMixer::State::closeIfOpen()
{
    if (!isOpen)
        return;
    {
        // From here on `stop` finds no channel, so it does not call a closed library.
        const std::lock_guard hold(mutex);
        isOpen = false;
        for (auto& play : playOnChannel)
            play = 0;
        for (auto& [number, play] : plays)
            play.channel = -1;
    }
    Mix_HaltChannel(-1);
    stream.reset();
    decoder.forgetAll();
    samplesOnChannel = {};
    closeDevice();
    current = nullptr;
}

bool ZNTMixer::State::startOnChannel(const Request& request, const ZNTSoundDecoder::Samples& samples)
{
    const std::lock_guard hold(mutex);
    const auto found = plays.find(request.play);
    if (found == plays.end())
        return true; // stopped meanwhile
    const int channel = freeChannel();
    if (channel < 0)
        return false;
    const auto at = static_cast<std::size_t>(channel);
    samplesOnChannel.at(at) = samples;
    Mix_Volume(channel, mixerVolume(found->second.volume));
    // A short sound may end before Mix_PlayChannel returns, so the channel is noted before the call.
    found->second.channel = channel;
    playOnChannel.at(at) = request.play;
    if (Mix_PlayChannel(channel, samples.get(), request.loops ? -1 : 0) >= 0)
        return true;
    playOnChannel.at(at) = 0;
    found->second.channel = -1;
    return false;
}

bool ZNTMixer::State::startAsStream(const Request& request)
{
    auto& playing = playOnChannel.at(streamChannel);
    if (playing != 0)
        return false;
    stream.reset();
    auto opened = ZNTSoundStream::open(request.source); // may wait for the disk, so without the lock
    if (!opened)
        return false;
    stream = std::move(opened);
    const std::lock_guard hold(mutex);
    const auto found = plays.find(request.play);
    if (found == plays.end())
        return true; // stopped meanwhile
    setChannelVolume(streamChannel, found->second.volume);
    found->second.channel = streamChannel;
    playing = request.play;
    constexpr int once = 1, forEver = -1;
    if (Mix_FadeInMusicPos(stream->music(), request.loops ? forEver : once, 0,
                           request.loops ? 0 : request.start) == 0)
        return true;
    playing = 0;
    found->second.channel = -1;
    return false;
}

int ZNTMixer::State::freeChannel() const
{
    for (std::size_t at = 0; at < samplesOnChannel.size(); ++at)
        if (playOnChannel.at(at) == 0)
            return static_cast<int>(at);
    return -1;
}

void ZNTMixer::State::dropEndedSamples()
{
    for (std::size_t at = 0; at < samplesOnChannel.size(); ++at)
        if (playOnChannel.at(at) == 0)
            samplesOnChannel.at(at) = nullptr;
    if (playOnChannel.at(streamChannel) == 0)
        stream.reset();
}

void ZNTMixer::State::channelFinished(int channel)
{
    // Called by SDL's thread with the library's lock held: no mutex and no call of the library here.
    auto* mixer = current.load();
    if (mixer == nullptr || channel < 0 || channel > streamChannel)
        return;
    if (const auto play = mixer->playOnChannel.at(static_cast<std::size_t>(channel)).exchange(0))
        mixer->finished(play, Ending::Natural);
}

ZNTMixer::ZNTMixer(Finished finished, double idleSeconds)
    : state(std::make_unique<State>(std::move(finished), idleSeconds))
{
}

ZNTMixer::~ZNTMixer() = default;

void ZNTMixer::play(Request request) { state->play(std::move(request)); }

void ZNTMixer::stop(std::uint64_t play) { state->stop(play); }

void ZNTMixer::setMasterVolume(float volume) { state->setMasterVolume(volume); }
