#include "ZNTLoudspeaker.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace
{
constexpr std::size_t framesPerStep = 1'024, bytesPerFrame = 4;
}

ZNTLoudspeaker::ZNTLoudspeaker()
{
    const auto path = folder.path("loudspeaker");
    if (mkfifo(path.c_str(), S_IRUSR | S_IWUSR) != 0)
        throw std::runtime_error("cannot make a pipe");
    descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    // The less the pipe holds, the sooner a test hears what it changed.
    fcntl(descriptor, F_SETPIPE_SZ, 4'096);
    signal(SIGPIPE, SIG_IGN);
    setenv("SDL_AUDIODRIVER", "disk", /*replace=*/1);
    setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
    setenv("SDL_DISKAUDIODELAY", "0", 1);
}

ZNTLoudspeaker::~ZNTLoudspeaker() { unplug(); }

void ZNTLoudspeaker::unplug()
{
    if (descriptor >= 0)
        close(std::exchange(descriptor, -1));
}

bool ZNTLoudspeaker::listenUntil(const std::function<bool()>& isEnough)
{
    using namespace std::chrono;
    auto lastHeard = steady_clock::now();
    while (!isEnough()) {
        if (listenOnce(2) == Outcome::Heard)
            lastHeard = steady_clock::now();
        else if (steady_clock::now() - lastHeard > seconds(20))
            return false;
    }
    return true;
}

bool ZNTLoudspeaker::listen(double seconds)
{
    const auto until =
        framesThat([](auto) { return true; }) + static_cast<std::size_t>(seconds * framesPerSecond);
    return listenUntil([&] { return framesThat([](auto) { return true; }) >= until; });
}

bool ZNTLoudspeaker::listenUntilClosed()
{
    return listenUntil([this] { return !isOpenNow; });
}

ZNTLoudspeaker::Outcome ZNTLoudspeaker::listenOnce(int milliseconds)
{
    pollfd watched{descriptor, POLLIN, 0};
    if (poll(&watched, 1, milliseconds) <= 0)
        return Outcome::Nothing;
    std::array<std::int16_t, framesPerStep * 2> samples;
    const auto length = read(descriptor, samples.data(), samples.size() * sizeof samples[0]);
    if (length <= 0) {
        // Nobody has the other end open: the poll would not wait.
        isOpenNow = false;
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        return Outcome::Closed;
    }
    isOpenNow = true;
    for (std::size_t at = 0; at < static_cast<std::size_t>(length) / bytesPerFrame; ++at) {
        const auto value = samples.at(2 * at);
        if (stretches.empty() || stretches.back().value != value)
            stretches.push_back({value, 0});
        ++stretches.back().frames;
    }
    return Outcome::Heard;
}

std::vector<ZNTLoudspeaker::Stretch> ZNTLoudspeaker::heardWithoutSilence() const
{
    std::vector<Stretch> loud;
    for (const auto& stretch : stretches)
        if (stretch.value != 0)
            loud.push_back(stretch);
    return loud;
}

std::size_t ZNTLoudspeaker::framesThat(bool (*isMeant)(std::int16_t value)) const
{
    std::size_t frames = 0;
    for (const auto& stretch : stretches)
        frames += isMeant(stretch.value) ? stretch.frames : 0;
    return frames;
}

std::size_t ZNTLoudspeaker::framesOf(std::int16_t value) const
{
    std::size_t frames = 0;
    for (const auto& stretch : stretches)
        frames += stretch.value == value ? stretch.frames : 0;
    return frames;
}

int ZNTLoudspeaker::loudest() const
{
    int most = 0;
    for (const auto& stretch : stretches)
        most = std::max(most, std::abs(static_cast<int>(stretch.value)));
    return most;
}
