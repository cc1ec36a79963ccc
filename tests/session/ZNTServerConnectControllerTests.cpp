#include "ZNTDeflated.h"
#include "ZNTSessionFixture.h"
#include "ZNTSpeechReview.h"

#include <algorithm>

namespace
{

using Session = ZNTSessionFixture;

const std::pair<std::u16string, std::u16string> mudNotResponding{
    u"MUD Not Responding",
    u"Please select a new MUD or try again later. The MUD address entered is unavailable."};

} // namespace

TEST_F(Session, HoldsTextBackUntilHalfASecondOfSilence)
{
    connect();
    for (const auto* piece : {"a  ", " \t\240b", "c"}) {
        receive(piece);
        machine.loop.advance(0.25);
    }
    EXPECT_EQ(shown(), u"");
    machine.loop.advance(0.3);
    EXPECT_EQ(shown(), u"a\u00A0bc") << "spaces and tabs are trimmed where pieces meet";
}

TEST_F(Session, ShowsAtOnceAtAGoAheadOrARefusalButNotAtAnEndOfRecord)
{
    connect();
    receive("Name? ");
    receive("who" + goAhead);
    EXPECT_EQ(shown(), u"Name?who");
    receive("Password: " + telnet({255, 252, 1}));
    EXPECT_EQ(shown(), u"Name?whoPassword: ");
    receive("Welcome" + telnet({255, 239}));
    EXPECT_TRUE(session().isGoAhead());
    EXPECT_EQ(shown(), u"Name?whoPassword: ");
    silence();
    EXPECT_EQ(shown(), u"Name?whoPassword: Welcome");
}

TEST_F(Session, ShowsAnEndlessFloodBeforeItFillsTheMemory)
{
    connect();
    const std::u16string block(std::size_t{1} << 20, u'x');
    for (std::size_t sent = 0; sent <= ZNTHeldBackText::mostHeldBack; sent += block.size())
        session().processMessage(block);
    EXPECT_GT(shown().size(), ZNTHeldBackText::mostHeldBack);
    const auto flood = shown().size();
    receive("calm" + goAhead);
    EXPECT_EQ(shown().substr(flood), u"calm");
}

TEST_F(Session, TriggersSeeEveryChunkAndASilenceWithNothingHeldBackIsNone)
{
    addTrigger(u"^$", u"quiet");
    connect();
    std::string answers;
    for (const auto& chunk : {telnet({255, 249}), telnet({255, 253, 31}), std::string(" \t ")}) {
        silence();
        silence();
        EXPECT_EQ(server.received(), answers);
        receive(chunk); // nothing is left of it after stripping or trimming
        silence();
        answers += "quiet\r\n";
        EXPECT_EQ(server.received(), answers);
    }
}

