#include "ZNTCommandLine.h"
#include "ZNTCursorRest.h"
#include "ZNTWindowFixture.h"

using ZNTWindowTypingHelp = ZNTWindowFixture;

TEST_F(ZNTWindowTypingHelp, ALineThatWasSentIsFoundWhileTypingAndPutIntoTheCommandLine)
{
    playDemo();
    for (const char* line : {"look lantern", "look guide", "north"}) {
        send(line);
        EXPECT_TRUE(gameIsReady());
    }
    session().insertTextInWindow(u"look at me"); // the client's own words
    type(commandLine(), "half");

    const auto openPicker = [&] {
        press(commandLine(), Qt::Key_H, Qt::ControlModifier);
        waitForDialog("sentLinesPicker");
    };
    const auto closePicker = [&](Qt::Key key) {
        pressHere(key);
        EXPECT_TRUE(until([&] { return dialog("sentLinesPicker") == nullptr && commandLine().hasFocus(); }));
    };
    openPicker();
    expectAnnounced("3 lines, north");
    for (const auto& [key, line] : {std::pair{Qt::Key_Down, "look guide"}, {Qt::Key_Up, "north"}}) {
        pressHere(key);
        expectAnnounced(line);
    }
    type(*QApplication::focusWidget(), "OOK");
    expectAnnounced("2 lines, look guide");
    closePicker(Qt::Key_Escape);
    EXPECT_EQ(commandLineText(), u"half"_s);

    openPicker();
    type(*QApplication::focusWidget(), "xyz");
    pressHere(Qt::Key_Return);
    expectAnnounced("No line has these letters.");
    for (int letter = 0; letter < 3; ++letter)
        pressHere(Qt::Key_Backspace);
    type(*QApplication::focusWidget(), "look");
    pressHere(Qt::Key_Down);
    closePicker(Qt::Key_Return);
    EXPECT_EQ(commandLineText(), u"look lantern"_s);
    EXPECT_EQ(output().count(u"look lantern"_s), 1) << "not sent";
    press(commandLine(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(commandLineText(), u"half"_s);
}

TEST_F(ZNTWindowTypingHelp, AWordIsCompletedFromTheOutputAndTheMacros)
{
    makeMacroGroup("Walks");
    playDemo();
    ZNTMacro macro{.groupOid = database.getAllMacroGroupsFromDatabase().at(0).oid,
                   .name = u"wanderer",
                   .dataToExecute = u"north"};
    database.insertMacroSetWithMacroGroup(macro);
    window.textFromServer->append({.text = u"\nA wandering wanton.\n> ", .runs = {}, .sets = {}});
    type(commandLine(), "say wan!");
    press(commandLine(), Qt::Key_Left);
    for (const char* word : {"wanton", "wandering", "wanderer", "wan", "wanton"}) {
        press(commandLine(), Qt::Key_Space, Qt::ControlModifier);
        expectAnnounced(word);
        EXPECT_EQ(commandLineText(), u"say %1!"_s.arg(QLatin1String(word)));
    }
    press(commandLine(), Qt::Key_End);
    press(commandLine(), Qt::Key_Space, Qt::ControlModifier);
    expectAnnounced("No word fits");

    window.textToServer->setTypingHidden(true);
    window.textToServer->setText(u"wan"_s);
    press(commandLine(), Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(commandLineText(), u"wan"_s);
    press(commandLine(), Qt::Key_H, Qt::ControlModifier);
    expectAnnounced("Typing is hidden");
    EXPECT_EQ(dialog("sentLinesPicker"), nullptr);
}

TEST_F(ZNTWindowTypingHelp, TheCursorRestsUntilTheNextKey)
{
    const auto flashTime = [] { return QGuiApplication::styleHints()->cursorFlashTime(); };
    const int usual = flashTime();
    ASSERT_GT(usual, 0);
    const ZNTCursorRest cursorRest(/*millisecondsUntilRest=*/10);
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(until([&] { return flashTime() == 0; }));
        press(window, Qt::Key_Shift);
        EXPECT_EQ(flashTime(), usual);
    }
}
