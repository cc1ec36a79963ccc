#include "ZNTLoudspeaker.h"
#include "ZNTMSPProcessor.h"
#include "ZNTMixerSounds.h"
#include "ZNTSoundServer.h"
#include "ZNTTestPlatform.h"
#include "ZNTText.h"
#include "ZNTWavFile.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <random>

using testing::ElementsAre;

namespace
{

using Stretch = ZNTLoudspeaker::Stretch;
constexpr std::size_t rainFrames = 10'000, hitFrames = 3'000;
constexpr std::int16_t rain = 8'000, hit = 600, theme = 4'000;
constexpr std::size_t buffer = 1'024;

struct MixerSounds : testing::Test {
    ZNTLoudspeaker loudspeaker;
    ZNTTestPlatform machine;
    ZNTMixerSounds sounds{machine.loop, machine.platform.places, {.idleSeconds = 0.05}};
    ZNTMSPProcessor processor{machine.platform.places, sounds};

    MixerSounds()
    {
        write("weather/rain.wav", wavFile(rainFrames, rain));
        write("battle/hit.wav", wavFile(hitFrames, hit));
        write("music/theme.wav", wavFile(rainFrames, theme));
    }
    ~MixerSounds() override { loudspeaker.unplug(); }

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
        return listenUntil([&] { return loudspeaker.loudFrames() > 0 && !loudspeaker.isOpen(); });
    }
    bool processSound(std::u16string_view tag) { return processor.processSound(tag).succeeded(); }
};

TEST_F(MixerSounds, VolumeIsAPercentageOfTheAmplitude)
{
    struct {
        const char16_t* tag;
        std::int16_t heard;
    } const rows[] = {{u"!!SOUND(weather/rain.wav V=100 P=1)", rain},
                      {u"!!SOUND(weather/rain.wav V=50 P=1)", rain / 2},
                      {u"!!SOUND(weather/rain.wav V=400 P=1)", rain},
                      {u"!!SOUND(weather/rain.wav P=1)", rain}};
    for (const auto& row : rows) {
        loudspeaker.forget();
        ASSERT_TRUE(processSound(row.tag));
        ASSERT_TRUE(listenToTheEnd());
        EXPECT_THAT(loudspeaker.heardWithoutSilence(), ElementsAre(Stretch{row.heard, rainFrames}));
    }
    loudspeaker.forget();
    ASSERT_TRUE(processSound(u"!!SOUND(weather/rain.wav V=-20 P=1)"));
    ASSERT_TRUE(listenUntil([&] { return !processor._sounds()->isPlaying(); }));
    EXPECT_EQ(loudspeaker.loudFrames(), 0u);
}

TEST_F(MixerSounds, AnEndlessSoundGoesOnWithoutAGapUntilOff)
{
    ASSERT_TRUE(processSound(u"!!SOUND(battle/hit.wav L=-1 V=100)"));
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.loudFrames() > 0; }));
    ASSERT_TRUE(loudspeaker.listen(2));
    ASSERT_TRUE(processSound(u"!!SOUND(Off)"));
    EXPECT_FALSE(processor._sounds()->isPlaying());
    ASSERT_TRUE(listenToTheEnd());
    ASSERT_EQ(loudspeaker.heardWithoutSilence().size(), 1u);
    EXPECT_NEAR(static_cast<double>(loudspeaker.loudFrames()), 2.0 * ZNTLoudspeaker::framesPerSecond,
                6.0 * buffer);
}

TEST_F(MixerSounds, MusicSoundAndATriggersSoundAreHeardTogether)
{
    ASSERT_TRUE(processSound(u"!!MUSIC(music/theme.wav L=-1 V=100)"));
    ASSERT_TRUE(processSound(u"!!SOUND(weather/rain.wav L=-1 V=50)"));
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.loudest() == theme + rain / 2; }));
    processor.playTriggerSound(u"battle/hit.wav");
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.framesOf(theme + rain / 2 + hit) == hitFrames; }));
    EXPECT_EQ(loudspeaker.loudest(), theme + rain / 2 + hit);
    ASSERT_TRUE(processSound(u"!!MUSIC(Off)"));
    ASSERT_TRUE(processSound(u"!!SOUND(Off)"));
    ASSERT_TRUE(listenToTheEnd());
}

