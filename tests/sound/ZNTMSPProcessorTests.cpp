#include "ZNTMSPProcessor.h"
#include "ZNTRecordedSounds.h"
#include "ZNTTemporaryFolder.h"
#include "ZNTText.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace
{

std::vector<std::u16string> wordsOf(std::u16string_view text)
{
    std::vector<std::u16string> words(1);
    for (const auto unit : text)
        if (unit == u' ')
            words.emplace_back();
        else
            words.back() += unit;
    return words;
}

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
         {"weather/rain.wav", "battle/hit", "dying_groan.wav", "paren/b.wav)", "weather/Donner \xC3\x9C.wav",
          "wide/\xE9\x9B\xA8\xE9\x9F\xB3.wav", "folder/a.wav/inside.wav", "accents/re\xCC\x81gen.WAV"})
        add(name);
    struct {
        const char16_t* tag;
        const char* made;
    } const rows[] = {
        {u"!!SOUND(weather/rain.wav V=50)", "weather/rain.wav"},
        {u"!!SOUND(weather/RAIN.Wav V=50)", "weather/rain.wav"},
        {u"!!SOUND(weather/ra?n.wav P=10)", "weather/rain.wav"},
        {u"!!SOUND(weather/R*N.* P=10)", "weather/rain.wav"},
        {u"!!SOUND(weather/ra??n.wav P=10)", "(none)"},
        {u"!!SOUND(weather/rain V=1)", "(none)"},
        {u"!!SOUND(Weather/rain.wav V=1)", "(none)"}, // folders are taken as they are written
        {u"!!SOUND('battle/hit' V=100)", "battle/hit"},
        {u"!!SOUND(\"battle/hit\" V=100)", "battle/hit"},
        {u"!!SOUND(/dying_groan.wav V=80)", "/dying_groan.wav"},
        {u"!!SOUND(weather/rain.wav)", "(none)"}, // the name ends with the parenthesis
        {u"!!SOUND(paren/b.wav)", "paren/b.wav)"},
        {u"!!SOUND(accents/REGEN.wav V=1)", "accents/re\xCC\x81gen.WAV"},
        {u"!!SOUND(accents/r\u00E9g\u00EAn.wav V=1)", "accents/re\xCC\x81gen.WAV"},
        {u"!!SOUND(accents/r?gen.wav V=1)", "accents/re\xCC\x81gen.WAV"},
        {u"!!SOUND(weather/donner?u.wav V=1)", "weather/Donner \xC3\x9C.wav"},
        {u"!!SOUND(wide/??.wav V=1)", "wide/\xE9\x9B\xA8\xE9\x9F\xB3.wav"},
        {u"!!SOUND(folder/a.wav V=1)", "(none)"}, // a folder is no sound
        {u"!!SOUND(weather/snow.wav U=http://a.example/snow.wav)", "http://a.example/snow.wav"},
        {u"!!SOUND(weather/snow.wav U=http://a.example/snow)", "http://a.example/snow.wav"},
        {u"!!SOUND(weather/snow.wav U=http://a.example/snow.wav V=50)", "http://a.example/snow.wa.wav"},
        {u"!!SOUND(weather/snow.wav U='http://a.example/snow')", "http://a.example/snow.wav"},
        {u"!!SOUND(weather/rain.wav U=http://a.example/snow.wav)", "weather/rain.wav"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(znt::utf8FromText(row.tag));
        EXPECT_EQ(madeBy(row.tag), row.made);
    }
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
    const int watch = inotify_init1(IN_NONBLOCK);
    for (const auto* name : {"outside", "Music/Zantor/sounds2"})
        ASSERT_GE(inotify_add_watch(watch, home.path(name).c_str(), IN_OPEN | IN_ACCESS), 0);

    const auto outside = znt::textFromUtf8(home.path("outside/secret.wav"));
    const auto longName = std::u16string(300, u'x');
    auto names =
        wordsOf(u"../../../outside/secret.wav weather/../../sounds2/secret.wav ../secret.wav ../* "
                u"./../*.wav ~/outside/secret.wav %2e%2e/%2e%2e/outside/secret.wav ..%2f../secret.wav "
                u"weather/link.wav weather/*link.wav weather/a_relative.wav elsewhere/secret.wav "
                u"elsewhere/* /loop.wav weather/pipe.wav weather/.. weather/");
    names.insert(names.end(),
                 {outside, u"/" + outside, u"weather/" + longName + u".wav", longName + u"/" + longName,
                  u"weather/" + znt::replacedAll(longName, u"x", u"../") + u"etc/passwd",
                  u"weather/rain.wav\0/../x"s, u"weather\0/rain.wav"s});
    for (const auto& name : names) {
        SCOPED_TRACE(znt::utf8FromText(name));
        EXPECT_EQ(madeBy(u"!!SOUND(" + name + u" V=100)"), "(none)");
        processor.playTriggerSound(name);
        processor.playTriggerSound(name + u".wav");
        EXPECT_TRUE(sounds.made.empty());
    }
    EXPECT_FALSE(processor.getSoundFromSoundFileArray({u"../sounds2/secret"}));
    char events[4'096];
    EXPECT_EQ(read(watch, events, sizeof events), -1) << "something outside was opened";
    close(watch);

    EXPECT_EQ(madeBy(u"!!SOUND(/inside.wav V=100)"), "/inside.wav");
    EXPECT_EQ(madeBy(u"!!SOUND(weather/../weather/rain.wav V=100)"), "weather/../weather/rain.wav");
    // Entries that lead outside do not take the place of one that fits.
    EXPECT_EQ(madeBy(u"!!SOUND(weather/*.wav V=100 P=9 L=0)").find("link"), std::string::npos);
}

TEST_F(Processor, EveryWordButSoundMeansMusic)
{
    for (const auto* tag : {u"!!SOUND(a/b.wav P=1)", u"!!sound(a/b.wav P=1)", u"!!(a/b.wav P=1)"})
        EXPECT_TRUE(processor.isSound(tag)) << znt::utf8FromText(tag);
    for (const auto* tag : {u"!!MUSIC(a/b.wav P=1)", u"!!SOUNDS(a/b.wav P=1)", u"!!X(!!SOUND P=1)"})
        EXPECT_FALSE(processor.isSound(tag)) << znt::utf8FromText(tag);
}

TEST_F(Processor, TheLastValueOfAParameterCountsAndItsLetterIsUpperCase)
{
    process(u"!!SOUND(a/b.wav V=10 v=20 L='0' V=\"30\" T=weather P=7)");
    const auto& request = *processor._zntSound();
    EXPECT_EQ(request._vParam(), u"30");
    EXPECT_EQ(request._lParam(), u"0");
    EXPECT_EQ(request._pParam(), u"7)");
    EXPECT_EQ(request._tParam(), u"weather");
    EXPECT_FALSE(request._cParam() || request._uParam());
    EXPECT_EQ(request._fName(), znt::textFromUtf8(places.soundFolder() + "a/b.wav"));
    EXPECT_FLOAT_EQ(last().volume, 0.3F);
    for (const auto* word : {u"loud", u"inf", u"-Infinity", u"nan", u"+inf"}) {
        process(u"!!SOUND(a/b.wav P=9 V=" + std::u16string(word) + u")");
        EXPECT_EQ(last().volume, 0) << znt::utf8FromText(word);
    }
}

TEST_F(Processor, ATagThatCannotBeUnderstoodChangesNothing)
{
    process(u"!!SOUND(a/b.wav P=50 L=3)");
    process(u"!!MUSIC(a/b.wav P=50 L=3)");
    const auto sound = processor._sounds(), music = processor._music();
    const auto request = processor._zntSound();
    for (const auto* tag : {u"!!SOUND(nofolder.wav P=90)", u"!!SOUND(Off U=x)", u"!!SOUND(a/b.wav V='' P=90)",
                            u"!!SOUND('' P=90)", u"!!SOUND(' P=90)", u"!!SOUND(a/b.wav U=\"\" P=90)",
                            u"!!SOUND(a/b.wav L=' P=90)", u"!!MUSIC(nofolder P=90)", u"!!SOUND()",
                            u"!!SOUND(\t)", u"!!SOUND(\ta/b.wav P=90)", u"", u"!!"}) {
        SCOPED_TRACE(znt::utf8FromText(tag));
        EXPECT_FALSE(processor.processSound(tag));
        EXPECT_TRUE(processor._sounds() == sound && processor._music() == music);
        EXPECT_TRUE(processor._zntSound() == request);
        EXPECT_TRUE(sound->isPlaying() && music->isPlaying());
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
        {u"!!SOUND(a/b.wav L=2 P=60)", 3, false, 3},    {u"!!SOUND(a/b.wav L=1 P=60)", 2, false, 2},
        {u"!!SOUND(a/b.wav P=60)", 1, false, 1},        {u"!!SOUND(a/b.wav L=0 P=60)", 1, false, 0},
        {u"!!SOUND(a/b.wav L=-3 P=60)", 1, false, 0},   {u"!!SOUND(a/b.wav L=-1 P=60)", 1, true, 1},
        {u"!!SOUND(a/b.wav L=many P=60)", 1, false, 0}, {u"!!MUSIC(a/b.wav L=0 P=60)", 1, false, 1},
        {u"!!MUSIC(a/b.wav L=-1 P=60)", 1, true, 1},    {u"!!MUSIC(a/b.wav L=2 P=60)", 3, false, 3}};
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
    auto& music = last();
    process(u"!!SOUND(Off)");
    EXPECT_FALSE(endless.playsNow);
    EXPECT_TRUE(music.playsNow);
    process(u"!!MUSIC(Off)");
    sounds.deliverNotices();
    EXPECT_FALSE(endless.playsNow || music.playsNow);

    process(u"!!SOUND(a/b.wav L=1)");
    for (const int plays : {2, 2}) {
        process(u"!!SOUND(Off)");
        sounds.deliverNotices();
        EXPECT_EQ(last().timesPlayed, plays);
    }
    EXPECT_FALSE(last().playsNow);
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
    auto& second = last();
    sounds.deliverNotices();
    EXPECT_FALSE(first.playsNow);
    sounds.finishAll();
    EXPECT_EQ(second.timesPlayed, 2);

    process(u"!!SOUND(a/b.wav L=-1 P=1)");
    auto& third = last();
    process(u"!!SOUND(a/missing.wav P=2)");
    EXPECT_FALSE(third.playsNow);
    EXPECT_EQ(processor._sounds(), nullptr);
    process(u"!!SOUND(a/missing.wav P=2)");
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

    // Of two on their way the higher one comes, and of equals the older: a game that repeats itself is heard.
    const auto second = ask(u"60"), third = ask(u"60"), fourth = ask(u"70");
    EXPECT_FALSE(second->arrive() || third->arrive());
    const auto playing = playFile(u"65");
    EXPECT_TRUE(fourth->arrive());
    EXPECT_TRUE(fourth->playsNow && !playing->playsNow);
    sounds.deliverNotices();
    fourth->finish();
    EXPECT_EQ(fourth->timesPlayed, 2);
    fourth->finish();

    // One that cannot be fetched is as a file that is not there: it still cuts in.
    const auto last = playFile(u"1");
    EXPECT_TRUE(ask(u"2")->arrive(/*isFound=*/false));
    EXPECT_FALSE(last->playsNow);
    EXPECT_EQ(processor._sounds(), nullptr);

    process(u"!!MUSIC(a/missing.wav U=http://a.example/c.wav)");
    const auto music = sounds.made.back(), sound = ask(u"1");
    process(u"!!MUSIC(Off)");
    EXPECT_FALSE(music->arrive());
    processor.stopAllSounds();
    EXPECT_FALSE(sound->arrive());
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
    const auto playsAfter = [&](const char16_t* tag) {
        process(u"!!SOUND(a/b.wav L=3 P=1)");
        process(tag); // the older count of 3 is added to the new one
        sounds.deliverNotices();
        sounds.finishAll();
        return last().timesPlayed;
    };
    EXPECT_EQ(playsAfter(u"!!SOUND(a/b.wav L=5 C=1 P=2)"), 3);
    EXPECT_EQ(playsAfter(u"!!SOUND(a/b.wav L=5 C=0 P=2)"), 6);
    EXPECT_EQ(playsAfter(u"!!SOUND(a/b.wav L=5 P=2)"), 6);
    // Counts beyond all measure do not wrap around.
    process(u"!!SOUND(a/b.wav L=2147483647 P=1)");
    process(u"!!SOUND(a/b.wav L=2147483648 C=1 P=2)");
    process(u"!!SOUND(a/b.wav L=5 C=1 P=3)");
    sounds.deliverNotices();
    sounds.finishAll();
    EXPECT_EQ(last().timesPlayed, 1);
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
    for (int round = 0; round < 2; ++round) {
        processor.playTriggerSound(u"battle/hit.wav");
        EXPECT_TRUE(last().playsNow);
    }
    EXPECT_EQ(sounds.made.size(), 3u);
    EXPECT_TRUE(sounds.made.front()->playsNow);
    for (const auto* name : {u"", u"battle", u"battle/HIT.wav", u"battle/hit", u"missing.wav"})
        processor.playTriggerSound(name);
    EXPECT_EQ(sounds.made.size(), 3u);
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
