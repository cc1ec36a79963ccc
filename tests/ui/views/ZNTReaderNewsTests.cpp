// What screen readers are given besides the game's text: titles of menus, and news that a key has cut off.
#include "VirtualRunLoop.h"
#include "ZNTAnnounced.h"
#include "ZNTAnnouncer.h"
#include "ZNTMenuTitles.h"
#include "ZNTNewsAgain.h"
#include "ZNTRecordedSpeech.h"
#include "ZNTSpeechSynth.h"

#include <QTest>
#include <gtest/gtest.h>

namespace
{

struct NewsAgain : testing::Test {
    NewsAgain() { reader.runs = true; }

    void press(Qt::Key key) { QTest::keyClick(&field, key); }
    [[nodiscard]] qsizetype timesSaidAgain()
    {
        announced.words.clear();
        QTest::qWait(ZNTNewsAgain::rest + 200);
        return announced.words.count(news);
    }

    const QString news = QStringLiteral("The game closed the connection.");
    QLineEdit field;
    ZNTAnnounced announced;
    ZNTRecordedReader reader;
    ZNTNewsAgain again{reader};
};

} // namespace

TEST_F(NewsAgain, WhatAKeyCutOffIsSaidAgainWhenThePlayerRests)
{
    again.watch(news);
    EXPECT_EQ(timesSaidAgain(), 0) << "nothing has cut it off";
    for (int time = 0; time < ZNTNewsAgain::mostTimes; ++time) {
        announced.words.clear();
        press(Qt::Key_L);
        QTest::qWait(ZNTNewsAgain::rest / 2);
        press(Qt::Key_O);
        QTest::qWait(ZNTNewsAgain::rest / 2);
        EXPECT_EQ(announced.words.count(news), 0) << "the player still types";
        EXPECT_EQ(timesSaidAgain(), 1);
    }
    press(Qt::Key_K);
    EXPECT_EQ(timesSaidAgain(), 0) << "it does not go on for ever";
}

TEST_F(NewsAgain, WordsThatSayMoreTakeItsPlaceUntilTheyDoNotHold)
{
    again.watchInstead(news);
    press(Qt::Key_L);
    EXPECT_EQ(timesSaidAgain(), 0) << "there was nothing to take the place of";
    again.watch(QStringLiteral("less"));
    again.watchInstead(news);
    press(Qt::Key_L);
    EXPECT_EQ(timesSaidAgain(), 1);
    EXPECT_FALSE(announced.words.contains(QStringLiteral("less")));
    press(Qt::Key_L);
    again.drop(QStringLiteral("other"));
    EXPECT_EQ(timesSaidAgain(), 1);
    press(Qt::Key_L);
    again.drop(news);
    EXPECT_EQ(timesSaidAgain(), 0);
}

TEST_F(NewsAgain, ControlAndTheEndOfTheReaderDropIt)
{
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"Control", [this] { press(Qt::Key_Control); }},
        {"the reader ends", [this] { reader.runs = false; }},
        {"the own voice has said it before a reader came", [this] { reader.runs = true; }}};
    for (const auto& [way, drop] : ways) {
        again.watch(news);
        press(Qt::Key_L);
        drop();
        EXPECT_EQ(timesSaidAgain(), 0) << way;
    }
}

TEST(Announcer, NewsAreSaidByTheVoiceOfTheGameAndWhileSpeechIsOffByTheReader)
{
    for (const auto& [isReaderRunning, isSpeechOn, byReader, byOwnVoice] :
         {std::tuple(true, true, 1U, 0U), {true, false, 1, 0}, {false, true, 0, 1}, {false, false, 0, 0}}) {
        VirtualRunLoop loop;
        ZNTRecordedSpeech engine;
        ZNTRecordedReader reader;
        ZNTSpeechSynth synth(loop, engine, reader);
        reader.runs = isReaderRunning;
        const ZNTAnnouncer announcer(
            reader, synth,
            {.isSpeechOn = [isOn = isSpeechOn] { return isOn; }, .isOwnVoiceWanted = [] { return false; }});
        znt::announce(ZNTAnnouncement::News, {QStringLiteral("Disconnected")});
        EXPECT_EQ(reader.said.size(), byReader);
        EXPECT_EQ(engine.said.size(), byOwnVoice);
    }
}

TEST(MenuTitles, AMenuThatOpensIsAnnouncedAndTheItemBehindItGetsTheFocusBack)
{
    static QStringList focused;
    ZNTAnnounced announced;
    const ZNTMenuTitles titles;
    QMenu menu, nameless;
    menu.setAccessibleName(QStringLiteral("Speech"));
    menu.addAction(QStringLiteral("Say"));
    QMenu& channels = *menu.addMenu(QStringLiteral("Channels"));
    channels.setAccessibleName(QStringLiteral("Channels"));
    for (QMenu* each : {&channels, &nameless}) // from Qt 6.8 on an empty menu does not open
        each->addAction(QStringLiteral("Newest"));
    menu.popup({});
    menu.setActiveAction(channels.menuAction());
    QTest::qWait(50);
    EXPECT_EQ(announced.words.value(0), QStringLiteral("Speech menu"));
    QTest::keyClick(&menu, Qt::Key_Return);
    QTest::qWait(50);
    EXPECT_EQ(announced.words.value(1), QStringLiteral("Channels menu"));
    const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::Focus && event->accessibleInterface())
            focused << event->accessibleInterface()->text(QAccessible::Name);
    });
    QTest::keyClick(&channels, Qt::Key_Left);
    QTest::qWait(50);
    EXPECT_EQ(focused, QStringList{QStringLiteral("Channels")});
    menu.close();
    nameless.popup({});
    QTest::qWait(50);
    nameless.close();
    QAccessible::installUpdateHandler(before);
    EXPECT_EQ(announced.words.size(), 2);
}
