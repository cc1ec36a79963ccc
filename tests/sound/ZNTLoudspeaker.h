#pragma once

#include "ZNTTemporaryFolder.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

/// Stands in for the sound device: what would be heard comes down a pipe, sample by sample, and no faster
/// than a test listens. One at a time; make it before the first sound.
class ZNTLoudspeaker
{
public:
    static constexpr int framesPerSecond = 44'100;

    /// How long one value went on, on the left; silence is 0.
    struct Stretch {
        std::int16_t value;
        std::size_t frames;
        friend bool operator==(const Stretch&, const Stretch&) = default;
    };

    ZNTLoudspeaker();
    ~ZNTLoudspeaker();
    ZNTLoudspeaker(const ZNTLoudspeaker&) = delete;
    ZNTLoudspeaker& operator=(const ZNTLoudspeaker&) = delete;

    /// Listens in steps until `isEnough`, asked before each, or until nothing has come for 20 seconds. False
    /// then.
    bool listenUntil(const std::function<bool()>& isEnough);
    /// Listens for that long.
    bool listen(double seconds);
    /// Listens until the device is closed.
    bool listenUntilClosed();
    /// Lets the device's thread go on without us: its writes fail from now on. For the end of a test.
    void unplug();

    [[nodiscard]] std::vector<Stretch> heardWithoutSilence() const;
    /// Frames of that value, all together.
    [[nodiscard]] std::size_t framesOf(std::int16_t value) const;
    /// Frames that were not silent.
    [[nodiscard]] std::size_t loudFrames() const
    {
        return framesThat([](auto value) { return value != 0; });
    }
    [[nodiscard]] int loudest() const;
    void forget() { stretches.clear(); }
    [[nodiscard]] bool isOpen() const { return isOpenNow; }

private:
    enum class Outcome { Heard, Closed, Nothing };
    Outcome listenOnce(int milliseconds);
    [[nodiscard]] std::size_t framesThat(bool (*isMeant)(std::int16_t value)) const;

    ZNTTemporaryFolder folder;
    int descriptor = -1;
    bool isOpenNow = false;
    std::vector<Stretch> stretches;
};
