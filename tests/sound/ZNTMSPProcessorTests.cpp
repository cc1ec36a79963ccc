#include "ZNTMSPProcessor.h"
#include "ZNTRecordedSounds.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTText.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace
{

struct Processor : testing::Test {
    ZNTTemporaryFolder home;
    ZNTFilePlaces places{home.path(), "", home.path("cache")};
    ZNTRecordedSounds sounds;
    ZNTMSPProcessor processor{places, sounds};

    Processor() { add("a/b.wav"); }
    void add(const std::string& name) const { home.write("Music/Zantor/sounds/" + name, "sound"); }
    void process(std::u16string_view tag) { EXPECT_TRUE(processor.processSound(tag)); }
    /// What a new sound was made of, below the sound folder; "(none)" for none.
    std::string madeBy(std::u16string_view tag)
    {
        const auto before = sounds.made.size();
        (void)processor.processSound(tag);
        sounds.finishAll();
        if (sounds.made.size() == before)
            return "(none)";
        const auto source = sounds.made.back()->source;
        const auto folder = places.soundFolder();
        return source.starts_with(folder) ? source.substr(folder.size()) : source;
    }
    ZNTRecordedSound& last() { return *sounds.made.back(); }
};

TEST_F(Processor, FilesAreFoundWithoutRegardToCaseAndAccentsElseTheUrlWithoutItsLastCharacter)
{
    for (const auto* name :
         {"weather/rain.wav", "battle/hit", "dying_groan.wav", "wide/\xE9\x9B\xA8\xE9\x9F\xB3.wav",
          "folder/a.wav/inside.wav", "accents/re\xCC\x81gen.WAV"})
        add(name);
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"weather/RAIN.Wav V=50)", "weather/rain.wav"},
        {u"weather/ra?n.wav P=10)", "weather/rain.wav"},
        {u"weather/R*N.* P=10)", "weather/rain.wav"},
        {u"weather/ra??n.wav P=10)", "(none)"},
        {u"weather/rain V=1)", "(none)"},
        {u"Weather/rain.wav V=1)", "(none)"}, // folders are taken as they are written
        {u"\"battle/hit\" V=100)", "battle/hit"},
        {u"/dying_groan.wav V=80)", "/dying_groan.wav"},
        {u"weather/rain.wav)", "(none)"}, // the name ends with the parenthesis
        {u"accents/r\u00E9g\u00EAn.wav V=1)", "accents/re\xCC\x81gen.WAV"},
        {u"accents/r?gen.wav V=1)", "accents/re\xCC\x81gen.WAV"},
        {u"wide/??.wav V=1)", "wide/\xE9\x9B\xA8\xE9\x9F\xB3.wav"},
        {u"folder/a.wav V=1)", "(none)"}, // a folder is no sound
        {u"weather/snow.wav U=http://a.example/snow)", "http://a.example/snow.wav"},
        {u"weather/snow.wav U=http://a.example/snow.wav V=50)", "http://a.example/snow.wa.wav"},
        {u"weather/snow.wav U='http://a.example/snow')", "http://a.example/snow.wav"},
        {u"weather/rain.wav U=http://a.example/snow.wav)", "weather/rain.wav"},
    };
    for (const auto& [tag, made] : rows)
        EXPECT_EQ(madeBy(u"!!SOUND(" + std::u16string(tag)), made) << znt::utf8FromText(tag);
}

