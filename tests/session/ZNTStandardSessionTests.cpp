#include "ZNTSessionFixture.h"

using testing::HasSubstr;
using testing::Not;

namespace
{

/// A session with standard telnet.
struct StandardSession : ZNTSessionFixture {
    StandardSession()
    {
        settings.standardTelnet = settings.fullColours = true;
        session().setSettings(settings);
    }

    ZNTSettings settings;
};

const std::string willEcho = telnet({255, 251, 1}), wontEcho = telnet({255, 252, 1});

TEST_F(StandardSession, LinesAreShownAtOnceAndAPromptAtAGoAheadOrAfterATenthOfASecond)
{
    addTrigger(u"^HP: 10 of 10", u"rest");
    session().reloadTriggers();
    connect();
    receive("  A line.\r\nHP: 10");
    EXPECT_EQ(shown(), u"  A line.\r\n");
    receive(" of 10 \xff\xff \r\n> ");
    EXPECT_EQ(shown(), u"  A line.\r\nrest\rHP: 10 of 10 \u00ff \r\n");
    EXPECT_THAT(received(), HasSubstr("rest\r\n"));
    machine.loop.advance(0.09);
    EXPECT_FALSE(shown().ends_with(u"> "));
    machine.loop.advance(0.02);
    EXPECT_TRUE(shown().ends_with(u"> "));
    const auto before = shown();
    receive("Name: " + goAhead);
    EXPECT_EQ(shown(), before + u"Name: ");
    EXPECT_EQ(silences, 0);
    machine.loop.advance(0.6);
    EXPECT_EQ(silences, 1) << "the front end waits for half a second, however short the quiet is";
}

TEST_F(StandardSession, WhatIsTypedWhileTheGameEchoesIsNowhere)
{
    session().setSpeechOnOffBindingState(1);
    session().textToSpeechOnAndOff();
    session().startOrPauseRecording();
    connect();
    type(u"ash");
    receive(willEcho + "Password: " + goAhead);
    EXPECT_TRUE(session().isTypingHidden());
    type(u"!2secret");
    EXPECT_EQ(commandLine.text(), u"");
    session().sendTextToServerNoWidget(u"#secret");
    receive(wontEcho + "Welcome.\r\n");
    EXPECT_FALSE(session().isTypingHidden());
    session().resendLastCommand();
    EXPECT_THAT(received(), HasSubstr("!2secret\r\n#secret\r\n"));
    EXPECT_THAT(received(), testing::EndsWith("#secret\r\n" + telnet({255, 254, 1}) + "ash\r\n"));
    EXPECT_THAT(znt::utf8FromText(shown()) + logged(), Not(HasSubstr("secret")));
    for (const auto& text : spoken(4))
        EXPECT_THAT(text, Not(HasSubstr("secret")));
    session().doneRecording();
    for (const auto& command : *session().recorder()._textRecorderBean()._dataObjects())
        EXPECT_THAT(znt::utf8FromText(command), Not(HasSubstr("secret")));
}

TEST_F(StandardSession, WhatWasAgreedEndsWithTheConnection)
{
    connect();
    receive(willEcho + telnet({255, 251, 42}) + telnet({255, 250, 42, 1}) + ";UTF-8" + telnet({255, 240}));
    receive("\xe4\xbd\xa0\r\n");
    EXPECT_EQ(shown(), u"\u4f60\r\n");
    EXPECT_EQ(session().cfStringEncoding(), ZNTStringEncoding::Utf8);
    EXPECT_EQ(session().settings().encoding, ZNTStringEncoding::Ascii) << "the player has chosen nothing";
    session().changeEncoding(u"BIG5 - Chinese");
    view.clear();
    receive("\xa7\x41\r\n");
    EXPECT_EQ(shown(), u"\u4f60\r\n") << "the player's choice beats the game's";
    session().changeEncoding(u"ASCII");
    session().connectToServer();
    EXPECT_EQ(session().cfStringEncoding(), ZNTStringEncoding::Ascii);
    EXPECT_FALSE(session().isTypingHidden());

    settings.standardTelnet = false;
    session().setSettings(settings);
    connect();
    const auto before = received();
    receive(willEcho + "Settled again." + goAhead);
    EXPECT_EQ(received(), before);
    EXPECT_FALSE(session().isTypingHidden());
}

TEST_F(StandardSession, SoundTagsPlayOnceSoundsAreOn)
{
    machine.home.write("Music/Zantor/sounds/weather/rain.wav", "wave");
    connect();
    receive("One. !!SOUND(weather/rain.wav V=50)\r\n");
    EXPECT_TRUE(sounds.made.empty());
    session().set_isMspOnOff(true);
    receive("Two. !!SOUND(weather/rain.wav V=50)\r\n");
    EXPECT_EQ(sounds.made.size(), 1u);
    EXPECT_EQ(shown(), u"One. \r\nTwo. \r\n");
}

TEST_F(StandardSession, AnOrderlyEndIsANoticeAndABrokenStreamOrConnectionAnAlert)
{
    settings.compression = true;
    session().setSettings(settings);
    connect();
    receive("Bye.\r\n");
    server.closeWhenSent();
    settle();
    EXPECT_EQ(session().lastEnding(), ZNTSessionEnding::ByServer);
    EXPECT_TRUE(machine.alert.shown.empty());
    EXPECT_EQ(notices, std::vector<std::u16string>{u"The game closed the connection."});

    connect();
    receive(telnet({255, 251, 86}) + "Hello.\r\n" + telnet({255, 250, 86, 255, 240}) + "no zlib at all\r\n");
    EXPECT_EQ(session().state(), ZNTSessionState::Idle);
    EXPECT_EQ(session().lastEnding(), ZNTSessionEnding::Broken);
    EXPECT_EQ(machine.alert.shown.size(), 1u);
    EXPECT_EQ(shown(), u"Bye.\r\nHello.\r\n");
    connect();
    server.reset();
    settle();
    EXPECT_EQ(machine.alert.shown.size(), 2u);
}

TEST_F(StandardSession, TheViewsSizeIsReportedAtMostTwiceASecond)
{
    session().setViewSize(100, 40);
    connect();
    const auto size = [](unsigned char columns, unsigned char rows) {
        return telnet({255, 250, 31, 0, columns, 0, rows, 255, 240});
    };
    receive(telnet({255, 253, 31}));
    const auto agreed = telnet({255, 251, 31}) + size(100, 40);
    EXPECT_EQ(received(), agreed);
    machine.loop.advance(1);
    for (unsigned char columns = 90; columns > 80; --columns)
        session().setViewSize(columns, 40);
    EXPECT_EQ(received(), agreed + size(90, 40));
    machine.loop.advance(0.5);
    EXPECT_EQ(received(), agreed + size(90, 40) + size(81, 40));
    machine.loop.advance(2);
    EXPECT_EQ(received(), agreed + size(90, 40) + size(81, 40));
}

} // namespace
