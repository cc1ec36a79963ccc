#include "ZNTAnnouncer.h"

#include "ZNTAnnouncement.h"
#include "ZNTScreenReader.h"
#include "ZNTSpeechSynth.h"

#include <QCoreApplication>

ZNTAnnouncer::ZNTAnnouncer(ZNTScreenReader& reader, ZNTSpeechSynth& ownVoice,
                           std::function<bool()> isOwnVoiceWanted)
    : reader(reader),
      ownVoice(ownVoice),
      isOwnVoiceWanted(std::move(isOwnVoiceWanted))
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool ZNTAnnouncer::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != ZNTAnnouncementEvent::kind())
        return false;
    const auto& announcement = static_cast<const ZNTAnnouncementEvent&>(*event);
    const auto words = announcement.words.toStdU16String();
    if (!reader.isRunning()) {
        if (isOwnVoiceWanted())
            ownVoice.speakBeforeWaiting(words);
    } else if (!announcement.isSaidByReader) {
        reader.announce(words);
    }
    return true;
}
