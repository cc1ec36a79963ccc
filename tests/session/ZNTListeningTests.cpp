#include "ZNTChannelHistory.h"
#include "ZNTSessionFixture.h"
#include "ZNTSpeechReview.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

/// A session whose player listens.
struct Listening : ZNTSessionFixture {
    using Switch = bool ZNTSettings::*;
    void set(std::initializer_list<Switch> switches, bool on = true)
    {
        for (const auto field : switches)
            settings.*field = on;
        session().setSettings(settings);
    }

    ZNTSettings settings;
};

TEST_F(Listening, WhatIsSentOrGaggedOrAnUnchangedPromptIsShownAndNotSpoken)
{
    addTrigger(u"caws", u"", /*gag=*/true);
    set({&ZNTSettings::speech, &ZNTSettings::silentEcho, &ZNTSettings::changedPrompts, &ZNTSettings::gagLines,
         &ZNTSettings::emptyAction});
    connect();
    type(u"look");
    session().insertTextIntoTheWindow(u"Macro Names");
    for (const auto* text : {"One.\r\nA crow caws.\r\nTwo.\r\nHP 10> ", "A crow caws.\r\n", "\x1b[31mHP 10>",
                             "Bite.\r\nHP 10> ", "Bite.\r\nHP 9> ", "HP 9> ", "End.\r\n"})
        receive(text + goAhead);
    EXPECT_THAT(spoken(5), ElementsAre("Macro Names", "One. Two. HP 10> ", "Bite.", "Bite. HP 9> ", "End."));
    EXPECT_TRUE(shown().starts_with(u"look\r") && shown().ends_with(u"HP 9> HP 9> End.\r\n"));
    EXPECT_EQ(received(), "look\r\n") << "an empty action sends nothing";
    session().replayLastText();
    EXPECT_EQ(spoken(6).back(), "One. Two. HP 10> Bite. Bite. HP 9> End.");
    session().speechReview().lineFromEnd(5);
    EXPECT_EQ(speech.said.back(), "A crow caws.") << "the review has it";
    session().sayPrompt();
    EXPECT_EQ(speech.said.back(), "HP 9>");
}

TEST_F(Listening, ReviewSoundsOnWhileSpeechIsOffAndReplayAndPromptWithTheirSettingAlone)
{
    speech.staysSpeaking = true;
    set({&ZNTSettings::interruption});
    connect();
    receive("Welcome." + goAhead);
    type(u"look");
    receive("A hall.\r\nA door." + goAhead);
    session().replayLastText();
    session().sayPrompt();
    session().speechReview().previousLine();
    receive(" A cat." + goAhead);
    EXPECT_THAT(speech.said, ElementsAre("A door.")) << "the game's text cuts nothing off";
    set({&ZNTSettings::replayWhenOff});
    session().replayLastText();
    session().sayPrompt();
    EXPECT_THAT(speech.said, ElementsAre("A door.", "(stop)", "A hall. A door. A cat.", "(stop)", "A cat."))
        << "what came since the last line";
}

TEST_F(Listening, FinishedLinesAreShownAtOnceAlsoOfAGameThatIsPlayedAlready)
{
    connect();
    receive("Held back");
    set({&ZNTSettings::wholeLines});
    receive(".\r\n  A line. \r\nHP \r");
    EXPECT_EQ(shown(), u"Held back.\r\n  A line. \r\n") << "the CR may be half of a line end";
    receive("\n> ");
    machine.loop.advance(0.49);
    EXPECT_TRUE(shown().ends_with(u"HP \r\n"));
    silence();
    EXPECT_TRUE(shown().ends_with(u"HP \r\n> "));
    for (const auto* piece : {"One\r", "x\n", "\r"})
        receive(piece);
    EXPECT_TRUE(shown().ends_with(u"> One\rx\n\r")) << "the last two are a pair, so nothing waits";
    receive("Name:" + telnet({255, 239}));
    EXPECT_TRUE(shown().ends_with(u"Name:")) << "an end of record";
}

