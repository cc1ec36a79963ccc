#pragma once

#include "ZNTTemporaryFolder.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

/// Stands in for the sound device: what would sound comes down a pipe, sample by sample, and no faster than a
/// test listens. Make it before the first sound plays, and end it before the mixer: the device's thread waits
/// in its write until then.
class ZNTLoudspeaker
{
public:
    static constexpr int framesPerSecond = 44'100;

    ZNTLoudspeaker()
    {
        const auto path = folder.path("loudspeaker");
        mkfifo(path.c_str(), S_IRUSR | S_IWUSR);
        descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        // The less the pipe holds, the sooner a test notices what it changed.
        fcntl(descriptor, F_SETPIPE_SZ, 4'096);
        signal(SIGPIPE, SIG_IGN);
        setenv("SDL_AUDIODRIVER", "disk", /*replace=*/1);
        setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
        setenv("SDL_DISKAUDIODELAY", "0", 1);
    }
    ~ZNTLoudspeaker()
    {
        // A device that opens only now must not wait for a listener.
        unlink(folder.path("loudspeaker").c_str());
        close(descriptor);
    }

    /// Listens in steps until `isEnough`, asked before each. False after a minute.
    bool listenUntil(const std::function<bool()>& isEnough)
    {
        using namespace std::chrono;
        const auto end = steady_clock::now() + minutes(1);
        while (!isEnough() && steady_clock::now() < end)
            listenOnce();
        return isEnough();
    }
    bool listen(double seconds)
    {
        const auto until = framesHeard + static_cast<std::size_t>(seconds * framesPerSecond);
        return listenUntil([&] { return framesHeard >= until; });
    }
    void forget() { frames.clear(); }

    /// Frames of that value on the left, all together.
    [[nodiscard]] std::size_t framesOf(int value) const
    {
        return frames.contains(value) ? frames.at(value) : 0;
    }
    [[nodiscard]] std::size_t loudFrames() const
    {
        std::size_t count = 0;
        for (const auto& [value, ofValue] : frames)
            count += value != 0 ? ofValue : 0;
        return count;
    }

    bool isOpen = false;

private:
    void listenOnce()
    {
        pollfd watched{descriptor, POLLIN, 0};
        if (poll(&watched, 1, 2) <= 0)
            return;
        std::array<std::int16_t, 2'048> samples;
        const auto length = read(descriptor, samples.data(), samples.size() * 2);
        isOpen = length > 0;
        if (!isOpen) // without another end the poll does not wait
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        for (int at = 0; at < length / 4; ++at) {
            ++frames[samples.at(static_cast<std::size_t>(2 * at))];
            ++framesHeard;
        }
    }

    ZNTTemporaryFolder folder;
    int descriptor = -1;
    std::size_t framesHeard = 0;
    std::map<int, std::size_t> frames; ///< by value
};
