#include "ZNTStreamInflater.h"

#include <utility>
#include <zlib.h>

namespace
{

/// How zlib shows in `data_type` that it stands between two deflate blocks, and that no bit of the byte
/// before is left over (zlib's manual, at `inflate` with Z_BLOCK).
bool isAtWholeByteBoundary(const z_stream& stream)
{
    constexpr int atBlockEnd = 128, unusedBits = 63;
    return (stream.data_type & atBlockEnd) != 0 && (stream.data_type & unusedBits) == 0;
}

} // namespace

ZNTStreamInflater::ZNTStreamInflater() : stream(std::make_unique<z_stream>()) {}

ZNTStreamInflater::~ZNTStreamInflater()
{
    if (isOpen)
        inflateEnd(stream.get());
}

void ZNTStreamInflater::begin()
{
    if (!piece)
        piece = std::make_unique<char[]>(mostInAPiece);
    stream->next_in = nullptr;
    stream->avail_in = 0;
    isOpen = isOpen ? inflateReset(stream.get()) == Z_OK : inflateInit(stream.get()) == Z_OK;
    isRunning = true;
    usedSinceBoundary.clear();
    hasYieldedSinceBoundary = false;
}

ZNTStreamInflater::Piece ZNTStreamInflater::next(std::string_view& compressed)
{
    std::size_t made = 0;
    const auto pieceWith = [&](Outcome outcome) {
        isRunning = outcome != Outcome::Ended && outcome != Outcome::Damaged;
        return Piece{{piece.get(), made}, outcome};
    };
    for (;;) {
        stream->next_in =
            reinterpret_cast<Bytef*>(const_cast<char*>(compressed.data())); // zlib reads it only
        stream->avail_in = static_cast<uInt>(compressed.size());
        stream->next_out = reinterpret_cast<Bytef*>(piece.get()) + made;
        stream->avail_out = static_cast<uInt>(mostInAPiece - made);
        // Z_BLOCK returns at the end of each deflate block, where a server may stop compressing.
        const int result = isOpen ? inflate(stream.get(), Z_BLOCK) : Z_MEM_ERROR;
        const auto used = compressed.size() - stream->avail_in;
        const auto inflated = mostInAPiece - made - stream->avail_out;
        noteProgress(compressed.substr(0, used), inflated);
        compressed.remove_prefix(used);
        made += inflated;
        if (result == Z_STREAM_END)
            return pieceWith(Outcome::Ended);
        if (result != Z_OK && result != Z_BUF_ERROR) // the latter: neither input nor room is left
            return pieceWith(Outcome::Damaged);
        if (made == mostInAPiece)
            return pieceWith(Outcome::PieceIsFull);
        if (compressed.empty())
            return pieceWith(Outcome::NeedsInput);
    }
}

void ZNTStreamInflater::noteProgress(std::string_view used, std::size_t inflated)
{
    hasYieldedSinceBoundary |= inflated > 0;
    // Few bytes wait here: a block begins to yield after its header of some hundred bytes.
    if (hasYieldedSinceBoundary)
        usedSinceBoundary.clear();
    else
        usedSinceBoundary += used;
    if (isAtWholeByteBoundary(*stream)) {
        usedSinceBoundary.clear();
        hasYieldedSinceBoundary = false;
    }
}

std::optional<std::string> ZNTStreamInflater::takeBytesThatDidNotInflate()
{
    if (hasYieldedSinceBoundary)
        return std::nullopt;
    return std::exchange(usedSinceBoundary, {});
}