TEST_F(MixerSounds, AStopOfAllSoundsIsSilenceAtOnce)
{
    ASSERT_TRUE(processSound(u"!!MUSIC(music/theme.wav L=-1 V=100)"));
    ASSERT_TRUE(processSound(u"!!SOUND(weather/rain.wav L=1000 V=100)"));
    write("battle/long.wav", wavFile(100 * hitFrames, hit));
    processor.playTriggerSound(u"battle/long.wav");
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.loudest() == theme + rain + hit; }));
    processor.stopAllSounds();
    ASSERT_TRUE(listenToTheEnd());
    EXPECT_FALSE(processor._sounds()->isPlaying() || processor._music()->isPlaying());
}

/// More than can be decoded whole, loud for a second at each end, and sparse on the disk.
void writeLongMusic(const std::string& path, std::size_t frames)
{
    const auto second = wavFile(ZNTLoudspeaker::framesPerSecond, theme).substr(44);
    auto header = wavFile(0, 0);
    const auto length = static_cast<std::uint32_t>(frames * 4);
    for (const auto at : {std::size_t{4}, std::size_t{40}})
        for (std::size_t byte = 0; byte < 4; ++byte)
            header[at + byte] = static_cast<char>((length + (at == 4 ? 36 : 0)) >> (8 * byte) & 0xFFU);
    std::ofstream file(path, std::ios::binary);
    file << header << second;
    file.seekp(static_cast<std::streamoff>(44 + length - second.size()));
    file << second;
}

TEST_F(MixerSounds, MusicOfTheFolderPlaysWhateverItsLengthAndCostsNoMemory)
{
    constexpr std::size_t frames = std::size_t{20} * 60 * ZNTLoudspeaker::framesPerSecond;
    writeLongMusic(machine.platform.places.soundFolder() + "music/long.wav", frames);
    const auto before = mallinfo2();
    sounds.setMasterVolume(0.5F);
    ASSERT_TRUE(processSound(u"!!MUSIC(music/long.wav V=50)"));
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.framesOf(theme / 4) > 0; }));
    const auto during = mallinfo2();
    EXPECT_LT(during.hblkhd + during.uordblks, before.hblkhd + before.uordblks + (4 << 20));
    ASSERT_TRUE(listenToTheEnd());
    EXPECT_EQ(loudspeaker.framesOf(theme / 4), 2U * ZNTLoudspeaker::framesPerSecond);

    loudspeaker.forget();
    sounds.setMasterVolume(1);
    ASSERT_TRUE(processSound(u"!!MUSIC(music/long.wav L=-1 V=100)"));
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.framesOf(theme) > 0; }));
    sounds.setMuted(true);
    ASSERT_TRUE(loudspeaker.listen(0.2));
    loudspeaker.forget();
    ASSERT_TRUE(loudspeaker.listen(0.2));
    EXPECT_EQ(loudspeaker.loudFrames(), 0u);
    ASSERT_TRUE(processSound(u"!!MUSIC(music/theme.wav P=1)"));
    sounds.setMuted(false);
    ASSERT_TRUE(listenToTheEnd());
    EXPECT_LE(loudspeaker.framesOf(theme), rainFrames) << "what was cut off is heard on";
}

TEST_F(MixerSounds, MasterVolumeAndMutingReachWhatPlays)
{
    sounds.setMasterVolume(0.25F);
    ASSERT_TRUE(processSound(u"!!SOUND(weather/rain.wav L=-1 V=100)"));
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.framesOf(rain / 4) > 20'000; }));
    sounds.setMuted(true);
    ASSERT_TRUE(loudspeaker.listen(0.2));
    loudspeaker.forget();
    ASSERT_TRUE(loudspeaker.listen(0.2));
    EXPECT_EQ(loudspeaker.loudFrames(), 0u);
    sounds.setMuted(false);
    sounds.setMasterVolume(7);
    EXPECT_EQ(sounds.masterVolume(), 1);
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.framesOf(rain) > 0; }));
    ASSERT_TRUE(processSound(u"!!SOUND(Off)"));
}