TEST_F(Processor, NothingOutsideTheSoundFolderIsOpened)
{
    add("weather/rain.wav");
    home.write("outside/secret.wav", "not for games");
    home.write("Music/Zantor/sounds2/secret.wav", "a folder whose name begins like ours");
    const auto folder = places.soundFolder();
    fs::create_symlink(home.path("outside/secret.wav"), folder + "weather/link.wav");
    fs::create_symlink("../../../../outside/secret.wav", folder + "weather/a_relative.wav");
    fs::create_symlink(home.path("outside"), folder + "elsewhere");
    fs::create_symlink("weather/rain.wav", folder + "inside.wav");
    fs::create_symlink("loop.wav", folder + "loop.wav");
    mkfifo((folder + "weather/pipe.wav").c_str(), S_IRWXU);

    const auto outside = znt::textFromUtf8(home.path("outside/secret.wav"));
    const auto longName = std::u16string(300, u'x');
    for (const auto& name : {u"../../../outside/secret.wav"s,
                             u"weather/../../sounds2/secret.wav"s,
                             u"../*"s,
                             u"./../*.wav"s,
                             u"~/outside/secret.wav"s,
                             u"%2e%2e/%2e%2e/outside/secret.wav"s,
                             u"weather/link.wav"s,
                             u"weather/*link.wav"s,
                             u"weather/a_relative.wav"s,
                             u"elsewhere/secret.wav"s,
                             u"elsewhere/*"s,
                             u"/loop.wav"s,
                             u"weather/pipe.wav"s,
                             u"weather/.."s,
                             u"weather/"s,
                             outside,
                             u"/" + outside,
                             u"weather/" + longName + u".wav",
                             u"weather/" + znt::replacedAll(longName, u"x", u"../") + u"etc/passwd",
                             u"weather/rain.wav\0/../x"s,
                             u"weather\0/rain.wav"s}) {
        EXPECT_EQ(madeBy(u"!!SOUND(" + name + u" V=100)"), "(none)");
        processor.playTriggerSound(name);
        EXPECT_TRUE(sounds.made.empty()) << znt::utf8FromText(name);
    }
    EXPECT_FALSE(processor.getSoundFromSoundFileArray({u"../sounds2/secret"}));
    EXPECT_EQ(madeBy(u"!!SOUND(/inside.wav V=100)"), "/inside.wav");
    EXPECT_EQ(madeBy(u"!!SOUND(weather/../weather/rain.wav V=100)"), "weather/../weather/rain.wav");
    // Entries that lead outside do not take the place of one that fits.
    EXPECT_EQ(madeBy(u"!!SOUND(weather/*.wav V=100 P=9 L=0)"), "weather/rain.wav");
}

TEST_F(Processor, EveryWordButSoundMeansMusic)
{
    for (const auto* tag : {u"!!SOUND(a/b.wav P=1)", u"!!sound(a/b.wav P=1)", u"!!(a/b.wav P=1)"})
        EXPECT_TRUE(processor.isSound(tag)) << znt::utf8FromText(tag);
    for (const auto* tag : {u"!!MUSIC(a/b.wav P=1)", u"!!SOUNDS(a/b.wav P=1)", u"!!X(!!SOUND P=1)"})
        EXPECT_FALSE(processor.isSound(tag)) << znt::utf8FromText(tag);
}

TEST_F(Processor, TheLastVolumeCountsItsLetterIsUpperCaseAndAWordIsNoVolume)
{
    process(u"!!SOUND(a/b.wav V=10 v=20 L='0' V=\"30\" P=7)");
    EXPECT_FLOAT_EQ(last().volume, 0.3F);
    EXPECT_EQ(processor._zntSound()->_lParam(), u"0");
    for (const auto* word : {u"loud", u"inf", u"nan"}) {
        process(u"!!SOUND(a/b.wav P=9 V=" + std::u16string(word) + u")");
        EXPECT_EQ(last().volume, 0) << znt::utf8FromText(word);
    }
}

TEST_F(Processor, ATagThatCannotBeUnderstoodChangesNothing)
{
    process(u"!!SOUND(a/b.wav P=50 L=3)");
    process(u"!!MUSIC(a/b.wav P=50 L=3)");
    const auto request = processor._zntSound();
    for (const auto* tag : {u"!!SOUND(nofolder.wav P=90)", u"!!SOUND(Off U=x)", u"!!SOUND(a/b.wav V='' P=90)",
                            u"!!SOUND('' P=90)", u"!!SOUND(' P=90)", u"!!SOUND(a/b.wav U=\"\" P=90)",
                            u"!!SOUND(a/b.wav L=' P=90)", u"!!MUSIC(nofolder P=90)", u"!!SOUND()",
                            u"!!SOUND(\ta/b.wav P=90)", u"", u"!!"}) {
        EXPECT_FALSE(processor.processSound(tag)) << znt::utf8FromText(tag);
        EXPECT_TRUE(processor._zntSound() == request && sounds.made.size() == 2);
        EXPECT_TRUE(sounds.made[0]->playsNow && sounds.made[1]->playsNow);
    }
}

