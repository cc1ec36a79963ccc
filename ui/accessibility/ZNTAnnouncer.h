#pragma once

#include <QObject>
#include <functional>

class ZNTScreenReader;
class ZNTSpeechSynth;

/// Says announcements (ZNTAnnouncement.h) to the player: through the screen reader while it runs, also while
/// speech is off. Without a reader the client's own voice says them if the player asked for that and speech
/// is on: before the lines that wait, and never in the middle of one.
class ZNTAnnouncer final : public QObject
{
public:
    /// The caller owns what it passes; all of it outlives this. Made after the application object.
    ZNTAnnouncer(ZNTScreenReader& reader, ZNTSpeechSynth& ownVoice, std::function<bool()> isOwnVoiceWanted);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ZNTScreenReader& reader;
    ZNTSpeechSynth& ownVoice;
    std::function<bool()> isOwnVoiceWanted;
};
