#include "ZNTMainWiring.h"

#include "ZNTActionWiring.h"
#include "ZNTAnnouncement.h"
#include "ZNTAskBar.h"
#include "ZNTChannelHistorySheet.h"
#include "ZNTCommandLine.h"
#include "ZNTDatabaseHelper.h"
#include "ZNTQtText.h"
#include "ZNTSettings.h"
#include "ZNTSpeechReview.h"
#include "ZNTSpeechSynth.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTimer>
#include <chrono>

using namespace znt;

// Speech, channels and the review of what was said

void ZNTMainWiring::wireSpeech()
{
    whenToggled(menu["speechOnOff"], [this](bool on) { setSpeech(on); });
    whenToggled(menu["speechInterruptOnOff"], [this](bool on) {
        if ((session.speechInterruptOnOffBindingState() == 1) == on)
            return;
        session.setSpeechInterruptOnOffBindingState(on ? 1 : 0);
        say(on ? u"Interrupting" : u"Not interrupting");
    });
    joinButton(window.startStopSpeech, menu["speechOnOff"]);
    whenTriggered(menu["replayLastText"], [this] {
        constexpr std::u16string_view nothing = u"Nothing to replay yet.";
        if (session.hasTextToReplay())
            return session.replayLastText();
        // The game's voice stays silent then. A reader says it.
        showNothingYet(nothing);
        announce(ZNTAnnouncement::Answer, {qtText(nothing)});
    });
    whenTriggered(menu["sayPrompt"], [this] { session.sayPrompt(); });
    whenTriggered(menu["stopSpeaking"], [this] { session.stopSpeaking(); });
    whenTriggered(menu["stopAllSounds"], [this] { session.stopAllSounds(); });
    whenTriggered(menu["sayStatus"],
                  [this] { session.zntSpeechSynth().speakAtOnce(textOfQt(status.words())); });
    whenToggled(menu["setUpForListening"], [this](bool on) { setUpForListening(on); });
    joinButton(window.listeningBox, menu["setUpForListening"]);
}

/// Where the control of a setting is, at the end of a sentence: the player knows its words, not its name.
std::u16string ZNTMainWiring::placeInPreferences(std::string_view setting) const
{
    const ZNTSettingRow& row = *settingNamed(setting);
    return textOfQt(QStringLiteral("\"%1\" in the preferences (%2), tab %3.")
                        .arg(latinText(row.words).remove(QLatin1Char('&')),
                             menu["showPreferencesView"]->shortcut().toString(QKeySequence::NativeText),
                             latinText(titleOf(row.tab))));
}

/// A key that does nothing would seem not to work.
void ZNTMainWiring::showNothingYet(std::u16string_view words)
{
    constexpr std::chrono::seconds answerStays{8};
    const ZNTSessionNotice notice{ZNTSessionNotice::Kind::Hint, words};
    status.showNotice(notice);
    QTimer::singleShot(answerStays, menu["sayStatus"], [this, notice] { status.endNotice(notice); });
}

/// The review speaks its lines while speech is off, too.
void ZNTMainWiring::sayNothingYet(std::u16string_view words)
{
    showNothingYet(words);
    session.zntSpeechSynth().speakAtOnce(words);
}

/// The keys speak as those of the review do.
void ZNTMainWiring::wireChannels()
{
    auto& history = session.channelHistory();
    history.howToSwitchOn = u"To keep one, mark " + placeInPreferences("channel-history");
    history.whereChannelsAre = u"You list them under " + placeInPreferences("channels");
    const auto say = [this, &history](ZNTActionName name, std::u16string (ZNTChannelHistory::*words)()) {
        whenTriggered(menu[name],
                      [this, &history, words] { session.zntSpeechSynth().speakAtOnce((history.*words)()); });
    };
    say("newestOfChannel", &ZNTChannelHistory::newest);
    say("olderOfChannel", &ZNTChannelHistory::older);
    say("newerOfChannel", &ZNTChannelHistory::newer);
    say("nextChannel", &ZNTChannelHistory::nextChannel);
    whenTriggered(menu["showChannelHistory"], [this, &history] {
        if (!channelSheet)
            channelSheet =
                std::make_unique<ZNTChannelHistorySheet>(window, history, [this](const QString& line) {
                    window.textToServer->setText(line);
                    window.textToServer->setFocus(Qt::OtherFocusReason);
                });
        channelSheet->show();
    });
}

/// Players who do not have it yet are told about it in their first start, and never again.
bool ZNTMainWiring::maySetUpForListening() const
{
    return controller.services().database.isFirstStart() &&
           !isSetUpForListening(controller.settings().settings());
}

