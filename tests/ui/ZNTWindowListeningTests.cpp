#include "ZNTSpeechSynth.h"
#include "ZNTWindowFixture.h"

using ZNTWindowListening = ZNTWindowFixture;

TEST_F(ZNTWindowListening, SetUpForListeningTakesEffectAtOnceAndIsKeptWithTheSpeechSwitches)
{
    QDialog& preferences = openPreferences();
    const auto& choice = find<QComboBox>(preferences, "silence-key");
    EXPECT_EQ(choice.currentText(), u"No key"_s);
    find<QCheckBox>(preferences, "rememberBox").setChecked(true);
    leave(preferences);
    press(window, Qt::Key_F8, Qt::ControlModifier);
    EXPECT_TRUE(status().endsWith(u"Listening is set up."_s)) << status().toStdString();
    EXPECT_TRUE(std::ranges::any_of(speech.said, [](const auto& text) {
        return text.starts_with("Listening is set up. Press F8 ");
    })) << "speech is off";
    EXPECT_EQ(choice.currentText(), u"Control"_s);
    EXPECT_EQ(session().settings().silenceKey, ZNTSilenceKey::Control);
    press(window, Qt::Key_F8);
    press(window, Qt::Key_F8, Qt::ShiftModifier);

    startAgain();
    EXPECT_TRUE(action("setUpForListening").isChecked() && action("speechOnOff").isChecked() &&
                action("speechInterruptOnOff").isChecked());
    session().zntSpeechSynth().speakLine(u"a game's line");
    EXPECT_TRUE(until([&] { return std::ranges::count(speech.said, "a game's line") == 1; }));

    parts->controller.chooseSetting("silence-key", "return");
    EXPECT_FALSE(action("setUpForListening").isChecked()) << "one of its settings is another one now";
    action("setUpForListening").trigger();
    action("setUpForListening").trigger();
    EXPECT_EQ(session().settings().silenceKey, ZNTSilenceKey::None);
    EXPECT_TRUE(action("speechOnOff").isChecked()) << "speech is no part of it";
}

TEST_F(ZNTWindowListening, TheSilenceKeyWorksInEveryWindowAndIsTyped)
{
    speech.staysSpeaking = true;
    playDemo();
    QDialog& preferences = openPreferences();
    QWidget& line = commandLine();
    const auto silences = [&](QWidget& in, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        session().zntSpeechSynth().speakNext(u"a long story");
        press(in, key, modifiers);
        return !speech.speaks;
    };
    for (const auto& [chosen, letter, control, enter, menuKey] :
         {std::tuple("none", false, false, false, false),
          {"any", true, true, true, true},
          {"return", false, false, true, false},
          {"control", false, true, false, false}}) {
        SCOPED_TRACE(chosen);
        parts->controller.chooseSetting("silence-key", chosen);
        for (QWidget* in : std::initializer_list<QWidget*>{&line, &preferences}) {
            EXPECT_EQ(silences(*in, Qt::Key_X), letter);
            EXPECT_EQ(silences(*in, Qt::Key_Control, Qt::ControlModifier), control);
        }
        EXPECT_EQ(silences(line, Qt::Key_F9), menuKey);
        EXPECT_EQ(commandLineText(), u"x"_s);
        EXPECT_EQ(silences(line, Qt::Key_Return), enter);
        EXPECT_EQ(commandLineText(), QString());
    }
}

TEST_F(ZNTWindowListening, WhatWasSaidIsReviewedAndSearchedWithTheHandsOnTheCommandLine)
{
    playDemo();
    send("look guide");
    EXPECT_TRUE(outputHas("number of bytes") && gameIsReady());
    QWidget& line = commandLine();
    const auto said = [&](QWidget& in, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        speech.said.clear();
        press(in, key, modifiers);
        return speech.said.empty() ? std::string() : speech.said.back();
    };
    constexpr auto control = Qt::ControlModifier, shift = Qt::ShiftModifier;
    EXPECT_EQ(said(line, Qt::Key_F7, control), "look guide");
    EXPECT_EQ(said(line, Qt::Key_F2), "look");
    EXPECT_EQ(said(line, Qt::Key_F2, control), "l");
    EXPECT_EQ(said(line, Qt::Key_F2), "guide");
    EXPECT_EQ(said(line, Qt::Key_F2, shift), "look");

    EXPECT_EQ(said(line, Qt::Key_F12), "") << "asks for the words first";
    QWidget* field = QApplication::focusWidget();
    ASSERT_NE(field, &line);
    EXPECT_EQ(field->accessibleName(), u"Find in what was said"_s);
    type(*field, "THE");
    const auto newest = said(*field, Qt::Key_Return), older = said(*field, Qt::Key_Return);
    EXPECT_NE(newest, older);
    EXPECT_EQ(said(*field, Qt::Key_Return, shift), newest);
    press(*field, Qt::Key_Escape);
    EXPECT_TRUE(line.hasFocus());
    EXPECT_EQ(said(line, Qt::Key_F12), older);
    EXPECT_EQ(said(line, Qt::Key_F12, shift), newest);
    EXPECT_EQ(commandLineText(), QString());
}