TEST_F(Session, ReadsNoFurtherOffersWhileTheServerTakesNoAnswers)
{
    connect();
    server.stopReading();
    std::string offers; // in more than one block, and more answers than may wait
    for (int count = 0; count < 200'000; ++count)
        offers += "\xFF\xFB\x03";
    server.send(offers);
    settle();
    EXPECT_FALSE(server.hasSentAll()) << "all offers were read, so their answers wait in memory";
    server.resumeReading();
    receive("Welcome." + goAhead);
    EXPECT_TRUE(shown().ends_with(u"Welcome."));
    EXPECT_EQ(notices.size(), 1u) << "one hint for all refusals of a connection";
    EXPECT_GT(server.received().size(), offers.size() / 100 * 99) << "a block's end cuts some in two";

    server.stopReading();
    receive(offers);
    machine.loop.advance(0.2);
    EXPECT_FALSE(session().isConnected()) << "a server that takes no answers loses the connection";
    EXPECT_EQ(session().lastEnding(), ZNTSessionEnding::Broken);
    EXPECT_EQ(machine.alert.shown, std::vector{mudNotResponding});
}

TEST_F(Session, SendsLinesAndEchoesThem)
{
    connect();
    session().sendMessageToServer(u"kill orc", false);
    session().sendMessageToServer(u"", false);
    EXPECT_EQ(received(), "kill orc\r\n\r\n");
    EXPECT_EQ(shown(), u"kill orc\r\r");
    const auto* echo = view.pieces.front().attributesAt(0);
    EXPECT_EQ(echo->shownForeground(), znt::colours::cyan);
    EXPECT_TRUE(echo->isShownBold());
    EXPECT_EQ(logged(), "kill orc\r\x1b[1;36mkill orc\r\r\x1b[1;36m\r");
}

TEST_F(Session, DirectionButtonsSendTheirWords)
{
    using Controller = ZNTServerConnectController;
    connect();
    for (const auto send :
         {&Controller::sendNorthToServer, &Controller::sendSouthToServer, &Controller::sendEastToServer,
          &Controller::sendWestToServer, &Controller::sendNorthEastToServer,
          &Controller::sendNorthWestToServer, &Controller::sendSouthEastToServer,
          &Controller::sendSouthWestToServer, &Controller::sendUpToServer, &Controller::sendDownToServer})
        (session().*send)();
    EXPECT_EQ(received(), "north\r\nsouth\r\neast\r\nwest\r\nnortheast\r\nnorthwest\r\nsoutheast\r\n"
                          "southWest\r\nup\r\ndown\r\n");
}

TEST_F(Session, PlaysInTheChineseEncodingsAndInUtf8)
{
    connect();
    for (const auto& [title, encoding] : {std::pair{u"EUC_CN - Chinese", ZNTStringEncoding::EucCn},
                                          std::pair{u"BIG5 - Chinese", ZNTStringEncoding::Big5Hkscs}}) {
        view.clear();
        session().changeEncoding(title);
        session().changeEncoding(u"KOI8");
        const auto hello = znt::encodedText(u"你好，世界", encoding);
        receive(hello.substr(0, 4) + telnet({255, 251, 3}) + hello.substr(4) + goAhead);
        EXPECT_EQ(shown(), u"你好，世界");
        session().sendMessageToServer(u"說 café", false);
        EXPECT_TRUE(received().ends_with(znt::encodedText(u"說 café\r\n", encoding)));
    }
    view.clear();
    session().changeEncoding(ZNTStringEncoding::Utf8);
    session().changeEncoding(u""); // no button bears it
    receive("caf\xC3");            // a character that blocks share
    receive("\xA9" + goAhead);
    EXPECT_EQ(shown(), u"café");
}

TEST_F(Session, StartsWithTheLastGameByNameThatIsTheDefault)
{
    for (const auto* name : {u"B", u"A", u"C"}) {
        ZNTMudList game;
        game.name = name;
        game.telnetURL = std::u16string(name) + u".example";
        game.port = 4001;
        database.addNewRowMudList(game);
        game.defaultConnection = true;
        database.updateMudListObject(game); // a new entry is never the default
        if (game.name == u"C")
            database.hideZNTMudListValueFromUser(u"ZNTMudList", game.oid);
    }
    session();
    EXPECT_EQ(mudName.text() + u" " + host.text() + u" " + port.text(), u"B B.example 4001");
}

TEST_F(Session, AButtonPressConnectsAndTheSameButtonDisconnects)
{
    const auto allAreEnabled = [this](bool isEnabled) {
        return commandLine.isEnabled == isEnabled &&
               std::ranges::all_of(directions, [=](auto& each) { return each.isEnabled == isEnabled; });
    };
    for (const auto& [badHost, badPort] : {std::pair{u"", u"4000"}, std::pair{u"mud", u"0"},
                                           std::pair{u"mud", u"-1"}, std::pair{u"mud", u"x"}}) {
        host.setText(badHost);
        port.setText(badPort);
        session().connectToServer();
        EXPECT_EQ(session().state(), ZNTSessionState::Idle);
    }
    connect();
    EXPECT_EQ(button.title, u"Disconnect");
    EXPECT_FALSE(host.isEnabled || port.isEnabled || spinner.isAnimating);
    EXPECT_TRUE(allAreEnabled(true) && commandLine.caretIsAtEnd);
    session().connectToServer();
    EXPECT_EQ(button.title, u"Connect");
    EXPECT_TRUE(allAreEnabled(false) && host.isEnabled && port.isEnabled);

    port.setText(znt::decimalText(65536 + server.port())); // sixteen bits of it count
    session().connectToServer();
    settle();
    session().stopConnecting();
    EXPECT_TRUE(session().isConnected()) << "a connection that stands is not stopped";
    for (int press = 0; press < 2; ++press)
        session().connectToServer();
    session().stopConnecting();
    settle();
    EXPECT_EQ(session().state(), ZNTSessionState::Idle) << "the answer of the server comes too late";
    EXPECT_TRUE(machine.alert.shown.empty());
}

TEST_F(Session, EveryEndingButThePlayersShowsTheAlertAndIsKeptUntilTheNextAttempt)
{
    const auto end = [this] {
        const auto& last = session().lastEnd();
        return std::tuple(session().lastEnding(), last.reason, last.hadConnection);
    };
    connect();
    receive("So long.\r\n");
    server.closeWhenSent();
    settle();
    EXPECT_EQ(end(), std::tuple(ZNTSessionEnding::ByServer, ZNTEndReason::ClosedByGame, true));
    silence();
    EXPECT_EQ(shown(), u"So long.\r\n") << "what a server says last is shown all the same";

    connect();
    EXPECT_EQ(end(), std::tuple(ZNTSessionEnding::None, ZNTEndReason::None, false));
    server.reset();
    settle();
    EXPECT_EQ(end(), std::tuple(ZNTSessionEnding::Broken, ZNTEndReason::Reset, true));

    connect();
    session().connectToServer();
    EXPECT_EQ(end(), std::tuple(ZNTSessionEnding::ByPlayer, ZNTEndReason::ByPlayer, true));

    server.stopListening();
    session().connectToServer();
    EXPECT_TRUE(spinner.isAnimating && !spinner.isHidden);
    settle();
    EXPECT_EQ(session().state(), ZNTSessionState::Idle);
    EXPECT_EQ(end(), std::tuple(ZNTSessionEnding::Broken, ZNTEndReason::Refused, false));
    EXPECT_TRUE(spinner.isHidden && !spinner.isAnimating);
    server.refuseAttempts();
    session().connectToServer();
    EXPECT_TRUE(spinner.isHidden && !spinner.isAnimating);
    EXPECT_EQ(session().lastEnding(), ZNTSessionEnding::Broken);
    EXPECT_EQ(machine.alert.shown, std::vector(4, mudNotResponding));
}

TEST_F(Session, CompressionStartsWithTheBlockAfterTheMarkAndEndsWithItsStreamOrAtDamage)
{
    const auto accepted = telnet({255, 253, 86}), refused = telnet({255, 25, 86, 255, 25, 85});
    // It is held back as text, and taken out with the one character that follows it.
    const auto mark = telnet({255, 250, 86, 255, 240, '\n'});
    const auto stream = deflated("A dark room." + goAhead, Z_SYNC_FLUSH);
    const struct {
        std::vector<std::string> blocks;
        std::string replies;
        std::u16string shown;
    } rows[] = {
        {{"Hi" + telnet({255, 251, 86}), mark, stream}, accepted, u"HiA dark room."},
        {{mark + stream.substr(0, 4), stream.substr(4)}, refused, u""}, // its beginning is taken for text
        {{mark, telnet({255, 251, 3}), "lost", "plain" + goAhead},      // bare commands are not inflated
         telnet({255, 25, 3}) + refused,
         u"plain"},
        {{mark, deflated("packed " + goAhead) + "lost", "plain" + goAhead, mark, deflated("lost" + goAhead)},
         refused + refused,
         u"packed plain"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.shown));
        view.clear();
        session().acceptCompressionOffers(true);
        connect();
        for (const auto& block : row.blocks)
            receive(block);
        EXPECT_NE(session()._mccp(), row.replies.ends_with(refused));
        EXPECT_EQ(server.received(), row.replies);
        EXPECT_EQ(shownWithoutNuls(), row.shown);
        session().connectToServer(); // ends the connection
        silence();
    }
    EXPECT_TRUE(session().endOfNegotiations());
}