void ZNTMainWiring::offerListening()
{
    if (hasOfferedListening || !maySetUpForListening())
        return;
    hasOfferedListening = true;
    const QStringList keys{menu["setUpForListening"]->shortcut().toString()};
    announce(ZNTAnnouncement::OfferListening, keys);
    newsAgain.watch(announcementInWords(ZNTAnnouncement::OfferListening, keys));
}

/// The box belongs to the words that a player's first start shows until a game's text takes their place.
void ZNTMainWiring::showListeningBox()
{
    const bool isOffered = maySetUpForListening() && !hasPlayed;
    if (!isOffered && window.listeningBox->hasFocus())
        window.ipAddress->setFocus(Qt::OtherFocusReason); // where it was at the start
    window.listeningBox->setVisible(isOffered);           // it goes once it is marked
    // A reader asks for the mark only after it has gone, and would say "not checked".
    if (isOffered)
        window.listeningBox->setChecked(false);
}

void ZNTMainWiring::wireReview()
{
    auto& review = session.speechReview();
    const auto read = [this, &review](QAction* action, std::function<void()> task) {
        whenTriggered(action, [this, &review, task = std::move(task)] {
            review.isEmpty() ? sayNothingYet(u"No line yet.") : task();
        });
    };
    read(menu["previousLine"], [&review] { review.previousLine(); });
    read(menu["nextLine"], [&review] { review.nextLine(); });
    for (std::size_t index = 0; index < menu.lines().size(); ++index)
        read(menu.lines()[index], [&review, index] { review.lineFromEnd(index + 1); });
    using Unit = ZNTLineCursor::Unit;
    using Way = ZNTLineCursor::Way;
    read(menu["nextWord"], [&review] { review.speakPart(Unit::Word, Way::Next); });
    read(menu["previousWord"], [&review] { review.speakPart(Unit::Word, Way::Previous); });
    read(menu["nextLetter"], [&review] { review.speakPart(Unit::Letter, Way::Next); });
    read(menu["previousLetter"], [&review] { review.speakPart(Unit::Letter, Way::Previous); });
    whenTriggered(menu["goToLastCommand"], [&review] { review.goToLastCommand(); });
    whenTriggered(menu["findInSaid"], [this] { window.findInSaidBar->open(); });
    whenTriggered(menu["findOlderSaid"], [this, &review] {
        review.searchedText().empty() ? window.findInSaidBar->open() : review.findOlder();
    });
    whenTriggered(menu["findNewerSaid"], [this, &review] {
        review.searchedText().empty() ? window.findInSaidBar->open() : review.findNewer();
    });
    // Return once more goes on to the next older line, as in the search of the output.
    window.findInSaidBar->whenAnswered = [&review](const QString& typed, bool isWithShift) {
        const auto text = textOfQt(typed);
        if (review.searchedText() != text)
            review.find(text);
        else if (isWithShift)
            review.findNewer();
        else
            review.findOlder();
    };
}

void ZNTMainWiring::setSpeech(bool on)
{
    if ((session.speechOnOffBindingState() == 1) == on)
        return; // the switch follows the session
    session.setSpeechOnOffBindingState(on ? 1 : 0);
    session.textToSpeechOnAndOff();
    // "Speech off" is spoken, too: players who do not look must learn which it is now.
    session.zntSpeechSynth().speakNext(on ? u"Speech on" : u"Speech off");
    if (on)
        offerListening();
}

void ZNTMainWiring::setUpForListening(bool on)
{
    if (isSetUpForListening(controller.settings().settings()) == on)
        return; // the switch follows the settings
    controller.chooseSetting(znt::listening, on ? "on" : "off");
    const auto notice = notices::setUpForListening(on);
    status.showNotice(notice);
    std::u16string words(notice.sentence);
    const bool isSpeechOn = session.speechOnOffBindingState() == 1;
    if (on && !isSpeechOn)
        words += u' ' + textOfQt(announcementInWords(ZNTAnnouncement::Welcome, keysOfWelcome()));
    // The answer is said also while speech is off, because that player wants to listen.
    if (on || isSpeechOn)
        session.zntSpeechSynth().speakNext(words);
    else
        say(words);
}

void ZNTMainWiring::say(std::u16string_view news) { announce(ZNTAnnouncement::News, {qtText(news)}); }

void ZNTMainWiring::sayDone(std::u16string_view what)
{
    std::u16string words(what);
    if (!session.isConnected())
        words += what.empty() ? u"Not connected" : u". Not connected";
    say(words);
}
