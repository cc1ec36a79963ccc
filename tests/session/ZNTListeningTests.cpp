#include "ZNTSessionFixture.h"
#include "ZNTSpeechReview.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{

/// A session whose player listens. Speech is on.
struct Listening : ZNTSessionFixture {
    /// Every setting of a listening player that a test does not change.
    void listen(std::initializer_list<bool ZNTSettings::*> switchedOn)
    {
        for (const auto field : switchedOn)
            settings.*field = true;
        session().setSettings(settings);
    }
    void turnSpeech(bool on)
    {
        session().setSpeechOnOffBindingState(on ? 1 : 0);
        session().textToSpeechOnAndOff();
        settings.speech = on;
    }
    /// What is spoken of the text and of a last word, which shows that nothing else follows.
    std::vector<std::string> spokenOf(const std::vector<std::string>& blocks)
    {
        speech.said.clear();
        for (const auto& block : blocks)
            receive(block);
        silence();
        receive("That is all." + goAhead);
        machine.loop.runUntil([this] {
            machine.loop.advance(0.5);
            return !speech.said.empty() && speech.said.back() == "That is all.";
        });
        EXPECT_FALSE(speech.said.empty());
        if (!speech.said.empty())
            speech.said.pop_back();
        return speech.said;
    }

    ZNTSettings settings;
};

TEST_F(Listening, SentLinesAreShownAndNotSpokenButTheClientsOwnLinesAre)
{
    turnSpeech(true);
    listen({&ZNTSettings::silentEcho});
    connect();
    type(u"look");
    session().insertTextIntoTheWindow(u"Macro Names");
    EXPECT_THAT(spokenOf({}), ElementsAre("Macro Names"));
    EXPECT_EQ(shown(), u"look\rMacro Names\rThat is all.");
}

TEST_F(Listening, ReviewSoundsOnWhileSpeechIsOffAndReplayWithItsSettingAlone)
{
    speech.staysSpeaking = true;
    listen({&ZNTSettings::interruption});
    connect();
    type(u"look");
    receive("A hall.\r\nA door." + goAhead);
    session().replayLastText();
    session().speechReview().previousLine();
    receive("A cat comes." + goAhead);
    EXPECT_THAT(speech.said, ElementsAre("A door.")) << "the game's text cuts nothing off";
    listen({&ZNTSettings::replayWhenOff});
    session().replayLastText();
    receive("It goes." + goAhead);
    EXPECT_THAT(speech.said, ElementsAre("A door.", "(stop)", "A hall. A door.A cat comes."));
    type(u"look");
    EXPECT_EQ(speech.said.back(), "(stop)") << "a command does";
}

TEST_F(Listening, APromptIsSpokenWhenItChangesAndAKeySaysIt)
{
    turnSpeech(true);
    listen({&ZNTSettings::changedPrompts});
    connect();
    session().sayPrompt();
    EXPECT_THAT(speech.said, ElementsAre("No prompt yet."));
    EXPECT_THAT(spokenOf({"A rat.\r\nHP 10> " + goAhead, "It bites.\r\n\x1b[31mHP 10>" + goAhead,
                          "HP 10> " + goAhead, "It bites.\r\nHP 9> " + goAhead}),
                ElementsAre("A rat. HP 10> ", "It bites.", "It bites. HP 9> "));
    receive("HP 9> " + goAhead);
    session().sayPrompt();
    EXPECT_EQ(speech.said.back(), "HP 9>");
    session().replayLastText();
    EXPECT_TRUE(shown().ends_with(u"HP 9> ")) << "it is shown all the same";
    turnSpeech(false);
    speech.said.clear();
    session().sayPrompt();
    EXPECT_THAT(speech.said, ElementsAre());
}