TEST_F(Processor, ACountOfNPlaysOnceAndNTimesAgain)
{
    struct {
        const char16_t* tag;
        int plays;
        bool loops;
        int seeks;
    } const rows[] = {
        {u"!!SOUND(a/b.wav L=2 P=60)", 3, false, 3}, {u"!!SOUND(a/b.wav P=60)", 1, false, 1},
        {u"!!SOUND(a/b.wav L=0 P=60)", 1, false, 0}, {u"!!SOUND(a/b.wav L=-3 P=60)", 1, false, 0},
        {u"!!SOUND(a/b.wav L=-1 P=60)", 1, true, 1}, {u"!!SOUND(a/b.wav L=many P=60)", 1, false, 0},
        {u"!!MUSIC(a/b.wav L=0 P=60)", 1, false, 1}, {u"!!MUSIC(a/b.wav L=-1 P=60)", 1, true, 1},
        {u"!!MUSIC(a/b.wav L=2 P=60)", 3, false, 3}};
    for (const auto& row : rows) {
        SCOPED_TRACE(znt::utf8FromText(row.tag));
        ZNTMSPProcessor fresh(places, sounds);
        EXPECT_TRUE(fresh.processSound(row.tag));
        sounds.finishAll();
        EXPECT_EQ(last().timesPlayed, row.plays);
        EXPECT_EQ(last().loops, row.loops);
        EXPECT_EQ(last().timesSoughtToStart, row.seeks);
    }
}

TEST_F(Processor, OffStopsAChannelButARepetitionWithRoundsLeftComesBack)
{
    process(u"!!SOUND(a/b.wav L=-1)");
    auto& endless = last();
    process(u"!!MUSIC(a/b.wav L=-1)");
    process(u"!!SOUND(Off)");
    EXPECT_TRUE(!endless.playsNow && last().playsNow);
    process(u"!!MUSIC(Off)");
    sounds.deliverNotices();
    EXPECT_FALSE(sounds.isPlaying());

    process(u"!!SOUND(a/b.wav L=1)");
    for (const bool comesBack : {true, false}) {
        process(u"!!SOUND(Off)");
        sounds.deliverNotices();
        EXPECT_EQ(last().playsNow, comesBack);
    }
}

TEST_F(Processor, AStopOfAllSoundsEndsRepetitionsTooAndTheNextTagPlaysAsEver)
{
    process(u"!!MUSIC(a/b.wav L=-1)");
    process(u"!!SOUND(a/b.wav L=5 P=1)");
    process(u"!!SOUND(a/b.wav L=7 P=2)"); // its predecessor's notice is on its way
    processor.playTriggerSound(u"a/b.wav");
    processor.stopAllSounds();
    sounds.deliverNotices();
    EXPECT_FALSE(sounds.isPlaying());
    process(u"!!SOUND(a/b.wav L=2)");
    sounds.finishAll();
    EXPECT_EQ(last().timesPlayed, 3);
}

TEST_F(Processor, OnlyAHigherPriorityCutsInAndMusicMeasuresAgainstZero)
{
    process(u"!!SOUND(a/b.wav P=50)");
    auto& first = last();
    for (const auto* tag : {u"!!SOUND(a/b.wav P=50)", u"!!SOUND(a/b.wav P=x)", u"!!SOUND(a/b.wav V=1)"}) {
        process(tag);
        EXPECT_TRUE(first.playsNow && !last().playsNow) << znt::utf8FromText(tag);
    }
    process(u"!!SOUND(a/b.wav P=51)");
    EXPECT_TRUE(!first.playsNow && last().playsNow);

    process(u"!!MUSIC(a/b.wav P=90)");
    auto& music = last();
    process(u"!!MUSIC(a/b.wav P=0)");
    EXPECT_TRUE(music.playsNow);
    process(u"!!MUSIC(a/b.wav P=1)");
    EXPECT_FALSE(music.playsNow);
    // The music's request is the one that a new sound is measured against.
    process(u"!!SOUND(a/b.wav P=2)");
    EXPECT_TRUE(last().playsNow);
}

TEST_F(Processor, ASoundThatWasCutOffStaysSilentAndAMissingOneStillCutsIn)
{
    process(u"!!SOUND(a/b.wav L=5 P=1)");
    auto& first = last();
    process(u"!!SOUND(a/b.wav L=1 P=2)");
    sounds.deliverNotices();
    EXPECT_FALSE(first.playsNow);
    sounds.finishAll();
    EXPECT_EQ(last().timesPlayed, 2);

    process(u"!!SOUND(a/b.wav L=-1 P=1)");
    process(u"!!SOUND(a/missing.wav P=2)");
    EXPECT_FALSE(last().playsNow);
    EXPECT_EQ(processor._sounds(), nullptr);
}

