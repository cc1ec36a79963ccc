#pragma once

#include "ZNTStringEncoding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// One received block after reading: its text, and what the session does because of it.
struct ZNTReceived {
    /// What is to be shown in the end. `ZNTReceiver::stripCommands` is still to be applied to what is
    /// released.
    std::u16string text;
    /// Bytes for the server. They are sent before anything of the block is shown.
    std::string replies;
    bool isGoAhead = false;           ///< GA, EOR or an offer of EOR. Only noted: `isRelease` releases
    bool isEndOfNegotiations = false; ///< it held IAC SE
    bool isRefusal = false;           ///< an offer was refused with a byte that many servers do not know
    bool isRelease = false; ///< what is held back is shown now, with the first `ready` units of `text`
    std::size_t ready = 0;  ///< UTF-16 units; what follows them in `text` is held back
    /// The encoding that the server and the receiver have agreed on in this block. It holds until the end of
    /// the connection.
    std::optional<ZNTStringEncoding> agreedEncoding = {};
    /// A sentence for the player if nothing further can be read. The session then ends the connection.
    std::u16string_view failure = {};
};

/// How a session and its game understand each other: bytes to text and replies, which are the first stages of
/// the receive path, and the bytes of what goes out. For one connection after another.
///
/// A receiver sees no widget, no socket, no log, no clock and no speech: bytes go in, a `ZNTReceived` comes
/// out. It belongs to the run loop's thread. A session chooses its receiver when it connects.
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

    /// Whether spaces and tabs at the ends of a held-back block stay.
    [[nodiscard]] virtual bool keepsBlanks() const = 0;
    /// Seconds without a block after which everything held back is shown.
    [[nodiscard]] virtual double secondsOfQuiet() const = 0;
    /// Takes the telnet commands out of a text that is released, if they are still in it.
    virtual void stripCommands(std::u16string& text) const = 0;

    /// The bytes of a line for the server. Never fails: a character that the encoding lacks goes out as "?".
    [[nodiscard]] virtual std::string encodedLine(std::u16string_view line,
                                                  ZNTStringEncoding encoding) const = 0;
    /// Whether the server echoes what is typed, as servers do for a password: then it is not shown.
    [[nodiscard]] virtual bool isEchoedByServer() const { return false; }
    /// Whether a connection that the server closes counts as broken.
    [[nodiscard]] virtual bool isCloseAnError() const = 0;
    /// The output view's size in characters. Returns the bytes that say so to the server.
    virtual std::string windowSizeChanged(int /*columns*/, int /*rows*/) { return {}; }

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
