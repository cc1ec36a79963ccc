#pragma once

#include <QEvent>
#include <QStringList>

/// What the client announces in a few words to a player who cannot see it.
enum class ZNTAnnouncement {
    Mark,          ///< a mark in a table: its column and "yes" or "no"
    TriggersInUse, ///< how many
    TriggerSaved,
    TriggerNotSaved,
    NoTriggerSelected,
    GamesFound,      ///< how many match a filter, and the selected one
    GamePicked,      ///< its name, and the key that connects
    MacroAdded,      ///< its name
    MacroSaved,      ///< its name
    Found,           ///< "1 of 3", and the line with the match
    NotFound,        ///< how the search ended
    LinesFound,      ///< how many, and the line on which one stands
    Line,            ///< the line on which one stands
    Completed,       ///< the word
    Tab,             ///< its title
    TabWithFocus,    ///< the same, reached on the row of tabs
    Connecting,      ///< to which game
    Connected,       ///< to which game
    Alert,           ///< title and text
    AlertAgain,      ///< the same, for a player who typed while it came
    Answer,          ///< a sentence about what a button has done, or why it could not
    RecordingRuns,   ///< its name
    RecordingEnded,  ///< its name
    MenuOpened,      ///< its title
    News,            ///< a few words about what the window shows only to those who look
    NewsAgain,       ///< news of the session that a key may have cut off
    OfferListening,  ///< the key that sets the client up for listening
    ConnectionEnded, ///< why, and the key that connects again
    Welcome,         ///< the keys for speech and for help
    WelcomeAloud,    ///< the same while the game is read aloud
    HelpPage,        ///< its title and its first line
    Explanation,     ///< what "What's this?" shows
    LeftByFilter     ///< how many rows, and the first of them
};

namespace znt
{

/// The words of an announcement, from the one table that has them. `parts` take the places of %1 and %2.
QString announcementInWords(ZNTAnnouncement what, const QStringList& parts = {});

/// Has it announced by the application's ZNTAnnouncer, if there is one. Any widget may call this.
void announce(ZNTAnnouncement what, const QStringList& parts = {});

} // namespace znt

/// The way of an announcement to the announcer: an event that the application gets.
class ZNTAnnouncementEvent final : public QEvent
{
public:
    /// Who says the words.
    enum class By {
        Reader,         ///< without a reader the own voice, if the player has asked for that
        ReaderByItself, ///< the same, but a reader reads the window that opens and needs no words from us
        VoiceOfGame     ///< whatever speaks the game's text; while speech is off the reader
    };

    ZNTAnnouncementEvent(QString words, By by) : QEvent(kind()), words(std::move(words)), by(by) {}

    [[nodiscard]] static QEvent::Type kind();

    const QString words;
    const By by;
};
