#pragma once

#include <QObject>
#include <functional>

class ZNTScreenReader;
class ZNTSpeechSynth;

/// Says announcements (ZNTAnnouncement.h) to the player: through the screen reader while it runs, also while
/// speech is off. Without a reader the client's own voice says them if the player asked for that and speech
/// is on: before the lines that wait, and never in the middle of one. News are said wherever the game's text
/// is spoken, whether or not the player asked.
class ZNTAnnouncer final : public QObject
{
public:
    struct Answers {
        std::function<bool()> isSpeechOn, isOwnVoiceWanted;
    };

    /// The caller owns what it passes; all of it outlives this. Made after the application object.
    ZNTAnnouncer(ZNTScreenReader& reader, ZNTSpeechSynth& ownVoice, Answers answers);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ZNTScreenReader& reader;
    ZNTSpeechSynth& ownVoice;
    Answers answers;
};
