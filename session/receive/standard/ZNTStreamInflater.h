#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct z_stream_s; // zlib's

/// Inflates MCCP2 streams (zlib format, RFC 1950) one after the other. A stream may begin and end anywhere in
/// a block: what follows its end is left to the caller. Output comes in pieces of a bounded size, so that a
/// small block that inflates a thousandfold does not fill the memory.
class ZNTStreamInflater
{
public:
    static constexpr std::size_t mostInAPiece = std::size_t{64} << 10; ///< bytes of output

    ZNTStreamInflater();
    ~ZNTStreamInflater();
    ZNTStreamInflater(const ZNTStreamInflater&) = delete;
    ZNTStreamInflater& operator=(const ZNTStreamInflater&) = delete;

    /// The next byte is the first of a new stream.
    void begin();
    /// The bytes that come are not compressed.
    void stop() { isRunning = false; }
    /// Whether the next byte belongs to a stream.
    [[nodiscard]] bool isInflating() const { return isRunning; }

    enum class Outcome {
        PieceIsFull, ///< more is to be had, perhaps without further input
        NeedsInput,  ///< the input is used up
        Ended,       ///< the stream has ended; the rest of the input does not belong to it
        Damaged      ///< no zlib stream, or a broken one
    };
    struct Piece {
        std::string_view bytes; ///< valid until the next call
        Outcome outcome;
    };
    /// Inflates from the front of `compressed`, and takes away there what it used. To be called while
    /// `isInflating`; an end and a damage stop that.
    Piece next(std::string_view& compressed);

    /// Some servers stop compressing without ending the stream. Then damage is met at the first bytes that
    /// are not compressed. These are the bytes that were used since the stream could last break off at a
    /// whole byte (the end of a deflate block), if the stream has yielded nothing since. None otherwise:
    /// nobody knows then where it broke off. To be asked after `Damaged`; `compressed` holds what follows.
    [[nodiscard]] std::optional<std::string> takeBytesThatDidNotInflate();

private:
    void noteProgress(std::string_view used, std::size_t inflated);

    std::unique_ptr<z_stream_s> stream;
    std::unique_ptr<char[]> piece;
    bool isOpen = false; ///< zlib has memory for the stream
    bool isRunning = false;
    std::string usedSinceBoundary; ///< empty as soon as something was inflated
    bool hasYieldedSinceBoundary = false;
};
