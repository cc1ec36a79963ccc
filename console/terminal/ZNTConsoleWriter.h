#pragma once

#include "RunLoop.h"
#include "ZNTTextSink.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

/// Writes text on a thread of its own, in pieces of up to 64 KiB. So a terminal that is slow, or was stopped,
/// or a full pipe, holds up neither the game nor the player, and the next text is made while one is written.
class ZNTConsoleWriter final : public ZNTTextSink
{
public:
    struct Descriptors {
        int output, errors; ///< stay the caller's
    };
    /// `runLoop` outlives this. The writer is full while `mostWaiting` bytes wait, but still takes text then.
    /// `readerLeft` is called once, on the writer's thread, if the output has no reader any more; later text
    /// is dropped.
    ZNTConsoleWriter(RunLoop& runLoop, Descriptors descriptors, std::size_t mostWaiting,
                     std::function<void()> readerLeft);
    /// Waits until everything is written.
    ~ZNTConsoleWriter() override;

    void write(std::string_view utf8, To to) override;
    [[nodiscard]] bool hasWrittenAll() const override;
    void waitUntilWritten() override;
    [[nodiscard]] bool isFull() const override;

private:
    struct Piece {
        std::string text;
        To to;
    };
    void run();
    /// False if the output has no reader any more.
    bool writePiece(const Piece& piece);
    Piece emptyPiece(To to);

    RunLoop& runLoop;
    const Descriptors descriptors;
    const std::size_t mostWaiting;
    const std::function<void()> readerLeft;

    mutable std::mutex guard;                   ///< of everything below
    std::condition_variable something, nothing; ///< waits to be written
    std::deque<Piece> waiting;                  ///< the first one is being written
    std::deque<std::string> used;               ///< memory of written pieces, for the next ones
    std::size_t bytesWaiting = 0;
    bool wasFull = false;
    bool hasReaderLeft = false;
    bool isToEnd = false;
    std::thread thread;
};
