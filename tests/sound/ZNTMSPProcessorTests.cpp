#include "ZNTMSPProcessor.h"
#include "ZNTRecordedSounds.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTText.h"

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

TEST_F(Processor, StandardTagsNeedNoFolderBeforeTheNameAndTheirUrlIsAPlace)
{
    for (const auto* name : {"splat.wav", "combat/hit.wav", "combat/splat.wav"})
        add(name);
    home.write("outside/secret.wav", "not for games");
    const std::pair<std::u16string, std::string> rows[] = {
        {u"splat.wav V=50 P=62 U=http://a.example/sounds/)", "/splat.wav"},
        {u"SPLAT.wav)", "/splat.wav"},
        {u"splat.wav T=combat)", "combat/splat.wav"},
        {u"h?t.wav T=combat/ V=3)", "combat//hit.wav"},
        {u"combat/hit.wav T=weather V=3)", "combat/hit.wav"},
        {u"splat.wav V=3) The troll (a big one) sighs.)", "/splat.wav"},
        {u"splat.wav T=weather)", "(none)"},
        {u"whisper.wav V=50 P=78 U=http://a.example/sounds/)", "http://a.example/sounds/whisper.wav"},
        {u"whisper U=\"http://a.example\" V=50)", "http://a.example/whisper.wav"},
        {u"whisper.wav U=http://a.example/whisper.wav T=talk)", "http://a.example/whisper.wav"},
        {u"whisper U=http://a.example/whisper V=5)", "http://a.example/whisper.wav"},
        {u"talk/low.wav U=http://a.example/?id=3)", "http://a.example/?id=3/talk/low.wav"},
        {u"w*.wav U=http://a.example/)", "(none)"}, // what would be fetched is not known
        {u"Off U=http://a.example/)", "(none)"},
        // Nothing outside the folder, by any of the names.
        {u"secret.wav T=../../../outside V=3)", "(none)"},
        {u"../../../outside/secret.wav V=3)", "(none)"},
        {u"hit.wav T=" + znt::textFromUtf8(home.path("outside")) + u")", "(none)"},
        {u"hit.wav T=" + std::u16string(5'000, u'x') + u")", "(none)"},
        {u"hit.wav T='' V=3)", "(none)"},
    };
    processor.setStandardTags(true);
    for (const auto& [tag, made] : rows)
        EXPECT_EQ(madeBy(u"!!SOUND(" + tag), made) << znt::utf8FromText(tag);

    process(u"!!SOUND(splat.wav L=-1)");
    process(u"!!SOUND(Off U=http://a.example/)");
    EXPECT_FALSE(last().playsNow);
    processor.setStandardTags(false);
    EXPECT_EQ(madeBy(u"!!SOUND(splat.wav V=3)"), "(none)");
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
    std::vector<std::u16string> names = {u"../../../outside/secret.wav",
                                         u"weather/../../sounds2/secret.wav",
                                         u"../*",
                                         u"weather/pipe.wav",
                                         u"~/outside/secret.wav",
                                         u"weather/link.wav",
                                         u"weather/*link.wav",
                                         u"weather/a_relative.wav",
                                         u"elsewhere/secret.wav",
                                         u"elsewhere/*",
                                         u"/loop.wav",
                                         u"weather/.."};
    names.insert(names.end(), {outside, u"/" + outside, u"weather/" + longName + u".wav",
                               znt::replacedAll(longName, u"x", u"../") + u"etc/passwd",
                               u"weather/rain.wav\0/../x"s, u"weather\0/rain.wav"s});
    for (const auto& name : names) {
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

TEST_F(Processor, RepetitionsPrioritiesAndContinuationsPlaySoMuchOfEachSound)
{
    struct {
        std::vector<std::u16string> tags;
        std::vector<std::string> played;
    } const rows[] = {
        {{u"SOUND L=2"}, {"3"}},
        {{u"SOUND V=50"}, {"1"}},
        {{u"SOUND L=0"}, {"1"}},
        {{u"SOUND L=-3"}, {"1"}},
        {{u"SOUND L=-1"}, {"endless"}},
        {{u"SOUND L=many"}, {"1"}},
        {{u"MUSIC L=0"}, {"1"}},
        {{u"MUSIC L=-1"}, {"endless"}},
        {{u"MUSIC L=2"}, {"3"}},
        // Only a higher priority cuts in, and music is measured against zero.
        {{u"SOUND P=50", u"SOUND P=50"}, {"1", "refused"}},
        {{u"SOUND P=50", u"SOUND P=x"}, {"1", "refused"}},
        {{u"SOUND P=50", u"SOUND V=1"}, {"1", "refused"}},
        {{u"SOUND P=50", u"SOUND P=51"}, {"cut off", "1"}},
        {{u"MUSIC P=90", u"MUSIC P=0"}, {"1", "refused"}},
        {{u"MUSIC P=90", u"MUSIC P=1"}, {"cut off", "1"}},
        // The music's request is the one that a new sound is measured against.
        {{u"SOUND P=51", u"MUSIC P=1", u"SOUND P=2"}, {"cut off", "1", "1"}},
        {{u"SOUND L=5 P=1", u"SOUND L=1 P=2"}, {"cut off", "2"}},
        // The older count of 3 is added to the new one.
        {{u"SOUND L=3 P=1", u"SOUND L=5 C=1 P=2"}, {"cut off", "3"}},
        {{u"SOUND L=3 P=1", u"SOUND L=5 C=0 P=2"}, {"cut off", "6"}},
        {{u"SOUND L=3 P=1", u"SOUND L=5 P=2"}, {"cut off", "6"}},
        // An endless sound gives no notice of its stop, so the next notice counts as that one.
        {{u"SOUND L=-1 P=1", u"SOUND L=4 P=2"}, {"cut off", "1"}},
        // Music counts on the sound channel, whose latest request has a count of 0.
        {{u"MUSIC L=2 P=1", u"SOUND L=0 P=5"}, {"1", "1"}},
    };
    for (const auto& row : rows) {
        ZNTMSPProcessor fresh(places, sounds);
        sounds.made.clear();
        for (const auto& tag : row.tags) {
            EXPECT_TRUE(fresh.processSound(u"!!" + tag.substr(0, 5) + u"(a/b.wav" + tag.substr(5) + u")"));
            sounds.deliverNotices();
        }
        std::vector<std::string> played;
        for (const auto& sound : sounds.made)
            played.emplace_back(sound->timesPlayed == 0 ? "refused" : sound->playsNow ? "" : "cut off");
        sounds.finishAll();
        for (std::size_t at = 0; at < played.size(); ++at)
            if (played[at].empty())
                played[at] =
                    sounds.made[at]->loops ? "endless" : std::to_string(sounds.made[at]->timesPlayed);
        EXPECT_EQ(played, row.played) << znt::utf8FromText(row.tags.back());
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

TEST_F(Processor, ASoundThatIsMissingStillCutsIn)
{
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

} // namespace