TEST_F(MixerSounds, TheDeviceClosesWhenIdleAndOpensAgain)
{
    for (int round = 0; round < 2; ++round) {
        loudspeaker.forget();
        const auto start = std::chrono::steady_clock::now();
        processor.playTriggerSound(u"battle/hit.wav");
        ASSERT_TRUE(listenToTheEnd());
        EXPECT_EQ(loudspeaker.framesOf(hit), hitFrames);
        // Two looks in a row find it idle, so that a silence between two sounds keeps it open.
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
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
        EXPECT_GT(loudspeaker.loudest(), 10'000);
        EXPECT_LT(loudspeaker.loudest(), 14'000);
        EXPECT_NEAR(static_cast<double>(loudspeaker.loudFrames()), ZNTLoudspeaker::framesPerSecond / 2.0,
                    3'000);
    }
}

TEST_F(MixerSounds, ASoundOfALocalUrlIsHeardFromALocalGameAndNotFromAPublicOne)
{
    ZNTSoundServer server({{"/snow.wav", [](auto& reply) { reply.sendContent(wavFile(hitFrames, hit)); }},
                           {"/late.wav", [](auto& reply) {
                                reply.waitForRelease();
                                reply.sendContent(wavFile(hitFrames, theme));
                            }}});
    const auto tag = [&](const char* path, const char16_t* parameters) {
        return u"!!SOUND(weather/snow.wav " + std::u16string(parameters) + u" U=" +
               znt::textFromUtf8(server.url(path)) + u")";
    };
    ASSERT_TRUE(processSound(tag("/snow.wav", u"L=1")));
    EXPECT_FALSE(processor._sounds()->isPlaying()) << "nothing is there to play yet";
    ASSERT_TRUE(listenUntil([&] { return processor._sounds() == nullptr; }));
    EXPECT_EQ(server.connections(), 0);

    sounds.setGameAddress("127.0.0.1");
    ASSERT_TRUE(processSound(tag("/snow.wav", u"L=1 V=50")));
    ASSERT_TRUE(listenToTheEnd());
    EXPECT_EQ(loudspeaker.framesOf(hit / 2), 2 * hitFrames);
    EXPECT_EQ(server.requests(), 1);

    // One that is stopped before it has come is not heard when it has.
    ASSERT_TRUE(processSound(tag("/late.wav", u"P=1")));
    ASSERT_TRUE(listenUntil([&] { return server.requests() == 2; }));
    ASSERT_TRUE(processSound(u"!!SOUND(Off)"));
    server.release();
    ASSERT_TRUE(processSound(tag("/snow.wav", u"P=1 V=100")));
    loudspeaker.forget();
    ASSERT_TRUE(listenToTheEnd());
    EXPECT_EQ(loudspeaker.framesOf(hit), hitFrames);
    EXPECT_EQ(loudspeaker.loudFrames(), hitFrames);
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
    EXPECT_FALSE(object->stop());
    ASSERT_TRUE(object->play());
    EXPECT_FALSE(object->play());
    ASSERT_TRUE(listenUntil([&] { return !object->isPlaying(); }));
    EXPECT_THAT(notices->finished, ElementsAre(true));

    ASSERT_TRUE(object->play());
    EXPECT_TRUE(object->stop());
    EXPECT_FALSE(object->isPlaying());
    EXPECT_THAT(notices->finished, ElementsAre(true));
    machine.loop.runPosted();
    EXPECT_THAT(notices->finished, ElementsAre(true, false));

    // A stop while the word of the natural end is on its way.
    ASSERT_TRUE(object->play());
    const auto before = loudspeaker.loudFrames();
    ASSERT_TRUE(loudspeaker.listenUntil([&] { return loudspeaker.loudFrames() == before + hitFrames; }));
    ASSERT_TRUE(loudspeaker.listenUntilClosed());
    EXPECT_TRUE(object->stop());
    machine.loop.runPosted();
    EXPECT_THAT(notices->finished, ElementsAre(true, false, false));
}

TEST_F(SoundObject, SeekLeavesOutTheBeginningOfOnePlay)
{
    const auto object = sound("weather/rain.wav");
    object->setCurrentTime(4'000.0 / ZNTLoudspeaker::framesPerSecond);
    for (const std::size_t frames : {rainFrames - 4'000, rainFrames}) {
        loudspeaker.forget();
        ASSERT_TRUE(object->play());
        ASSERT_TRUE(listenUntil([&] { return !object->isPlaying(); }));
        ASSERT_TRUE(loudspeaker.listen(0.1));
        EXPECT_NEAR(static_cast<double>(loudspeaker.loudFrames()), static_cast<double>(frames), 1);
    }
}

TEST_F(SoundObject, AtMostThirtyTwoPlayAtOnceAndTheMixerOutlivesAFlood)
{
    std::vector<std::shared_ptr<ZNTSoundObject>> all;
    for (int number = 0; number < 40; ++number) {
        all.push_back(sound("battle/hit.wav"));
        all.back()->setLoops(true);
        EXPECT_EQ(all.back()->play(), number < 32);
    }
    ASSERT_TRUE(listenUntil([&] { return loudspeaker.loudest() == 32 * hit; }));
    for (int round = 0; round < 200; ++round)
        for (const auto& object : all)
            if (object->stop())
                object->play();
    for (const auto& object : all)
        object->stop();
    machine.loop.runPosted();
    EXPECT_EQ(notices->finished.size(), 201u * 32u);
    EXPECT_TRUE(sound("battle/hit.wav")->play());
}

TEST_F(SoundObject, DecodedSoundsAreKeptUpToABoundAndGoWhenTheDeviceCloses)
{
    constexpr std::size_t length = 14 << 20, mostKept = 32 << 20;
    const auto taken = [] {
        const auto memory = mallinfo2();
        return memory.hblkhd + memory.uordblks;
    };
    for (const auto* name : {"1.wav", "2.wav", "3.wav", "4.wav"})
        write(name, wavFile(length / 4, hit));
    const auto before = taken();
    for (const auto* name : {"1.wav", "2.wav", "3.wav", "4.wav", "battle/hit.wav"}) {
        const auto object = sound(name);
        loudspeaker.forget();
        ASSERT_TRUE(object->play());
        ASSERT_TRUE(listenUntil([&] { return loudspeaker.loudFrames() > 0; }));
        object->stop();
        machine.loop.runPosted();
    }
    EXPECT_LT(taken(), before + mostKept + length / 2);
    ASSERT_TRUE(listenToTheEnd());
    EXPECT_LT(taken(), before + length / 2);
}

TEST_F(SoundObject, DamagedFilesPlayNothingAndAreNotTriedAgain)
{
    const auto ogg = [] {
        ZNTTemporaryFolder empty;
        std::filesystem::copy_file(ZNT_TEST_SOUNDS "/tone.ogg", empty.path("tone.ogg"));
        return empty.read("tone.ogg");
    }();
    // Almost 300 MB of samples once it is as the device wants it.
    const auto tooLong = wavFileOfSamples(std::string(12 << 20, '\0'), 8'000, 1, 8);
    struct {
        const char* name;
        std::string content;
        bool isMade;
    } const rows[] = {{"empty.wav", "", false},
                      {"text.wav", "no sound at all, but long enough", false},
                      {"header.wav", wavFile(hitFrames, hit).substr(0, 44), true},
                      {"cut.wav", wavFile(hitFrames, hit).substr(0, 20), true},
                      {"cut.ogg", ogg.substr(0, 100), true},
                      {"zeroes.ogg", ogg.substr(0, 58) + std::string(5'000, '\0'), true},
                      {"long.wav", tooLong, true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write(row.name, row.content);
        const auto object = sound(row.name);
        ASSERT_EQ(object != nullptr, row.isMade);
        if (object == nullptr)
            continue;
        notices->finished.clear();
        EXPECT_TRUE(object->play());
        ASSERT_TRUE(listenUntil([&] { return !object->isPlaying(); }));
        EXPECT_THAT(notices->finished, ElementsAre(false));
        EXPECT_FALSE(object->play());
    }
    EXPECT_EQ(loudspeaker.loudFrames(), 0u);

    // Whatever is heard of the next ones, they come to an end.
    std::mt19937 random(4);
    for (int round = 0; round < 150; ++round) {
        auto damaged = round % 2 == 0 ? ogg : wavFile(500, hit);
        for (int change = 0; change < 5; ++change)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        const auto name = "damaged" + std::to_string(round);
        write(name, damaged);
        if (const auto object = sound(name)) {
            object->play();
            ASSERT_TRUE(listenUntil([&] { return !object->isPlaying(); })) << name;
        }
    }
}

TEST(MixerSoundsWithoutDevice, AreSilentOnStderrTooAndAskForTheDeviceMoreAndMoreRarely)
{
    setenv("SDL_AUDIODRIVER", "alsa", /*replace=*/1);
    setenv("AUDIODEV", "no such device", 1);
    ZNTTestPlatform machine;
    machine.home.write("Music/Zantor/sounds/battle/hit.wav", wavFile(hitFrames, hit));
    auto notices = std::make_shared<CountedNotices>();
    ZNTMixerSounds sounds(machine.loop, machine.platform.places);
    ZNTSoundFolder folder(machine.platform.places);
    const auto object = sounds.soundFromFile(*folder.openFile(folder.path() + "battle/hit.wav"));
    object->setDelegate(notices);
    testing::internal::CaptureStderr();
    std::vector<bool> expected;
    for (const double rest : {5.0, 10.0, 20.0, 40.0, 80.0, 160.0, 300.0, 300.0}) {
        EXPECT_TRUE(object->play());
        ASSERT_TRUE(machine.loop.runUntil([&] { return !object->isPlaying(); }));
        expected.push_back(false);
        EXPECT_EQ(notices->finished, expected);
        machine.loop.advance(rest - 0.1);
        EXPECT_FALSE(object->play()) << rest;
        machine.loop.advance(0.2);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