TEST_F(Listening, SpeechStartsWithAReaderUnlessThePlayerHasSwitchedIt)
{
    session();
    const auto comes = [this] {
        reader.runs = true;
        session().screenReaderChanged();
        return session().speechOnOffBindingState() == 1;
    };
    EXPECT_FALSE(comes()) << "off until asked";
    set({&ZNTSettings::speechFollowsReader});
    EXPECT_EQ(session().speechOnOffBindingState(), 1) << "a reader that runs already";
    EXPECT_FALSE(session().settings().speech) << "no choice to remember";
    session().setSpeechOnOffBindingState(0);
    EXPECT_FALSE(comes()) << "the player wants silence";
    controller.reset(); // another start, while the reader runs
    EXPECT_EQ(session().speechOnOffBindingState(), 1);
    EXPECT_EQ(session().speechInterruptOnOffBindingState(), 1);
    EXPECT_FALSE(session().zntSpeechSynth().isSpeachOn()) << "which means that it is on";
}

TEST_F(Listening, AllThatComesBeforeThePlayersFirstLineIsOneTextThatIsFinished)
{
    addTrigger(u"Name", u"Zora");
    reader.runs = true;
    settings.finishTexts = ZNTFinishedTexts::First;
    set({&ZNTSettings::speech, &ZNTSettings::followVoice, &ZNTSettings::catchUp, &ZNTSettings::silentEcho});
    connect();
    for (const auto* asks : {"What is your Name?\r\n", "Hello.\r\n", "Have fun.\r\n"}) {
        receive("A line of the welcome that takes the reader a few seconds to say.\r\n" + std::string(asks) +
                goAhead);
        machine.loop.advance(4);
    }
    EXPECT_EQ(received(), "Zora\r\n");
    const auto isSaid = [this](const char* end) {
        return machine.loop.runUntil([&] {
            machine.loop.advance(0.5);
            return std::ranges::any_of(reader.said, [&](const auto& text) { return text.ends_with(end); });
        });
    };
    EXPECT_TRUE(isSaid("Have fun."));
    EXPECT_EQ(reader.said.size(), 6u) << "a trigger's line does not end the first text";
    type(u"look");
    for (int line = 0; line < 9; ++line)
        receive("A line of a room that takes the reader a few seconds to say, too.\r\n" + goAhead);
    EXPECT_TRUE(isSaid(" skipped.")) << "what comes later is skipped as ever";
}

TEST_F(Listening, SoundsEndWithTheConnectionAndTheFarewellBeginsNone)
{
    machine.home.write("Music/Zantor/sounds/w/rain.wav", "wave");
    for (const bool isSet : {false, true}) {
        sounds.stopAll();
        set({&ZNTSettings::sounds});
        set({&ZNTSettings::stopSounds}, isSet);
        connect();
        receive("!!MUSIC(w/rain.wav L=-1)\r\n" + goAhead + "!!SOUND(w/rain.wav L=-1)\r\n");
        EXPECT_TRUE(sounds.isPlaying());
        receive("So long. !!SOUND(w/rain.wav L=-1)\r\n");
        server.closeWhenSent();
        silence();
        EXPECT_EQ(sounds.isPlaying(), !isSet);
    }
}

TEST_F(Listening, UrgentLinesComeBeforeWhatWaitsOnceAndQuietOnesAreShownAndLoggedAlone)
{
    connect();
    settings.urgentLines = {"Bob hits you", "(["};
    settings.quietLines = {"sun"};
    set({&ZNTSettings::speech, &ZNTSettings::channelHistory});
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_TRUE(notices[0].starts_with(u"The pattern \"([\" cannot be used"));
    speech.staysSpeaking = true;
    receive("A square\r\n" + goAhead);
    EXPECT_THAT(spoken(1), ElementsAre("A square"));
    receive("A dog barks.\r\nThe sun rises.\r\nBob hits you!\r\nAnn says, run\r\n" + goAhead);
    EXPECT_TRUE(znt::contains(shown(), u"The sun rises."));
    EXPECT_THAT(logged(), HasSubstr("The sun rises.\r\nBob hits you!"));
    speech.speaks = false;
    EXPECT_THAT(spoken(2).back(), "Bob hits you!");
    speech.speaks = false;
    EXPECT_THAT(spoken(3).back(), "A dog barks. Ann says, run");
    EXPECT_TRUE(session().channelHistory().nextChannel().ends_with(u"Ann says, run"));
    settings.quietLines = {};
    session().setSettings(settings);
    EXPECT_EQ(notices.size(), 1U) << "the player knows of the pattern already";
}

} // namespace
