#pragma once

#include "ZNTStringEncoding.h"

#include <string>
#include <string_view>

/// One received block after reading: its text, and what the session does because of it.
struct ZNTReceived {
    /// What is to be shown in the end. The telnet commands may still be in it; `ZNTParserUtility` takes them
    /// out of the released text.
    std::u16string text;
    /// Bytes for the server. They are sent before anything of the block is shown.
    std::string replies;
    bool isGoAhead = false;           ///< GA, EOR or an offer of EOR. Only noted: `isRelease` releases
    bool isEndOfNegotiations = false; ///< it held IAC SE
    bool isRelease = false;           ///< what is held back is shown now, with this block's text
};

/// Bytes to text and replies: the first stages of the receive path, for one connection after another.
///
/// A receiver sees no widget, no socket, no log and no speech: bytes go in, a `ZNTReceived` comes out. It
/// belongs to the run loop's thread. A session chooses its receiver when it connects.
class ZNTReceiver
{
public:
    virtual ~ZNTReceiver() = default;

    /// Begins a new connection. The state of the compressed stream starts anew.
    virtual void startStream() = 0;
    /// Reads one block, whatever its bytes. Linear in the block.
    virtual ZNTReceived read(std::string_view block, ZNTStringEncoding encoding) = 0;
    /// The same for a block that is text already.
    virtual ZNTReceived readText(std::u16string text) = 0;

    /// The player switches compression (MCCP2) or sounds (MSP) on or off. Returns the bytes that say so to
    /// the server.
    virtual std::string switchCompression(bool on) = 0;
    virtual std::string switchSounds(bool on) = 0;
    /// Later offers of compression are answered so. Nothing is sent now.
    virtual void acceptCompressionOffers(bool accept) = 0;

    /// Whether the next block is taken as compressed.
    [[nodiscard]] virtual bool isInflating() const = 0;
    virtual void stopInflating() = 0;
};
