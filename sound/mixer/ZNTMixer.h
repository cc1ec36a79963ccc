#pragma once

#include "ZNTSoundSource.h"

#include <cstdint>
#include <functional>
#include <memory>

/// Plays sounds through SDL2_mixer, many at once, on the desktop's sound device.
///
/// Opening the device and decoding are slow, so a thread of the mixer's own does both. Stops and changes of
/// volume take effect at once. The device opens with the first sound and closes when nothing has
/// played for a while. A process has one mixer, as the library keeps its state for the whole process.
class ZNTMixer
{
public:
    static constexpr int mostAtOnce = 32;

    enum class Ending {
        Natural,
        Damaged, ///< nothing in it that could be played
        NoDevice ///< nothing to play it on
    };
    /// Called at the end of each play that was not stopped, on any thread, also on the one that mixes. It
    /// must not call the mixer.
    using Finished = std::function<void(std::uint64_t play, Ending ending)>;

    struct Request {
        std::uint64_t play; ///< names the play from now on; not 0
        std::shared_ptr<const ZNTSoundSource> source;
        float volume; ///< 0 to 1
        bool loops;
        double start; ///< seconds that are skipped at the beginning; a sound that loops starts at 0
        /// A long one is decoded only as it plays, if no other such sound plays.
        bool isStreamed = false;
    };

    explicit ZNTMixer(Finished finished, double idleSeconds = 5);
    ~ZNTMixer();
    ZNTMixer(const ZNTMixer&) = delete;
    ZNTMixer& operator=(const ZNTMixer&) = delete;

    /// At most `mostAtOnce` plays may be under way.
    void play(Request request);
    /// Ends the play in silence, whether it began or not, or forgets it after its end.
    void stop(std::uint64_t play);
    void setMasterVolume(float volume);

private:
    class State;
    std::unique_ptr<State> state;
};