TEST_F(Processor, AFetchedSoundIsRankedOnArrivalAndLosesToAHigherOne)
{
    sounds.urlsTakeTime = true;
    const auto ask = [&](const char16_t* rank) {
        process(u"!!SOUND(a/missing.wav L=1 P=" + std::u16string(rank) + u" U=http://a.example/c.wav)");
        return sounds.made.back();
    };
    const auto playFile = [&](const char16_t* rank) {
        process(u"!!SOUND(a/b.wav L=1 P=" + std::u16string(rank) + u")");
        sounds.deliverNotices();
        return sounds.made.back();
    };
    const auto first = ask(u"50");
    EXPECT_TRUE(playFile(u"50")->playsNow) << "a sound on its way held the channel";
    EXPECT_FALSE(first->arrive());
    EXPECT_FALSE(ask(u"50")->arrive()) << "fetched although it could not win";

    // Of two on their way the higher one comes, and of equals the older: a game may repeat itself.
    const auto second = ask(u"60"), third = ask(u"60"), fourth = ask(u"70");
    EXPECT_FALSE(second->arrive() || third->arrive());
    const auto playing = playFile(u"65");
    EXPECT_TRUE(fourth->arrive());
    EXPECT_TRUE(fourth->playsNow && !playing->playsNow);
    sounds.finishAll();
    // One that cannot be fetched is as a file that is not there: it still cuts in.
    const auto last = playFile(u"1");
    EXPECT_TRUE(ask(u"2")->arrive(/*isFound=*/false));
    EXPECT_FALSE(last->playsNow);

    process(u"!!MUSIC(a/missing.wav U=http://a.example/c.wav)");
    const auto music = sounds.made.back(), sound = ask(u"1");
    process(u"!!MUSIC(Off)");
    processor.stopAllSounds();
    EXPECT_FALSE(music->arrive() || sound->arrive());
    EXPECT_TRUE(ask(u"1")->arrive());
}

TEST_F(Processor, AStopByPriorityOfASoundWithoutNoticesSwallowsTheNextOne)
{
    process(u"!!SOUND(a/b.wav L=-1 P=1)"); // gives no notice
    process(u"!!SOUND(a/b.wav L=4 P=2)");
    sounds.deliverNotices();
    sounds.finishAll();
    EXPECT_EQ(last().timesPlayed, 1);
    process(u"!!SOUND(a/b.wav L=4 P=3)");
    sounds.finishAll();
    EXPECT_EQ(last().timesPlayed, 5);
}

TEST_F(Processor, ContinueKeepsTheCountAndZeroBeginsItAgain)
{
    const std::pair<const char16_t*, int> rows[] = {{u"!!SOUND(a/b.wav L=5 C=1 P=2)", 3},
                                                    {u"!!SOUND(a/b.wav L=5 C=0 P=2)", 6},
                                                    {u"!!SOUND(a/b.wav L=5 P=2)", 6}};
    for (const auto& [tag, plays] : rows) {
        process(u"!!SOUND(a/b.wav L=3 P=1)");
        process(tag); // the older count of 3 is added to the new one
        sounds.deliverNotices();
        sounds.finishAll();
        EXPECT_EQ(last().timesPlayed, plays) << znt::utf8FromText(tag);
    }
}

TEST_F(Processor, CountedMusicCountsOnTheSoundChannel)
{
    process(u"!!MUSIC(a/b.wav L=2 P=1)");
    auto& music = last();
    process(u"!!SOUND(a/b.wav L=0 P=5)"); // now the latest request, with a count of 0
    music.finish();
    EXPECT_EQ(music.timesPlayed, 1);
    process(u"!!MUSIC(a/b.wav L=-1 P=1)");
    EXPECT_EQ(last().name(), u"infinateLoop");
    last().finish();
    EXPECT_FALSE(last().playsNow);
}

TEST_F(Processor, ATriggersSoundPlaysBesideTheChannelsByItsExactName)
{
    add("battle/hit.wav");
    process(u"!!SOUND(battle/hit.wav P=90)");
    processor.playTriggerSound(u"battle/hit.wav");
    EXPECT_TRUE(sounds.made.front()->playsNow && last().playsNow);
    for (const auto* name : {u"", u"battle", u"battle/HIT.wav", u"battle/hit", u"missing.wav"})
        processor.playTriggerSound(name);
    EXPECT_EQ(sounds.made.size(), 2u);
}

TEST_F(Processor, ANoticeAfterTheProcessorsEndDoesNothing)
{
    {
        ZNTMSPProcessor brief(places, sounds);
        EXPECT_TRUE(brief.processSound(u"!!SOUND(a/b.wav L=5)"));
    }
    sounds.finishAll();
    EXPECT_EQ(last().timesPlayed, 1);
}

TEST_F(Processor, ATagOfMegabytesIsHandledInTime)
{
    const std::u16string many(1'000'000, u'*'), digits(1'000'000, u'9');
    process(u"!!SOUND(a/" + many + u" V=" + digits + u")");
}

} // namespace
