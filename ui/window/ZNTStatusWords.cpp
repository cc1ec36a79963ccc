#include "ZNTStatusWords.h"

#include <QDateTime>
#include <QStringList>

QString znt::notConnectedInWords(const ZNTStatusFacts& facts)
{
    const QString words = QStringLiteral("Not connected");
    return facts.ending.isEmpty() ? words : words + QStringLiteral(": ") + facts.ending;
}

QString znt::connectedTime(const ZNTStatusFacts& facts)
{
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(facts.connectedSince.time_since_epoch());
    return QDateTime::fromSecsSinceEpoch(seconds.count()).toString(QStringLiteral("HH:mm"));
}

QString znt::statusInWords(const ZNTStatusFacts& facts)
{
    QStringList words;
    switch (facts.connection) {
    case ZNTStatusFacts::Connection::None:
        words << znt::notConnectedInWords(facts);
        break;
    case ZNTStatusFacts::Connection::Connecting:
        words << QStringLiteral("Connecting to ") + facts.game;
        break;
    case ZNTStatusFacts::Connection::Connected:
        words << QStringLiteral("Connected to ") + facts.game +
                     (facts.isTimeSeen ? QString() : QStringLiteral(" since ") + connectedTime(facts));
        break;
    }
    if (facts.hasGameSettings)
        words << QStringLiteral("with settings for this game");
    if (facts.isCompressed)
        words << QStringLiteral("compressed");
    if (facts.isRecording)
        words << QStringLiteral("recording");
    if (facts.isRecordingPaused)
        words << QStringLiteral("recording paused");
    if (facts.isWalking)
        words << QStringLiteral("walking");
    if (!facts.runningRecording.isEmpty())
        words << QStringLiteral("running the recording ") + facts.runningRecording;
    words << (!facts.isSpeechOn         ? QStringLiteral("speech off")
              : facts.isSpeechAvailable ? QStringLiteral("speech on")
                                        : QStringLiteral("speech unavailable"));
    if (facts.isMuted)
        words << QStringLiteral("sounds muted");
    const QString line = words.join(QStringLiteral(", "));
    return facts.notice.isEmpty() ? line : line + QStringLiteral(". ") + facts.notice;
}
