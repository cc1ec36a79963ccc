#pragma once

#include "ZNTResult.h"

#include <chrono>
#include <string>

/// How a connection came to its end.
enum class ZNTSessionEnding { None, ByPlayer, ByServer, Broken };

/// Why a connection, or the attempt to make one, came to its end.
enum class ZNTEndReason {
    None, ///< there was no connection yet, or one stands
    ByPlayer,
    ClosedByGame,
    NoSuchHost,
    NameNotLookedUp, ///< no server for names has answered
    Refused,
    Reset,
    TimedOut,
    Unreachable,
    Unreadable, ///< the game sent what cannot be read
    Unknown
};

/// The end of the last connection, or of the last attempt to make one.
struct ZNTConnectionEnd {
    ZNTEndReason reason = ZNTEndReason::None;
    bool hadConnection = false; ///< else it was an attempt
    std::chrono::system_clock::time_point when{};

    friend bool operator==(const ZNTConnectionEnd&, const ZNTConnectionEnd&) = default;
};

namespace znt
{

/// What the error of a stream means for a player.
ZNTEndReason endReasonOf(const ZNTError& error);

/// "closed by the game at 15:14", in local time; an attempt has no time. Empty if there was no end, and if
/// the player wanted it.
std::u16string inWords(const ZNTConnectionEnd& end);

} // namespace znt
