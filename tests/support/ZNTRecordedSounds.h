#pragma once

#include "ZNTSilentSounds.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A sound that plays until the test says otherwise.
struct ZNTRecordedSound final : ZNTSoundObject, std::enable_shared_from_this<ZNTRecordedSound> {
    std::string source; ///< the file's path, or the URL
    float volume = 1;
    bool loops = false;
    int timesPlayed = 0;
    bool playsNow = false;
    bool isHere = true;
    std::function<void(bool isLoaded)> whenLoaded;
    std::weak_ptr<ZNTSoundDelegate> delegate;
    std::vector<std::shared_ptr<ZNTRecordedSound>>* stopped = nullptr;

    [[nodiscard]] bool isLoaded() const override { return isHere; }
    void load(std::function<void(bool isLoaded)> loaded) override { whenLoaded = std::move(loaded); }
    [[nodiscard]] bool isPlaying() const override { return playsNow; }
    bool play() override
    {
        if (playsNow || !isHere)
            return false;
        ++timesPlayed;
        return playsNow = true;
    }
    bool stop() override
    {
        whenLoaded = {};
        if (!playsNow)
            return false;
        playsNow = false;
        stopped->push_back(shared_from_this());
        return true;
    }
    void setVolume(float newVolume) override { volume = newVolume; }
    void setCurrentTime(double) override {}
    void setLoops(bool newLoops) override { loops = newLoops; }
    void setDelegate(std::weak_ptr<ZNTSoundDelegate> newDelegate) override
    {
        delegate = std::move(newDelegate);
    }

    void notice(bool finished)
    {
        if (const auto listener = delegate.lock())
            listener->soundDidFinishPlaying(*this, finished);
    }
    /// Has been fetched, or cannot be; false where nobody waits for it any more.
    bool arrive(bool isFound = true)
    {
        const auto loaded = std::exchange(whenLoaded, {});
        isHere = isFound && loaded;
        if (loaded)
            loaded(isFound);
        return loaded != nullptr;
    }
};

/// Makes a sound of everything and remembers it.
struct ZNTRecordedSounds : ZNTSilentSounds {
    std::vector<std::shared_ptr<ZNTRecordedSound>> made;
    std::vector<std::shared_ptr<ZNTRecordedSound>> stopped;
    bool urlsTakeTime = false;

    [[nodiscard]] std::shared_ptr<ZNTSoundObject> soundFromFile(ZNTSoundFile file) override
    {
        return add(file.path());
    }
    [[nodiscard]] std::shared_ptr<ZNTSoundObject> soundFromUrl(std::string_view url) override
    {
        add(std::string(url));
        made.back()->isHere = !urlsTakeTime;
        return made.back();
    }
    void stopAll() override
    {
        for (const auto& sound : made)
            sound->stop();
    }
    [[nodiscard]] bool isPlaying() const override
    {
        return std::any_of(made.begin(), made.end(), [](const auto& sound) { return sound->playsNow; });
    }

    /// The notices of stops arrive, as on the next turn of a run loop.
    void deliverNotices()
    {
        for (auto due = std::exchange(stopped, {}); const auto& sound : due)
            sound->notice(/*finished=*/false);
    }
    /// All that plays comes to its end, until nothing plays again of itself; at most a hundred times.
    void finishAll()
    {
        for (int rounds = 100; isPlaying() && rounds > 0; --rounds)
            for (const auto& sound : made)
                if (std::exchange(sound->playsNow, false))
                    sound->notice(/*finished=*/true);
    }

private:
    std::shared_ptr<ZNTSoundObject> add(std::string source)
    {
        made.push_back(std::make_shared<ZNTRecordedSound>());
        made.back()->source = std::move(source);
        made.back()->stopped = &stopped;
        return made.back();
    }
};
