#include "ZNTLoudspeaker.h"
#include "ZNTMSPProcessor.h"
#include "ZNTMixerSounds.h"
#include "ZNTSoundServer.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"
#include "ZNTWavFile.h"

#include <filesystem>

using testing::ElementsAre;

namespace
{

constexpr std::size_t rainFrames = 10'000, hitFrames = 3'000;
constexpr std::size_t longFrames = std::size_t{30} * ZNTLoudspeaker::framesPerSecond;
/// Amplitudes of which every sum is another number, also at half the volume.
constexpr int rain = 8'000, hit = 600, theme = 5'000;

const std::string longMusic = wavFile(longFrames, theme);

struct MixerSounds : testing::Test {
    ZNTTestPlatform machine;
    ZNTMixerSounds sounds{machine.loop, machine.platform.places, {.idleSeconds = 0.05}};
    ZNTMSPProcessor processor{machine.platform.places, sounds};
    ZNTLoudspeaker loudspeaker;

    MixerSounds()
    {
        write("weather/rain.wav", wavFile(rainFrames, rain));
        write("battle/hit.wav", wavFile(hitFrames, hit));
        write("music/theme.wav", wavFile(rainFrames, theme));
    }

    void SetUp() override
    {
        if (!ZNT_SDL_WRITES_TO_PIPES)
            GTEST_SKIP() << "This release of SDL writes to no pipe, so nothing can listen.";
    }
    void write(const std::string& name, const std::string& content) const
    {
        machine.home.write("Music/Zantor/sounds/" + name, content);
    }
    /// Listens while the run loop turns.
    bool listenUntil(const std::function<bool()>& isEnough)
    {
        return loudspeaker.listenUntil([&] {
            machine.loop.runPosted();
            return isEnough();
        });
    }
    /// Until something has sounded and the device is closed again.
    bool listenToTheEnd()
    {
        return listenUntil([&] { return loudspeaker.loudFrames() > 0 && !loudspeaker.isOpen; });
    }
    bool processSound(std::u16string_view tag) { return processor.processSound(tag).succeeded(); }
};

TEST_F(MixerSounds, MusicSoundAndATriggersSoundPlayTogetherUntilAllStopsAtOnce)
{
    ASSERT_TRUE(processSound(u"!!MUSIC(music/theme.wav L=-1 V=100)"));
    ASSERT_TRUE(processSound(u"!!SOUND(weather/rain.wav L=1000 V=50)"));
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.framesOf(theme + rain / 2) > 2 * rainFrames; }));
    processor.playTriggerSound(u"battle/hit.wav");
    // On a busy machine there can be a moment of silence between two rounds of the rain or the music.
    ASSERT_TRUE(listenUntil([&] {
        return loudspeaker.framesOf(theme + rain / 2 + hit) + loudspeaker.framesOf(theme + hit) +
                   loudspeaker.framesOf(rain / 2 + hit) + loudspeaker.framesOf(hit) ==
               hitFrames;
    }));
    write("battle/long.wav", wavFile(100 * hitFrames, hit));
    processor.playTriggerSound(u"battle/long.wav");
    processor.stopAllSounds();
    ASSERT_TRUE(listenToTheEnd());
    EXPECT_FALSE(sounds.isPlaying());
}

