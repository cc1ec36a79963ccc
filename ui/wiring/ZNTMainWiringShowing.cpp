#include "ZNTMainWiring.h"

#include "ZNTAnnouncement.h"
#include "ZNTCommandLine.h"
#include "ZNTConnectionWiring.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTDesktopScreenReader.h"
#include "ZNTFindBar.h"
#include "ZNTMacroWiring.h"
#include "ZNTOutputView.h"
#include "ZNTQtText.h"
#include "ZNTRecorder.h"
#include "ZNTSpeechSynth.h"

#include <QPushButton>
#include <array>
#include <utility>

using namespace znt;
using Enabled = ZNTClientAction::Enabled;

namespace
{

QString text(const char* latin) { return QString::fromLatin1(latin); }

constexpr std::array allChanges{
    ZNTSessionChange::State,       ZNTSessionChange::Title,     ZNTSessionChange::Encoding,
    ZNTSessionChange::Compression, ZNTSessionChange::Sounds,    ZNTSessionChange::Speech,
    ZNTSessionChange::Walking,     ZNTSessionChange::Recording, ZNTSessionChange::Typing};

} // namespace

// From the session to the player

void ZNTMainWiring::showAll()
{
    for (const ZNTSessionChange what : allChanges)
        sessionChanged(what);
    showSettings();
    firstStart.begin();
}

void ZNTMainWiring::sessionChanged(ZNTSessionChange what)
{
    status.sessionChanged(what);
    switch (what) {
    case ZNTSessionChange::State:
        showState();
        return;
    case ZNTSessionChange::Title:
        connection.fields.remember();
        return;
    case ZNTSessionChange::Encoding:
        showEncoding();
        return;
    case ZNTSessionChange::Recording:
        showRecording();
        return;
    case ZNTSessionChange::Speech:
        showSpeech();
        return;
    case ZNTSessionChange::Walking:
        showWalking();
        return;
    case ZNTSessionChange::Typing:
        showTyping();
        return;
    case ZNTSessionChange::Compression: // the status line alone shows these two
    case ZNTSessionChange::Sounds:
        return;
    }
}

void ZNTMainWiring::showState()
{
    using Connection = ZNTStatusFacts::Connection;
    const ZNTStatusFacts& now = status.facts();
    announceConnection();
    connectionShowing.show(now, connection.lastGame());
    showTime();
    const bool isConnected = now.connection == Connection::Connected;
    menu.enable(Enabled::WhileIdle, now.connection == Connection::None);
    menu.enable(Enabled::WhileConnecting, now.connection == Connection::Connecting);
    menu.enable(Enabled::WhileConnected, isConnected);
    macros->showButtons();
    menu["connectToServer"]->setText(isConnected ? text("Dis&connect") : text("&Connect"));
    window.setWindowTitle(isConnected ? QString(now.game + text(" - Zantor")) : text("Zantor"));
    showEmptyHint();
    firstStart.setWords(connection.pickedGame().isEmpty() ? text("Welcome to Zantor") : hintOfPickedGame());
    if (isConnected)
        firstStart.notePlayed();
    if (isConnected && !wasConnected)
        window.textFromServer->beginSession();
    if (wasConnected && !isConnected)
        say(u"Disconnected");
    wasConnected = isConnected;
    hasPlayed = hasPlayed || isConnected;
    showListeningBox();
}

/// Of the connection: in its row, or else in the status line.
void ZNTMainWiring::showTime()
{
    const ZNTConnectionRow& row = *window.connectionRow;
    status.setTimeSeen(row.isFolded() && !row.isHidden());
}

QStringList ZNTMainWiring::keysOfWelcome() const
{
    return {menu["speechOnOff"]->shortcut().toString(), menu["keyboardMap"]->shortcut().toString()};
}

QString ZNTMainWiring::hintOfPickedGame() const
{
    return text("Press Return to connect to ") + connection.pickedGame();
}

QString ZNTMainWiring::emptyHint() const
{
    if (!connection.pickedGame().isEmpty())
        return hintOfPickedGame();
    const QString hint = text("Game text appears here.\nPick a game with Ctrl+G and connect with F5,\n"
                              "or press Ctrl+Shift+D for the demo game.");
    if (!controller.services().database.isFirstStart())
        return hint;
    // The key for speech does the opposite while speech is on.
    const auto welcome = status.facts().isSpeechOn ? ZNTAnnouncement::WelcomeAloud : ZNTAnnouncement::Welcome;
    return hint + QLatin1Char('\n') + announcementInWords(welcome, keysOfWelcome());
}