TEST_F(Session, EveryConnectionBeginsUncompressedWithAStreamOfItsOwn)
{
    connect();
    receive(telnet({255, 250, 86, 255, 240}));
    receive(deflated("\nfirst " + goAhead, Z_SYNC_FLUSH)); // and the stream never ends
    session().connectToServer();
    EXPECT_FALSE(session()._mccp());
    connect();
    receive("plain " + goAhead);
    session().set_isMccpOnOff(true);
    receive(deflated("second" + goAhead, Z_SYNC_FLUSH));
    EXPECT_EQ(shownWithoutNuls(), u"first plain second");
    EXPECT_NE(shown(), shownWithoutNuls()) << "the inflater's block is passed on whole";
    EXPECT_EQ(server.received(), telnet({255, 253, 86}));

    session().set_isMspOnOff(true);
    session().set_isMccpOnOff(false);
    EXPECT_FALSE(session()._mccp() || session()._isMspOnOff()) << "the two switches share one flag";
    receive(telnet({255, 251, 90}));
    EXPECT_TRUE(server.received().ends_with(telnet({255, 25, 86, 255, 253, 90}))) << "sounds are accepted";
}

TEST_F(Session, SpeaksWhatIsShownWhileSpeechIsOnAndALineInterruptsIt)
{
    connect();
    receive("unheard" + goAhead);
    session().zntSpeechSynth().speechOn();
    const auto before = speech.timesStopped;
    receive("Hush." + goAhead); // which comes while the switch is off, so that it stops what is spoken
    EXPECT_EQ(speech.timesStopped, before + 1);
    EXPECT_TRUE(session().zntSpeechSynth().isSpeachOn()) << "which means that it is off";
    session().setSpeechOnOffBindingState(1);
    receive("You hear a bell." + goAhead);
    EXPECT_EQ(spoken(1), std::vector<std::string>{"You hear a bell."});

    session().setSpeechInterruptOnOffBindingState(1);
    const auto stopped = speech.timesStopped;
    voiceOver.setText(u"old");
    type(u"listen");
    EXPECT_EQ(voiceOver.text(), u"");
    EXPECT_EQ(std::exchange(machine.loop.slept, {}), (std::vector<double>{0.2, 0.3}));
    EXPECT_EQ(speech.timesStopped, stopped + 2);
    auto settings = session().settings();
    settings.silenceKey = ZNTSilenceKey::Control;
    session().setSettings(settings);
    type(u"listen");
    EXPECT_TRUE(machine.loop.slept.empty()) << "a key silences the voice, so no line pauses";
    EXPECT_EQ(speech.timesStopped, stopped + 4) << "it interrupts all the same";
}

TEST_F(Session, TheReviewKnowsThePlayersLastCommand)
{
    connect();
    const auto lastCommand = [&] {
        speech.said.clear();
        session().speechReview().goToLastCommand();
        return speech.said.front();
    };
    type(u"look");
    EXPECT_EQ(lastCommand(), "look");
    session().sendToServer(ZNTDirection::North);
    EXPECT_EQ(lastCommand(), "north");
    session().resendLastCommand();
    session().sendMessageToServer(u"an answer of a trigger", false);
    EXPECT_EQ(lastCommand(), "look");
}