TEST_F(MixerSounds, MasterVolumeMutingAndStopReachSoundAndLongMusicThatPlay)
{
    write("music/long.wav", longMusic);
    const std::pair<const char16_t*, int> rows[] = {{u"!!SOUND(weather/rain.wav L=-1 V=100)", rain},
                                                    {u"!!MUSIC(music/long.wav L=-1 V=100)", theme}};
    for (const auto& [tag, value] : rows) {
        sounds.setMasterVolume(0.25F);
        ASSERT_TRUE(processSound(tag));
        ASSERT_TRUE(listenUntil([&, loud = value / 4] { return loudspeaker.framesOf(loud) > 20'000; }));
        sounds.setMuted(true);
        ASSERT_TRUE(loudspeaker.listen(0.2));
        loudspeaker.forget();
        ASSERT_TRUE(loudspeaker.listen(0.2));
        EXPECT_EQ(loudspeaker.loudFrames(), 0u);
        sounds.setMuted(false);
        sounds.setMasterVolume(7);
        ASSERT_TRUE(listenUntil([&, loud = value] { return loudspeaker.framesOf(loud) > 0; }));
        processor.stopAllSounds();
        ASSERT_TRUE(listenToTheEnd());
    }
}

TEST_F(MixerSounds, OggFlacAndMp3AreHeard)
{
    for (const std::string name : {"tone.ogg", "tone.flac", "tone.mp3"}) {
        SCOPED_TRACE(name);
        std::filesystem::copy_file(ZNT_TEST_SOUNDS "/" + name,
                                   machine.platform.places.soundFolder() + "weather/" + name);
        loudspeaker.forget();
        processor.playTriggerSound(u"weather/" + znt::textFromUtf8(name));
        ASSERT_TRUE(listenToTheEnd());
        EXPECT_NEAR(static_cast<double>(loudspeaker.loudFrames()), ZNTLoudspeaker::framesPerSecond / 2.0,
                    3'000);
    }
}

struct CountedNotices final : ZNTSoundDelegate {
    std::vector<bool> finished;
    void soundDidFinishPlaying(ZNTSoundObject&, bool isFinished) override { finished.push_back(isFinished); }
};

struct SoundObject : MixerSounds {
    std::shared_ptr<CountedNotices> notices = std::make_shared<CountedNotices>();
    ZNTSoundFolder folder{machine.platform.places};

    std::shared_ptr<ZNTSoundObject> sound(const std::string& name)
    {
        auto file = folder.openFile(folder.path() + name);
        auto made = file ? sounds.soundFromFile(std::move(*file)) : nullptr;
        if (made)
            made->setDelegate(notices);
        return made;
    }
};

TEST_F(SoundObject, EachPlayHasOneNoticeAtItsEndOrAfterAStopAndNeverFromInsideACall)
{
    const auto object = sound("battle/hit.wav");
    constexpr std::size_t skipped = 882;
    object->setCurrentTime(double{skipped} / ZNTLoudspeaker::framesPerSecond);
    for (const auto frames : {hitFrames - skipped, hitFrames}) { // an end sets it back to the beginning
        loudspeaker.forget();
        ASSERT_TRUE(object->play() && listenToTheEnd());
        EXPECT_EQ(loudspeaker.framesOf(hit), frames);
    }
    EXPECT_THAT(notices->finished, ElementsAre(true, true));

    ASSERT_TRUE(object->play());
    EXPECT_TRUE(object->stop());
    EXPECT_THAT(notices->finished, ElementsAre(true, true));
    machine.loop.runPosted();
    EXPECT_THAT(notices->finished, ElementsAre(true, true, false));
}

TEST_F(SoundObject, AStopCancelsTheFetchAndWhatIsFetchedAfreshIsPlayed)
{
    ZNTSoundServer server({{"/slow", soundAnswer(wavFile(hitFrames, hit), /*waits=*/true)}});
    sounds.setGameAddress("127.0.0.1");
    const auto object = sounds.soundFromUrl(server.url("/slow"));
    object->load([](bool) { ADD_FAILURE(); });
    EXPECT_FALSE(object->stop() || sounds.isPlaying());
    object->load({});
    server.release();
    EXPECT_TRUE(machine.loop.runUntil([&] { return object->isLoaded(); }));
    EXPECT_TRUE(object->play() && listenToTheEnd());
    EXPECT_EQ(loudspeaker.framesOf(hit), hitFrames);
}

TEST_F(SoundObject, OneThatIsTooManyIsRefusedUntilAnotherHasStopped)
{
    std::vector<std::shared_ptr<ZNTSoundObject>> all;
    for (int number = 1; number <= 33; ++number) {
        all.push_back(sound("weather/rain.wav"));
        EXPECT_EQ(all.back()->play(), number <= 32);
    }
    EXPECT_TRUE(all.front()->stop() && all.back()->play());
    EXPECT_TRUE(listenToTheEnd());
}

TEST_F(SoundObject, DamagedFilesPlayNothingAndAreNotTriedAgain)
{
    write("empty.wav", "");
    write("text.wav", "no sound at all, but long enough");
    EXPECT_FALSE(sound("empty.wav") || sound("text.wav"));

    std::filesystem::copy_file(ZNT_TEST_SOUNDS "/tone.ogg", folder.path() + "tone.ogg");
    const auto ogg = machine.home.read("Music/Zantor/sounds/tone.ogg");
    const std::string contents[] = {wavFile(hitFrames, hit).substr(0, 20), ogg.substr(0, 100),
                                    ogg.substr(0, 58) + std::string(5'000, '\0'),
                                    // 370 MB of samples once it is as the device wants it.
                                    wavFile(2 << 20, 0, 1'000)};
    for (const auto& content : contents) {
        write("damaged", content);
        const auto object = sound("damaged");
        notices->finished.clear();
        EXPECT_TRUE(object->play());
        ASSERT_TRUE(listenUntil([&] { return !object->isPlaying(); }));
        EXPECT_THAT(notices->finished, ElementsAre(false));
        EXPECT_FALSE(object->play());
    }
    EXPECT_EQ(loudspeaker.loudFrames(), 0u);
}

TEST_F(SoundObject, WithoutADeviceTheyEndAndItIsAskedForMoreAndMoreRarely)
{
    setenv("SDL_AUDIODRIVER", "alsa", /*replace=*/1);
    setenv("AUDIODEV", "no such device", 1);
    const auto object = sound("battle/hit.wav");
    testing::internal::CaptureStderr();
    for (const double rest : {5.0, 10.0, 20.0, 40.0, 80.0, 160.0, 300.0, 300.0}) {
        EXPECT_TRUE(object->play());
        ASSERT_TRUE(machine.loop.runUntil([&] { return !object->isPlaying(); }));
        machine.loop.advance(rest - 0.1);
        EXPECT_FALSE(object->play()) << rest;
        machine.loop.advance(0.2);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(notices->finished, std::vector<bool>(8));
}

} // namespace
