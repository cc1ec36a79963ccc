#include "ZNTAnnouncer.h"

#include "ZNTAnnouncement.h"
#include "ZNTScreenReader.h"
#include "ZNTSpeechSynth.h"

#include <QCoreApplication>

ZNTAnnouncer::ZNTAnnouncer(ZNTScreenReader& reader, ZNTSpeechSynth& ownVoice, Answers answers)
    : reader(reader),
      ownVoice(ownVoice),
      answers(std::move(answers))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool ZNTAnnouncer::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != ZNTAnnouncementEvent::kind())
        return false;
    const auto& announcement = static_cast<const ZNTAnnouncementEvent&>(*event);
    using Event = ZNTAnnouncementEvent;
    const auto words = announcement.words.toStdU16String();
    if (announcement.by == Event::By::VoiceOfGame && answers.isSpeechOn()) {
        ownVoice.speakNext(words); // which chooses between the reader and the own voice
    } else if (!reader.isRunning()) {
        if (answers.isOwnVoiceWanted())
            ownVoice.speakBeforeWaiting(words);
    } else if (announcement.by != Event::By::ReaderByItself) {
        reader.announce(words);
    }
    return true;
}
