#include "ZNTAnnouncement.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>

namespace
{

using By = ZNTAnnouncementEvent::By;

struct AnnouncementRow {
    ZNTAnnouncement what;
    const char* words;
    const char* wordsForOne = nullptr; ///< if %1 is "1"
    By by = By::Reader;
};

constexpr std::array announcementRows{
    AnnouncementRow{.what = ZNTAnnouncement::Mark, .words = "%1"},
    AnnouncementRow{.what = ZNTAnnouncement::TriggersInUse,
                    .words = "%1 triggers in use",
                    .wordsForOne = "1 trigger in use"},
    AnnouncementRow{.what = ZNTAnnouncement::TriggerSaved,
                    .words = "Trigger saved, Reload triggers puts it in force"},
    AnnouncementRow{.what = ZNTAnnouncement::TriggerNotSaved, .words = "Trigger not saved"},
    AnnouncementRow{.what = ZNTAnnouncement::NoTriggerSelected, .words = "No trigger is selected"},
    AnnouncementRow{.what = ZNTAnnouncement::GamesFound,
                    .words = "%1 games, %2 is selected",
                    .wordsForOne = "1 game, %2"},
    AnnouncementRow{.what = ZNTAnnouncement::GamePicked, .words = "%1 picked, %2 connects"},
    AnnouncementRow{.what = ZNTAnnouncement::MacroAdded, .words = "Macro %1 added"},
    AnnouncementRow{.what = ZNTAnnouncement::MacroSaved, .words = "Macro %1 saved"},
    AnnouncementRow{.what = ZNTAnnouncement::Found, .words = "%1, %2"},
    AnnouncementRow{.what = ZNTAnnouncement::NotFound, .words = "%1"},
    AnnouncementRow{
        .what = ZNTAnnouncement::LinesFound, .words = "%1 lines, %2", .wordsForOne = "1 line, %2"},
    AnnouncementRow{.what = ZNTAnnouncement::Line, .words = "%1"},
    AnnouncementRow{.what = ZNTAnnouncement::Completed, .words = "%1"},
    AnnouncementRow{.what = ZNTAnnouncement::Tab, .words = "%1 tab"},
    AnnouncementRow{.what = ZNTAnnouncement::TabWithFocus, .words = "%1 tab", .by = By::ReaderByItself},
    AnnouncementRow{.what = ZNTAnnouncement::Connecting, .words = "Connecting to %1"},
    AnnouncementRow{.what = ZNTAnnouncement::Connected, .words = "Connected to %1"},
    AnnouncementRow{.what = ZNTAnnouncement::ConnectionEnded, .words = "%1. %2 connects again"},
    AnnouncementRow{.what = ZNTAnnouncement::Alert, .words = "%1 %2", .by = By::ReaderByItself},
    AnnouncementRow{.what = ZNTAnnouncement::AlertAgain, .words = "%1 %2"},
    AnnouncementRow{.what = ZNTAnnouncement::Answer, .words = "%1"},
    AnnouncementRow{.what = ZNTAnnouncement::RecordingRuns, .words = "Running %1"},
    AnnouncementRow{.what = ZNTAnnouncement::RecordingEnded, .words = "%1 has ended"},
    AnnouncementRow{.what = ZNTAnnouncement::MenuOpened, .words = "%1 menu"},
    AnnouncementRow{.what = ZNTAnnouncement::News, .words = "%1", .by = By::VoiceOfGame},
    AnnouncementRow{.what = ZNTAnnouncement::NewsAgain, .words = "%1"},
    AnnouncementRow{
        .what = ZNTAnnouncement::OfferListening, .words = "%1 sets up for listening.", .by = By::VoiceOfGame},
    AnnouncementRow{.what = ZNTAnnouncement::Welcome,
                    .words = "Press %1 to have the game read aloud, %2 for help."},
    AnnouncementRow{.what = ZNTAnnouncement::WelcomeAloud,
                    .words = "Press %1 to stop reading the game aloud, %2 for help."},
    AnnouncementRow{.what = ZNTAnnouncement::HelpPage, .words = "%1. %2", .by = By::ReaderByItself},
    AnnouncementRow{.what = ZNTAnnouncement::Explanation, .words = "%1"},
    AnnouncementRow{.what = ZNTAnnouncement::LeftByFilter, .words = "%1, %2"},
};

const AnnouncementRow& rowOf(ZNTAnnouncement what)
{
    return *std::ranges::find(announcementRows, what, &AnnouncementRow::what);
}

} // namespace

QString znt::announcementInWords(ZNTAnnouncement what, const QStringList& parts)
{
    const AnnouncementRow& row = rowOf(what);
    const bool isOne = row.wordsForOne && parts.value(0) == QLatin1String("1");
    QString words;
    // A part may hold "%1" itself, as the pattern of a trigger does. So each place is filled once.
    for (const char* at = isOne ? row.wordsForOne : row.words; *at; ++at) {
        const bool isPlace = at[0] == '%' && at[1] >= '1' && at[1] <= '9';
        words += isPlace ? parts.value(*++at - '1') : QString(QLatin1Char(*at));
    }
    return words;
}

void znt::announce(ZNTAnnouncement what, const QStringList& parts)
{
    ZNTAnnouncementEvent event(announcementInWords(what, parts), rowOf(what).by);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
}

QEvent::Type ZNTAnnouncementEvent::kind()
{
    static const auto registered = static_cast<QEvent::Type>(QEvent::registerEventType());
    return registered;
}
