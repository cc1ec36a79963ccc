#pragma once

#include <QString>
#include <chrono>

/// What the status line says, as facts.
struct ZNTStatusFacts {
    enum class Connection { None, Connecting, Connected } connection = Connection::None;
    QString ending; ///< why the last connection ended; empty if nothing is to be said
    QString game;   ///< its name, else its address
    std::chrono::system_clock::time_point connectedSince;
    bool isTimeSeen = false;      ///< the row of the connection shows since when
    bool hasGameSettings = false; ///< the game is played with settings of its own
    bool isCompressed = false;
    bool isRecording = false;
    bool isRecordingPaused = false;
    bool isWalking = false;
    QString runningRecording; ///< its name; empty while none runs
    bool isSpeechOn = false;
    bool isSpeechAvailable = true;
    bool isMuted = false;
    QString notice; ///< a sentence that stands after the rest; empty for none

    friend bool operator==(const ZNTStatusFacts&, const ZNTStatusFacts&) = default;
};

namespace znt
{

/// In one line: "Connected to Elmvale since 12:04, compressed, recording, speech on". If the time is seen
/// elsewhere, the line leaves it out.
QString statusInWords(const ZNTStatusFacts& facts);
/// "Not connected: no such host".
QString notConnectedInWords(const ZNTStatusFacts& facts);
/// Since when, as "14:27".
QString connectedTime(const ZNTStatusFacts& facts);

} // namespace znt
