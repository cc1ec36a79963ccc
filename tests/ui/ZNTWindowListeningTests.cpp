#include "ZNTSpeechSynth.h"
#include "ZNTWindowFixture.h"

#include <QCheckBox>
#include <utility>

using ZNTWindowListening = ZNTWindowFixture;

TEST_F(ZNTWindowListening, SetUpForListeningTakesEffectAtOnceAndIsKeptWithTheSpeechSwitches)
{
    parts->controller.showPreferencesView();
    QDialog& preferences = waitForDialog("PreferencesView");
    const auto& choice = find<QComboBox>(preferences, "silence-key");
    EXPECT_EQ(choice.currentText(), u"No key"_s);
    find<QCheckBox>(preferences, "rememberBox").setChecked(true);
    press(preferences, Qt::Key_Escape);
    ASSERT_TRUE(until([&] { return window.isActiveWindow(); }));
    press(window, Qt::Key_F8, Qt::ControlModifier);
    EXPECT_TRUE(status().endsWith(u"Set up for listening."_s)) << status().toStdString();
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
    parts->controller.showPreferencesView();
    QDialog& preferences = waitForDialog("PreferencesView");
    QWidget& line = commandLine();
    const auto silences = [&](QWidget& in, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        session().zntSpeechSynth().speakNext(u"a long story");
        press(in, key, modifiers);
        return !speech.speaks;
    };
    struct {
        const char* chosen;
        bool letter, control, enter, menuKey;
    } const rows[] = {{"none", false, false, false, false},
                      {"any", true, true, true, true},
                      {"return", false, false, true, false},
                      {"control", false, true, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.chosen);
        parts->controller.chooseSetting("silence-key", row.chosen);
        for (QWidget* in : std::initializer_list<QWidget*>{&line, &preferences}) {
            EXPECT_EQ(silences(*in, Qt::Key_X), row.letter);
            EXPECT_EQ(silences(*in, Qt::Key_Control, Qt::ControlModifier), row.control);
        }
        EXPECT_EQ(silences(line, Qt::Key_F9), row.menuKey);
        EXPECT_EQ(commandLineText(), u"x"_s);
        EXPECT_EQ(silences(line, Qt::Key_Return), row.enter);
        EXPECT_EQ(commandLineText(), QString());
    }
}