TEST_F(Listening, AGagTakesOutItsLinesAndAnEmptyActionSendsNothing)
{
    addTrigger(u"caws", u"", /*gag=*/true);
    session().reloadTriggers();
    turnSpeech(true);
    listen({&ZNTSettings::gagLines, &ZNTSettings::emptyAction});
    connect();
    EXPECT_THAT(spokenOf({"One.\r\nA crow caws.\r\nTwo.\r\n" + goAhead, "A crow caws.\r\n" + goAhead}),
                ElementsAre("One. Two."));
    EXPECT_EQ(received(), "");
    session().replayLastText();
    EXPECT_EQ(spoken(2).back(), "One. Two. That is all.");
    session().speechReview().lineFromEnd(2);
    EXPECT_EQ(speech.said.back(), "A crow caws.") << "the review has every line";
}

TEST_F(Listening, FinishedLinesAreShownAtOnceAndAPromptWaits)
{
    connect();
    receive("Held back");
    listen({&ZNTSettings::wholeLines});
    receive(".\r\n  A line. \r\nHP 1");
    EXPECT_EQ(shown(), u"Held back.\r\n  A line. \r\n");
    machine.loop.advance(0.4);
    receive("0 \r");
    EXPECT_TRUE(shown().ends_with(u"A line. \r\n")) << "half of a line end";
    receive("\n> ");
    EXPECT_TRUE(shown().ends_with(u"HP 10 \r\n"));
    machine.loop.advance(0.49);
    EXPECT_TRUE(shown().ends_with(u"HP 10 \r\n"));
    machine.loop.advance(0.02);
    EXPECT_TRUE(shown().ends_with(u"HP 10 \r\n> "));
    for (const int mark : {249, 239}) {
        receive("mark" + telnet({255, mark}) + "\nrest");
        EXPECT_TRUE(shown().ends_with(u"mark\n")) << "the line end behind the mark stays";
        silence();
        view.clear();
    }
}

TEST_F(Listening, SpeechStartsWithAReaderUnlessThePlayerHasSwitchedIt)
{
    session();
    const auto comes = [this](bool runs) {
        reader.runs = runs;
        session().screenReaderChanged();
        return session().speechOnOffBindingState() == 1;
    };
    EXPECT_FALSE(comes(true)) << "off until asked";
    listen({&ZNTSettings::speechFollowsReader});
    EXPECT_EQ(session().speechOnOffBindingState(), 1) << "a reader that runs already";
    EXPECT_FALSE(session().settings().speech) << "no choice to remember";
    session().setSpeechInterruptOnOffBindingState(0);
    EXPECT_TRUE(comes(false)) << "or nothing would speak";
    EXPECT_TRUE(comes(true));
    EXPECT_EQ(session().speechInterruptOnOffBindingState(), 0) << "speech was on, so nothing is switched";
    turnSpeech(false);
    EXPECT_FALSE(comes(false));
    EXPECT_FALSE(comes(true)) << "the player wants silence";
}

TEST_F(Listening, SoundsEndWithTheConnectionAndTheFarewellBeginsNone)
{
    machine.home.write("Music/Zantor/sounds/w/rain.wav", "wave");
    const std::string tag = "!!MUSIC(w/rain.wav L=-1)\r\n";
    using End = std::function<void()>;
    for (const auto& end : {End([this] { server.closeWhenSent(); }), End([this] { server.reset(); }),
                            End([this] { session().connectToServer(); })})
        for (const bool isSet : {false, true}) {
            SCOPED_TRACE(isSet);
            sounds.stopAll();
            sounds.deliverNotices();
            settings.stopSounds = isSet;
            session().setSettings(settings);
            connect();
            session().set_isMspOnOff(true);
            receive(tag + goAhead);
            EXPECT_TRUE(sounds.isPlaying());
            receive("So long. " + tag);
            end();
            settle();
            silence();
            EXPECT_EQ(session().state(), ZNTSessionState::Idle);
            EXPECT_EQ(sounds.isPlaying(), !isSet);
        }
}

} // namespace
