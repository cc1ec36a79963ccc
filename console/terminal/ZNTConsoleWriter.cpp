#include "ZNTConsoleWriter.h"

#include "ZNTDescriptors.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr std::size_t largestPiece = std::size_t{64} << 10;
/// Pieces whose memory is kept: about as many as are on their way while the writer keeps pace.
constexpr std::size_t mostKept = 16;
} // namespace

ZNTConsoleWriter::ZNTConsoleWriter(RunLoop& runLoop, Descriptors descriptors, std::size_t mostWaiting,
                                   std::function<void()> readerLeft)
    : runLoop(runLoop),
      descriptors(descriptors),
      mostWaiting(mostWaiting),
      readerLeft(std::move(readerLeft)),
      thread([this] { run(); })
{
}

ZNTConsoleWriter::~ZNTConsoleWriter()
{
    {
        const std::lock_guard hold(guard);
        isToEnd = true;
    }
    something.notify_one();
    thread.join();
}

void ZNTConsoleWriter::write(std::string_view utf8, To to)
{
    std::unique_lock hold(guard);
    if (hasReaderLeft)
        return;
    while (!utf8.empty()) {
        // The first piece is the thread's; the last one may still grow.
        if (waiting.size() < 2 || waiting.back().to != to || waiting.back().text.size() >= largestPiece)
            waiting.push_back(emptyPiece(to));
        auto& last = waiting.back().text;
        const auto part = utf8.substr(0, largestPiece - last.size());
        last += part;
        bytesWaiting += part.size();
        utf8.remove_prefix(part.size());
    }
    wasFull = wasFull || bytesWaiting >= mostWaiting;
    hold.unlock();
    something.notify_one();
}

ZNTConsoleWriter::Piece ZNTConsoleWriter::emptyPiece(To to)
{
    Piece piece{{}, to};
    if (!used.empty()) {
        piece.text = std::move(used.back());
        used.pop_back();
    }
    piece.text.clear();
    return piece;
}

bool ZNTConsoleWriter::hasWrittenAll() const
{
    const std::lock_guard hold(guard);
    return waiting.empty();
}

void ZNTConsoleWriter::waitUntilWritten()
{
    std::unique_lock hold(guard);
    nothing.wait(hold, [this] { return waiting.empty(); });
}

bool ZNTConsoleWriter::isFull() const
{
    const std::lock_guard hold(guard);
    return bytesWaiting >= mostWaiting;
}

void ZNTConsoleWriter::run()
{
    std::unique_lock hold(guard);
    for (;;) {
        something.wait(hold, [this] { return !waiting.empty() || isToEnd; });
        if (waiting.empty())
            return;
        // Nobody else touches the first piece, and pieces behind it may come meanwhile.
        const auto& piece = waiting.front();
        hold.unlock();
        const bool isRead = writePiece(piece);
        hold.lock();
        if (!isRead && !std::exchange(hasReaderLeft, true)) {
            hold.unlock();
            readerLeft();
            hold.lock();
        }
        bytesWaiting -= piece.text.size();
        if (used.size() < mostKept)
            used.push_back(std::move(waiting.front().text));
        waiting.pop_front();
        if (bytesWaiting < mostWaiting / 4 && std::exchange(wasFull, false) && roomAgain)
            runLoop.post([this] { roomAgain(); });
        if (waiting.empty()) {
            if (writtenAll)
                runLoop.post([this] { writtenAll(); });
            nothing.notify_one();
        }
    }
}

bool ZNTConsoleWriter::writePiece(const Piece& piece)
{
    const int descriptor = piece.to == To::Output ? descriptors.output : descriptors.errors;
    // If nobody reads the messages, the client goes on.
    return znt::writeAll(descriptor, piece.text).succeeded() || piece.to == To::Errors;
}