void ZNTMainWiring::showEmptyHint()
{
    const bool isIdle = status.facts().connection == ZNTStatusFacts::Connection::None;
    window.textFromServer->setEmptyHint(isIdle ? emptyHint() : QString());
}

void ZNTMainWiring::welcomeReader()
{
    if (session.speechOnOffBindingState() != 1)
        announce(ZNTAnnouncement::Welcome, keysOfWelcome());
    offerListening();
}

void ZNTMainWiring::announceConnection()
{
    using Connection = ZNTStatusFacts::Connection;
    const ZNTStatusFacts& now = status.facts();
    if (std::exchange(announced, now.connection) == now.connection)
        return;
    if (now.connection == Connection::Connecting)
        znt::announce(ZNTAnnouncement::Connecting, {now.game});
    if (now.connection == Connection::Connected)
        znt::announce(ZNTAnnouncement::Connected, {now.game});
}

/// Games in a Chinese encoding lay their text out for signs of two columns.
void ZNTMainWiring::showEncoding()
{
    const bool isChinese = znt::rowOf(session.cfStringEncoding()).isChinese;
    window.textFromServer->setAmbiguousWidth(isChinese ? AmbiguousWidth::Wide : AmbiguousWidth::Narrow);
}

void ZNTMainWiring::showSettings()
{
    const auto& settings = controller.settings().settings();
    menu["standardTelnet"]->setChecked(settings.standardTelnet);
    menu["setUpForListening"]->setChecked(isSetUpForListening(settings));
    showListeningBox();
    firstStart.showSettings();
    window.textFromServer->setWebLinks(settings.webLinks);
    window.textFromServer->setLineTimes(settings.lineTimes);
}

/// A hint is not for players who have made a choice, nor for the demo game, which plays right both ways.
void ZNTMainWiring::showNotice(const ZNTSessionNotice& notice)
{
    if (notice.kind == ZNTSessionNotice::Kind::Hint &&
        (connection.isDemoPlayed() || !controller.settings().mayNeedHint()))
        return;
    status.showNotice(notice);
    say(notice.sentence);
    if (notice.comesUnasked)
        newsAgain.watch(qtText(notice.sentence));
}

void ZNTMainWiring::showTyping()
{
    const bool isHidden = session.isTypingHidden();
    if (isHidden == wasTypingHidden)
        return;
    wasTypingHidden = isHidden;
    window.textToServer->setTypingHidden(isHidden);
    ZNTDesktopScreenReader::announceKind(*window.textToServer);
    if (!session.isConnected())
        isTypingSaidHidden = false; // there is nothing to type into
}

/// Games switch before they ask, and the question is what the player must know first. So this waits until the
/// game is silent and then for its turn behind the text. There it is not skipped, however late it is.
void ZNTMainWiring::sayTyping()
{
    if (std::exchange(isTypingSaidHidden, wasTypingHidden) == wasTypingHidden)
        return;
    auto& synth = session.zntSpeechSynth();
    const std::u16string words =
        wasTypingHidden ? u"What you type is hidden" : u"What you type is shown again";
    if (session.speechOnOffBindingState() == 1)
        synth.speakLine(words, synth.stopCount(), synth.now(), ZNTSpeechQueue::Source::Client);
    else
        say(words);
}

void ZNTMainWiring::showRecording()
{
    const ZNTStatusFacts& now = status.facts();
    menu["startOrPauseRecording"]->setText(now.isRecording         ? text("&Pause recording")
                                           : now.isRecordingPaused ? text("Re&sume recording")
                                                                   : text("&Start recording"));
}

/// A recording that runs is announced at its beginning and at its end.
void ZNTMainWiring::showWalking()
{
    const ZNTStatusFacts& now = status.facts();
    menu.enable(Enabled::WhileWalking, now.isWalking || !now.runningRecording.isEmpty());
    if (now.runningRecording == runningRecording)
        return;
    const QString ended = std::exchange(runningRecording, now.runningRecording);
    if (runningRecording.isEmpty())
        announce(ZNTAnnouncement::RecordingEnded, {ended});
    else
        announce(ZNTAnnouncement::RecordingRuns, {runningRecording});
}

void ZNTMainWiring::showSpeech()
{
    const bool isOn = status.facts().isSpeechOn;
    showEmptyHint();
    menu["speechInterruptOnOff"]->setChecked(session.speechInterruptOnOffBindingState() == 1);
    menu["speechOnOff"]->setChecked(isOn);
    window.startStopSpeech->setText(isOn ? text("S&top speech") : text("S&tart speech"));
    window.startStopSpeech->setAccessibleName(isOn ? text("Stop speech") : text("Start speech"));
}
